#include "linux/windows/x11/X11WindowControl.h"

#include <algorithm>
#include <array>
#include <cstdlib>

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

Frame wished(const Wish& wish, const WindowGeometry& geometry) {
    const Frame now = geometry.visible();
    return {wish.x.value_or(now.x), wish.y.value_or(now.y), wish.width.value_or(now.width),
            wish.height.value_or(now.height)};
}

int distance(const Frame& a, const Frame& b) {
    return std::abs(a.x - b.x) + std::abs(a.y - b.y) + std::abs(a.width - b.width) +
           std::abs(a.height - b.height);
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
    return states.fullscreen || states.maximizedHorizontally || states.maximizedVertically ||
           states.shaded;
}

} // namespace

WindowControl::WindowControl(Server& server, xcb_window_t window, ManagerHabits& habits,
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

WindowControl::~WindowControl() {
    const std::uint32_t nothing = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(server_.get(), window_, XCB_CW_EVENT_MASK, &nothing);
    xcb_destroy_window(server_.get(), mark_);
    xcb_flush(server_.get());
}

WindowControl::Outcome WindowControl::place(const Wish& wish) {
    if (!look()) return Outcome::windowIsGone;
    if (wished(wish, now_) == now_.visible() && !now_.states.shaded) return Outcome::done;
    if (isBound(now_.states)) {
        if (const auto outcome = leaveStates(); outcome != Outcome::done) return outcome;
    }
    // What isn't asked for stays as it is from here on, however often the rest is tried.
    const Frame target = wished(wish, now_);
    const Frame start = now_.visible();
    const bool isHeard = approach(target);
    if (!exists_) return Outcome::windowIsGone;
    const Frame end = now_.visible();
    if (end == target) return Outcome::done;
    // Steps and limits of a window's size are its own, but a place that isn't taken is refused.
    const bool hasWishedSize =
        wish.width && end.width == target.width && end.height == target.height;
    const bool isIgnored =
        end == start && (target.x != end.x || target.y != end.y) && !hasWishedSize;
    return isHeard && !isIgnored ? Outcome::done : Outcome::refused;
}

/// Asks for the frame until it is there, or as near as it gets. False where there was no answer.
bool WindowControl::approach(const Frame& target) {
    struct Attempt {
        Frame aim;
        Frame frame;
    };
    std::optional<Attempt> best;
    std::optional<Frame> lastAim;
    const auto tryAim = [&](const Frame& aim) {
        lastAim = aim;
        requestFrame(aim);
        return settle([&] { return now_.visible() == target; }, quietAfterMove);
    };
    int offsetX = 0;
    int offsetY = 0;
    constexpr int mostTries = 4;
    for (int tries = 0; tries < mostTries; ++tries) {
        const Frame before = now_.visible();
        if (before == target) return true;
        if (isLate()) return false;
        Frame aim = aimAt(target, now_);
        aim.x += offsetX;
        aim.y += offsetY;
        if (aim == lastAim) break;
        if (!tryAim(aim)) return false;
        if (!exists_) return true;
        const Frame after = now_.visible();
        if (!best || distance(target, after) < distance(target, best->frame)) best = {aim, after};
        // Some window managers take the first request for another one, so the second shows.
        if (tries > 0 && after == before) break;
        offsetX += target.x - after.x;
        offsetY += target.y - after.y;
    }
    if (best && now_.visible() != best->frame && !isLate()) tryAim(best->aim);
    return true;
}

WindowControl::Outcome WindowControl::setFullscreen(bool fullscreen) {
    if (!look()) return Outcome::windowIsGone;
    if (now_.states.fullscreen == fullscreen) return Outcome::done;
    requestState(fullscreen, server_.atoms().stateFullscreen);
    return settleState([&] { return now_.states.fullscreen == fullscreen; });
}

WindowControl::Outcome WindowControl::toggleMaximized() {
    if (!look()) return Outcome::windowIsGone;
    const auto isMaximized = [&] {
        return now_.states.maximizedHorizontally && now_.states.maximizedVertically;
    };
    const bool wanted = !isMaximized();
    requestState(wanted, server_.atoms().stateMaximizedVert, server_.atoms().stateMaximizedHorz);
    return settleState([&] { return isMaximized() == wanted; });
}

WindowControl::Outcome WindowControl::leaveStates() {
    const auto& atoms = server_.atoms();
    const auto states = now_.states;
    if (states.fullscreen) requestState(false, atoms.stateFullscreen);
    if (states.maximizedHorizontally || states.maximizedVertically) {
        requestState(false, atoms.stateMaximizedVert, atoms.stateMaximizedHorz);
    }
    if (states.shaded) requestState(false, atoms.stateShaded);
    // Moved in such a state, a window would come back to another place when it leaves it.
    const auto outcome = settleState([&] { return !isBound(now_.states); });
    if (outcome == Outcome::done) waitForRest(now_.shadows ? restWithShadows : rest);
    return exists_ ? outcome : Outcome::windowIsGone;
}

template <typename Reached>
WindowControl::Outcome WindowControl::settleState(Reached&& reached) {
    settle(reached, quietAfterState);
    if (!exists_) return Outcome::windowIsGone;
    return reached() ? Outcome::done : Outcome::refused;
}

bool WindowControl::look() {
    const auto found = readGeometry(server_, requestGeometry(server_, window_), deadline_);
    exists_ = found.has_value();
    if (found) now_ = *found;
    return exists_;
}

/// Waits until the window manager has dealt with all requests and `reached` holds, or nothing has
/// happened since for that long. False where it doesn't answer in time.
template <typename Reached>
bool WindowControl::settle(Reached&& reached, std::chrono::milliseconds quiet) {
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

void WindowControl::waitForRest(std::chrono::milliseconds length) {
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
bool WindowControl::isAnswer(const xcb_generic_event_t& event) {
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

void WindowControl::askManager(xcb_window_t window, xcb_atom_t type,
                               const Server::Message& message) {
    server_.sendMessage(Server::Recipient::windowManager, window, type, message);
}

void WindowControl::requestMark() {
    ++openMarks_;
    askManager(mark_, server_.atoms().netRequestFrameExtents, {});
}

void WindowControl::requestFrame(const Frame& aim) {
    constexpr std::uint32_t northWest = 1;
    constexpr std::uint32_t allValues = 0xF << 8;
    askManager(window_, server_.atoms().netMoveresizeWindow,
               {northWest | allValues | fromPager << 12, static_cast<std::uint32_t>(aim.x),
                static_cast<std::uint32_t>(aim.y), static_cast<std::uint32_t>(aim.width),
                static_cast<std::uint32_t>(aim.height)});
}

void WindowControl::requestState(bool wanted, xcb_atom_t first, xcb_atom_t second) {
    askManager(window_, server_.atoms().netWmState, {wanted, first, second, fromPager});
}

bool WindowControl::isLate() const {
    return std::chrono::steady_clock::now() >= deadline_ - reserve;
}

} // namespace corvane::x11
