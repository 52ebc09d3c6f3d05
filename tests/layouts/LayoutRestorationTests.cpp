#include "layouts/LayoutLoading.h"
#include "layouts/LayoutRestoration.h"
#include "layouts/LayoutScene.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

class Control : public testing::Test {
protected:
    LayoutScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    SimulatedScreen& screen = scene.screen;
    WindowControl control{screen, desktop.queue, scene.platform.scripts, screen};
    RunningApplication pad = scene.run("Pad", 7);
    WindowLayout record{"Pad", {-10.5, 20, 640, 480}, false, false, {}};
    const std::string framed = "AXPosition 7/1 -10.5,20\nAXSize 7/1 640,480";
};

TEST_F(Control, aRecordGoesToTheFirstWindowPositionBeforeSizeWhateverIsRefused) {
    scene.open(pad, 1, {});
    scene.open(pad, 2, {});
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(scene.done(), framed);
    screen.stack[0].refusals = {{"AXPosition", -25204}, {"AXSize", -25200}};
    record.isFullscreen = true;
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(scene.done(), framed + "\nAXFullScreen 7/1 true");
    EXPECT_EQ(scene.told("Failed"), "Failed to set position for 'Pad': -25204\n"
                                    "Failed to set size for 'Pad': -25200");
    record.isFullscreen = false;
    control.applyWindowLayout(record, pad);
    EXPECT_TRUE(screen.stack[0].isFullscreen) << "nothing takes a window out of it";
}

TEST_F(Control, aLateWindowIsWaitedForWithFiveTriesHalfASecondApart) {
    const struct {
        double appearsAt;
        bool answers;
        int attempt; // 0: never
        double elapsed;
    } cases[]{{0, true, 1, 0},     {0.5, true, 2, 0.5}, {1.2, true, 4, 1.5},
              {2.0, true, 5, 2.0}, {2.1, true, 0, 2.0}, {0, false, 0, 2.0}};
    for (const auto& [appearsAt, answers, attempt, elapsed] : cases) {
        const double begin = scene.elapsed();
        screen.stack.clear();
        scene.open(pad, 1, {}).appearsAt = begin + appearsAt;
        if (!answers) screen.unanswering = {7};
        control.applyWindowLayout(record, pad);
        EXPECT_DOUBLE_EQ(scene.elapsed() - begin, elapsed) << appearsAt;
        EXPECT_EQ(scene.done(), attempt == 0 ? "" : framed);

        EXPECT_EQ(scene.told("Got windows"),
                  attempt > 1 ? "Got windows for 'Pad' on attempt " + std::to_string(attempt) : "");
    }
}

/// The ways to fullscreen, each with what stands in the way of those before it.
TEST_F(Control, fullscreenIsTriedNativelyThenByScriptThenByTheMainScreensFrame) {
    const auto failed = [](std::optional<std::string> message) {
        return ScriptOutcome{.error = ScriptError{-1719, std::move(message), "{...}"}};
    };
    const std::string script = "\nscript tell application \"Pad\" /     activate";
    const std::string frame = "\nAXPosition 7/1 1440,50\nAXSize 7/1 1920,1080";
    const std::string refused =
        "AXFullScreen failed for 'Pad' (-25205), trying alternative methods...\n";
    const std::string noScript = refused + "AppleScript method failed for 'Pad': ";
    const std::string manual = "Applied manual fullscreen (non-native) for 'Pad'";
    const struct {
        bool nativeWorks;
        std::optional<ScriptOutcome> outcome;
        bool hasMainScreen;
        std::string done;
        std::string told;
    } cases[]{{true, failed("No."), true, "", "Set fullscreen mode for 'Pad' using AXFullScreen"},
              {false, ScriptOutcome{}, true, script,
               refused + "Set fullscreen mode for 'Pad' using AppleScript"},
              {false, failed("No."), true, script + frame, noScript + "No.\n" + manual},
              {false, failed({}), true, script + frame, noScript + "Unknown error\n" + manual},
              {false, std::nullopt, true, script + frame, refused + manual},
              {false, failed("No."), false, script, noScript + "No."}};
    screen.displays.push_back({{1440, 50, 1920, 1080}, {}});
    for (const auto& [nativeWorks, outcome, hasMainScreen, done, told] : cases) {
        screen.stack.clear();
        auto& window = scene.open(pad, 1, {});
        if (!nativeWorks) window.refusals = {{"AXFullScreen", -25205}};
        desktop.scriptOutcomes = {{"tell process \"Pad\"", outcome}};
        screen.mainDisplay = hasMainScreen ? 1 : 2;
        control.setWindowFullscreen({7, 1}, "Pad");
        for (auto& line : desktop.log) {
            if (line.starts_with("script")) line.resize(script.size() - 1);
        }
        EXPECT_EQ(scene.done(), "AXFullScreen 7/1 true" + done);
        EXPECT_EQ(scene.told(), "Attempting to set fullscreen for 'Pad'...\n" + told);
    }
}

class Restoration : public testing::Test {
protected:
    LayoutScene scene;
    SimulatedScreen& screen = scene.screen;
    WindowControl control{screen, scene.desktop.queue, scene.platform.scripts, screen};
    LayoutRestoration restoration{scene.platform.applications, screen, control};

    void SetUp() override {
        screen.displays = {{{0, 0, 1440, 900}, {0, 30, 1440, 850}}, {{1440, 0, 800, 600}, {}}};
        std::int32_t pid = 0;
        for (const auto* name : {"A", "B", "C", "R"})
            scene.open(scene.run(name, ++pid), 0, {});
    }

    /// Records by letters: "A" is regular, "A!" fullscreen. What is done: "A" is framed as
    /// recorded, "A^" as the first display leaves room, "!" made fullscreen; "(A)" is the conflict.
    std::string restored(const std::string& records, const std::string& priority) {
        std::vector<WindowLayout> layouts;
        for (const auto& word : text::words(records))
            layouts.push_back({word.substr(0, 1), {5, 6, 700, 500}, word.ends_with('!'), true, 1});
        scene.desktop.log.clear();
        restoration.applyWindowLayouts(layouts, priority, [this](const WindowLayout& chosen) {
            scene.desktop.log.push_back("(" + chosen.appName + ")");
        });
        std::string shown;
        for (const auto& line : scene.desktop.log) {
            if (line.starts_with("AXPosition")) shown += "ABCR"[line[11] - '1'];
            if (line.ends_with(" 1440,850")) shown += "^";
            if (line.starts_with("AXFullScreen")) shown += "!";
            if (line.starts_with("(")) shown += line;
        }
        return shown;
    }
};

TEST_F(Restoration, regularWindowsComeFirstAndOneApplicationGetsFullscreen) {
    const struct {
        const char* records;
        const char* priority;
        const char* done;
    } cases[]{{"", "first", ""},
              {"B A B", "first", "BAB"},
              {"A! R", "first", "RA!"},
              {"A! B! C!", "first", "(A)A!B^C^"},
              {"A! B! C!", "last", "(C)C!A^B^"},
              {"A! B! C!", "middle", "(A)A!B^C^"},
              {"A! R B! C B!", "last", "RC(B)B!A^"},
              {"A! A!", "first", "(A)A!"},
              {"X R A!", "first", "RA!"},
              {"X! A!", "first", "(X)A^"}};
    for (const auto& [records, priority, done] : cases)
        EXPECT_EQ(restored(records, priority), done) << records << " " << priority;
    screen.displays.clear();
    EXPECT_EQ(restored("A! B!", "first"), "(A)A!B") << "the frame stays without a display";
}

TEST_F(Restoration, storedRecordsCountBeforeALayoutOfAnEarlierVersionAndABadOneStays) {
    auto& defaults = scene.platform.userDefaults;
    auto workspace = scene.workspace("Work");
    const auto key = "WorkspaceLayout_" + workspace.id.toString();
    const WorkspaceLayout legacy{workspace.id, {{"Pad", {1, 2, 3, 4}, true, true, 7}}, {500}};
    int persisted = 0;
    const auto load = [&](std::string_view json) {
        defaults.setObject(key, {Bytes(json.begin(), json.end())});
        return loadWorkspaceLayout(workspace, defaults, [&](const auto& layout, const auto&) {
            EXPECT_EQ(layout, legacy);
            EXPECT_TRUE(scene.desktop.defaults.contains(key)) << "removed once it is stored";
            ++persisted;
        });
    };
    for (const auto* bad : {"{", "[]", "{\"workspaceId\": 5}", ""}) {
        EXPECT_EQ(load(bad), std::nullopt);
        EXPECT_TRUE(scene.told().starts_with("Failed to migrate layout from UserDefaults: "));
        EXPECT_TRUE(scene.desktop.defaults.contains(key));
    }
    workspace.savedWindowLayouts.emplace();
    EXPECT_EQ(load(encodeWorkspaceLayout(legacy)), legacy) << "an empty list is no layout";
    EXPECT_FALSE(scene.desktop.defaults.contains(key));

    const SavedWindowLayout record{"Pad", "T", {1, 2, 3, 4}, 12, {900}, true, {}, {}, 2, false};
    workspace.savedWindowLayouts = {record, record};
    workspace.savedWindowLayouts->back().recordedAt = {901};
    const WindowLayout loaded{"Pad", {1, 2, 3, 4}, true, false, 2};
    EXPECT_EQ(load("unused"), (WorkspaceLayout{workspace.id, {loaded, loaded}, {900}}));
    EXPECT_EQ(persisted, 1);
}

} // namespace
} // namespace corvane
