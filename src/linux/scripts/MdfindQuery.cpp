#include "linux/scripts/MdfindQuery.h"

namespace corvane {
namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) { skipBlanks(); }

    bool take(std::string_view token) {
        if (!rest_.starts_with(token)) return false;
        rest_.remove_prefix(token.size());
        skipBlanks();
        return true;
    }

    std::optional<std::string> takeQuoted() {
        if (!rest_.starts_with('\'')) return std::nullopt;
        std::string result;
        for (std::size_t i = 1; i < rest_.size(); ++i) {
            if (rest_[i] == '\'') {
                rest_.remove_prefix(i + 1);
                skipBlanks();
                return result;
            }
            if (rest_[i] == '\\' && ++i == rest_.size()) break;
            result += rest_[i];
        }
        return std::nullopt;
    }

    bool isAtEnd() const { return rest_.empty(); }

private:
    void skipBlanks() {
        while (rest_.starts_with(' ') || rest_.starts_with('\t') || rest_.starts_with('\n')) {
            rest_.remove_prefix(1);
        }
    }

    std::string_view rest_;
};

} // namespace

std::optional<std::string> parseApplicationNameQuery(std::string_view query) {
    Reader reader(query);
    if (!reader.take("kMDItemKind") || !reader.take("==") || reader.takeQuoted() != "Application" ||
        !reader.take("&&") || !reader.take("kMDItemDisplayName") || !reader.take("==")) {
        return std::nullopt;
    }
    auto name = reader.takeQuoted();
    return reader.isAtEnd() ? name : std::nullopt;
}

} // namespace corvane
