#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane::applescript {

/// The first thing wrong with a source, in words for the user. Caught by `parse`.
class SyntaxFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Token {
    enum class Kind { word, text, number, sign, endOfLine, endOfScript, unknown };

    Kind kind = Kind::endOfScript;
    /// A word in lower case, the value of a text, the digits of a number, or the sign.
    std::string value;

    bool isWord(std::string_view word) const { return kind == Kind::word && value == word; }
    bool isSign(char sign) const { return kind == Kind::sign && value[0] == sign; }
    /// As it is called in a message: `identifier`, `"tell"`, `end of line`.
    std::string description() const;
};

/// Hands out a source token by token; comments and blanks are passed over.
class Tokens {
public:
    explicit Tokens(std::string_view source) : rest_(source) {}
    /// Throws SyntaxFailure for a text or a comment without an end and for an unknown escape.
    Token next();

private:
    bool skipped(std::string_view prefix);
    void skipBlanksAndComments();
    void skipLineComment();
    void skipBlockComment();
    Token text();
    template <typename Accepts>
    Token run(Token::Kind kind, Accepts&& accepts);

    std::string_view rest_;
};

/// `Expected {expected} but found {token}.`
[[noreturn]] void failExpecting(std::string_view expected, const Token& found);

} // namespace corvane::applescript
