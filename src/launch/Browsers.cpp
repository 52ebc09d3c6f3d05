#include "launch/Browsers.h"

#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "platform/ScriptEngine.h"
#include "platform/TaskRunner.h"

#include <utility>

namespace corvane {

std::optional<BrowserFamily> browserFamily(std::string_view browserName) {
    static constexpr std::pair<std::string_view, BrowserFamily> families[]{
        {"chrome", BrowserFamily::chromium}, {"brave", BrowserFamily::chromium},
        {"edge", BrowserFamily::chromium},   {"chromium", BrowserFamily::chromium},
        {"safari", BrowserFamily::safari},   {"firefox", BrowserFamily::firefox},
    };
    const auto name = text::lowercased(browserName);
    for (const auto& [part, family] : families) {
        if (name.find(part) != std::string::npos) return family;
    }
    return std::nullopt;
}

bool Browsers::openURLInNewTab(const Url& url, const std::optional<std::string>& browserName) {
    const auto family = browserName ? browserFamily(*browserName) : std::nullopt;
    if (!family) return false;
    switch (*family) {
    case BrowserFamily::chromium:
        return openInChromiumFamilyNewTab(url, *browserName);
    case BrowserFamily::firefox:
        return openInFirefoxNewTab(url, *browserName);
    case BrowserFamily::safari:
        break;
    }
    return openInSafariNewTab(url);
}

bool Browsers::openInChromiumFamilyNewTab(const Url& url, const std::string& browserName) {
    return runNewTabCommand(browserName,
                            {"--new", "-a", browserName, "--args", url.absoluteString()});
}

bool Browsers::openInFirefoxNewTab(const Url& url, const std::string& browserName) {
    return runNewTabCommand(browserName,
                            {"-a", browserName, "--args", "--new-tab", url.absoluteString()});
}

bool Browsers::runNewTabCommand(const std::string& browserName,
                                const std::vector<std::string>& arguments) {
    const auto task = tasks_.run("/usr/bin/open", arguments);
    if (!task) {
        diagnostic({"Failed to execute new tab command for ", browserName, ": ",
                    task.error().localizedDescription});
        return false;
    }
    if (task->status != 0) {
        diagnostic({"Failed to open URL in ", browserName, " new tab, trying fallback"});
        return false;
    }
    diagnostic({"Successfully opened URL in ", browserName, " (new tab)"});
    return true;
}

bool Browsers::openInSafariNewTab(const Url& url) {
    const auto& address = url.absoluteString();
    const auto outcome = scripts_.execute(
        "tell application \"Safari\"\n"
        "    activate\n"
        "    try\n"
        "        tell window 1 to set current tab to make new tab with properties {URL:\"" +
        address +
        "\"}\n"
        "    on error\n"
        "        open location \"" +
        address +
        "\"\n"
        "    end try\n"
        "end tell");
    if (outcome && outcome->hasResult && !outcome->error) return true;
    const bool hasMessage = outcome && outcome->error && outcome->error->message;
    diagnostic({"Failed to open URL in Safari new tab: ",
                hasMessage ? *outcome->error->message : "Unknown error"});
    return false;
}

} // namespace corvane
