#include "layouts/FullscreenDetection.h"
#include "layouts/LayoutScene.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

class Fullscreen : public testing::Test {
protected:
    LayoutScene scene;
    FullscreenDetection detection{scene.screen, scene.screen};

    /// The verdict, and by its diagnostic the rule.
    std::string verdict(const WindowInfo& window) {
        scene.diagnostics.clear();
        const bool isFullscreen = detection.isWindowFullscreen(window);
        const auto told = scene.told();
        if (told.starts_with("Fullscreen detected: Layer 0 + full screen coverage (")) return "1";
        if (told.starts_with("Fullscreen detected: Special level (")) return "2";
        if (told.starts_with("Not fullscreen: layer=")) return isFullscreen ? "?" : "no";
        if (told.empty()) return isFullscreen ? "quiet yes" : "quiet no";
        return told;
    }
};

constexpr std::optional<std::int64_t> none;

TEST_F(Fullscreen, boundsAndLayerDecideByThreeRules) {
    const struct {
        Rect frame;
        std::optional<std::int64_t> layer;
        std::string verdict;
    } cases[]{
        {{0, 0, 1440, 900}, 0, "1"},
        {{0, 0, 1440, 900}, none, "1"},
        {{-1920, -80, 1440, 900}, 0, "1"},
        {{1, 1, 1439, 901}, 0, "1"},
        {{1.5, 0, 1440, 900}, 0, "2"},
        {{0, 1.5, 1440, 900}, 0, "2"},
        {{0, 0, 1438.9, 900}, 0, "2"},
        {{0, 0, 1440, 901.1}, 0, "2"},
        {{0, 25, 1440, 885}, none, "2"},
        {{300, 200, 1411.2, 882}, 0, "2"},
        {{300, 200, 1411.1, 882}, 0, "no"},
        {{300, 200, 1411.2, 881.9}, 0, "no"},
        {{0, 0, 1440, 900}, 1000, "2"},
        {{300, 200, 1440, 900}, 2000, "2"},
        {{300, 200, 1440, 900}, 25, "no"},
        {{0, 0, 1368, 855}, 0, "quiet yes"},
        {{0, 0, 1367.9, 855}, 0, "no"},
        {{0, 0, 1368, 854.9}, 0, "no"},
        {{0, 0, 1380, 860}, 0, "quiet yes"},
        {{0, 25, 1380, 860}, 0, "no"},
        {{0, 0, 1383, 864}, 25, "quiet yes"},
        {{1, 0, 1383, 864}, 25, "no"},
        {{0, 0, 1440, 900}, -2147483603, "quiet yes"},
        {{-1, 0, 1440, 900}, -2147483603, "no"},
        // Any display will do, not only the one that the window is on.
        {{1440, 0, 800, 1280}, 0, "2"},
        {{0, 0, 800, 1280}, 0, "1"},
        {{200, 200, 1300, 1270}, 0, "2"},
        {{200, 200, 1400, 881}, 0, "no"},
    };
    scene.screen.displays.push_back({{1440, 0, 800, 1280}, {}});
    for (const auto& [frame, layer, expected] : cases) {
        auto window = windowInfo(7, 3, "Pad", frame);
        window.layer = layer;
        EXPECT_EQ(verdict(window), expected)
            << described("", frame, false) << " at layer " << layer.value_or(-1);
    }
    scene.screen.displays.clear();
    EXPECT_EQ(verdict(windowInfo(7, 3, "Pad", {0, 0, 1440, 900})), "no");
}

TEST_F(Fullscreen, aWindowWithoutAllItsBoundsIsNotFullscreenAndNothingIsTold) {
    auto window = windowInfo(7, 3, "Pad", {0, 0, 1440, 900});
    for (auto value :
         {&WindowBounds::x, &WindowBounds::y, &WindowBounds::width, &WindowBounds::height}) {
        auto incomplete = window;
        (*incomplete.bounds).*value = std::nullopt;
        EXPECT_EQ(verdict(incomplete), "quiet no");
    }
    window.bounds.reset();
    EXPECT_EQ(verdict(window), "quiet no");
}

TEST_F(Fullscreen, accessibilityDecidesAboutWindowsThatTheRulesTurnDown) {
    using Refusals = std::map<std::string, int, std::less<>>;
    struct Element {
        Rect offset;
        bool isFullscreen = true;
        Refusals refusals = {};
    };
    const struct {
        const char* name;
        std::vector<Element> elements;
        bool verdict;
    } cases[]{
        {"no window", {}, false},
        {"the same frame", {{{}}}, true},
        {"five points off", {{{5, -5, -5, 5}}}, true},
        {"x too far", {{{5.1, 0, 0, 0}}}, false},
        {"y too far", {{{0, -5.1, 0, 0}}}, false},
        {"width too far", {{{0, 0, 5.1, 0}}}, false},
        {"height too far", {{{0, 0, 0, -5.1}}}, false},
        {"it says no", {{{}, false}}, false},
        {"the first says no", {{{}, false}, {{3, 0, 0, 0}}}, true},
        {"the first can't be read", {{{}, false, {{"AXSize", -25205}}}, {{}}}, true},
        {"no position", {{{}, true, {{"AXPosition", -25205}}}}, false},
        {"no size", {{{}, true, {{"AXSize", -25205}}}}, false},
        {"no answer", {{{}, true, {{"AXFullScreen", -25205}}}}, false},
    };
    const Rect frame{100, 100, 1000, 700};
    for (const auto& [name, elements, expected] : cases) {
        scene.screen.stack.clear();
        for (const auto& [offset, isFullscreen, refusals] : elements) {
            const Rect moved{frame.x + offset.x, frame.y + offset.y, frame.width + offset.width,
                             frame.height + offset.height};
            scene.screen.stack.push_back(
                {.info = windowInfo(7, std::ssize(scene.screen.stack), "Pad", moved),
                 .isFullscreen = isFullscreen,
                 .refusals = refusals});
        }
        EXPECT_EQ(verdict(windowInfo(7, 3, "Pad", frame)), expected ? "quiet yes" : "no") << name;
    }

    scene.screen.stack = {{.info = windowInfo(7, 3, "Pad", frame), .isFullscreen = true}};
    auto window = scene.screen.stack[0].info;
    EXPECT_EQ(verdict(window), "quiet yes");
    window.number.reset();
    EXPECT_EQ(verdict(window), "no") << "without a number nobody is asked";
    window.number = 3;
    window.ownerPID.reset();
    EXPECT_EQ(verdict(window), "no");
    window.ownerPID = 8;
    EXPECT_EQ(verdict(window), "no");
    window.ownerPID = 7;
    scene.screen.unanswering = {7};
    EXPECT_EQ(verdict(window), "no");
}

TEST_F(Fullscreen, aWindowBelowAllMayStandForOneIfItCoversTheMainScreenNearTheOrigin) {
    const struct {
        std::int64_t layer;
        Rect frame;
        bool verdict;
    } cases[]{
        {-1, {0, 0, 1440, 900}, true},        {0, {0, 0, 1440, 900}, false},
        {-1, {49.9, -49.9, 1440, 900}, true}, {-1, {50, 0, 1440, 900}, false},
        {-1, {-50, 0, 1440, 900}, false},     {-1, {0, -50, 1440, 900}, false},
        {-1, {0, 0, 1439.9, 900}, false},     {-1, {0, 0, 1440, 899.9}, false},
        {-1, {0, 0, 2000, 1000}, true},
    };
    const auto ask = [&](std::int64_t layer, const Rect& f) {
        return detection.isPotentialFullscreenWindow(layer, f.width, f.height, f.x, f.y);
    };
    scene.screen.displays.insert(scene.screen.displays.begin(), Display{{0, 0, 3840, 2160}, {}});
    scene.screen.mainDisplay = 1;
    for (const auto& [layer, frame, verdict] : cases)
        EXPECT_EQ(ask(layer, frame), verdict) << layer << described("", frame, false);
    scene.screen.displays.clear();
    EXPECT_TRUE(ask(-1, {0, 0, 1920, 1080}));
    EXPECT_FALSE(ask(-1, {0, 0, 1919, 1080}));
    EXPECT_FALSE(ask(-1, {0, 0, 1920, 1079}));
}

} // namespace
} // namespace corvane
