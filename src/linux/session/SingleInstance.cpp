#include "linux/session/SingleInstance.h"

#include "foundation/Text.h"
#include "linux/system/EventThread.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <glib-unix.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace corvane {

namespace {

constexpr std::chrono::seconds answerWithin(5);
constexpr std::chrono::milliseconds pause(50);
constexpr char cameForward = 'f';

constexpr auto lockName = "app.corvane.Corvane.lock";
constexpr auto socketName = "app.corvane.Corvane.socket";

/// By the folder's descriptor, as an address holds fewer letters than a path may have.
sockaddr_un addressIn(const FileDescriptor& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder.get(),
                  socketName);
    return address;
}

FileDescriptor openedFolder(const std::string& path) {
    constexpr mode_t onlyTheUser = 0700;
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    ::mkdir(path.c_str(), onlyTheUser);
    return FileDescriptor(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

struct DisplayNames {
    std::string wayland, x11;
};

DisplayNames displayNames() {
    auto x11 = variable("DISPLAY");
    // A screen of the display is no other display.
    if (const auto dot = x11.find('.', x11.rfind(':') + 1); dot != std::string::npos)
        x11.resize(dot);
    return {variable("WAYLAND_DISPLAY"), x11};
}

/// What this process was started with, for its first window.
std::string ownToken() {
    const auto token = variable("XDG_ACTIVATION_TOKEN");
    return token.empty() ? variable("DESKTOP_STARTUP_ID") : token;
}

/// What a caller says first; empty where that is no token.
std::string tokenFrom(const FileDescriptor& caller) {
    constexpr std::size_t longest = 256;
    std::string said(longest + 1, '\0');
    const auto length = recv(caller.get(), said.data(), said.size(), MSG_DONTWAIT);
    said.resize(std::size_t(std::max<ssize_t>(length, 0)));
    const bool isToken = said.size() <= longest &&
                         std::ranges::all_of(said, [](char c) { return c > ' ' && c < 127; });
    return isToken ? said : "";
}

/// On the thread of the events, as often as there is something to read or no more to come, until it
/// says false.
void whenReadable(GMainContext* events, int descriptor, std::function<bool()> then) {
    using Then = std::function<bool()>;
    GSource* source =
        g_unix_fd_source_new(descriptor, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    const GUnixFDSourceFunc call = [](gint, GIOCondition, gpointer data) -> gboolean {
        return (*static_cast<Then*>(data))();
    };
    g_source_set_callback(source, G_SOURCE_FUNC(call), new Then(std::move(then)),
                          [](gpointer data) { delete static_cast<Then*>(data); });
    g_source_attach(source, events);
    g_source_unref(source);
}

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

} // namespace

SingleInstance::SingleInstance(const std::string& folder)
    : folder_(openedFolder(folder)), start_(begin()) {}

SingleInstance::~SingleInstance() {
    if (socket_) unlinkat(folder_.get(), socketName, 0);
}

SingleInstance::Start SingleInstance::begin() {
    const auto deadline = std::chrono::steady_clock::now() + answerWithin;
    // The first one may just be coming up or going away.
    do {
        const Lock outcome = lock();
        if (outcome == Lock::held) {
            tellDisplays();
            listen();
        }
        if (outcome != Lock::heldByAnother) return Start::first;
        if (isElsewhere()) return Start::isElsewhere;
        if (ringAtFirst(deadline - std::chrono::steady_clock::now())) return Start::cameForward;
        std::this_thread::sleep_for(pause);
    } while (std::chrono::steady_clock::now() < deadline);
    return Start::noAnswer;
}

/// The kernel lets go of the lock when the process ends, however it ends. The file stays: were it
/// removed, two processes could each lock a file of their own.
SingleInstance::Lock SingleInstance::lock() {
    constexpr mode_t onlyTheUser = 0600;
    if (!lock_) {
        lock_ = FileDescriptor(openat(folder_.get(), lockName,
                                      O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, onlyTheUser));
    }
    if (!lock_) return Lock::impossible;
    if (flock(lock_.get(), LOCK_EX | LOCK_NB) == 0) return Lock::held;
    return errno == EWOULDBLOCK ? Lock::heldByAnother : Lock::impossible;
}

/// In the lock's own file, where each start looks first.
void SingleInstance::tellDisplays() const {
    const auto names = displayNames();
    const auto text = names.wayland + "\n" + names.x11 + "\n";
    // Where the disk is full, a part of a name has no end of a line behind it and counts for none.
    [[maybe_unused]] const bool isTold =
        ftruncate(lock_.get(), 0) == 0 && pwrite(lock_.get(), text.data(), text.size(), 0) >= 0;
}

/// One name in common is enough: what is started from an X11 program of a Wayland session may know
/// only that. Who has no display has none to say it on.
bool SingleInstance::isElsewhere() const {
    std::string told(512, '\0');
    const auto length = pread(lock_.get(), told.data(), told.size(), 0);
    told.resize(std::size_t(std::max<ssize_t>(length, 0)));
    const auto lines = text::split(told, '\n');
    if (lines.size() != 3) return false;
    const auto here = displayNames();
    const auto isSame = [](const std::string& a, const std::string& b) {
        return !a.empty() && a == b;
    };
    const bool isKnown = lines[0] + lines[1] != "" && here.wayland + here.x11 != "";
    return isKnown && !isSame(lines[0], here.wayland) && !isSame(lines[1], here.x11);
}

void SingleInstance::listen() {
    constexpr int waiting = 8;
    const auto address = addressIn(folder_);
    FileDescriptor made(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!made) return;
    // What a process that crashed has left.
    unlinkat(folder_.get(), socketName, 0);
    if (bind(made.get(), generic(address), sizeof address) != 0) return;
    if (::listen(made.get(), waiting) == 0) socket_ = std::move(made);
}

bool SingleInstance::ringAtFirst(std::chrono::nanoseconds longest) const {
    const auto address = addressIn(folder_);
    const FileDescriptor call(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!call) return false;
    // At least one, as none would be no end.
    const auto left = std::max<std::int64_t>(1, longest / std::chrono::microseconds(1));
    const timeval timeout{.tv_sec = left / 1'000'000, .tv_usec = left % 1'000'000};
    for (const int waiting : {SO_SNDTIMEO, SO_RCVTIMEO})
        setsockopt(call.get(), SOL_SOCKET, waiting, &timeout, sizeof timeout);
    if (connect(call.get(), generic(address), sizeof address) != 0) return false;
    const auto token = ownToken();
    send(call.get(), token.data(), token.size(), MSG_NOSIGNAL);
    shutdown(call.get(), SHUT_WR);
    char said = 0;
    return recv(call.get(), &said, 1, 0) == 1 && said == cameForward;
}

void SingleInstance::serve(EventThread& events, Ring ring) {
    if (!socket_) return;
    auto* const context = events.context();
    whenReadable(context, socket_.get(), [this, context, ring = std::move(ring)] {
        answer(context, ring);
        return true;
    });
}

void SingleInstance::answer(GMainContext* events, const Ring& ring) const {
    const auto caller =
        std::make_shared<FileDescriptor>(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!*caller) return;
    whenReadable(events, caller->get(), [caller, ring] {
        ring(tokenFrom(*caller), [caller] { send(caller->get(), &cameForward, 1, MSG_NOSIGNAL); });
        return false;
    });
}

} // namespace corvane
