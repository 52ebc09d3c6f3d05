#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/sortkey.h>
#include <unicode/stsearch.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace corvane::text {

namespace {

icu::UnicodeString toUnicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

icu::UnicodeString folded(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    auto unicode = toUnicode(text);
    unicode.foldCase();
    const auto* nfc = icu::Normalizer2::getNFCInstance(status);
    return U_SUCCESS(status) ? nfc->normalize(unicode, status) : unicode;
}

char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Reads the code point at `offset` and moves behind it; negative where the bytes are no UTF-8.
UChar32 nextCodePoint(std::string_view text, std::size_t& offset) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 codePoint;
    U8_NEXT(bytes, offset, text.size(), codePoint);
    return codePoint;
}

/// What stands for a character that would hide itself or what is around it.
UChar32 visible(UChar32 character) {
    if (character == u'\t') return u' ';
    const auto type = u_charType(character);
    if (character == u'\n' || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR)
        return u'⏎';
    const bool hides = type == U_CONTROL_CHAR || u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL);
    return hides ? UChar32{0xFFFD} : character;
}

bool collatorContains(std::string_view text, std::string_view part,
                      icu::Collator::ECollationStrength strength, const icu::Locale& locale) {
    if (part.empty()) return false;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status)) return false;
    collator->setStrength(strength);
    auto* rules = dynamic_cast<icu::RuleBasedCollator*>(collator.get());
    icu::StringSearch search(toUnicode(part), toUnicode(text), rules, nullptr, status);
    const auto found = search.first(status);
    return U_SUCCESS(status) && found != USEARCH_DONE;
}

} // namespace

bool isAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char c : text)
        bits |= static_cast<unsigned char>(c);
    return bits < 0x80;
}

std::u16string toUtf16(std::string_view text) {
    const auto unicode = toUnicode(text);
    return {unicode.getBuffer(), static_cast<std::size_t>(unicode.length())};
}

std::string fromUtf16(std::u16string_view text) {
    return toUtf8({text.data(), static_cast<std::int32_t>(text.size())});
}

std::size_t firstInvalidUtf8(std::string_view text) {
    std::size_t offset = 0;
    while (offset < text.size()) {
        std::uint64_t eight;
        while (offset + sizeof eight <= text.size()) {
            std::memcpy(&eight, text.data() + offset, sizeof eight);
            if (eight & 0x8080808080808080u) break;
            offset += sizeof eight;
        }
        while (offset < text.size() && static_cast<unsigned char>(text[offset]) < 0x80)
            ++offset;
        if (offset == text.size()) break;
        const auto start = offset;
        if (nextCodePoint(text, offset) < 0) return start;
    }
    return offset;
}

bool isValidUtf8(std::string_view text) {
    return firstInvalidUtf8(text) == text.size();
}

std::string replacingInvalidUtf8(std::string_view text) {
    // Nearly all is valid, and to see that takes a fraction of the conversion.
    if (isValidUtf8(text)) return std::string(text);
    return toUtf8(toUnicode(text));
}

std::string onOneLine(std::string_view text, std::size_t most) {
    auto unicode = toUnicode(text);
    const auto count = static_cast<std::size_t>(unicode.countChar32());
    if (count > most) {
        const auto kept = static_cast<std::int32_t>(most) - 1;
        const auto begin = unicode.moveIndex32(0, kept / 2);
        const auto end = unicode.moveIndex32(unicode.length(), kept / 2 - kept);
        unicode.replaceBetween(begin, end, u"…");
    }
    icu::UnicodeString line;
    for (std::int32_t at = 0; at < unicode.length(); at = unicode.moveIndex32(at, 1))
        line += visible(unicode.char32At(at));
    return toUtf8(line);
}

std::string withShortLines(std::string_view text, std::size_t most) {
    constexpr std::size_t mostLines = 300;
    auto lines = split(text, '\n');
    if (lines.size() > mostLines) {
        const auto middle = lines.begin() + mostLines / 2;
        lines.erase(middle, middle + static_cast<std::ptrdiff_t>(lines.size() - mostLines));
        *middle = "…";
    }
    for (auto& line : lines)
        line = onOneLine(line, most);
    return joined(lines, "\n");
}

std::string trimmed(std::string_view text) {
    std::size_t begin = text.size();
    std::size_t end = 0;
    for (std::size_t offset = 0; offset < text.size();) {
        const auto start = offset;
        if (u_isUWhiteSpace(nextCodePoint(text, offset))) continue;
        begin = std::min(begin, start);
        end = offset;
    }
    return begin < end ? std::string(text.substr(begin, end - begin)) : std::string();
}

std::string lowercased(std::string_view text) {
    if (isAscii(text)) {
        std::string result(text);
        std::transform(result.begin(), result.end(), result.begin(), asciiLower);
        return result;
    }
    return toUtf8(toUnicode(text).toLower(icu::Locale::getRoot()));
}

std::size_t characterCount(std::string_view text) {
    if (isAscii(text)) return text.size();
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) return text.size();
    const auto unicode = toUnicode(text);
    characters->setText(unicode);
    std::size_t count = 0;
    while (characters->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    // Two ASCII letters that differ decide, whatever follows: nothing joins with what is before it
    // to become another one of them.
    const auto length = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < length; ++i) {
        if (((a[i] | b[i]) & 0x80) != 0) return folded(a) == folded(b);
        if (asciiLower(a[i]) != asciiLower(b[i])) return false;
    }
    if (a.size() == b.size()) return true;
    return !(isAscii(a) && isAscii(b)) && folded(a) == folded(b);
}

bool localizedContainsIgnoringCase(std::string_view text, std::string_view part) {
    if (part.empty()) return false;
    const auto locale = icu::Locale::getDefault();
    // Turkish and Azeri have letters of their own where others fold "I" to "i".
    const std::string_view language = locale.getLanguage();
    const auto options =
        language == "tr" || language == "az" ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
    UErrorCode status = U_ZERO_ERROR;
    const auto* nfc = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) return false;
    const auto where = nfc->normalize(toUnicode(text).foldCase(options), status);
    const auto what = nfc->normalize(toUnicode(part).foldCase(options), status);
    return U_SUCCESS(status) && where.indexOf(what) >= 0;
}

bool containsIgnoringCaseAndDiacritics(std::string_view text, std::string_view part) {
    return collatorContains(text, part, icu::Collator::PRIMARY, icu::Locale::getRoot());
}

std::vector<std::string> localizedSortKeys(const std::vector<std::string>& texts) {
    UErrorCode status = U_ZERO_ERROR;
    const auto user = icu::Locale::getDefault();
    // Without the variant POSIX, the order of which is that of the bytes.
    const icu::Locale locale(user.getLanguage(), user.getCountry());
    const std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status)) return texts;
    collator->setStrength(icu::Collator::SECONDARY);
    collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
    std::vector<std::string> keys;
    for (const auto& text : texts) {
        icu::CollationKey key;
        collator->getCollationKey(toUnicode(text), key, status);
        std::int32_t size = 0;
        const auto* bytes = reinterpret_cast<const char*>(key.getByteArray(size));
        keys.emplace_back(bytes, static_cast<std::size_t>(size));
    }
    return keys;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (;;) {
        const auto end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> result;
    std::size_t wordStart = 0;
    for (std::size_t offset = 0; offset <= text.size();) {
        const auto start = offset;
        const bool atEnd = offset == text.size();
        if (!atEnd && !u_isUWhiteSpace(nextCodePoint(text, offset))) continue;
        if (start > wordStart) result.emplace_back(text.substr(wordStart, start - wordStart));
        if (atEnd) break;
        wordStart = offset;
    }
    return result;
}

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string result;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) result += separator;
        result += texts[i];
    }
    return result;
}

std::string replacingAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    for (;;) {
        const auto found = from.empty() ? std::string_view::npos : text.find(from);
        result += text.substr(0, found);
        if (found == std::string_view::npos) return result;
        result += to;
        text.remove_prefix(found + from.size());
    }
}

std::string number(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

} // namespace corvane::text
