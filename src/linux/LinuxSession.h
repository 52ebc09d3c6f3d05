#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

class EventThread;

/// The user's session around this process: other starts of the program, the preferred appearance,
/// and what ends the process from outside. With CORVANE_DIAGNOSTICS in the environment, what
/// happens goes to the standard error stream from here on, with the seconds since.
class LinuxSession {
public:
    /// Comes before anything else is started.
    LinuxSession();
    ~LinuxSession();

    /// Whether this process is to be the program. Otherwise it has brought the one that is there
    /// forward, or has told on its standard error why it couldn't.
    bool isFirst() const;
    /// The one that is there shows its windows on another display than this process would: one
    /// sentence for a person on this display. Empty else.
    std::string whyNotHere() const;
    /// What a process that isn't the first one ends with.
    int exitStatus() const;

    /// The system's preference; nothing where it says none. Main thread.
    std::optional<bool> prefersDark() const;

    /// Runs work on the main thread, also while an alert is up there.
    using Post = std::function<void(std::function<void()>)>;
    struct Calls {
        /// The program was started again, with that token or none for its window.
        std::function<void(const std::string& token)> reopen;
        /// The system has said for the first time, perhaps late, what it prefers.
        std::function<void()> appearanceIsKnown;
        /// The user's session is about to end and waits for the return; or goes on after all.
        std::function<void()> sessionWillEnd;
        std::function<void()> sessionGoesOn;
        /// The program is to end.
        std::function<void()> terminate;
    };
    /// From now on calls these on the main thread.
    void serve(const Post& post, const Calls& calls);

    EventThread& events();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace corvane
