#include "linux/system/UnixSocket.h"

#include "linux/system/ProcessFacts.h"

#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

namespace corvane {

FileDescriptor connectedTo(const std::string& path) {
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    if (path.empty() || path.size() >= sizeof address.sun_path) return FileDescriptor();
    std::memcpy(address.sun_path, path.data(), path.size());
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const auto* const generic = reinterpret_cast<const sockaddr*>(&address);
    if (!socket || ::connect(socket.get(), generic, sizeof address) != 0) return FileDescriptor();
    return socket;
}

pid_t processBehind(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    if (::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0) return 0;
    return processSpacesOf(peer.pid) == 1 ? peer.pid : 0;
}

} // namespace corvane
