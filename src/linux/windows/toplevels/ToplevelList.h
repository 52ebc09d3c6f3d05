#pragma once

#include "linux/windows/WaylandConnection.h"

#include <map>
#include <memory>
#include <string>

struct ext_foreign_toplevel_list_v1;
struct wl_registry;
struct wl_seat;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace corvane::toplevels {

using Handle = zwlr_foreign_toplevel_handle_v1;

/// A window as the compositor lists it for others: what the client calls it and its application,
/// and the states that it is in.
struct Toplevel {
    /// Null where the compositor lists windows, and takes no requests for them nor tells states.
    Handle* handle = nullptr;
    std::uint64_t number = 0;
    std::string title = {}, applicationId = {};
    bool isMaximized = false, isMinimized = false, isActive = false, isFullscreen = false;
    Handle* owner = nullptr;
    /// All of that has been told. A window that was never shown stays without.
    bool isTold = false;
};

/// A connection to the compositor of this session, which keeps a list of its windows there. Of one
/// thread at a time.
class ToplevelList {
public:
    /// Windows are numbered from behind `lastNumber`, which outlives the list. Null where the
    /// compositor lists none for others or doesn't answer by then.
    static std::unique_ptr<ToplevelList> connect(std::uint64_t& lastNumber, Deadline by);
    ~ToplevelList();
    ToplevelList(const ToplevelList&) = delete;
    ToplevelList& operator=(const ToplevelList&) = delete;

    /// As those of the connection.
    bool renew(Deadline by) { return connection_.renew(by); }
    bool wait(const std::function<bool()>& isThere, Deadline by) {
        return connection_.wait(isThere, by);
    }
    bool isBroken() const { return connection_.isBroken(); }
    pid_t compositor() const { return connection_.compositor(); }

    const std::map<void*, Toplevel>& all() const { return all_; }
    /// Its windows have handles.
    bool takesRequests() const { return manager_ != nullptr; }
    /// For requests that need one; null where there is none.
    wl_seat* seat() const { return seat_; }

private:
    struct Events;

    explicit ToplevelList(std::uint64_t& lastNumber);
    void bindBareList();

    std::uint64_t& lastNumber_;
    WaylandConnection connection_;
    wl_registry* registry_ = nullptr;
    wl_seat* seat_ = nullptr;
    zwlr_foreign_toplevel_manager_v1* manager_ = nullptr;
    std::optional<std::uint32_t> bareName_;
    ext_foreign_toplevel_list_v1* bareList_ = nullptr;
    std::map<void*, Toplevel> all_;
};

} // namespace corvane::toplevels
