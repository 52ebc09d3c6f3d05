#pragma once

#include "linux/system/FileDescriptor.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

using GMainContext = struct _GMainContext;

namespace corvane {

class EventThread;

/// Lets one process be the program that works on a folder of data. The first one holds a lock in
/// the folder; a later one rings at the socket beside it. Needs no session bus.
class SingleInstance {
public:
    /// Makes the folder, private to the user, where there is none. Becomes the first process, or
    /// asks the one that is there to come forward and waits for it to have done so, five seconds at
    /// most. Where nothing can be locked, each process is the first one, and nobody can ring.
    explicit SingleInstance(const std::string& folder);
    /// Takes its own socket away.
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;

    enum class Start {
        first,
        cameForward,
        noAnswer,
        /// The first one shows its windows on another display of the user's.
        isElsewhere,
    };
    Start start() const { return start_; }

    /// Somebody rang: come forward and call `done`. The token lets a window come to the front, as
    /// whoever started the other process handed it to it; empty where it did not. On the event
    /// thread.
    using Ring = std::function<void(const std::string& token, std::function<void()> done)>;
    /// From now on `ring` is called for each later start, also for those that wait already. The
    /// events end before this goes.
    void serve(EventThread& events, Ring ring);

private:
    enum class Lock { held, heldByAnother, impossible };
    Start begin();
    Lock lock();
    void listen();
    void tellDisplays() const;
    bool isElsewhere() const;
    bool ringAtFirst(std::chrono::nanoseconds longest) const;
    void answer(GMainContext* events, const Ring& ring) const;

    FileDescriptor folder_;
    FileDescriptor lock_;
    FileDescriptor socket_;
    Start start_;
};

} // namespace corvane
