#include "linux/windows/WaylandConnection.h"

#include "linux/system/UnixSocket.h"
#include "linux/windows/WaylandSession.h"

#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <wayland-client.h>

namespace corvane {

WaylandConnection::WaylandConnection() {
    const auto socket = connectedToWayland();
    const int own = socket ? ::fcntl(socket.get(), F_DUPFD_CLOEXEC, 0) : -1;
    if (own >= 0) {
        compositor_ = processBehind(own);
        display_ = wl_display_connect_to_fd(own);
    }
    isBroken_ = !display_;
}

WaylandConnection::~WaylandConnection() {
    if (display_) wl_display_disconnect(display_);
}

bool WaylandConnection::renew(Deadline by) {
    static constexpr wl_callback_listener answer{
        [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
    if (!display_) return false;
    bool isAnswered = false;
    wl_callback* const callback = wl_display_sync(display_);
    wl_callback_add_listener(callback, &answer, &isAnswered);
    const bool isInTime = wait([&] { return isAnswered; }, by);
    wl_callback_destroy(callback);
    return isInTime;
}

bool WaylandConnection::wait(const std::function<bool()>& isThere, Deadline by) {
    const auto dispatched = [this] { return wl_display_dispatch_pending(display_) >= 0; };
    while (!isBroken_) {
        while (wl_display_prepare_read(display_) != 0) {
            isBroken_ = isBroken_ || !dispatched();
            if (isBroken_) return false;
        }
        const bool isSent = wl_display_flush(display_) >= 0;
        const bool isFull = !isSent && errno == EAGAIN;
        isBroken_ = isBroken_ || (!isSent && !isFull);
        pollfd waiting{wl_display_get_fd(display_), short(isFull ? POLLIN | POLLOUT : POLLIN), 0};
        const bool isOver = isBroken_ || isThere();
        const int ready = isOver ? 0 : ::poll(&waiting, 1, millisecondsTo(by));
        const bool isInterrupted = ready < 0 && errno == EINTR;
        if (ready > 0 && waiting.revents != POLLOUT) {
            if (wl_display_read_events(display_) < 0 || !dispatched()) isBroken_ = true;
            continue;
        }
        wl_display_cancel_read(display_);
        if (isOver || (ready <= 0 && !isInterrupted)) break;
    }
    return !isBroken_ && isThere();
}

} // namespace corvane
