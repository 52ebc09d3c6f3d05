#include "linux/scripts/AppleScriptTokens.h"

#include <algorithm>
#include <array>

namespace corvane::applescript {
namespace {

constexpr std::string_view lineBreaks = "\r\n";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWordStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

char lowercase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Words that no application can use as names; messages quote them.
bool isReserved(std::string_view word) {
    constexpr std::array<std::string_view, 11> reserved{
        "tell", "end", "try", "on", "error", "to", "of", "set", "with", "using", "in"};
    return std::ranges::count(reserved, word) > 0;
}

} // namespace

std::string Token::description() const {
    switch (kind) {
    case Kind::word:
        return isReserved(value) ? '"' + value + '"' : "identifier";
    case Kind::text:
        return "\"\"\"";
    case Kind::number:
        return "number";
    case Kind::sign:
        return '"' + value + '"';
    case Kind::endOfLine:
        return "end of line";
    case Kind::endOfScript:
        return "end of script";
    case Kind::unknown:
        break;
    }
    return "unknown token";
}

void failExpecting(std::string_view expected, const Token& found) {
    throw SyntaxFailure("Expected " + std::string(expected) + " but found " + found.description() +
                        ".");
}

bool Tokens::skipped(std::string_view prefix) {
    if (!rest_.starts_with(prefix)) return false;
    rest_.remove_prefix(prefix.size());
    return true;
}

void Tokens::skipLineComment() {
    rest_.remove_prefix(std::min(rest_.find_first_of(lineBreaks), rest_.size()));
}

void Tokens::skipBlockComment() {
    for (std::size_t depth = 1; depth > 0;) {
        if (rest_.empty()) failExpecting("\"*)\"", Token{});
        if (skipped("(*")) {
            ++depth;
        } else if (skipped("*)")) {
            --depth;
        } else {
            rest_.remove_prefix(1);
        }
    }
}

void Tokens::skipBlanksAndComments() {
    for (;;) {
        if (skipped(" ") || skipped("\t")) continue;
        if (skipped("--") || skipped("#")) {
            skipLineComment();
        } else if (skipped("(*")) {
            skipBlockComment();
        } else {
            return;
        }
    }
}

Token Tokens::text() {
    Token token{Token::Kind::text, {}};
    for (;;) {
        const auto plain = std::min(rest_.find_first_of("\"\\"), rest_.size());
        token.value += rest_.substr(0, plain);
        rest_.remove_prefix(plain);
        if (rest_.empty()) failExpecting("\"\"\"", Token{});
        if (skipped("\"")) return token;
        constexpr std::string_view escapes = "\"\\nrt";
        constexpr std::string_view meanings = "\"\\\n\r\t";
        const auto escape = rest_.size() < 2 ? escapes.npos : escapes.find(rest_[1]);
        if (escape == escapes.npos) failExpecting("\"\"\"", Token{Token::Kind::unknown, {}});
        token.value += meanings[escape];
        rest_.remove_prefix(2);
    }
}

template <typename Accepts>
Token Tokens::run(Token::Kind kind, Accepts&& accepts) {
    const auto end = std::ranges::find_if_not(rest_, accepts);
    Token token{kind, std::string(rest_.begin(), end)};
    rest_.remove_prefix(token.value.size());
    std::ranges::transform(token.value, token.value.begin(), lowercase);
    return token;
}

Token Tokens::next() {
    skipBlanksAndComments();
    if (rest_.empty()) return {};
    if (skipped("\r\n") || skipped("\n") || skipped("\r")) return {Token::Kind::endOfLine, {}};
    if (skipped("\"")) return text();
    if (isWordStart(rest_[0])) {
        return run(Token::Kind::word, [](char c) { return isWordStart(c) || isDigit(c); });
    }
    if (isDigit(rest_[0])) return run(Token::Kind::number, isDigit);
    constexpr std::string_view signs = "{}():,&";
    const bool isSign = signs.find(rest_[0]) != signs.npos;
    Token token{isSign ? Token::Kind::sign : Token::Kind::unknown, std::string(rest_, 0, 1)};
    rest_.remove_prefix(1);
    return token;
}

} // namespace corvane::applescript
