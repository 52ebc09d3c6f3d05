#pragma once

#include "linux/windows/x11/X11WindowGeometry.h"

#include <optional>

namespace corvane::x11 {

/// What is learnt about the window manager from one talk to the next.
struct ManagerHabits {
    bool answersMarks = false;
};

/// A talk with the window manager about one window. Each operation asks, waits until the window
/// manager has answered, and looks; where the window isn't as wanted it asks again in other words.
/// Ends before the deadline in any case.
class X11WindowControl {
public:
    X11WindowControl(Server& server, xcb_window_t window, ManagerHabits& habits, Deadline deadline);
    ~X11WindowControl();
    X11WindowControl(const X11WindowControl&) = delete;

    /// The operations of the same names of `WindowSystem`.
    WindowAnswer place(const FrameWish& wish);
    WindowAnswer setFullscreen(bool on);
    WindowAnswer setMaximized(bool on);

private:
    bool look();
    WindowAnswer askFor(const FrameWish& wish);
    template <typename Reached>
    bool settle(Reached&& reached, std::chrono::milliseconds quiet);
    template <typename Reached>
    WindowAnswer settleState(Reached&& reached);
    void waitForRest(std::chrono::milliseconds length);
    bool isAnswer(const xcb_generic_event_t& event);
    void askManager(xcb_window_t window, xcb_atom_t type, const Server::Message& message);
    void requestMark();
    void requestFrame(const Frame& aim);
    void requestState(bool wanted, xcb_atom_t first, xcb_atom_t second = XCB_NONE);
    WindowAnswer leaveStates();
    bool isLate() const;

    Server& server_;
    const xcb_window_t window_;
    /// Never shown. Behind every other request the window manager is asked to tell what decorations
    /// it would have; when it does, most of them have dealt with the request before.
    const xcb_window_t mark_;
    int openMarks_ = 0;
    ManagerHabits& habits_;
    const Deadline deadline_;
    /// As last looked at.
    WindowGeometry now_;
    bool exists_ = true;
};

} // namespace corvane::x11
