#include "linux/scripts/AppleScript.h"

#include "linux/scripts/AppleScriptTokens.h"

#include <charconv>
#include <initializer_list>
#include <optional>
#include <utility>

namespace corvane::applescript {
namespace {

using Kind = Token::Kind;

class Parser {
public:
    explicit Parser(std::string_view source) : tokens_(source), current_(tokens_.next()) {}

    Block script() {
        Block block = statements();
        if (current_.kind != Kind::endOfScript) failExpecting("expression", current_);
        return block;
    }

private:
    /// Up to the end of the script or to a word that closes a block.
    Block statements() {
        Block block;
        for (;;) {
            while (accept(Kind::endOfLine)) {
            }
            if (current_.kind == Kind::endOfScript || current_.isWord("end") ||
                current_.isWord("on")) {
                return block;
            }
            block.push_back(statement());
            endLine();
        }
    }

    Statement statement() {
        constexpr int deepest = 64;
        if (depth_ >= deepest) throw SyntaxFailure("The script is nested too deeply.");
        ++depth_;
        Statement result = statementAtThisDepth();
        --depth_;
        return result;
    }

    Statement statementAtThisDepth() {
        if (accept("tell")) return {tell()};
        if (accept("try")) return {attempt()};
        if (accept("activate")) return {Activate{}};
        if (accept("do")) {
            expect({"script"});
            return {DoScript{text()}};
        }
        if (accept("open")) {
            expect({"location"});
            return {OpenLocation{text()}};
        }
        if (accept("set")) {
            expect({"current", "tab", "to", "make"});
            return {makeTab()};
        }
        if (accept("make")) return {makeTab()};
        if (accept("click")) return {click()};
        if (accept("keystroke")) return {keystroke()};
        failExpecting("expression", current_);
    }

    Tell tell() {
        Tell result{target(), {}};
        if (accept("to")) {
            result.body.push_back(statement());
            return result;
        }
        endLine();
        result.body = statements();
        endBlock("tell");
        return result;
    }

    Try attempt() {
        endLine();
        Try result{statements(), {}};
        if (accept("on")) {
            expect({"error"});
            endLine();
            result.handler = statements();
        }
        endBlock("try");
        return result;
    }

    Target target() {
        if (accept("application")) return Application{text()};
        if (accept("window")) return Window{number()};
        if (accept("process")) return Process{text()};
        failExpecting("expression", current_);
    }

    MakeTab makeTab() {
        expect({"new", "tab", "with", "properties"});
        expectSign('{');
        expect({"url"});
        expectSign(':');
        MakeTab result{text()};
        expectSign('}');
        return result;
    }

    Click click() {
        Click result;
        expect({"button"});
        result.button = number();
        expect({"of", "window"});
        result.window = number();
        return result;
    }

    Keystroke keystroke() {
        Keystroke result{text(), {}};
        if (!accept("using")) return result;
        if (!current_.isSign('{')) {
            result.modifiers.push_back(modifier());
            return result;
        }
        do {
            take();
            result.modifiers.push_back(modifier());
        } while (current_.isSign(','));
        expectSign('}');
        return result;
    }

    std::string modifier() {
        for (const auto* name : {"command", "control", "option", "shift"}) {
            if (!accept(name)) continue;
            expect({"down"});
            return name;
        }
        failExpecting("expression", current_);
    }

    std::string text() {
        if (current_.kind != Kind::text) failExpecting("\"\"\"", current_);
        return take().value;
    }

    int number() {
        if (current_.kind != Kind::number) failExpecting("number", current_);
        const std::string digits = take().value;
        int value = 0;
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (read.ec != std::errc()) throw SyntaxFailure("The number is too large.");
        return value;
    }

    /// "end" may name what it ends.
    void endBlock(std::string_view word) {
        if (!accept("end")) failExpecting("\"end\"", current_);
        if (current_.kind == Kind::word && !accept(word)) failExpecting("end of line", current_);
    }

    void endLine() {
        if (current_.kind == Kind::endOfScript || accept(Kind::endOfLine)) return;
        failExpecting("end of line", current_);
    }

    void expect(std::initializer_list<std::string_view> words) {
        for (const auto word : words) {
            if (!accept(word)) failExpecting('"' + std::string(word) + '"', current_);
        }
    }

    void expectSign(char sign) {
        if (!current_.isSign(sign)) failExpecting(std::string{'"', sign, '"'}, current_);
        take();
    }

    bool accept(std::string_view word) {
        if (!current_.isWord(word)) return false;
        take();
        return true;
    }

    bool accept(Kind kind) {
        if (current_.kind != kind) return false;
        take();
        return true;
    }

    Token take() { return std::exchange(current_, tokens_.next()); }

    Tokens tokens_;
    Token current_;
    int depth_ = 0;
};

} // namespace

Result<Block> parse(std::string_view source) {
    try {
        return Parser(source).script();
    } catch (const SyntaxFailure& failure) {
        return Error{failure.what()};
    }
}

} // namespace corvane::applescript
