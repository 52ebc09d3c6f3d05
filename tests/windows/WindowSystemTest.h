#pragma once

#include "foundation/Text.h"
#include "machine/Program.h"
#include "windows/WindowSession.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

namespace corvane {

using machine::comesToShow;
using machine::comesTrue;
using AtClose = ClientWishes::AtClose;
using Clock = std::chrono::steady_clock;

inline std::string answerText(WindowAnswer answer) {
    switch (answer) {
    case WindowAnswer::done:
        return "done";
    case WindowAnswer::gone:
        return "gone";
    case WindowAnswer::refused:
        return "refused";
    case WindowAnswer::unanswered:
        return "unanswered";
    }
    return "?";
}

/// What a person could tell of all windows, from the lowest up.
inline std::string describedWindows(WindowSystem& system) {
    const auto now = system.windows(soon());
    if (!now) return "nothing told";
    std::vector<std::string> words;
    for (const auto& each : now->windows) {
        auto word = each.title.value_or("?");
        const auto add = [&](bool holds, const std::string& what) {
            if (holds) word += " " + what;
        };
        add(each.kind == WindowKind::dock, "dock");
        add(each.kind == WindowKind::desktop, "desktop");
        add(!each.isOnScreen, "unseen");
        add(each.isMinimized, "minimized");
        add(each.isFullscreen, "fullscreen");
        add(each.isMaximized, "maximized");
        add(!each.canBeAskedToClose, "unaskable");
        add(each.window.number == now->active, "active");
        words.push_back(word);
    }
    return text::joined(words, "; ");
}

/// Clients move and grow after their first picture, a busy one late, and some changes come in
/// steps.
inline void waitUntilStill(const std::function<std::string()>& frame) {
    std::string before;
    EXPECT_TRUE(comesTrue([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(75));
        return std::exchange(before, frame()) == frame();
    })) << "it still changes, from "
        << before;
}

/// What every window system keeps to, on each desktop that this machine has.
class WindowSystemTest : public testing::TestWithParam<SessionKind> {
protected:
    std::optional<WindowsNow> now() { return system_.windows(soon()); }
    /// Waits until it is listed.
    ManagedWindow shown(const ClientWishes& wishes) {
        const auto process = session_->show(wishes);
        return listed([&](const ManagedWindow& window) {
            return window.title == wishes.title && window.window.process == process;
        });
    }
    ManagedWindow listed(const std::function<bool(const ManagedWindow&)>& isIt) {
        ManagedWindow result;
        EXPECT_TRUE(comesTrue([&] {
            const auto windows = now();
            if (!windows) return false;
            const auto found = std::ranges::find_if(windows->windows, isIt);
            if (found != windows->windows.end()) result = *found;
            return found != windows->windows.end();
        }));
        return result;
    }
    std::string frameOf(const WindowRef& window) {
        const auto found = system_.window(window, soon());
        return found ? frameText(found->frame) : "gone";
    }
    void waitUntilItStands(const WindowRef& window) {
        waitUntilStill([&] { return frameOf(window); });
    }
    /// The answer, the frame that the system tells and the one that is seen; once, where all agree.
    std::string placed(const WindowRef& window, const FrameWish& wish) {
        const auto answer = system_.place(window, wish, soon());
        auto told = frameOf(window);
        if (answer != WindowAnswer::done) told = answerText(answer) + " " + told;
        const auto seen = session_->seen(window);
        return told.ends_with(seen) ? told : told + ", seen " + seen;
    }
    std::string placed(const WindowRef& window, const PixelRect& frame) {
        return placed(window, FrameWish{frame.origin, frame.size});
    }
    /// Whether another hand has done that, as not every manager does all to all windows.
    bool isDone(const ManagedWindow& before, ByHand deed) {
        const auto patience = Clock::now() + std::chrono::seconds(1);
        session_->act(before.window, deed);
        bool done = false;
        comesTrue([&] {
            const auto window = system_.window(before.window, soon());
            done = window &&
                   (window->frame != before.frame || window->isMinimized != before.isMinimized ||
                    window->workspace != before.workspace);
            return done || Clock::now() > patience;
        });
        waitUntilItStands(before.window);
        return done;
    }
    std::string all() { return describedWindows(system_); }
    /// Those of them that a deed can be done to here.
    std::vector<ByHand> deeds() {
        std::vector<ByHand> result{ByHand::move};
        if (session_->has(Feature::maximizing)) result.push_back(ByHand::maximize);
        if (session_->has(Feature::shading)) result.push_back(ByHand::shade);
        if (session_->has(Feature::minimizing)) result.push_back(ByHand::minimize);
        return result;
    }

    std::unique_ptr<WindowSession> session_ = GetParam().start();
    WindowSystem& system_ = session_->system();
};

} // namespace corvane
