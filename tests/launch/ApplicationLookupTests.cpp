#include "launch/LaunchScene.h"

using namespace corvane;

namespace {

struct Lookup : LaunchScene {
    Lookup() { desktop.applications.clear(); }

    ApplicationLookup lookup{platform.applications, platform.bundles, platform.tasks,
                             platform.metadataQuery};

    using OptionalText = std::optional<std::string>;
    static std::string bundle(const std::string& fileName) {
        return "/Applications/" + fileName + ".app";
    }
    static SimulatedApplication plain(const std::string& fileName, OptionalText identifier = {},
                                      OptionalText displayName = {}, OptionalText bundleName = {}) {
        SimulatedApplication made{bundle(fileName), std::move(identifier), std::move(displayName),
                                  std::move(bundleName)};
        made.isIndexed = false;
        return made;
    }
    static SimulatedApplication indexed(const std::string& fileName, OptionalText identifier,
                                        OptionalText displayName) {
        return {bundle(fileName), std::move(identifier), std::move(displayName)};
    }
    void runs(std::string name, const OptionalText& fileName) {
        desktop.running.push_back({.localizedName = std::move(name)});
        if (fileName) desktop.running.back().bundleURL = Url::fromPath(bundle(*fileName));
    }
    static std::string searchFor(const std::string& name) {
        return "/usr/bin/mdfind kMDItemKind == 'Application' && kMDItemDisplayName == '" + name +
               "'";
    }

    /// The name of its bundle.
    std::string found(const std::string& name) {
        const auto url = lookup.findApplication(name);
        return url ? text::replacingAll(url->lastPathComponent(), ".app", "") : "";
    }
};

TEST_F(Lookup, aNameHasItsSpellingsInAFixedOrder) {
    const std::pair<const char*, const char*> cases[]{
        {"Safari", "Safari"},
        {"Visual Studio Code", "Visual Studio Code,VisualStudioCode,Visual,Code"},
        {" Pad\n", " Pad\n,Pad"},
        {" My  App ", " My  App ,My  App,MyApp,My,App"},
        {"Pad Pad", "Pad Pad,PadPad,Pad"},
        {"Zwei\tWorte", "Zwei\tWorte"},
        {"\u00a0Pad\u2028", "\u00a0Pad\u2028,Pad"},
        {"   ", "   "},
        {"", ""}};
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
    const std::pair<const char*, std::function<void()>> stages[]{
        {"One", uninstall},
        {"Two", uninstall},
        {"COM.ACME.TOOL", uninstall},
        {"Four", uninstall},
        {"Five", [this] { desktop.running.clear(); }},
        {"Six", [this] { desktop.metadata.clear(); }},
        {"", [] {}}};
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
    for (const std::string spelling : spellings)
        expected += "query kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@ | " +
                    spelling + "\n";
    EXPECT_EQ(desktop.logged() + "\n", expected);
    forget();
    EXPECT_EQ(found(""), "");
    EXPECT_EQ(desktop.logged(), "");
}

TEST_F(Lookup, tiesWithinAStageAreDecidedByOrder) {
    const std::tuple<const char*, std::vector<SimulatedApplication>, const char*> cases[]{
        {"Paint Shop", {indexed("S", "s", "Shop"), indexed("P", "p", "Paint")}, "P"},
        {"Pad", {indexed("Old", "same", "Old"), indexed("New", "same", "Pad")}, "Old"},
        {"telecom.tools", {plain("Q", "telecom.tools")}, "Q"},
        {"org.mozilla.firefox", {plain("Q", "org.mozilla.firefox")}, ""},
        {"org.mozilla.firefox", {plain("Q"), plain("Firefox")}, "Firefox"},
        {"Code", {plain("Xcode"), plain("Code")}, "Xcode"},
        {"Mailplane", {plain("mail")}, "mail"},
        {"STRASSE", {indexed("Q", "q", "straße")}, "Q"},
        {"Lindenstrasse", {plain("STRAßE")}, "STRAßE"},
        {"Visual Code", {plain("CODE")}, "CODE"},
        {"Straße 2", {plain("STRASSE")}, "STRASSE"},
        {"STRASSE", {plain("Die Straße Pro")}, "Die Straße Pro"},
        {"übersicht 2", {plain("ÜBERSICHT")}, "ÜBERSICHT"},
        {"v2", {plain("Tool v2.1")}, "Tool v2.1"},
        {"   ", {plain("One Blank"), plain("Three   Blanks")}, "Three   Blanks"},
        {"Bilder",
         {plain("A", {}, "Bilder Pro"), plain("Q", {}, {}, "BILDER"), plain("Z", {}, "Bilder")},
         "Q"},
        {"Bilder", {plain("Z", {}, "bilder", "Bilder")}, "Z"}};
    for (const auto& [name, applications, expected] : cases) {
        desktop.applications = applications;
        EXPECT_EQ(found(name), expected) << name;
    }
}

TEST_F(Lookup, linesOfSpotlightThatLeadNowhereArePassedOver) {
    desktop.applications = {plain("None"), plain("Third", "third"), indexed("P", "p", "Pad")};
    desktop.taskResults = {
        {searchFor("A"),
         TaskResult{1, "\n/gone.app\n\n/Applications/None.app\n/Applications/Third.app\n"}},
        {searchFor(" Pad "), TaskResult{0, "/Applications/Third.app\n\xff"}},
        {searchFor("My Pad"), Error{"No such file"}}};
    EXPECT_EQ(found("A"), "Third");
    EXPECT_EQ(found(" Pad "), "P") << "what isn't text is no answer";
    desktop.applications.push_back(indexed("Q", "q", "My"));
    EXPECT_EQ(found("My Pad"), "Q") << "nor is one that can't be asked";
}

TEST_F(Lookup, theOrderOfRunningApplicationsComesBeforeThatOfTheSpellings) {
    runs("Paint Shop", std::nullopt);
    runs("Paint Shop Pro", "Pro");
    runs("shop", "Shop");
    runs("Paint Shop", "Paint");
    EXPECT_EQ(found("Paint Shop"), "Shop");
}

TEST_F(Lookup, onlyBundlesOfAMetadataQueryCount) {
    desktop.metadata["Pad"] = {{}, {"/Pad.txt"}, {"/Pad.APP"}, {"/Pad.app/x"}, {"/Any.app"}};
    EXPECT_EQ(found("A Pad"), "Any");
}

} // namespace
