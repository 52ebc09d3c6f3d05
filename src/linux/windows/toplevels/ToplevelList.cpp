#include "linux/windows/toplevels/ToplevelList.h"

#include "linux/windows/toplevels/Protocol.h"

#include <algorithm>
#include <span>
#include <string_view>

#include <wayland-client.h>

namespace corvane::toplevels {

using BareHandle = ext_foreign_toplevel_handle_v1;

/// What the compositor says, put into the list.
struct ToplevelList::Events {
    static ToplevelList& list(void* data) { return *static_cast<ToplevelList*>(data); }
    static Toplevel& of(void* data, void* handle) { return list(data).all_[handle]; }

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
        if (!self.manager_ && offered == manager.name && version >= knowsFullscreen) {
            self.manager_ = static_cast<zwlr_foreign_toplevel_manager_v1*>(bind(manager, newest));
            zwlr_foreign_toplevel_manager_v1_add_listener(self.manager_, &ofManager, data);
        }
        if (offered == ext_foreign_toplevel_list_v1_interface.name) self.bareName_ = name;
    }
    static void withdraw(void*, wl_registry*, std::uint32_t) {}

    static void appear(void* data, zwlr_foreign_toplevel_manager_v1*, Handle* handle) {
        of(data, handle) = {.handle = handle, .number = ++list(data).lastNumber_};
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &ofWindow, data);
    }
    static void appearBare(void* data, ext_foreign_toplevel_list_v1*, BareHandle* handle) {
        of(data, handle).number = ++list(data).lastNumber_;
        ext_foreign_toplevel_handle_v1_add_listener(handle, &ofBareWindow, data);
    }
    template <typename Manager>
    static void finish(void* data, Manager*) {
        list(data).connection_.breakOff();
    }

    template <typename AnyHandle>
    static void setTitle(void* data, AnyHandle* handle, const char* title) {
        of(data, handle).title = title;
    }
    template <typename AnyHandle>
    static void setId(void* data, AnyHandle* handle, const char* id) {
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
    template <typename AnyHandle>
    static void endOfChanges(void* data, AnyHandle* handle) {
        of(data, handle).isTold = true;
    }
    static void ignoreIdentifier(void*, BareHandle*, const char*) {}
    static void disappear(void* data, Handle* handle) {
        list(data).all_.erase(handle);
        zwlr_foreign_toplevel_handle_v1_destroy(handle);
    }
    static void disappearBare(void* data, BareHandle* handle) {
        list(data).all_.erase(handle);
        ext_foreign_toplevel_handle_v1_destroy(handle);
    }
    static void setOwner(void* data, Handle* handle, Handle* owner) {
        of(data, handle).owner = owner;
    }

    static constexpr wl_registry_listener ofRegistry{offer, withdraw};
    static constexpr zwlr_foreign_toplevel_manager_v1_listener ofManager{appear, finish};
    static constexpr zwlr_foreign_toplevel_handle_v1_listener ofWindow{
        setTitle, setId, moveToOutput, moveToOutput, setState, endOfChanges, disappear, setOwner};
    static constexpr ext_foreign_toplevel_list_v1_listener ofBareList{appearBare, finish};
    static constexpr ext_foreign_toplevel_handle_v1_listener ofBareWindow{
        disappearBare, endOfChanges, setTitle, setId, ignoreIdentifier};
};

std::unique_ptr<ToplevelList> ToplevelList::connect(std::uint64_t& lastNumber, Deadline by) {
    std::unique_ptr<ToplevelList> list(new ToplevelList(lastNumber));
    // What is offered, and then what is listed by what was.
    bool isThere = list->renew(by);
    list->bindBareList();
    isThere = isThere && (list->manager_ || list->bareList_) && list->renew(by);
    return isThere ? std::move(list) : nullptr;
}

ToplevelList::ToplevelList(std::uint64_t& lastNumber) : lastNumber_(lastNumber) {
    if (!connection_.display()) return;
    registry_ = wl_display_get_registry(connection_.display());
    wl_registry_add_listener(registry_, &Events::ofRegistry, this);
}

/// Where there is nothing better.
void ToplevelList::bindBareList() {
    if (manager_ || !bareName_) return;
    bareList_ = static_cast<ext_foreign_toplevel_list_v1*>(
        wl_registry_bind(registry_, *bareName_, &ext_foreign_toplevel_list_v1_interface, 1));
    ext_foreign_toplevel_list_v1_add_listener(bareList_, &Events::ofBareList, this);
}

ToplevelList::~ToplevelList() {
    for (const auto& [proxy, window] : all_)
        wl_proxy_destroy(static_cast<wl_proxy*>(proxy));
    if (bareList_) ext_foreign_toplevel_list_v1_destroy(bareList_);
    if (manager_) zwlr_foreign_toplevel_manager_v1_destroy(manager_);
    if (seat_) wl_seat_destroy(seat_);
    if (registry_) wl_registry_destroy(registry_);
}

} // namespace corvane::toplevels
