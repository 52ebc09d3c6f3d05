#include "foundation/JsonTree.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane::json {
namespace {

/// Whether a text is a number as JSON has it, and beyond what a double holds.
bool isHugeNumber(std::string_view token) {
    std::size_t at = token.starts_with('-') ? 1 : 0;
    const auto skipDigits = [&] {
        const auto end = std::min(token.find_first_not_of("0123456789", at), token.size());
        return end - std::exchange(at, end);
    };
    const bool startsWithZero = at < token.size() && token[at] == '0';
    const auto digits = skipDigits();
    if (digits == 0 || (startsWithZero && digits > 1)) return false;
    if (at < token.size() && token[at] == '.' && (++at, skipDigits() == 0)) return false;
    if (at < token.size() && (token[at] | 0x20) == 'e') {
        if (++at < token.size() && token[at] == '-') return false;
        at += at < token.size() && token[at] == '+' ? 1 : 0;
        if (skipDigits() == 0) return false;
    }
    long double wide = std::numeric_limits<long double>::infinity();
    std::from_chars(token.data(), token.data() + token.size(), wide);
    return at == token.size() && std::abs(wide) > std::numeric_limits<double>::max();
}

/// Writes a huge number that the library takes over each that it doesn't, at the same length.
void shortenHugeNumbers(std::string& text) {
    constexpr std::string_view shorter = "9e308";
    bool isInText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') isInText = !isInText;
        if (isInText) {
            i += text[i] == '\\' ? 1 : 0;
        } else if (text[i] == '-' || (text[i] >= '0' && text[i] <= '9')) {
            const auto end = std::min(text.find_first_not_of("0123456789+-.eE", i), text.size());
            if (isHugeNumber(std::string_view(text).substr(i, end - i)))
                text.replace(i, end - i,
                             std::string(shorter).append(end - i - shorter.size(), ' '));
            i = end - 1;
        }
    }
}

} // namespace

rapidjson::ParseResult Tree::read(std::string_view text, TakeElement take) {
    texts_ = text;
    take_ = std::move(take);
    constexpr std::size_t bytesOfNode = 10;
    if (!take_) nodes_.reserve(text.size() / bytesOfNode);
    escapesUnits_ = text.find("\\u") != text.npos;
    auto result = readTexts();
    if (result.Code() == rapidjson::kParseErrorNumberTooBig) {
        // The library takes none, though it may stand where nobody looks.
        texts_ = text;
        shortenHugeNumbers(texts_);
        nodes_.clear();
        open_.clear();
        firstKept_ = 0;
        result = readTexts();
    }
    return result;
}
rapidjson::ParseResult Tree::readTexts() {
    // No text grows when its escapes are taken out, so each has room where it stood.
    rapidjson::InsituStringStream bytes(texts_.data());
    rapidjson::Reader reader;
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
    auto result = reader.Parse<flags>(bytes, *this);
    // A null character counts as the end for the library.
    if (!result.IsError() && bytes.Tell() < texts_.size())
        result.Set(rapidjson::kParseErrorDocumentRootNotSingular, bytes.Tell());
    return result;
}

} // namespace corvane::json
