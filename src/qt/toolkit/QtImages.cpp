#include "qt/toolkit/QtImages.h"

#include "qt/items/Pictures.h"
#include "qt/items/Symbols.h"

#include <QFile>

namespace corvane {

std::optional<Image> QtImages::named(const std::string& name) const {
    const Image image{.source = Image::Source::asset, .name = name};
    return QFile::exists(drawingOf(image)) ? std::optional(image) : std::nullopt;
}

std::optional<Image> QtImages::applicationIcon() const {
    return Image{.source = Image::Source::applicationIcon};
}

std::optional<Image> QtImages::systemSymbol(const std::string& name,
                                            const std::string& accessibilityDescription) const {
    if (!Symbols::isKnown(QString::fromStdString(name))) return std::nullopt;
    return Image{.source = Image::Source::symbol,
                 .name = name,
                 .accessibilityDescription = accessibilityDescription};
}

} // namespace corvane
