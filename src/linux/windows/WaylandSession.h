#pragma once

#include "linux/system/FileDescriptor.h"
#include "linux/windows/WindowSystem.h"

#include <span>

/// What all compositors have in common.
namespace corvane {

/// As bus and poll take it: 0 where it is over.
int millisecondsTo(Deadline by);

/// A connection to the session's Wayland display: WAYLAND_DISPLAY, or "wayland-0". None where
/// nobody listens there. Doesn't block.
FileDescriptor connectedToWayland();

/// The process that listens there. Nothing where nobody listens; 0 where it isn't of this machine
/// and process space.
std::optional<pid_t> waylandCompositor();

/// Puts the monitor in front that begins there, or nearest to it. Where a compositor has no primary
/// one, the origin is a place to count from that stays the same from day to day.
void putPrimaryFirst(std::vector<Monitor>& monitors, const PixelPoint& origin);

/// An X11 client in a compositor's list.
struct XClient {
    ManagedWindow* window;
    /// Its number at the X server; 0 where the compositor doesn't tell it.
    std::uint32_t number;
};

/// Asks the X server of the session for what compositors don't know or get wrong: a client's
/// process, what it says of its application, and whether it takes a polite request to close. What
/// that server doesn't vouch for has no process that could be told, and takes no request. False
/// where it doesn't answer by then. `server` is null where there is none.
bool checkXClients(std::span<const XClient> clients, WindowSystem* server, pid_t compositor,
                   Deadline by);

} // namespace corvane
