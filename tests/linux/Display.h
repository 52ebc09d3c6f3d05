#pragma once

#include "linux/running/LaunchedApplications.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"
#include "linux/screen/LinuxAccessibility.h"
#include "linux/screen/LinuxDisplays.h"
#include "linux/screen/LinuxWindowList.h"
#include "linux/windows/RecentWindows.h"
#include "linux/windows/x11/X11WindowSystem.h"
#include "machine/XDisplay.h"

#include <sstream>

namespace corvane::machine {

/// A display with what the machine says of its windows.
struct DisplayTest : testing::Test, XDisplay {
    void SetUp() override {
        startServer("800x600x24");
        startManager(windowManager());
        ASSERT_TRUE(windowsBecome(0));
        install("test.eyes", "Eyes", "Name[de]=Augen\nExec=xeyes");
    }

    bool lists(std::size_t count) {
        return comesTrue([&] { return running_.list().size() == count; });
    }

    InstalledApplications installed_;
    x11::X11WindowSystem system_;
    RecentWindows recent_{system_};
    LaunchedApplications launched_;
    RunningApplications running_{installed_, recent_, launched_};
    Quitting quitting_{system_, running_, {}};
};

inline std::string frameText(double x, double y, double width, double height) {
    std::ostringstream text;
    text << x << "," << y << " " << width << "x" << height;
    return text.str();
}

/// A display of 1440 by 900 pixels with a window manager, and the seam's view of it.
struct WindowsTest : DisplayTest {
    void SetUp() override {
        startServer("1440x900x24");
        startManager({"openbox"});
    }
    static std::string frameOf(const WindowBounds& bounds) {
        return frameText(*bounds.x, *bounds.y, *bounds.width, *bounds.height);
    }
    std::string frameOf(const AccessibilityWindow& window) {
        const auto position = accessibility_.position(window);
        const auto size = accessibility_.size(window);
        return position && size ? frameText(position->x, position->y, size->width, size->height)
                                : "gone";
    }
    /// What was answered to both, and the frame behind it.
    std::string placed(const AccessibilityWindow& window, const x11::Frame& frame) {
        const auto codes = accessibility_.setFrame(
            window, {double(frame.x), double(frame.y), double(frame.width), double(frame.height)});
        return (codes == FrameCodes()
                    ? ""
                    : std::to_string(codes.position) + " " + std::to_string(codes.size) + " ") +
               frameOf(window);
    }
    std::optional<x11::WindowGeometry> geometryOf(xcb_window_t window) {
        const auto deadline = halfASecondFromNow();
        auto* server = connection_.server(deadline);
        return x11::readGeometry(*server, x11::requestGeometry(*server, window), deadline);
    }
    /// Another eye than the one that is tested.
    x11::Connection connection_;
    LinuxDisplays displays_{recent_};
    LinuxWindowList list_{recent_, running_};
    LinuxAccessibility accessibility_{recent_, running_};
};

} // namespace corvane::machine
