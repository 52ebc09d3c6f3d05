#include "launch/LaunchScene.h"

using namespace corvane;

namespace {

using enum ResourceType;

struct UrlLaunching : LaunchScene {
    const std::string page = "https://corvane.example/?q=%22a%22";
    const std::string open = "open " + page;

    static std::string bundle(const std::string& name) { return "/Applications/" + name + ".app"; }
    void defaultBrowser(const std::string& name) {
        desktop.defaultHandlers["http:"] = bundle(name);
    }
    void openPage(const std::string& address, const std::vector<std::string>& associated = {}) {
        forget();
        launcher.launchURLResource(resource(url, address, associated));
        desktop.runUntilIdle();
    }
    static std::string chromiumTab(const std::string& browser, const std::string& address) {
        return "/usr/bin/open --new -a " + browser + " --args " + address;
    }
};

TEST_F(UrlLaunching, lettersOfTheNameTellTheFamilyOfABrowser) {
    using enum BrowserFamily;
    const std::pair<const char*, std::optional<BrowserFamily>> cases[]{
        {"Google Chrome", chromium},  {"BRAVE Browser", chromium},
        {"Microsoft Edge", chromium}, {"Chromium", chromium},
        {"Knowledge Base", chromium}, {"Safari and Chrome", chromium},
        {"SAFARI Preview", safari},   {"Firefox or Safari", safari},
        {"firefox-esr", firefox},     {"Arc", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_TRUE(browserFamily(name) == expected) << name;
}

TEST_F(UrlLaunching, aPageGoesToEachAssociatedBrowserAndThenToTheDefaultOne) {
    const std::string chrome = "task " + chromiumTab("Google Chrome", page);
    const std::string edge = "task " + chromiumTab("My Edge", page);
    const std::string brave = chromiumTab("Stuck Brave", page);
    const std::string firefox = "task /usr/bin/open -a Firefox --args --new-tab " + page;
    const std::tuple<std::string, std::string, std::string, std::string, std::string> cases[]{
        {"", "Web", "", open, ""},
        {"Google Chrome", "Google Chrome", "", chrome, ""},
        {"", "My.app Edge.app", "", edge + "\n" + open, ""},
        {"", "Stuck Brave", "", "task " + brave + "\n" + open, ""},
        {"Google Chrome", "Google Chrome", "Google Chrome", chrome + "\n" + chrome, ""},
        {"Google Chrome", "Web", "Pad,Google Chrome",
         chrome + "\n" + open + " with /Applications/Pad.app\n" + open, ""},
        {"Firefox ESR", "Web", "Firefox",
         firefox + "\n" + open + " with /Applications/Firefox ESR.app\n" + open, ""},
        {"Damaged", "Web", "Damaged",
         open + " with /Applications/Damaged.app\n" + open + "\nsheet Browser Launch Failed",
         "Browser Launch Failed | Failed to open URL with Damaged.\n\nError: It's damaged. [OK]"},
        {"", "Web", "Firefox", firefox + "\n" + open + "\n" + open, ""},
        {"", "", "", open + "\nsheet URL Launch Failed",
         "URL Launch Failed | Failed to open the URL '" + page +
             "' in your default browser. This could be due to:\n\n• No default browser is set\n• The URL "
             "is malformed\n• Network connectivity issues\n• Browser permissions [OK]"}};
    desktop.taskResults.insert({brave, Error{"No memory."}});
    const auto applications = desktop.applications;
    for (const auto& [browser, standard, associated, openings, alerts] : cases) {
        desktop.applications = applications;
        if (!browser.empty()) desktop.install({.path = bundle(browser)});
        if (browser == "Damaged") desktop.applications.back().openError = Error{"It's damaged."};
        standard.empty() ? desktop.defaultHandlers.clear() : defaultBrowser(standard);
        const auto names =
            associated.empty() ? std::vector<std::string>() : text::split(associated, ',');
        openPage(page, names);
        EXPECT_EQ(this->openings(), openings);
        EXPECT_EQ(this->alerts(), alerts);
    }
}

TEST_F(UrlLaunching, onlyAResultWithoutAnErrorIsATabInSafari) {
    const std::pair<std::optional<ScriptOutcome>, bool> cases[]{
        {ScriptOutcome{true, {}}, true},
        {ScriptOutcome{true, ScriptError{-600, "Not running.", ""}}, false},
        {ScriptOutcome{false, {}}, false},
        {std::nullopt, false}};
    const std::string script = "script tell application \"Safari\" /     activate /     try /      "
                               "   tell window 1 to set "
                               "current tab to make new tab with properties {URL:\"" +
                               page + "\"} /     on error /         open location \"" + page +
                               "\" /     end try / end tell";
    defaultBrowser("Safari");
    for (const auto& [outcome, isTab] : cases) {
        desktop.scriptOutcomes["Safari"] = outcome;
        openPage(page);
        EXPECT_EQ(openings(), script + (isTab ? "" : "\n" + open));
    }
}

TEST_F(UrlLaunching, anAddressOfAnyOtherSchemeStillGoesToTheBrowserOfHttp) {
    defaultBrowser("Google Chrome");
    for (const std::string address : {"mailto:me@corvane.example", "file:///docs/notes.txt",
                                      "HTTP://corvane.example", "x-app:go"}) {
        openPage(address);
        EXPECT_TRUE(openings().starts_with("task " + chromiumTab("Google Chrome", address)));
    }
}

TEST_F(UrlLaunching, anAddressThatIsNoneOpensNothing) {
    const auto invalid = [](const std::string& path) {
        return "Invalid URL | The URL '" + path +
               "' is not valid.\n\nPlease check the URL format. Examples:\n• "
               "https://www.example.com\n• http://localhost:3000\n• file:///path/to/file [OK]";
    };
    const auto noScheme = [](const std::string& path) {
        return "Invalid URL Format | The URL '" + path +
               "' is missing a scheme (http://, https://, etc.).\n\nPlease add a proper scheme to "
               "the URL. [OK]";
    };
    for (const std::string path : {"", "https://a b/", "http://[::1", "https://x/\"", "ü",
                                   "corvane.example", "/docs/notes.txt", "//corvane.example/a"}) {
        openPage(path, {"Google Chrome", "Web"});
        const bool parses = path.find("/docs") == 0 || path.find("corvane") != path.npos;
        EXPECT_EQ(openings(), parses ? "sheet Invalid URL Format" : "sheet Invalid URL") << path;
        EXPECT_EQ(alerts(), parses ? noScheme(path) : invalid(path));
    }
}

TEST_F(UrlLaunching, aCommandRunsInTerminalWithTheFirstPieceAsItsDirectory) {
    const std::pair<std::string, std::string> cases[]{
        {"", ""},
        {"npm start", "npm start"},
        {"/tmp|ls", "cd '/tmp' && ls"},
        {"|ls", "ls"},
        {"/tmp|", "cd '/tmp' && "},
        {"a|b|c", "cd 'a' && c"},
        {"~/it's | grep \"x\\y\" ", "cd '~/it's ' &&  grep \"x\\y\" "}};
    for (const auto& [path, shellText] : cases) {
        forget();
        launcher.launchTerminalResource(resource(terminal, path));
        EXPECT_EQ(openings(), "") << "the script waits its turn";
        desktop.runUntilIdle();
        EXPECT_EQ(openings(), terminalScript(shellText));
        EXPECT_EQ(alerts(), "");
    }
}

TEST_F(UrlLaunching, onlyAScriptErrorMakesACommandFail) {
    const auto alert = [](const std::string& error) {
        return "Terminal Command Failed | Failed to execute terminal command 'ls'.\n\nError "
               "Code: " +
               error +
               "\n\nPossible causes:\n• Terminal.app is not available\n• Command syntax error\n• "
               "Permission denied\n• Working directory doesn't exist [OK]";
    };
    const std::pair<std::optional<ScriptOutcome>, std::string> cases[]{
        {ScriptOutcome{.hasResult = false, .error = {}}, ""},
        {std::nullopt, ""},
        {ScriptOutcome{true, ScriptError{-2741, "Syntax.", "{all}"}},
         alert("-2741\nDetails: Syntax.")},
        {ScriptOutcome{false, ScriptError{{}, {}, "{all}"}}, alert("-1\nDetails: Unknown error")}};
    for (const auto& [outcome, alerts] : cases) {
        forget();
        desktop.scriptOutcomes["Terminal"] = outcome;
        launcher.launchTerminalResource(resource(terminal, "/tmp|ls"));
        desktop.runUntilIdle();
        EXPECT_EQ(this->alerts(), alerts);
    }
}

} // namespace
