#pragma once

#include "linux/windows/WindowSystem.h"

#include <string>
#include <vector>

namespace corvane {

/// What is asked of windows, by the identifiers that the agent tells them with.
struct Deed {
    enum class Kind { place, setFullscreen, setMaximized, activate, close };
    Kind kind;
    /// Only `close` takes more than one.
    std::vector<std::string> windows;
    /// Of `place`, and of `setFullscreen` and `setMaximized`.
    PixelRect frame = {};
    bool on = false;
};

/// A program of ours that runs inside of a compositor, as it lets nobody else at its windows. An
/// answer is a text as AgentAnswers.h reads it; nothing where none comes by the deadline. Of one
/// thread at a time.
class Agent {
public:
    virtual ~Agent() = default;

    /// The process of the compositor that shows this session; 0 where it isn't of this machine and
    /// process space. Nothing where that is another one than the agent's.
    virtual std::optional<pid_t> compositor(Deadline by) = 0;
    /// The same of the last answer, without asking again.
    virtual pid_t speaker() const = 0;
    virtual std::optional<std::string> list(Deadline by) = 0;
    /// That one, and others where it can't tell one alone.
    virtual std::optional<std::string> find(const std::string& /*id*/, Deadline by) {
        return list(by);
    }
    virtual std::optional<std::string> monitors(Deadline by) = 0;
    /// Where the primary one begins; nothing where they are told with that one first.
    virtual std::optional<PixelPoint> primaryOrigin(Deadline) { return std::nullopt; }
    /// The answer lists the windows as they are once they stand. What is late isn't done, or only
    /// where the compositor can't tell.
    virtual std::optional<std::string> act(const Deed& deed, Deadline by) = 0;
    /// Asked where the list doesn't tell.
    virtual bool isMaximized(const std::string&, Deadline) { return false; }

    /// As in Abilities, for when it doesn't answer, and as WindowSystem::switchOn.
    virtual std::string desktop() const = 0;
    virtual std::string whatToDoFirst(Deadline by) = 0;
    virtual std::string switchOn(Deadline by) { return whatToDoFirst(by); }
};

} // namespace corvane
