#pragma once

#include <functional>
#include <string>

namespace corvane {

class EventThread;

/// Hears of what ends the program from outside: signals, and the end of the user's session where a
/// session manager tells it on the session bus.
class SessionEnd {
public:
    /// Takes what this start of the program is called out of the environment, as others that are
    /// started from here are no part of it. Before there are other threads.
    static std::string takeStartupId();
    struct Calls {
        /// The session is about to end: get ready, and call `ready` from any thread.
        std::function<void(std::function<void()> ready)> prepare;
        /// It goes on after all.
        std::function<void()> goOn;
        /// The end, also where a signal would have killed the process.
        std::function<void()> terminate;
    };
    /// Calls these on the event thread, which ends before this goes. A signal that is ignored stays
    /// so. Comes once.
    SessionEnd(EventThread& events, std::string startupId, Calls calls);
    SessionEnd(const SessionEnd&) = delete;

private:
    static int terminateNow(void* self);
    void watchSignal(EventThread& events, int number);
    void registerWithSessionManager(EventThread& events);
    void follow(EventThread& events, const std::string& client);
    void agree(EventThread& events, const std::string& client);

    const std::string startupId_;
    const Calls calls_;
};

} // namespace corvane
