#include "layouts/FullscreenScript.h"
#include "layouts/LayoutLoading.h"
#include "layouts/LayoutRestoration.h"
#include "layouts/LayoutTest.h"

using namespace corvane;

namespace {

struct Control : LayoutTest {
    WindowControl control{screen, desktop.queue, platform.scripts, screen};
    WindowLayout record{"Pad", {-10.5, 20, 640, 480}, false, false, {}};
    const std::string framed = "AXPosition 7/1 -10.5,20\nAXSize 7/1 640,480";
};

TEST_F(Control, aRecordGoesToTheFirstWindowPositionBeforeSizeWhateverIsRefused) {
    open(pad, 1, {});
    open(pad, 2, {});
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(done(), framed);
    screen.stack[0].refusals = {{"AXPosition", -25204}, {"AXSize", -25200}};
    record.isFullscreen = true;
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(done(), framed + "\nAXFullScreen 7/1 true");
    record.isFullscreen = false;
    control.applyWindowLayout(record, pad);
    EXPECT_TRUE(screen.stack[0].isFullscreen) << "nothing takes a window out of it";

    // Tiled once: where it isn't any more, or by nobody here, its frame counts.
    screen.stack[0].refusals.clear();
    done();
    record.tilingWorkspace = "2: web";
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(done(), framed);
    screen.stack[0].info.tilingWorkspace = "1";
    record.isFullscreen = true;
    control.applyWindowLayout(record, pad);
    EXPECT_EQ(done(), "Workspace 7/1 2: web\nAXFullScreen 7/1 true");
}

TEST_F(Control, aLateWindowIsWaitedForWithFiveTriesHalfASecondApart) {
    const std::tuple<double, bool, bool, double> cases[]{
        {0, true, true, 0},     {0.5, true, true, 0.5},  {1.2, true, true, 1.5},
        {2.0, true, true, 2.0}, {2.1, true, false, 2.0}, {0, false, false, 2.0}};
    for (const auto& [appearsAt, answers, isFramed, waited] : cases) {
        const double begin = elapsed();
        screen.stack.clear();
        open(pad, 1, {}).appearsAt = begin + appearsAt;
        if (!answers) screen.unanswering = {7};
        control.applyWindowLayout(record, pad);
        EXPECT_DOUBLE_EQ(elapsed() - begin, waited) << appearsAt;
        EXPECT_EQ(done(), isFramed ? framed : "");
    }
}

TEST_F(Control, fullscreenIsTriedNativelyThenByScriptThenByTheMainScreensFrame) {
    const ScriptOutcome failed{.error = ScriptError{-1719, "No.", "{...}"}};
    const std::string script =
        "\nscript " + text::replacingAll(fullscreenScript("Pad"), "\n", " / ");
    const std::string frame = "\nAXPosition 7/1 1440,50\nAXSize 7/1 1920,1080";
    const std::tuple<bool, std::optional<ScriptOutcome>, std::size_t, std::string> cases[]{
        {true, failed, 1, ""},
        {false, ScriptOutcome{}, 1, script},
        {false, failed, 1, script + frame},
        {false, std::nullopt, 1, script + frame},
        {false, failed, 2, script}};
    screen.displays.push_back({{1440, 50, 1920, 1080}, {}});
    for (const auto& [nativeWorks, outcome, mainDisplay, log] : cases) {
        screen.stack.clear();
        auto& window = open(pad, 1, {});
        if (!nativeWorks) window.refusals = {{"AXFullScreen", -25205}};
        desktop.scriptOutcomes = {{"tell process \"Pad\"", outcome}};
        screen.mainDisplay = mainDisplay;
        control.setWindowFullscreen({7, 1}, "Pad");
        EXPECT_EQ(done(), "AXFullScreen 7/1 true" + log);
    }
    control.setWindowFullscreen({7, 1}, "a\"\\\nb");
    EXPECT_EQ(desktop.logged("script"),
              "script " + text::replacingAll(fullscreenScript("a\\\"\\\\\\nb"), "\n", " / "))
        << "a name stays a text";
}

struct Restoration : LayoutTest {
    WindowControl control{screen, desktop.queue, platform.scripts, screen};
    LayoutRestoration restoration{platform.applications, screen, control};

    void SetUp() override {
        screen.displays = {{{0, 0, 1440, 900}, {0, 30, 1440, 850}}, {{1440, 0, 800, 600}, {}}};
        std::int32_t pid = 0;
        for (const auto* name : {"A", "B", "C", "R"})
            open(run(name, ++pid), 0, {});
    }

    /// Records by letters: "A" is regular, "A!" fullscreen. What is done: "A" is framed as
    /// recorded, "A^" as the first display leaves room, "!" made fullscreen; "(A)" is the conflict.
    std::string restored(const std::string& records, const std::string& priority) {
        std::vector<WindowLayout> layouts;
        for (const auto& word : text::words(records))
            layouts.push_back({word.substr(0, 1), {5, 6, 700, 500}, word.ends_with('!'), true, 1});
        desktop.log.clear();
        restoration.applyWindowLayouts(layouts, priority, [this](const WindowLayout& chosen) {
            desktop.log.push_back("(" + chosen.appName + ")");
        });
        std::string shown;
        for (const auto& line : desktop.log) {
            if (line.starts_with("AXPosition")) shown += "ABCR"[line[11] - '1'];
            if (line.ends_with(" 1440,850")) shown += "^";
            if (line.starts_with("AXFullScreen")) shown += "!";
            if (line.starts_with("(")) shown += line;
        }
        return shown;
    }
};

TEST_F(Restoration, regularWindowsComeFirstAndOneApplicationGetsFullscreen) {
    const std::tuple<const char*, const char*, const char*> cases[]{
        {"", "first", ""},
        {"B A B", "first", "BAB"},
        {"A! R", "first", "RA!"},
        {"A! B! C!", "first", "(A)A!B^C^"},
        {"A! B! C!", "last", "(C)C!A^B^"},
        {"A! B! C!", "middle", "(A)A!B^C^"},
        {"A! R B! C B!", "last", "RC(B)B!A^"},
        {"A! A!", "first", "(A)A!"},
        {"X R A!", "first", "RA!"},
        {"X! A!", "first", "(X)A^"}};
    for (const auto& [records, priority, expected] : cases)
        EXPECT_EQ(restored(records, priority), expected) << records << " " << priority;
    screen.displays.clear();
    EXPECT_EQ(restored("A! B!", "first"), "(A)A!B") << "the frame stays without a display";
}

TEST_F(Restoration, storedRecordsCountBeforeALayoutOfAnEarlierVersionAndABadOneStays) {
    auto& defaults = platform.userDefaults;
    auto work = workspace("Work");
    const auto key = "WorkspaceLayout_" + work.id.toString();
    const WorkspaceLayout legacy{work.id, {{"Pad", {1, 2, 3, 4}, true, false, 7}}, {500}};
    int persisted = 0;
    const auto load = [&](std::string_view json) {
        defaults.setObject(key, {Bytes(json.begin(), json.end())});
        return loadWorkspaceLayout(work, defaults, [&](const auto& layout, const auto&) {
            EXPECT_EQ(layout, legacy);
            EXPECT_TRUE(desktop.defaults.contains(key)) << "removed once it is stored";
            ++persisted;
        });
    };
    const auto json =
        R"({"workspaceId":")" + work.id.toString() +
        R"(","windowLayouts":[{"appName":"Pad","frame":[[1,2],[3,4]],"isFullscreen":true,)"
        R"("isMinimized":false,"screen":7}],"savedDate":500})";
    for (const auto* missing : {"{", R"("isFullscreen":true,)", R"("isMinimized":false,)"}) {
        EXPECT_EQ(load(text::replacingAll(json, missing, "")), std::nullopt);
        EXPECT_TRUE(desktop.defaults.contains(key));
    }
    work.savedWindowLayouts.emplace();
    EXPECT_EQ(load(json), legacy) << "an empty list is no layout";
    EXPECT_FALSE(desktop.defaults.contains(key));

    const SavedWindowLayout record{"Pad", "T", {1, 2, 3, 4}, 12, {900}, true, {}, {}, 2, false};
    work.savedWindowLayouts = {record, record};
    work.savedWindowLayouts->back().recordedAt = {901};
    const WindowLayout loaded{"Pad", {1, 2, 3, 4}, true, false, 2};
    EXPECT_EQ(load("unused"), (WorkspaceLayout{work.id, {loaded, loaded}, {900}}));
    EXPECT_EQ(persisted, 1);
}

} // namespace
