#pragma once

#include "linux/system/SessionBus.h"
#include "linux/windows/WindowSystem.h"

#include <memory>
#include <optional>
#include <string>

namespace corvane {

/// The compositor that shows this session, found by a name that it has on the session bus. Of one
/// thread at a time; each call ends by its deadline.
class CompositorOnBus {
public:
    explicit CompositorOnBus(std::string name) : name_(std::move(name)) {}

    /// Its process; 0 where it isn't of this machine and process space. Nothing where nobody has
    /// the name, or another one than who listens at the session's display.
    std::optional<pid_t> process(Deadline by);

    using Values = std::shared_ptr<GVariant>;
    /// Calls that process, once it was found. Null for an error, whose name on the bus goes to
    /// `error`, and where no answer comes by then; a later one is nobody's. Takes over floating
    /// `parameters`.
    Values call(const std::string& path, const std::string& method, GVariant* parameters,
                Deadline by, std::string* error = nullptr);

    /// What process() found last, where it did; else 0.
    pid_t known() const { return process_.value_or(0); }
    /// Of the last process().
    GDBusConnection* bus() const { return bus_.get(); }
    /// The compositor's unique name, so that what another one sends is no answer.
    const std::string& owner() const { return owner_; }

private:
    Values call(const std::string& name, const std::string& path, const std::string& method,
                GVariant* parameters, Deadline by, std::string* error = nullptr);

    const std::string name_;
    gio::Ref<GDBusConnection> bus_;
    std::string owner_;
    std::optional<pid_t> process_;
};

} // namespace corvane
