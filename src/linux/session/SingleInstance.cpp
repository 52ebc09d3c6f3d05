#include "linux/session/SingleInstance.h"

#include "linux/system/EventThread.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <glib-unix.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace corvane {

namespace {

constexpr std::chrono::seconds answerWithin(5);
constexpr std::chrono::milliseconds pause(50);
constexpr char cameForward = 'f';

std::optional<sockaddr_un> addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) return std::nullopt;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

} // namespace

SingleInstance::SingleInstance(const std::string& folder)
    : lockPath_(folder + "/app.corvane.Corvane.lock"),
      socketPath_(folder + "/app.corvane.Corvane.socket") {}

SingleInstance::~SingleInstance() {
    if (socket_) unlink(socketPath_.c_str());
}

SingleInstance::Start SingleInstance::begin() {
    const auto deadline = std::chrono::steady_clock::now() + answerWithin;
    // The first one may just be coming up or going away.
    do {
        if (lock()) {
            listen();
            return Start::first;
        }
        if (ringAtFirst()) return Start::cameForward;
        std::this_thread::sleep_for(pause);
    } while (std::chrono::steady_clock::now() < deadline);
    return Start::noAnswer;
}

/// The kernel lets go of the lock when the process ends, however it ends. The file stays: were it
/// removed, two processes could each lock a file of their own.
bool SingleInstance::lock() {
    constexpr mode_t onlyTheUser = 0600;
    if (!lock_)
        lock_ = FileDescriptor(open(lockPath_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, onlyTheUser));
    return !lock_ || flock(lock_.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void SingleInstance::listen() {
    constexpr int waiting = 8;
    const auto address = addressOf(socketPath_);
    FileDescriptor made(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!address || !made) return;
    // What a process that crashed has left.
    unlink(socketPath_.c_str());
    if (bind(made.get(), generic(*address), sizeof *address) != 0) return;
    if (::listen(made.get(), waiting) == 0) socket_ = std::move(made);
}

bool SingleInstance::ringAtFirst() const {
    const auto address = addressOf(socketPath_);
    const FileDescriptor call(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!address || !call) return false;
    const timeval longest{.tv_sec = answerWithin.count(), .tv_usec = 0};
    setsockopt(call.get(), SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
    if (connect(call.get(), generic(*address), sizeof *address) != 0) return false;
    char said = 0;
    return recv(call.get(), &said, 1, 0) == 1 && said == cameForward;
}

void SingleInstance::serve(EventThread& events, Ring ring) {
    if (!socket_) return;
    ring_ = std::move(ring);
    GSource* source = g_unix_fd_source_new(socket_.get(), G_IO_IN);
    const GUnixFDSourceFunc rang = [](gint, GIOCondition, gpointer self) -> gboolean {
        static_cast<SingleInstance*>(self)->answer();
        return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(source, G_SOURCE_FUNC(rang), this, nullptr);
    g_source_attach(source, events.context());
    g_source_unref(source);
}

void SingleInstance::answer() const {
    const auto caller =
        std::make_shared<FileDescriptor>(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!*caller) return;
    ring_([caller] { send(caller->get(), &cameForward, 1, MSG_NOSIGNAL); });
}

} // namespace corvane
