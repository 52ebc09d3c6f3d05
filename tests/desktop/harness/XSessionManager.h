#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <X11/SM/SMlib.h>

namespace corvane::desktop {

/// A session manager of the X protocol, as Xfce's and KDE's are. Serves on a thread of its own. One
/// at a time in a process.
class XSessionManager {
public:
    /// Throws std::runtime_error where it can't listen.
    XSessionManager();
    ~XSessionManager();
    XSessionManager(const XSessionManager&) = delete;

    /// What SESSION_MANAGER is to the session's programs.
    const std::string& address() const { return address_; }
    /// Asks every program to save before the session's end; false unless there are some and all of
    /// them have answered soon.
    bool asks();
    void goesOn();
    void ends();

private:
    struct Client {
        SmsConn connection = nullptr;
        bool isAsked = false;
    };
    static Status add(SmsConn, SmPointer, unsigned long*, SmsCallbacks*, char**);
    static SmsCallbacks callbacks(XSessionManager* self);
    void answered(SmsConn connection);
    void remove(IceConn connection);
    void serve();

    std::mutex mutex_;
    std::string address_;
    int listenerCount_ = 0;
    IceListenObj* listeners_ = nullptr;
    std::vector<IceConn> connections_;
    std::vector<Client> clients_;
    std::atomic<bool> isEnding_ = false;
    std::thread thread_;
};

} // namespace corvane::desktop
