#include "layouts/LayoutLoading.h"
#include "layouts/LayoutRestoration.h"
#include "layouts/LayoutScene.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

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

    /// Records by letters: "A" is regular, "A!" fullscreen. What is done is told as "A", "A!" for
    /// the one record made fullscreen, "A^" for one that covers the first display, "alert A" for
    /// the conflict.
    std::string restored(const std::string& records, const std::string& priority) {
        std::vector<WindowLayout> layouts;
        for (const auto& word : text::words(records))
            layouts.push_back({word.substr(0, 1), {5, 6, 700, 500}, word.ends_with('!'), true, 1});
        scene.desktop.log.clear();
        restoration.applyWindowLayouts(layouts, priority, [this](const WindowLayout& chosen) {
            scene.desktop.log.push_back("alert " + chosen.appName);
        });
        std::string text;
        for (const auto& line : scene.desktop.log) {
            const auto parts = text::words(line);
            if (parts[0] == "alert") text += " " + line;
            if (parts[0] == "AXPosition")
                text += std::string(" ") + "0ABCR"[parts[1][0] - '0'] +
                        (parts[2] == "0,30"  ? "^"
                         : parts[2] == "5,6" ? ""
                                             : "?");
            if (parts[0] == "AXSize" && parts[2] != "700,500" && parts[2] != "1440,850")
                text += "?";
            if (parts[0] == "AXFullScreen") text += "!";
        }
        return text.empty() ? text : text.substr(1);
    }
};

TEST_F(Restoration, regularWindowsComeFirstAndOneApplicationGetsFullscreen) {
    const struct {
        const char* records;
        const char* priority;
        const char* done;
    } cases[]{
        {"", "first", ""},
        {"B A B", "first", "B A B"},
        {"A! R", "first", "R A!"},
        {"A! B! C!", "first", "alert A A! B^ C^"},
        {"A! B! C!", "last", "alert C C! A^ B^"},
        {"A! B! C!", "middle", "alert A A! B^ C^"},
        {"A! B! C!", "Last", "alert A A! B^ C^"},
        {"A! R B! C B!", "last", "R C alert B B! A^"},
        {"A! A!", "first", "alert A A!"},
        {"X R A!", "first", "R A!"},
        {"X! A!", "first", "alert X A^"},
        {"X!", "first", ""},
    };
    for (const auto& [records, priority, done] : cases)
        EXPECT_EQ(restored(records, priority), done) << records << " " << priority;
    scene.diagnostics.clear();
    restored("X X! A!", "last");
    std::erase_if(scene.diagnostics, [](const auto& line) { return line.find("X") == line.npos; });
    EXPECT_EQ(scene.told(), "App X not found for layout restoration\n"
                            "App X not found for layout restoration\n"
                            "Applied X as maximized instead of fullscreen (macOS limitation)");
    restored("A! B!", "last");
    EXPECT_TRUE(scene.told().starts_with("Prioritizing fullscreen for LAST app: B\n"));
    restored("A! B!", "first");
    EXPECT_TRUE(scene.told().starts_with("Prioritizing fullscreen for FIRST app: A\n"));
}

TEST_F(Restoration, withoutADisplayAMaximizedRecordKeepsItsFrame) {
    screen.displays.clear();
    EXPECT_EQ(restored("A! B!", "first"), "alert A A! B");
}

class Loading : public testing::Test {
protected:
    LayoutScene scene;
    UserDefaults& defaults = scene.platform.userDefaults;
    Workspace workspace = scene.workspace("Work");
    const std::string key = "WorkspaceLayout_" + workspace.id.toString();
    const WorkspaceLayout legacy{workspace.id, {{"Pad", {1, 2, 3, 4}, true, true, 7}}, {500}};
    std::vector<WorkspaceLayout> persisted;

    std::optional<WorkspaceLayout> load() {
        return loadWorkspaceLayout(workspace, defaults, [this](const auto& layout, const auto&) {
            EXPECT_TRUE(scene.desktop.defaults.contains(key)) << "removed once it is stored";
            persisted.push_back(layout);
        });
    }
    void leave(std::string_view json) {
        defaults.setObject(key, {Bytes(json.begin(), json.end())});
    }
};

TEST_F(Loading, theStoredRecordsCountAndTheMarkDoesNot) {
    leave(encodeWorkspaceLayout(legacy));
    workspace.hasLayoutSaved = false;
    SavedWindowLayout record{"Pad", "Title", {1, 2, 3, 4}, 12, {900}, true, {}, {}, 2, false};
    workspace.savedWindowLayouts = {record, record};
    workspace.savedWindowLayouts->back().recordedAt = {901};
    const WindowLayout loaded{"Pad", {1, 2, 3, 4}, true, false, 2};
    EXPECT_EQ(load(), (WorkspaceLayout{workspace.id, {loaded, loaded}, {900}}));
    EXPECT_TRUE(persisted.empty());
}

TEST_F(Loading, aLayoutOfAnEarlierVersionMovesOnceAndABadOneStays) {
    workspace.hasLayoutSaved = true;
    EXPECT_EQ(load(), std::nullopt);
    for (const auto* bad : {"{", "[]", "{\"workspaceId\": 5}", ""}) {
        leave(bad);
        EXPECT_EQ(load(), std::nullopt);
        EXPECT_TRUE(scene.told().starts_with("Failed to migrate layout from UserDefaults: "));
        EXPECT_TRUE(scene.desktop.defaults.contains(key));
    }
    defaults.setObject(key, {encodeWorkspaceLayout(legacy)});
    EXPECT_EQ(load(), std::nullopt) << "text isn't data";
    leave(encodeWorkspaceLayout(legacy));
    workspace.savedWindowLayouts.emplace();
    EXPECT_TRUE(persisted.empty());
    EXPECT_EQ(load(), legacy);
    EXPECT_EQ(persisted, std::vector{legacy});
    EXPECT_FALSE(scene.desktop.defaults.contains(key));
    EXPECT_EQ(load(), std::nullopt);
}

} // namespace
} // namespace corvane
