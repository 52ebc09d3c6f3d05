#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace corvane {

class EventThread;

/// The user's session around this process: other starts of the program, the preferred appearance,
/// and what ends the process from outside.
class LinuxSession {
public:
    /// Comes before anything else is started.
    LinuxSession();
    ~LinuxSession();

    /// Whether this process is to be the program. Otherwise it has brought the one that is there
    /// forward, or has told on its standard error that this one doesn't answer.
    bool isFirst() const;
    /// What a process that isn't the first one ends with.
    int exitStatus() const;

    /// The system's preference; nothing where it says none. Main thread.
    std::optional<bool> prefersDark() const;

    /// Runs work on the main thread, also while an alert is up there.
    using Post = std::function<void(std::function<void()>)>;
    /// From now on calls `reopen` on the main thread when the program is started again, and
    /// `terminate` when it is to end.
    void serve(Post post, std::function<void()> reopen, std::function<void()> terminate);

    EventThread& events();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace corvane
