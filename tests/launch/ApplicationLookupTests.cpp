#include "launch/LaunchScene.h"

#include <functional>

namespace corvane {
namespace {

class Lookup : public LaunchScene {
protected:
    Lookup() { desktop.applications.clear(); }

    ApplicationLookup lookup{scene.platform.applications, scene.platform.bundles,
                             scene.platform.tasks, scene.platform.metadataQuery};

    /// An application that only its path, its identifier or its names lead to.
    void installUnindexed(std::string path, std::optional<std::string> identifier = {},
                          std::optional<std::string> displayName = {},
                          std::optional<std::string> bundleName = {}) {
        desktop.install({std::move(path), std::move(identifier), std::move(displayName),
                         std::move(bundleName), false});
    }
    void installIndexed(std::string path, std::string identifier, std::string displayName) {
        desktop.install({std::move(path), std::move(identifier), std::move(displayName)});
    }
    void runs(std::string name, std::optional<Url> bundle) {
        RunningApplication application;
        application.localizedName = std::move(name);
        application.bundleURL = std::move(bundle);
        desktop.running.push_back(application);
    }
    void searchAnswers(const std::string& name, Result<TaskResult> result) {
        desktop.taskResults.insert_or_assign(searchFor(name), std::move(result));
    }
    static std::string searchFor(const std::string& name) {
        return "/usr/bin/mdfind kMDItemKind == 'Application' && kMDItemDisplayName == '" + name +
               "'";
    }

    /// The last diagnostic, which names the stage and the path; it must tell the truth.
    std::string found(const std::string& name) {
        said.clear();
        const auto url = lookup.findApplication(name);
        if (!url) return {};
        EXPECT_TRUE(said.back().ends_with(": " + url->path())) << said.back();
        return said.back();
    }
};

TEST_F(Lookup, aNameHasItsSpellingsInAFixedOrder) {
    const struct {
        const char* name;
        const char* expected;
    } cases[]{
        {"Safari", "Safari"},
        {"Visual Studio Code", "Visual Studio Code,VisualStudioCode,Visual,Code"},
        {" Pad\n", " Pad\n,Pad"},
        {" My  App ", " My  App ,My  App,MyApp,My,App"},
        {"Pad Pad", "Pad Pad,PadPad,Pad"},
        {"Zwei\tWorte", "Zwei\tWorte"},
        {"\u00a0Pad\u2028", "\u00a0Pad\u2028,Pad"},
        {"   ", "   "},
        {"", ""},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(text::joined(appNameVariations(name), ","), expected) << name;
}

TEST_F(Lookup, eachStageIsAskedOnlyWhenThoseBeforeItFoundNothing) {
    const std::string name = "com.acme.Tool";
    desktop.metadata[name] = {{"/Elsewhere/Six.app"}};
    runs(name, Url::fromPath("/Elsewhere/Five.app"));
    installUnindexed("/Applications/Four.app", {}, name);
    installUnindexed("/Applications/COM.ACME.TOOL.app");
    installUnindexed("/Applications/Two.app", name);
    installIndexed("/Applications/One.app", "one", name);
    const auto uninstall = [this] { desktop.applications.pop_back(); };
    const struct {
        const char* expected;
        std::function<void()> remove;
    } stages[]{
        {"Found app via bundle ID: /Applications/One.app", uninstall},
        {"Found app via bundle identifier: /Applications/Two.app", uninstall},
        {"Found app via exact match: /Applications/COM.ACME.TOOL.app", uninstall},
        {"Found app via bundle display name: /Applications/Four.app", uninstall},
        {"Found app via running applications: /Elsewhere/Five.app",
         [this] { desktop.running.clear(); }},
        {"Found app via metadata search: /Elsewhere/Six.app", [this] { desktop.metadata.clear(); }},
        {"", [] {}},
    };
    for (const auto& [expected, remove] : stages) {
        EXPECT_EQ(found(name), expected);
        remove();
    }
}

TEST_F(Lookup, theQuestionsAreAskedForEachSpellingAsItStands) {
    EXPECT_EQ(found("It's $HOME"), "");
    const std::string mdfind = "task " + searchFor("It's $HOME");
    const auto asked = [](const std::string& spelling) { return "\ntask " + searchFor(spelling); };
    const auto queried = [](const std::string& spelling) {
        return "\nquery kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@ | " +
               spelling;
    };
    EXPECT_EQ(desktop.logged(), mdfind + asked("It's$HOME") + asked("It's") + asked("$HOME") +
                                    queried("It's $HOME") + queried("It's$HOME") + queried("It's") +
                                    queried("$HOME"));
    EXPECT_EQ(said,
              (std::vector<std::string>{"Searching for app: 'It's $HOME'",
                                        "App variations: It's $HOME, It's$HOME, It's, $HOME"}));
    forget();
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(desktop.logged(), "");
}

/// Each scene with a name that it is searched for, and what is found.
TEST_F(Lookup, tiesWithinAStageAreDecidedByOrder) {
    const auto app = [](const std::string& path) { return Url::fromPath("/Applications/" + path); };
    const struct {
        const char* name;
        std::function<void()> arrange;
        const char* expected;
    } cases[]{
        // Spotlight: the first spelling, and of its lines the first bundle with an identifier.
        {"Paint Shop",
         [&] {
             installIndexed("/Applications/S.app", "s", "Shop");
             installIndexed("/Applications/P.app", "p", "Paint");
         },
         "Found app via bundle ID: /Applications/P.app"},
        {"Pad",
         [&] {
             installUnindexed("/Applications/None.app");
             installUnindexed("/Applications/Third.app", "third");
             searchAnswers("Pad", TaskResult{1, "\n/gone.app\n\n/Applications/None.app\n"
                                                "/Applications/Third.app\n"});
         },
         "Found app via bundle ID: /Applications/Third.app"},
        {"Pad",
         [&] {
             installIndexed("/Applications/Old.app", "same", "Old");
             installIndexed("/Applications/New.app", "same", "Pad");
         },
         "Found app via bundle ID: /Applications/Old.app"},
        {" Pad ",
         [&] {
             installIndexed("/Applications/P.app", "p", "Pad");
             searchAnswers(" Pad ", Error{"No such file"});
         },
         "Found app via bundle ID: /Applications/P.app"},
        {" Pad ",
         [&] {
             installIndexed("/Applications/P.app", "p", "Pad");
             searchAnswers(" Pad ", TaskResult{0, "/Applications/\xff.app"});
         },
         "Found app via bundle ID: /Applications/P.app"},
        // Identifiers: only with "com." in them, wherever.
        {"telecom.tools", [&] { installUnindexed("/Applications/Q.app", "telecom.tools"); },
         "Found app via bundle identifier: /Applications/Q.app"},
        {"org.mozilla.firefox",
         [&] { installUnindexed("/Applications/Q.app", "org.mozilla.firefox"); }, ""},
        {"org.mozilla.firefox",
         [&] { installUnindexed("/Applications/Firefox.app", "org.mozilla.firefox"); },
         "Found app via partial match: /Applications/Firefox.app"},
        // File names: URL by URL, both ways.
        {"Code",
         [&] {
             installUnindexed("/Applications/Xcode.app");
             installUnindexed("/Applications/Code.app");
         },
         "Found app via partial match: /Applications/Xcode.app"},
        {"Mailplane", [&] { installUnindexed("/Applications/mail.app"); },
         "Found app via partial match: /Applications/mail.app"},
        {"Visual Code", [&] { installUnindexed("/Applications/CODE.app"); },
         "Found app via exact match: /Applications/CODE.app"},
        {"übersicht 2", [&] { installUnindexed("/Applications/ÜBERSICHT.app"); },
         "Found app via exact match: /Applications/ÜBERSICHT.app"},
        {"v2", [&] { installUnindexed("/Applications/Tool v2.1.app"); },
         "Found app via partial match: /Applications/Tool v2.1.app"},
        {" ", [&] { installUnindexed("/Applications/Two Words.app"); },
         "Found app via partial match: /Applications/Two Words.app"},
        // Names of bundles: whole names only, both keys of one bundle before the next bundle.
        {"Bilder",
         [&] {
             installUnindexed("/Applications/A.app", {}, "Bilder Pro");
             installUnindexed("/Applications/Q.app", {}, {}, "BILDER");
             installUnindexed("/Applications/Z.app", {}, "Bilder");
         },
         "Found app via bundle name: /Applications/Q.app"},
        {"Bilder", [&] { installUnindexed("/Applications/Z.app", {}, "bilder", "Bilder"); },
         "Found app via bundle display name: /Applications/Z.app"},
        // Running applications: their order comes before that of the spellings.
        {"Paint Shop",
         [&] {
             runs("Paint Shop", std::nullopt);
             runs("Paint Shop Pro", app("Pro.app"));
             runs("shop", app("Shop.app"));
             runs("Paint Shop", app("Paint.app"));
         },
         "Found app via running applications: /Applications/Shop.app"},
        // Metadata: only bundles.
        {"Pad",
         [&] {
             desktop.metadata["Pad"] = {
                 {std::nullopt}, {"/Pad.txt"}, {"/Pad.APP"}, {"/Pad.app/x"}, {"/x/Any.app"}};
         },
         "Found app via metadata search: /x/Any.app"},
    };
    for (const auto& [name, arrange, expected] : cases) {
        desktop.applications.clear();
        desktop.running.clear();
        desktop.metadata.clear();
        desktop.taskResults.clear();
        arrange();
        EXPECT_EQ(found(name), expected) << name;
    }
}

TEST_F(Lookup, aSearchIsWrittenDownStepByStep) {
    searchAnswers("Other Pad", Error{"No such file"});
    installIndexed("/Applications/P.app", "org.p", "Other");
    EXPECT_TRUE(lookup.findApplication("Other Pad"));
    EXPECT_EQ(said, (std::vector<std::string>{
                        "Searching for app: 'Other Pad'",
                        "App variations: Other Pad, OtherPad, Other, Pad",
                        "Failed to search for app 'Other Pad' dynamically: No such file",
                        "Dynamically found bundle ID for 'Other': org.p", "Trying bundle ID: org.p",
                        "Found app via bundle ID: /Applications/P.app"}));
}

} // namespace
} // namespace corvane
