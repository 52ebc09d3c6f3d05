#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::text {

/// Whether the bytes are well-formed UTF-8 (no overlong forms, no surrogates).
bool isValidUtf8(std::string_view text);
/// The offset of the first byte that isn't part of such; the size of the text where all is well.
std::size_t firstInvalidUtf8(std::string_view text);

bool isAscii(std::string_view text);

/// Between UTF-8 and UTF-16; what is ill-formed becomes U+FFFD.
std::u16string toUtf16(std::string_view text);
std::string fromUtf16(std::u16string_view text);

/// With each ill-formed sequence as U+FFFD, for showing.
std::string replacingInvalidUtf8(std::string_view text);

/// On one line, for a person to see all that is in it: line ends as "⏎", other control characters
/// and the marks that turn the direction of writing as U+FFFD. Of more than `most` characters the
/// middle is one "…".
std::string onOneLine(std::string_view text, std::size_t most);
/// The same of each of its lines, but for the middle ones of more than 300.
std::string withShortLines(std::string_view text, std::size_t most);

/// Without Unicode white space and line breaks at both ends.
std::string trimmed(std::string_view text);

/// In lower case, by the Unicode rules that know no language.
std::string lowercased(std::string_view text);

/// The characters as a reader counts them: a letter with its accents is one.
std::size_t characterCount(std::string_view text);

/// Equal when case is ignored (full Unicode case folding, canonical equivalence).
bool equalsIgnoringCase(std::string_view a, std::string_view b);

/// Whether `text` contains `part` when case is ignored, in the user's locale. An empty `part` is
/// contained in nothing.
bool localizedContainsIgnoringCase(std::string_view text, std::string_view part);

/// The same, ignoring case and diacritics.
bool containsIgnoringCaseAndDiacritics(std::string_view text, std::string_view part);

/// For each text a key; the order of the keys' bytes is the texts' order in the user's locale, case
/// ignored, numbers by their value.
std::vector<std::string> localizedSortKeys(const std::vector<std::string>& texts);

/// The pieces between each single `separator`; empty pieces are kept.
std::vector<std::string> split(std::string_view text, char separator);

/// The non-empty words between Unicode white space.
std::vector<std::string> words(std::string_view text);

/// The texts with `separator` between them.
std::string joined(const std::vector<std::string>& texts, std::string_view separator);

/// `text` with every `from` replaced by `to`.
std::string replacingAll(std::string_view text, std::string_view from, std::string_view to);

/// The shortest decimal text that reads back as the same number: "800", "0.5".
std::string number(double value);

} // namespace corvane::text
