#include "linux/windows/sway/SwaySocket.h"

#include "linux/system/UnixSocket.h"
#include "linux/windows/WaylandSession.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>
#include <vector>

#include <poll.h>
#include <sys/socket.h>

namespace corvane::sway {
namespace {

constexpr std::string_view magic = "i3-ipc";
constexpr std::size_t headerSize = magic.size() + 2 * sizeof(std::uint32_t);
constexpr std::size_t mostBytes = 16 << 20;

bool waitFor(int socket, short event, Deadline by) {
    for (;;) {
        pollfd waiting{socket, event, 0};
        const int ready = ::poll(&waiting, 1, millisecondsTo(by));
        if (ready >= 0 || errno != EINTR) return ready > 0;
    }
}

bool send(int socket, std::string_view bytes, Deadline by) {
    while (!bytes.empty()) {
        if (!waitFor(socket, POLLOUT, by)) return false;
        const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno != EINTR && errno != EAGAIN) return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
    }
    return true;
}

bool receive(int socket, char* bytes, std::size_t size, Deadline by) {
    while (size > 0) {
        if (!waitFor(socket, POLLIN, by)) return false;
        const ssize_t got = ::recv(socket, bytes, size, 0);
        if (got == 0 || (got < 0 && errno != EINTR && errno != EAGAIN)) return false;
        bytes += std::max<ssize_t>(got, 0);
        size -= static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    }
    return true;
}

std::string framed(Question question, std::string_view words) {
    const std::uint32_t numbers[]{static_cast<std::uint32_t>(words.size()),
                                  static_cast<std::uint32_t>(question)};
    std::string frame(magic);
    frame.append(reinterpret_cast<const char*>(numbers), sizeof numbers);
    return frame.append(words);
}

std::optional<std::string> askAt(int socket, Question question, std::string_view words,
                                 Deadline by) {
    char header[headerSize];
    if (!send(socket, framed(question, words), by)) return std::nullopt;
    if (!receive(socket, header, headerSize, by)) return std::nullopt;
    std::uint32_t numbers[2];
    std::memcpy(numbers, header + magic.size(), sizeof numbers);
    const auto [size, type] = numbers;
    const bool isAnswer = std::string_view(header, magic.size()) == magic &&
                          type == static_cast<std::uint32_t>(question);
    if (!isAnswer || size > mostBytes) return std::nullopt;
    std::string answer(size, '\0');
    return receive(socket, answer.data(), size, by) ? std::optional(std::move(answer))
                                                    : std::nullopt;
}

std::string environment(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? value : "";
}

/// One that was started again has a socket of another name than its clients were told.
std::vector<std::string> candidates() {
    namespace fs = std::filesystem;
    std::vector<std::pair<fs::file_time_type, std::string>> found;
    const auto runtime = environment("XDG_RUNTIME_DIR");
    for (const auto& folder : {runtime, runtime + "/i3"}) {
        std::error_code error;
        fs::directory_iterator file(folder, error);
        for (; file != fs::directory_iterator(); file.increment(error)) {
            const std::string name = file->path().filename();
            const bool isSway = name.starts_with("sway-ipc.") && name.ends_with(".sock");
            if (!isSway && !name.starts_with("ipc-socket.")) continue;
            found.emplace_back(fs::last_write_time(file->path(), error), file->path());
        }
    }
    std::ranges::sort(found, std::ranges::greater());
    std::vector<std::string> paths{environment("SWAYSOCK"), environment("I3SOCK")};
    for (auto& [time, path] : found)
        paths.push_back(std::move(path));
    return paths;
}

} // namespace

std::optional<std::string> ask(Question question, std::string_view words, pid_t compositor,
                               Deadline by) {
    for (const auto& path : candidates()) {
        const auto socket = connectedTo(path);
        if (!socket || processBehind(socket.get()) != compositor) continue;
        if (auto answer = askAt(socket.get(), question, words, by)) return answer;
    }
    return std::nullopt;
}

} // namespace corvane::sway
