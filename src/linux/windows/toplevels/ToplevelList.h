#pragma once

#include "linux/windows/WindowSystem.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

struct wl_display;
struct wl_registry;
struct wl_seat;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace corvane::toplevels {

using Handle = zwlr_foreign_toplevel_handle_v1;

/// A window as the compositor lists it for others: what the client calls it and its application,
/// and the states that it is in.
struct Toplevel {
    std::uint64_t number = 0;
    std::string title, applicationId;
    bool isMaximized = false, isMinimized = false, isActive = false, isFullscreen = false;
    Handle* owner = nullptr;
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

    /// Sends what was requested, and takes in all that the compositor has to say till now. False
    /// where it doesn't answer by then.
    bool renew(Deadline by);
    /// The same until that holds.
    bool wait(const std::function<bool()>& isThere, Deadline by);
    /// The compositor has ended or lists nothing any more: there is no answer from it ever.
    bool isBroken() const { return isBroken_; }

    const std::map<Handle*, Toplevel>& all() const { return all_; }
    /// 0 where it isn't of this machine and process space.
    pid_t compositor() const { return compositor_; }
    /// For requests that need one; null where there is none.
    wl_seat* seat() const { return seat_; }

private:
    struct Events;

    explicit ToplevelList(std::uint64_t& lastNumber);

    std::uint64_t& lastNumber_;
    pid_t compositor_ = 0;
    wl_display* display_ = nullptr;
    wl_registry* registry_ = nullptr;
    wl_seat* seat_ = nullptr;
    zwlr_foreign_toplevel_manager_v1* manager_ = nullptr;
    std::map<Handle*, Toplevel> all_;
    bool isBroken_ = false;
};

} // namespace corvane::toplevels
