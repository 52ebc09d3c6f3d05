#include "linux/installed/ExecLine.h"

#include "foundation/Text.h"
#include "foundation/Url.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/system/Gio.h"

#include <algorithm>
#include <array>
#include <cstring>
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

bool isOfThisMachine(const std::string& host) {
    return host.empty() || text::equalsIgnoringCase(host, "localhost") ||
           text::equalsIgnoringCase(host, g_get_host_name());
}

/// What stands for a URI behind a code: a path for those of files. With a scheme or a slash in
/// front, neither is ever taken for an option.
Result<std::string> itemText(char code, const std::string& uri) {
    const auto url = Url::parse(uri);
    if (!url || !url->hasScheme()) return Error{uri + " is not an address."};
    if (url->isFile()) {
        const auto& path = url->path();
        if (!path.starts_with('/') || path.find('\0') != path.npos ||
            !isOfThisMachine(url->host().value_or("")))
            return Error{uri + " is not a file of this machine."};
        if (code == 'f' || code == 'F') return path;
    } else if (code == 'f' || code == 'F') {
        return Error{"The application can open only files, not " + uri + "."};
    }
    return uri;
}

using Words = std::vector<std::string>;

/// Whether a code is a word of its own or the value of an option ("--file=%f"), where nothing takes
/// the word apart.
bool isValue(const std::string& word) {
    const auto plain = [](char c) { return g_ascii_isalnum(c) || std::strchr("-_=:/.,+@%", c); };
    return std::ranges::all_of(word, plain);
}

/// Where the script of a shell stands in its command line ("env A=b sh -c script"); 0 for none.
std::size_t scriptPlace(const Words& words) {
    std::size_t i = 0;
    if (path::lastComponent(words.front()) == "env") ++i;
    while (i > 0 && i < words.size() && words[i].find('=') != std::string::npos)
        ++i;
    constexpr std::array<std::string_view, 7> shells{"sh",  "bash", "dash", "zsh",
                                                     "ksh", "mksh", "ash"};
    if (i == words.size() || std::ranges::count(shells, path::lastComponent(words[i])) == 0)
        return 0;
    while (++i < words.size() && (words[i].starts_with('-') || words[i].starts_with('+'))) {
        if (words[i].starts_with('-') && !words[i].starts_with("--") && words[i].ends_with('c'))
            return i + 1 < words.size() ? i + 1 : 0;
    }
    return 0;
}

/// A shell's script with its item handed over as an argument of its own, which no shell reads as
/// anything but a text; single quotes are left for it. Nothing where a substitution in double
/// quotes may hold the item, as what is quoted there isn't told so easily.
std::optional<std::string> withArgument(const std::string& script, std::size_t number) {
    const std::string name = std::to_string(number);
    std::string result;
    bool isSingle = false;
    bool isDouble = false;
    for (std::size_t i = 0; i < script.size(); ++i) {
        const char c = script[i];
        if (c == '\\' && !isSingle && i + 1 < script.size()) {
            result += c;
            result += script[++i];
            continue;
        }
        if (c == '\'' && !isDouble) isSingle = !isSingle;
        if (c == '"' && !isSingle) isDouble = !isDouble;
        const bool isCode = c == '%' && itemCode(script.substr(i, 2));
        if (!isCode) {
            result += c;
            if (c == '%' && i + 1 < script.size()) result += script[++i];
            continue;
        }
        ++i;
        if (isDouble) {
            const bool mayBeNested = script.find('`') < i || script.find("$(") < i;
            if (mayBeNested) return std::nullopt;
            result += "${" + name + "}";
        } else {
            const std::string quote = isSingle ? "'" : "";
            result += quote + "${" + name + "+\"${" + name + "}\"}" + quote;
        }
    }
    return result;
}

/// The words in which every code of an item is a word or the value of an option. Inside of a
/// shell's script it would be read by the shell: "$(...)" in the name of a file would run.
Result<Words> withItemsApart(Words words, const InstalledApplication& application) {
    const std::size_t script = scriptPlace(words);
    if (const char code = script > 0 ? itemCode(words[script]) : char{}) {
        // $0 is the word behind the script.
        if (script + 1 == words.size()) words.push_back("sh");
        if (auto text = withArgument(words[script], words.size() - script - 1)) {
            words[script] = std::move(*text);
            words.push_back(code == 'f' || code == 'F' ? "%f" : "%u");
        }
    }
    for (const auto& word : words) {
        if (!itemCode(word) || isValue(word)) continue;
        return Error{application.displayName + " can't be started: its entry puts what is to be "
                                               "opened into the middle of other words."};
    }
    return words;
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
    const Words asWritten(parsed, parsed + count);
    g_strfreev(parsed);
    const auto apart = withItemsApart(asWritten, application);
    if (!apart) return apart.error();
    const Words& words = *apart;

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

Result<void> areOpenable(const std::vector<std::string>& uris) {
    for (const auto& uri : uris) {
        const auto item = itemText('U', uri);
        if (!item) return item.error();
    }
    return {};
}

bool takesItems(const InstalledApplication& application) {
    return itemCode(application.exec) != 0;
}

} // namespace corvane
