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
    SessionEnd();
    /// From now on calls `terminate`, on the event thread, where a signal would have killed the
    /// process; one that is ignored stays so. Comes once.
    void serve(EventThread& events, std::function<void()> terminate);

private:
    static int terminateNow(void* self);
    void watchSignal(EventThread& events, int number);
    void registerWithSessionManager(EventThread& events);
    void follow(EventThread& events, const std::string& client);
    void agree(EventThread& events, const std::string& client);

    std::string startupId_;
    std::function<void()> terminate_;
};

} // namespace corvane
