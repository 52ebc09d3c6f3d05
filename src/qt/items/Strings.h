#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace corvane {

inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace corvane
