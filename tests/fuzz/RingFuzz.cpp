#include "fuzz/Fuzz.h"
#include "linux/session/SingleInstance.h"
#include "linux/system/EventThread.h"

#include <cstdio>
#include <filesystem>
#include <random>

#include <sys/socket.h>
#include <sys/un.h>

using namespace corvane;
namespace fs = std::filesystem;

namespace {

/// The first process, which comes forward at once.
struct First {
    First() {
        instance.serve(events,
                       [](const std::string&, const std::function<void()>& done) { done(); });
    }
    const std::string folder =
        fs::temp_directory_path() / ("corvane-ring-" + std::to_string(std::random_device()()));
    SingleInstance instance{folder};
    EventThread events;
};

} // namespace

/// Whatever somebody says at the socket, and however soon he hangs up: the next one is answered.
void feed(std::string_view text) {
    static const First first;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/app.corvane.Corvane.socket",
                  first.folder.c_str());
    const auto call = [&](bool listens) {
        const FileDescriptor caller(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        expect(::connect(caller.get(), reinterpret_cast<const sockaddr*>(&address),
                         sizeof address) == 0);
        (void)::send(caller.get(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        (void)::shutdown(caller.get(), SHUT_WR);
        char answer = 0;
        expect(!listens || (::recv(caller.get(), &answer, 1, 0) == 1 && answer == 'f'));
    };
    call(text.size() % 2 == 0);
    call(true);
}
