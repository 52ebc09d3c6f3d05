#include "fuzz/Fuzz.h"
#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplication.h"

using namespace corvane;

namespace {

struct Line {
    std::string_view exec;
    /// The words before the item, and what stands before it in its own word.
    std::size_t words;
    std::string_view before;
};

constexpr Line known[]{{"viewer %f", 1, ""},
                       {"viewer %u", 1, ""},
                       {"viewer --new", 2, ""},
                       {"viewer --open=%u", 1, "--open="},
                       {"sh -c \"exec viewer %u\" name", 4, ""}};

/// A program gets it as the one word that its entry has a place for, a path or with a scheme in
/// front, or not at all.
void checkKnownLines(const std::string& address) {
    InstalledApplication application;
    for (const auto& line : known) {
        application.exec = line.exec;
        const auto commands = execCommands(application, {address}, {});
        if (!commands) continue;
        expect(commands->size() == 1 && commands->front().size() == line.words + 1);
        std::string_view item = commands->front().back();
        expect(item.starts_with(line.before));
        item.remove_prefix(line.before.size());
        const auto colon = item.find(':');
        const bool hasScheme = colon != item.npos && colon > 0 && item.find_first_of("/-+") != 0;
        expect(item.starts_with('/') || (hasScheme && item == address));
    }
}

} // namespace

/// The first line is an Exec key, the second an address. Whatever they are, the address reaches the
/// program as a path or with its scheme in front, or it is refused in words; with no item of its
/// own, a command holds nothing of it.
void feed(std::string_view text) {
    const auto end = text.find('\n');
    InstalledApplication application;
    application.displayName = "A";
    application.exec = text.substr(0, end);
    const std::string uri(end == text.npos ? "" : text.substr(end + 1));
    checkKnownLines(uri);
    const auto commands = execCommands(application, {uri}, {});
    if (!commands) return expect(!commands.error().localizedDescription.empty());
    expect(static_cast<bool>(areOpenable({uri})));
    // With no code for it, the item is the last word.
    for (const auto& command : *commands)
        expect(takesItems(application) || !command.back().starts_with('-'));
}
