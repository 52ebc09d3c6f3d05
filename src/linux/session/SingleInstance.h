#pragma once

#include "linux/system/FileDescriptor.h"

#include <functional>
#include <memory>
#include <string>

namespace corvane {

class EventThread;

/// Lets one process of a user be the program. The first one holds a lock; a later one rings at its
/// socket. Needs no session bus.
class SingleInstance {
public:
    /// The folder is the user's own, and writable; elsewhere each process is the first one.
    explicit SingleInstance(const std::string& folder);
    /// Takes the socket away.
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;

    enum class Start { first, cameForward, noAnswer };
    /// Becomes the first process, or asks the one that is there to come forward and waits for it to
    /// have done so, five seconds at most.
    Start begin();

    /// Somebody rang: come forward and call `done`. On the event thread.
    using Ring = std::function<void(std::function<void()> done)>;
    /// From now on `ring` is called for each later start, also for those that wait already.
    void serve(EventThread& events, Ring ring);

private:
    bool lock();
    void listen();
    bool ringAtFirst() const;
    void answer() const;

    std::string lockPath_;
    std::string socketPath_;
    FileDescriptor lock_;
    FileDescriptor socket_;
    Ring ring_;
};

} // namespace corvane
