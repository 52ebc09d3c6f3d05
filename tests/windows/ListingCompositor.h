#pragma once

#include "linux/windows/toplevels/Protocol.h"
#include "machine/Machine.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <wayland-server-core.h>

namespace corvane {

/// A compositor that lists its windows for others and does no more, of which Debian has none. The
/// environment names it as long as it lives.
class ListingCompositor {
public:
    /// Titles and applications' ids.
    explicit ListingCompositor(std::map<std::string, std::string> windows)
        : windows_(std::move(windows)) {
        EXPECT_EQ(wl_display_add_socket(display_, "wayland-listing"), 0);
        wl_global_create(display_, &ext_foreign_toplevel_list_v1_interface, 1, this, &list);
        thread_ = std::thread([this] {
            while (!ends_) {
                const std::lock_guard lock(mutex_);
                wl_event_loop_dispatch(wl_display_get_event_loop(display_), 10);
                wl_display_flush_clients(display_);
            }
        });
    }
    ~ListingCompositor() {
        ends_ = true;
        thread_.join();
        wl_display_destroy_clients(display_);
        wl_display_destroy(display_);
    }
    ListingCompositor(const ListingCompositor&) = delete;

    void close(const std::string& title) {
        const std::lock_guard lock(mutex_);
        windows_.erase(title);
        for (auto* const handle : handles_[title])
            wl_resource_post_event(handle, EXT_FOREIGN_TOPLEVEL_HANDLE_V1_CLOSED);
    }

private:
    enum { EXT_FOREIGN_TOPLEVEL_LIST_V1_TOPLEVEL = 0 };
    enum {
        EXT_FOREIGN_TOPLEVEL_HANDLE_V1_CLOSED,
        EXT_FOREIGN_TOPLEVEL_HANDLE_V1_DONE,
        EXT_FOREIGN_TOPLEVEL_HANDLE_V1_TITLE,
        EXT_FOREIGN_TOPLEVEL_HANDLE_V1_APP_ID,
    };
    static wl_resource* made(wl_client* client, const wl_interface& interface, std::uint32_t id) {
        auto* const resource = wl_resource_create(client, &interface, 1, id);
        wl_resource_set_dispatcher(
            resource,
            [](const void*, void*, std::uint32_t, const wl_message*, wl_argument*) { return 0; },
            nullptr, nullptr, nullptr);
        return resource;
    }
    static void list(wl_client* client, void* data, std::uint32_t, std::uint32_t id) {
        auto& self = *static_cast<ListingCompositor*>(data);
        auto* const all = made(client, ext_foreign_toplevel_list_v1_interface, id);
        for (const auto& [title, application] : self.windows_) {
            auto* const handle = made(client, ext_foreign_toplevel_handle_v1_interface, 0);
            wl_resource_post_event(all, EXT_FOREIGN_TOPLEVEL_LIST_V1_TOPLEVEL, handle);
            wl_resource_post_event(handle, EXT_FOREIGN_TOPLEVEL_HANDLE_V1_TITLE, title.c_str());
            wl_resource_post_event(handle, EXT_FOREIGN_TOPLEVEL_HANDLE_V1_APP_ID,
                                   application.c_str());
            wl_resource_post_event(handle, EXT_FOREIGN_TOPLEVEL_HANDLE_V1_DONE);
            self.handles_[title].push_back(handle);
        }
    }

    const machine::ScopedVariable folder_{"XDG_RUNTIME_DIR", machine::place("")};
    const machine::ScopedVariable variable_{"WAYLAND_DISPLAY", "wayland-listing"};
    wl_display* const display_ = wl_display_create();
    std::map<std::string, std::string> windows_;
    std::map<std::string, std::vector<wl_resource*>> handles_;
    std::mutex mutex_;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

} // namespace corvane
