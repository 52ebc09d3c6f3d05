#include "qt/HeaderModel.h"

namespace corvane {

HeaderModel::HeaderModel(HeaderState& state)
    : state_(state), relay_(state.objectWillChange, [this] { emit changed(); }) {}

QString HeaderModel::themeSymbol() const {
    const auto name = state_.themeSymbol();
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

QString HeaderModel::themeTooltip() const {
    const auto text = state_.themeTooltip();
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace corvane
