#include "launch/LaunchScene.h"

#include <functional>

namespace corvane {
namespace {

class Lookup : public LaunchScene {
protected:
    Lookup() { desktop.applications.clear(); }

    ApplicationLookup lookup{scene.platform.applications, scene.platform.bundles,
                             scene.platform.tasks, scene.platform.metadataQuery};

    using OptionalText = std::optional<std::string>;
    static std::string bundle(const std::string& fileName) {
        return "/Applications/" + fileName + ".app";
    }
    /// An application that Spotlight doesn't know.
    static SimulatedApplication plain(const std::string& fileName, OptionalText identifier = {},
                                      OptionalText displayName = {}, OptionalText bundleName = {}) {
        return {.path = bundle(fileName),
                .bundleIdentifier = std::move(identifier),
                .displayName = std::move(displayName),
                .bundleName = std::move(bundleName),
                .isIndexed = false};
    }
    static SimulatedApplication indexed(const std::string& fileName, OptionalText identifier,
                                        OptionalText displayName) {
        return {bundle(fileName), std::move(identifier), std::move(displayName)};
    }
    void runs(std::string name, const OptionalText& fileName) {
        RunningApplication application;
        application.localizedName = std::move(name);
        if (fileName) application.bundleURL = Url::fromPath(bundle(*fileName));
        desktop.running.push_back(application);
    }
    void searchAnswers(const std::string& name, Result<TaskResult> result) {
        desktop.taskResults.insert_or_assign(searchFor(name), std::move(result));
    }
    static std::string searchFor(const std::string& name) {
        return "/usr/bin/mdfind kMDItemKind == 'Application' && kMDItemDisplayName == '" + name +
               "'";
    }

    static std::string hit(const std::string& stage, const std::string& fileName) {
        return "Found app via " + stage + ": " + bundle(fileName);
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
    desktop.metadata[name] = {{bundle("Six")}};
    runs(name, "Five");
    desktop.applications = {plain("Four", {}, name), plain("COM.ACME.TOOL"), plain("Two", name),
                            indexed("One", "one", name)};
    const auto uninstall = [this] { desktop.applications.pop_back(); };
    const struct {
        std::string expected;
        std::function<void()> remove;
    } stages[]{
        {hit("bundle ID", "One"), uninstall},
        {hit("bundle identifier", "Two"), uninstall},
        {hit("exact match", "COM.ACME.TOOL"), uninstall},
        {hit("bundle display name", "Four"), uninstall},
        {hit("running applications", "Five"), [this] { desktop.running.clear(); }},
        {hit("metadata search", "Six"), [this] { desktop.metadata.clear(); }},
        {"", [] {}},
    };
    for (const auto& [expected, remove] : stages) {
        EXPECT_EQ(found(name), expected);
        remove();
    }
}

TEST_F(Lookup, theQuestionsAreAskedForEachSpellingAsItStands) {
    EXPECT_EQ(found("It's $HOME"), "");
    std::string expected;
    const auto spellings = {"It's $HOME", "It's$HOME", "It's", "$HOME"};
    for (const std::string spelling : spellings)
        expected += "task " + searchFor(spelling) + "\n";
    for (const std::string spelling : spellings) {
        expected += "query kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@ | " +
                    spelling + "\n";
    }
    EXPECT_EQ(desktop.logged() + "\n", expected);
    forget();
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(desktop.logged(), "");
}

/// The applications of a desktop, a name that is searched for, and which is found by what.
TEST_F(Lookup, tiesWithinAStageAreDecidedByOrder) {
    const struct {
        const char* name;
        std::vector<SimulatedApplication> applications;
        std::string stage;
        const char* expected;
    } cases[]{
        {"Paint Shop", {indexed("S", "s", "Shop"), indexed("P", "p", "Paint")}, "bundle ID", "P"},
        {"Pad", {indexed("Old", "same", "Old"), indexed("New", "same", "Pad")}, "bundle ID", "Old"},
        {"telecom.tools", {plain("Q", "telecom.tools")}, "bundle identifier", "Q"},
        {"org.mozilla.firefox", {plain("Q", "org.mozilla.firefox")}, "", ""},
        {"org.mozilla.firefox", {plain("Q"), plain("Firefox")}, "partial match", "Firefox"},
        {"Code", {plain("Xcode"), plain("Code")}, "partial match", "Xcode"},
        {"Mailplane", {plain("mail")}, "partial match", "mail"},
        {"Visual Code", {plain("CODE")}, "exact match", "CODE"},
        {"Straße 2", {plain("STRASSE")}, "exact match", "STRASSE"},
        {"STRASSE", {plain("Die Straße Pro")}, "partial match", "Die Straße Pro"},
        {"übersicht 2", {plain("ÜBERSICHT")}, "exact match", "ÜBERSICHT"},
        {"v2", {plain("Tool v2.1")}, "partial match", "Tool v2.1"},
        {"   ", {plain("One Blank"), plain("Three   Blanks")}, "partial match", "Three   Blanks"},
        {"Bilder",
         {plain("A", {}, "Bilder Pro"), plain("Q", {}, {}, "BILDER"), plain("Z", {}, "Bilder")},
         "bundle name",
         "Q"},
        {"Bilder", {plain("Z", {}, "bilder", "Bilder")}, "bundle display name", "Z"},
    };
    for (const auto& [name, applications, stage, expected] : cases) {
        desktop.applications = applications;
        EXPECT_EQ(found(name), stage.empty() ? "" : hit(stage, expected)) << name;
    }
}

TEST_F(Lookup, linesOfSpotlightThatLeadNowhereArePassedOver) {
    desktop.applications = {plain("None"), plain("Third", "third"), indexed("P", "p", "Pad")};
    searchAnswers(
        "A", TaskResult{1, "\n/gone.app\n\n/Applications/None.app\n/Applications/Third.app\n"});
    EXPECT_EQ(found("A"), hit("bundle ID", "Third"));
    searchAnswers(" Pad ", TaskResult{0, "/Applications/Third.app\n\xff"});
    EXPECT_EQ(found(" Pad "), hit("bundle ID", "P")) << "what isn't text is no answer";
    searchAnswers("My Pad", Error{"No such file"});
    desktop.applications.push_back(indexed("Q", "q", "My"));
    EXPECT_EQ(found("My Pad"), hit("bundle ID", "Q")) << "nor is one that can't be asked";
}

TEST_F(Lookup, theOrderOfRunningApplicationsComesBeforeThatOfTheSpellings) {
    runs("Paint Shop", std::nullopt);
    runs("Paint Shop Pro", "Pro");
    runs("shop", "Shop");
    runs("Paint Shop", "Paint");
    EXPECT_EQ(found("Paint Shop"), hit("running applications", "Shop"));
}

TEST_F(Lookup, onlyBundlesOfAMetadataQueryCount) {
    desktop.metadata["Pad"] = {{}, {"/Pad.txt"}, {"/Pad.APP"}, {"/Pad.app/x"}, {"/Any.app"}};
    EXPECT_EQ(found("A Pad"), "Found app via metadata search: /Any.app");
}

} // namespace
} // namespace corvane
