#include "linux/windows/x11/X11WindowControl.h"

#include "linux/windows/Approach.h"

#include <algorithm>
#include <cmath>

namespace corvane::x11 {
namespace {

using namespace std::chrono_literals;

/// How long nothing may happen behind a window manager's answer until it counts as its last.
constexpr auto quietAfterMove = 50ms;
constexpr auto quietAfterState = 200ms;
/// How long a window stands still when it has left a state; a client that decorates itself draws
/// its shadows late.
constexpr auto rest = 60ms;
constexpr auto restWithShadows = 100ms;
/// For a last look, which the server answers at once.
constexpr auto reserve = 50ms;
constexpr auto reserveForMove = 150ms;

constexpr std::uint32_t fromPager = 2;

/// The protocol has 16 bits for each number.
int inPixels(double value, int least) {
    constexpr double most = 0x7FFF;
    return static_cast<int>(std::lround(std::clamp(value, double(least), most)));
}

Frame inPixels(const PixelRect& rect) {
    constexpr int leastPlace = -0x7FFF;
    return {inPixels(rect.origin.x, leastPlace), inPixels(rect.origin.y, leastPlace),
            inPixels(rect.size.width, 1), inPixels(rect.size.height, 1)};
}

/// What to ask a window manager for, so that the visible frame becomes that one by the margins of
/// now: the place of the decorated frame, and the size of the client's.
Frame aimAt(const Frame& visible, const WindowGeometry& geometry) {
    const Frame seen = geometry.visible();
    const Frame decorated = geometry.decorated();
    return {visible.x + decorated.x - seen.x, visible.y + decorated.y - seen.y,
            std::max(1, visible.width + geometry.client.width - seen.width),
            std::max(1, visible.height + geometry.client.height - seen.height)};
}

bool isBound(const WindowStates& states) {
    return states.maximizedHorizontally || states.maximizedVertically || states.shaded;
}

} // namespace

X11WindowControl::X11WindowControl(Server& server, xcb_window_t window, ManagerHabits& habits,
                                   Deadline deadline)
    : server_(server), window_(window), mark_(xcb_generate_id(server.get())), habits_(habits),
      deadline_(deadline) {
    const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(server_.get(), XCB_COPY_FROM_PARENT, mark_, server_.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &changes);
    const std::uint32_t all = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(server_.get(), window_, XCB_CW_EVENT_MASK, &all);
}

X11WindowControl::~X11WindowControl() {
    const std::uint32_t nothing = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(server_.get(), window_, XCB_CW_EVENT_MASK, &nothing);
    xcb_destroy_window(server_.get(), mark_);
    xcb_flush(server_.get());
}

WindowAnswer X11WindowControl::place(const FrameWish& wish) {
    if (!look()) return WindowAnswer::gone;
    const Frame now = now_.visible();
    if (inPixels(wishedFrame(wish, now.rect())) == now && !now_.states.shaded)
        return WindowAnswer::done;
    if (now_.states.fullscreen) return WindowAnswer::refused;
    if (isBound(now_.states)) {
        if (const auto answer = leaveStates(); answer != WindowAnswer::done) return answer;
    }
    return askFor(wish);
}

WindowAnswer X11WindowControl::askFor(const FrameWish& wish) {
    using Asked = ApproachSteps::Asked;
    const Frame target = inPixels(wishedFrame(wish, now_.visible().rect()));
    FrameWish whole;
    if (wish.origin) whole.origin = target.rect().origin;
    if (wish.size) whole.size = target.rect().size;
    std::optional<Frame> lastAim;
    const auto ask = [&](const PixelRect& frame) {
        const Frame aim = aimAt(inPixels(frame), now_);
        if (aim == lastAim) return Asked::nothingNew;
        lastAim = aim;
        requestFrame(aim);
        const bool isAnswered = settle([&] { return now_.visible() == target; }, quietAfterMove);
        return isAnswered ? Asked::answered : Asked::unanswered;
    };
    const auto seen = [&] { return exists_ ? std::optional(now_.visible().rect()) : std::nullopt; };
    return approach(whole, {ask, seen, [&] { return isLate(); }});
}

WindowAnswer X11WindowControl::setFullscreen(bool on) {
    if (!look()) return WindowAnswer::gone;
    if (now_.states.fullscreen == on) return WindowAnswer::done;
    requestState(on, server_.atoms().stateFullscreen);
    return settleState([&] { return now_.states.fullscreen == on; });
}

WindowAnswer X11WindowControl::setMaximized(bool on) {
    if (!look()) return WindowAnswer::gone;
    const auto isThere = [&] {
        return now_.states.maximizedHorizontally == on && now_.states.maximizedVertically == on;
    };
    if (isThere()) return WindowAnswer::done;
    requestState(on, server_.atoms().stateMaximizedVert, server_.atoms().stateMaximizedHorz);
    return settleState(isThere);
}

WindowAnswer X11WindowControl::leaveStates() {
    const auto& atoms = server_.atoms();
    const auto states = now_.states;
    if (states.maximizedHorizontally || states.maximizedVertically) {
        requestState(false, atoms.stateMaximizedVert, atoms.stateMaximizedHorz);
    }
    if (states.shaded) requestState(false, atoms.stateShaded);
    // Moved in such a state, a window would come back to another place when it leaves it.
    const auto answer = settleState([&] { return !isBound(now_.states); });
    if (answer == WindowAnswer::done) waitForRest(now_.shadows ? restWithShadows : rest);
    return exists_ ? answer : WindowAnswer::gone;
}

template <typename Reached>
WindowAnswer X11WindowControl::settleState(Reached&& reached) {
    const bool isAnswered = settle(reached, quietAfterState);
    if (!exists_) return WindowAnswer::gone;
    if (reached()) return WindowAnswer::done;
    return isAnswered ? WindowAnswer::refused : WindowAnswer::unanswered;
}

bool X11WindowControl::look() {
    const auto found = readGeometry(server_, requestGeometry(server_, window_), deadline_);
    exists_ = found.has_value();
    if (found) now_ = *found;
    return exists_;
}

/// Waits until the window manager has dealt with all requests and `reached` holds, or nothing has
/// happened since for that long. False where it doesn't answer in time.
template <typename Reached>
bool X11WindowControl::settle(Reached&& reached, std::chrono::milliseconds quiet) {
    requestMark();
    const Deadline latest = deadline_ - reserve;
    Deadline until = latest;
    bool isAnswered = false;
    while (const auto event = server_.event(until)) {
        if (!isAnswer(*event)) continue;
        isAnswered = true;
        // What is still to be dealt with could change the window once more.
        if (habits_.answersMarks && openMarks_ > 0) continue;
        if (!look() || reached()) return true;
        const auto still = habits_.answersMarks ? quiet : 2 * quiet;
        until = std::min(latest, std::chrono::steady_clock::now() + still);
    }
    if (isAnswered && openMarks_ > 0) habits_.answersMarks = false;
    // Where nothing had to change, not every window manager says so.
    return !look() || reached() || isAnswered;
}

void X11WindowControl::waitForRest(std::chrono::milliseconds length) {
    const auto fromNow = [&] {
        return std::min(deadline_ - reserveForMove, std::chrono::steady_clock::now() + length);
    };
    Deadline until = fromNow();
    while (const auto event = server_.event(until)) {
        if (isAnswer(*event)) until = fromNow();
    }
    look();
}

/// A sign of the window manager's that the window has changed or that a mark is reached.
bool X11WindowControl::isAnswer(const xcb_generic_event_t& event) {
    constexpr int sent = 0x80;
    const auto& atoms = server_.atoms();
    switch (event.response_type & ~sent) {
    case XCB_CONFIGURE_NOTIFY:
        return reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == window_;
    case XCB_REPARENT_NOTIFY:
        return reinterpret_cast<const xcb_reparent_notify_event_t&>(event).window == window_;
    case XCB_DESTROY_NOTIFY:
        return reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == window_;
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == mark_) {
            habits_.answersMarks = true;
            openMarks_ = std::max(0, openMarks_ - 1);
            return true;
        }
        return change.window == window_ &&
               (change.atom == atoms.netFrameExtents || change.atom == atoms.gtkFrameExtents ||
                change.atom == atoms.netWmState);
    }
    default:
        return false;
    }
}

void X11WindowControl::askManager(xcb_window_t window, xcb_atom_t type,
                                  const Server::Message& message) {
    server_.sendMessage(Server::Recipient::windowManager, window, type, message);
}

void X11WindowControl::requestMark() {
    ++openMarks_;
    askManager(mark_, server_.atoms().netRequestFrameExtents, {});
}

void X11WindowControl::requestFrame(const Frame& aim) {
    constexpr std::uint32_t northWest = 1;
    constexpr std::uint32_t allValues = 0xF << 8;
    askManager(window_, server_.atoms().netMoveresizeWindow,
               {northWest | allValues | fromPager << 12, static_cast<std::uint32_t>(aim.x),
                static_cast<std::uint32_t>(aim.y), static_cast<std::uint32_t>(aim.width),
                static_cast<std::uint32_t>(aim.height)});
}

void X11WindowControl::requestState(bool wanted, xcb_atom_t first, xcb_atom_t second) {
    askManager(window_, server_.atoms().netWmState, {wanted, first, second, fromPager});
}

bool X11WindowControl::isLate() const {
    return std::chrono::steady_clock::now() >= deadline_ - reserve;
}

} // namespace corvane::x11
