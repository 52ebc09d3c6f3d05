#include "core/StoreScene.h"
#include "quit/RunningApplicationMatching.h"

using namespace corvane;

namespace {

using Names = std::vector<std::string>;

RunningApplication called(const std::string& name) {
    return {.processIdentifier = 1, .localizedName = name};
}

TEST(RunningApplicationMatching, aPartOfANameHasToBeWholeWords) {
    const std::tuple<std::string, std::string, bool> cases[]{
        {"Mail", "Mail", true},
        {"Mail", "Mail Pro", false},
        {"Notes", "Sticky Notes", true},
        {"Notes", "Notes Pro", true},
        {"Notes", "My Notes App", false},
        {"Studio", "Android Studio Preview", true},
        {"Studio Code", "Code Studio", true},
        {"Big Pad", "My Big Pad Pro", true},
        {"Visual Basic", "Visual Studio Code", false},
        // Case is ignored, in every script.
        {"mAIL", "MaiL", true},
        {"ΣΤΟΎΝΤΙΟ", "νέο στούντιο", true},
        // Four and five characters, not bytes.
        {"Über", "Über Notes", false},
        {"Größe", "Die Größe Pro", false},
        {"Cafe\u0301s", "Die Cafe\u0301s Pro", false},
        // A blank, wherever it stands, lifts the lower bound.
        {"Go ", "Go Pro", true},
        {" Go", "My Go Pro", false},
        {"a a", "a", true},
        {"Notes ", "Notes", true},
        // Words end at any white space, but a short one stands at an end only beside a blank.
        {"Studio", "Android\tStudio\nPreview", true},
        {"Notes", "Notes\tPro", false},
        {"Studio", "Studios", false},
        {"Studio", "MyStudio", false},
        // Nothing but white space never means anything.
        {"", "Mail", false},
        {"     ", "Mail", false}};
    for (const auto& [search, application, expected] : cases)
        EXPECT_EQ(isPartialAppNameMatch(called(application), search), expected)
            << "'" << search << "' in '" << application << "'";
    EXPECT_FALSE(isPartialAppNameMatch({}, ""));
}

TEST(RunningApplicationMatching, aSetMeansItsNamesAndTheirSpellings) {
    const std::tuple<Names, std::string, std::string> cases[]{
        {{"Pad", "Mail"}, "Mail", "Mail"},
        {{"mail", "MAIL"}, "Mail", "mail"},
        {{"Google Chrome"}, "google", "Google Chrome"},
        {{"Google Chrome"}, "GoogleChrome", "Google Chrome"},
        {{"Chrome"}, "Google Chrome", ""},
        {{"STRASSE"}, "Straße", "STRASSE"},
        {{}, "Mail", ""}};
    for (const auto& [names, running, expected] : cases) {
        const auto* found = matchesAppNameSet(names, running);
        EXPECT_EQ(found ? *found : "", expected) << running;
    }
}

TEST(RunningApplicationMatching, theSystemIsToldByPolicyAndPlace) {
    const std::pair<std::string, bool> cases[]{
        {"/System/Library/CoreServices/Finder.app", true},
        {"/usr/lib/A.app", true},
        {"/Applications/loginwindow.app", true},
        {"/home/me/WindowServer Pro.app", true},
        {"/Applications/Dock.app", true},
        {"/Applications/MyDock.app", false},
        {"/Applications/A.app", false},
        {"/System/Applications/Utilities/Terminal.app", false},
        {"/System/Volumes/A.app", true},
        {"/Systems/A.app", false},
        {"/usrlocal/A.app", false},
        {"/home/usr/A.app", false}};
    for (const auto& [path, expected] : cases) {
        auto application = called("A");
        application.bundleURL = Url::fromPath(path);
        EXPECT_EQ(isSystemApplication(application), expected) << path;
        application.activationPolicy = 1;
        EXPECT_TRUE(isSystemApplication(application)) << path;
    }
    EXPECT_TRUE(isSystemApplication(called("A"))) << "it has no bundle";
}

struct FindingTest : testing::Test {
    FindingTest() {
        add("Chrome", "com.example.browser", "/opt/chrome/chrome.bin");
        add("Code", "com.example.editor", "/opt/code/electron");
        add("Sticky Notes", "Safari", "/opt/notes/notes");
        add("Google", "com.apple.Safari", "");
        add("sticky", "", "/usr/bin/STICKY-NOTES.bin");
        add("Unseen Notes", "com.example.unseen", "/usr/bin/unseen").isHidden = true;
        add("Panel", "com.example.panel", "/usr/bin/panel").activationPolicy = 1;
        add("", "com.example.nameless", "/usr/bin/nameless").localizedName.reset();
        add("Reader", "", "/opt/straße.bin");
    }
    RunningApplication& add(const std::string& name, const std::string& identifier,
                            const std::string& program) {
        auto application = called(name);
        application.processIdentifier = static_cast<std::int32_t>(desktop.running.size());
        if (!identifier.empty()) application.bundleIdentifier = identifier;
        if (!program.empty()) application.executableURL = Url::fromPath(program);
        return desktop.running.emplace_back(application);
    }

    SimulatedDesktop desktop;
    Applications& applications = desktop.platform().applications;
};

TEST_F(FindingTest, theStrictestWayOfAnySpellingWins) {
    const std::pair<std::string, std::string> cases[]{{"Google Chrome", "Google"},
                                                      {"Safari", "Sticky Notes"},
                                                      {"com.apple.Safari", "Google"},
                                                      {"chrome", "Chrome"},
                                                      {"Notes", "Sticky Notes"},
                                                      {"notes sticky", "sticky"},
                                                      {"Electron", "Code"},
                                                      {"Sticky-Notes", "sticky"},
                                                      {"STRASSE", "Reader"},
                                                      {"Unseen", "Unseen Notes"},
                                                      {"Google sticky", "Google"},
                                                      {"Code Unseen Notes", "Code"},
                                                      {"Panel", ""},
                                                      {"nameless", ""},
                                                      {"com.example.nameless", ""},
                                                      {"Unknown", ""},
                                                      {"   ", ""},
                                                      {"", ""}};
    for (const auto& [name, expected] : cases) {
        const auto found = findRunningApplication(applications, name);
        EXPECT_EQ(found ? *found->localizedName : "", expected) << name;
    }
    EXPECT_EQ(runningApplicationNames(applications, {"Notes", "Nobody", "Electron", "notes"}),
              (Names{"Sticky Notes", "Code", "Sticky Notes"}));
}

TEST_F(FindingTest, ofEqualOnesTheFirstInTheListWins) {
    add("Code", "com.example.other", "");
    EXPECT_EQ(findRunningApplication(applications, "Code")->bundleIdentifier, "com.example.editor");
    desktop.running[1].isHidden = true;
    EXPECT_EQ(findRunningApplication(applications, "Code")->bundleIdentifier, "com.example.other");
    const std::vector<RunningApplication> nameless{desktop.running[7]};
    EXPECT_EQ(matchRunningApplication(nameless, "nameless", false), &nameless[0]);
}

} // namespace
