#pragma once

#include "linux/windows/Agent.h"
#include "linux/windows/CompositorOnBus.h"

#include <string>

namespace corvane::gnome {

/// Asks our extension in the GNOME Shell of this session, 43 to 48. It is called at the shell's own
/// connection to the bus, so that nobody else can answer in its place. What reaches a shell that
/// had stopped is too late for it, and isn't done.
class GnomeAgent final : public Agent {
public:
    std::optional<pid_t> compositor(Deadline by) override { return shell_.process(by); }
    pid_t speaker() const override { return shell_.known(); }
    std::optional<std::string> list(Deadline by) override;
    std::optional<std::string> monitors(Deadline by) override;
    std::optional<std::string> act(const Deed& deed, Deadline by) override;
    std::string desktop() const override { return "GNOME (Wayland)"; }
    std::string whatToDoFirst(Deadline by) override;
    /// At once where the shell knows the extension, else with the next login.
    std::string switchOn(Deadline by) override;

private:
    std::optional<std::string> ask(const std::string& method, GVariant* parameters, Deadline by);

    CompositorOnBus shell_{"org.gnome.Shell"};
    /// What the bus calls the reason why there was no answer; empty where none came in time.
    std::string error_;
};

} // namespace corvane::gnome
