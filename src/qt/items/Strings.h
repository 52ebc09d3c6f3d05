#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace corvane {

inline QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

/// A name as it stands on one line, whatever it holds.
inline QString onOneLine(std::string_view text) {
    return toQString(text).simplified();
}

} // namespace corvane
