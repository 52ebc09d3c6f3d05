#include "Windows.h"
#include "foundation/Text.h"

using namespace corvane;
using namespace corvane::machine;

namespace {

std::string rectText(const Rect& rect) {
    return frameText(rect.x, rect.y, rect.width, rect.height);
}

class DisplaysTest : public WindowsTest {
protected:
    /// "x,y wxh" from the top left of the root window.
    void setMonitor(const std::string& name, const x11::Frame& frame) {
        std::ostringstream geometry;
        geometry << frame.width << "/1x" << frame.height << "/1+" << frame.x << "+" << frame.y;
        ASSERT_TRUE(runs("xrandr --setmonitor '" + name + "' " + geometry.str() +
                         (name.find("first") == std::string::npos ? " none" : " screen")));
    }
    std::string frames(Rect Display::* kind = &Display::frame) {
        std::vector<std::string> texts;
        for (const auto& screen : displays_.screens())
            texts.push_back(rectText(screen.*kind));
        return text::joined(texts, "; ");
    }
    xcb_window_t panel(const x11::Frame& frame, const std::vector<std::uint32_t>& strut,
                       const std::string& property = "_NET_WM_STRUT_PARTIAL") {
        const auto window = probe_->make(frame);
        probe_->setAtom(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK");
        probe_->setList(window, property, strut);
        show(window);
        return window;
    }
    void visibleFramesBecome(const std::string& expected) {
        comesToShow(expected, [this] { return frames(&Display::visibleFrame); });
    }
};

TEST_F(DisplaysTest, countUpwardFromThePrimaryOne) {
    EXPECT_EQ(frames(), "0,0 1440x900");
    // The primary one at the bottom right, with one above it, one to its left, and a mirror.
    setMonitor("left", {0, 300, 640, 600});
    setMonitor("*first", {640, 400, 800, 500});
    setMonitor("above", {640, 0, 800, 400});
    setMonitor("mirror", {640, 0, 800, 400});
    const std::string all = "0,0 800x500; -640,0 640x600; 0,500 800x400";
    EXPECT_TRUE(comesTrue([&] { return frames() == all; })) << frames();
}

TEST_F(DisplaysTest, leaveOutWhatPanelsTake) {
    EXPECT_EQ(frames(&Display::visibleFrame), "0,0 1440x900");
    const auto top = panel({0, 0, 1440, 24}, {0, 0, 24, 0, 0, 0, 0, 0, 0, 1439, 0, 0});
    const auto old = panel({1400, 0, 40, 900}, {0, 40, 0, 0}, "_NET_WM_STRUT");
    visibleFramesBecome("0,0 1400x876");
    ASSERT_TRUE(runs("xdotool windowminimize " + std::to_string(old) + " windowunmap " +
                     std::to_string(old)));
    visibleFramesBecome("0,0 1440x876");

    setMonitor("*first", {0, 0, 720, 900});
    setMonitor("right", {720, 100, 720, 800});
    // One at the bottom of the right monitor, and one at its left, which counts from the screen's.
    const auto bottom = panel({720, 870, 720, 30}, {0, 0, 0, 30, 0, 0, 0, 0, 0, 0, 720, 1439});
    panel({720, 100, 50, 800}, {770, 0, 0, 0, 100, 899, 0, 0, 0, 0, 0, 0});
    visibleFramesBecome("0,0 720x876; 770,30 670x770");
    probe_->close(bottom);
    probe_->close(top);
    visibleFramesBecome("0,0 720x900; 770,0 670x800");

    // The window manager's word for each monitor counts more; that for the whole screen doesn't.
    probe_->setList(probe_->root(), "_NET_WORKAREA", {100, 100, 100, 100});
    visibleFramesBecome("0,0 720x900; 770,0 670x800");
    probe_->setList(probe_->root(), "_GTK_WORKAREAS_D0", {800, 150, 600, 740, 0, 30, 720, 870});
    visibleFramesBecome("0,0 720x870; 800,10 600x740");
}

TEST_F(DisplaysTest, comeFromTheWindowManagerWhereNoPanelSays) {
    manager_.reset();
    probe_->setList(probe_->root(), "_NET_WORKAREA", {1, 2, 3, 4, 10, 20, 1400, 850});
    probe_->setList(probe_->root(), "_NET_CURRENT_DESKTOP", {1});
    visibleFramesBecome("10,30 1400x850");
    probe_->setList(probe_->root(), "_NET_WORKAREA", {0, 0, 0, 0, 9, 9, 9999, 9});
    visibleFramesBecome("0,0 1440x900");
    server_.reset();
    EXPECT_TRUE(comesTrue([&] { return displays_.screens().empty(); }));
    EXPECT_FALSE(displays_.mainScreen());
}

} // namespace
