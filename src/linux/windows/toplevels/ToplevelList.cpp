#include "linux/windows/toplevels/ToplevelList.h"

#include "linux/system/UnixSocket.h"
#include "linux/windows/WaylandSession.h"
#include "linux/windows/toplevels/Protocol.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <string_view>

#include <fcntl.h>
#include <poll.h>
#include <wayland-client.h>

namespace corvane::toplevels {

/// What the compositor says, put into the list.
struct ToplevelList::Events {
    static ToplevelList& list(void* data) { return *static_cast<ToplevelList*>(data); }
    static Toplevel& of(void* data, Handle* handle) { return list(data).all_[handle]; }

    static void offer(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                      std::uint32_t version) {
        auto& self = list(data);
        const std::string_view offered(interface);
        const auto bind = [&](const wl_interface& wanted, std::uint32_t most) {
            return wl_registry_bind(registry, name, &wanted, std::min(version, most));
        };
        if (!self.seat_ && offered == wl_seat_interface.name)
            self.seat_ = static_cast<wl_seat*>(bind(wl_seat_interface, 1));
        constexpr std::uint32_t knowsFullscreen = 2, newest = 3;
        const auto& manager = zwlr_foreign_toplevel_manager_v1_interface;
        if (self.manager_ || offered != manager.name || version < knowsFullscreen) return;
        self.manager_ = static_cast<zwlr_foreign_toplevel_manager_v1*>(bind(manager, newest));
        zwlr_foreign_toplevel_manager_v1_add_listener(self.manager_, &ofManager, data);
    }
    static void withdraw(void*, wl_registry*, std::uint32_t) {}

    static void appear(void* data, zwlr_foreign_toplevel_manager_v1*, Handle* handle) {
        of(data, handle).number = ++list(data).lastNumber_;
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &ofWindow, data);
    }
    static void finish(void* data, zwlr_foreign_toplevel_manager_v1*) {
        list(data).isBroken_ = true;
    }

    static void setTitle(void* data, Handle* handle, const char* title) {
        of(data, handle).title = title;
    }
    static void setId(void* data, Handle* handle, const char* id) {
        of(data, handle).applicationId = id;
    }
    static void moveToOutput(void*, Handle*, wl_output*) {}
    static void setState(void* data, Handle* handle, wl_array* array) {
        const std::span states(static_cast<const std::uint32_t*>(array->data),
                               array->size / sizeof(std::uint32_t));
        const auto has = [&](std::uint32_t state) { return std::ranges::count(states, state) > 0; };
        auto& window = of(data, handle);
        window.isMaximized = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MAXIMIZED);
        window.isMinimized = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
        window.isActive = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
        window.isFullscreen = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_FULLSCREEN);
    }
    static void endOfChanges(void*, Handle*) {}
    static void disappear(void* data, Handle* handle) {
        list(data).all_.erase(handle);
        zwlr_foreign_toplevel_handle_v1_destroy(handle);
    }
    static void setOwner(void* data, Handle* handle, Handle* owner) {
        of(data, handle).owner = owner;
    }

    static constexpr wl_registry_listener ofRegistry{offer, withdraw};
    static constexpr zwlr_foreign_toplevel_manager_v1_listener ofManager{appear, finish};
    static constexpr zwlr_foreign_toplevel_handle_v1_listener ofWindow{
        setTitle, setId, moveToOutput, moveToOutput, setState, endOfChanges, disappear, setOwner};
};

std::unique_ptr<ToplevelList> ToplevelList::connect(std::uint64_t& lastNumber, Deadline by) {
    std::unique_ptr<ToplevelList> list(new ToplevelList(lastNumber));
    // What is offered, and then what is listed by what was.
    const bool isThere =
        list->display_ && list->renew(by) && list->manager_ && list->renew(by) && !list->isBroken_;
    return isThere ? std::move(list) : nullptr;
}

ToplevelList::ToplevelList(std::uint64_t& lastNumber) : lastNumber_(lastNumber) {
    const auto socket = connectedToWayland();
    const int own = socket ? ::fcntl(socket.get(), F_DUPFD_CLOEXEC, 0) : -1;
    if (own < 0) return;
    compositor_ = processBehind(own);
    display_ = wl_display_connect_to_fd(own);
    if (!display_) return;
    registry_ = wl_display_get_registry(display_);
    wl_registry_add_listener(registry_, &Events::ofRegistry, this);
}

ToplevelList::~ToplevelList() {
    for (const auto& [handle, window] : all_)
        zwlr_foreign_toplevel_handle_v1_destroy(handle);
    if (manager_) zwlr_foreign_toplevel_manager_v1_destroy(manager_);
    if (seat_) wl_seat_destroy(seat_);
    if (registry_) wl_registry_destroy(registry_);
    if (display_) wl_display_disconnect(display_);
}

bool ToplevelList::renew(Deadline by) {
    static constexpr wl_callback_listener answer{
        [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
    bool isAnswered = false;
    wl_callback* const callback = wl_display_sync(display_);
    wl_callback_add_listener(callback, &answer, &isAnswered);
    const bool isInTime = wait([&] { return isAnswered; }, by);
    wl_callback_destroy(callback);
    return isInTime;
}

bool ToplevelList::wait(const std::function<bool()>& isThere, Deadline by) {
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

} // namespace corvane::toplevels
