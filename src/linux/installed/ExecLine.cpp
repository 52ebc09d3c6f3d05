#include "linux/installed/ExecLine.h"

#include "foundation/Url.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/system/Gio.h"

#include <optional>

namespace corvane {
namespace {

/// The code of a file or URI in a word ('f', 'F', 'u', 'U'), or 0.
char itemCode(const std::string& word) {
    for (std::size_t i = 0; i + 1 < word.size(); ++i) {
        if (word[i] != '%') continue;
        const char code = word[++i];
        if (code == 'f' || code == 'F' || code == 'u' || code == 'U') return code;
    }
    return 0;
}

bool takesOne(char code) {
    return code == 'f' || code == 'u';
}

/// What stands for a URI behind a code: a path for those of files.
Result<std::string> itemText(char code, const std::string& uri) {
    if (code == 'u' || code == 'U') return uri;
    const auto url = Url::parse(uri);
    if (!url || !url->isFile())
        return Error{"The application can open only files, not " + uri + "."};
    return url->path();
}

/// A word with its codes replaced; nothing where it was only a code with no value.
std::optional<std::string> filledIn(const std::string& word,
                                    const InstalledApplication& application,
                                    const std::string& item) {
    std::string result;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] != '%' || i + 1 == word.size()) {
            result += word[i];
            continue;
        }
        switch (word[++i]) {
        case '%':
            result += '%';
            break;
        case 'c':
            result += application.displayName;
            break;
        case 'k':
            result += application.desktopFile;
            break;
        case 'f':
        case 'F':
        case 'u':
        case 'U':
            result += item;
            break;
        default: // %i stands alone; the others are deprecated and mean nothing.
            break;
        }
    }
    if (result.empty() && !word.empty()) return std::nullopt;
    return result;
}

/// One command for `items`, the texts that stand for the URIs.
Command fill(const std::vector<std::string>& words, const InstalledApplication& application,
             char code, const std::vector<std::string>& items,
             const std::vector<std::string>& arguments) {
    Command command;
    const auto append = [&](const std::string& word, const std::string& item) {
        if (auto text = filledIn(word, application, item)) command.push_back(std::move(*text));
    };
    for (const auto& word : words) {
        if (word == "%i" && !application.icon.empty()) {
            command.insert(command.end(), {"--icon", application.icon});
        } else if (itemCode(word) && items.size() > 1) {
            for (const auto& item : items)
                append(word, item);
        } else {
            append(word, items.empty() ? std::string() : items.front());
        }
    }
    if (!code) command.insert(command.end(), items.begin(), items.end());
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

} // namespace

Result<std::vector<Command>> execCommands(const InstalledApplication& application,
                                          const std::vector<std::string>& uris,
                                          const std::vector<std::string>& arguments) {
    int count = 0;
    char** parsed = nullptr;
    GError* failure = nullptr;
    if (!g_shell_parse_argv(application.exec.c_str(), &count, &parsed, &failure)) {
        return Error{application.displayName + " can't be started: " + gio::takeMessage(failure) +
                     "."};
    }
    const std::vector<std::string> words(parsed, parsed + count);
    g_strfreev(parsed);

    char code = 0;
    for (const auto& word : words) {
        if (!code) code = itemCode(word);
    }
    std::vector<std::string> items;
    for (const auto& uri : uris) {
        const auto url = Url::parse(uri);
        auto item = itemText(code ? code : (url && url->isFile() ? 'F' : 'U'), uri);
        if (!item) return item.error();
        items.push_back(std::move(*item));
    }
    if (!takesOne(code) || items.size() < 2) {
        return std::vector<Command>(1, fill(words, application, code, items, arguments));
    }
    std::vector<Command> commands;
    for (auto& item : items) {
        commands.push_back(fill(words, application, code, {item}, arguments));
    }
    return commands;
}

} // namespace corvane
