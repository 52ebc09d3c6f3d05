#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

/// Measures how long programs take from their start to their first frame: until a window on the
/// display that DISPLAY names has the colour of both programs' background near its corner. Usage:
/// firstFrame ROUNDS BARE_PROGRAM PROGRAM. They take turns. Writes the medians, and fails where the
/// program takes more than is allowed.
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::uint32_t background = 0xECECEE;
constexpr std::uint32_t colorMask = 0xFFFFFF;
constexpr int cornerDistance = 4;
constexpr double allowedRatio = 1.25;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

bool showsBackground(xcb_connection_t* display, xcb_window_t window) {
    const Reply<xcb_get_geometry_reply_t> place(
        xcb_get_geometry_reply(display, xcb_get_geometry(display, window), nullptr));
    if (!place || place->width < 500) return false;
    const Reply<xcb_get_image_reply_t> pixel(
        xcb_get_image_reply(display,
                            xcb_get_image(display, XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                                          cornerDistance, cornerDistance, 1, 1, ~0U),
                            nullptr));
    if (!pixel || xcb_get_image_data_length(pixel.get()) < 4) return false;
    const auto* bytes = xcb_get_image_data(pixel.get());
    const std::uint32_t color = bytes[0] | bytes[1] << 8 | bytes[2] << 16;
    return (color & colorMask) == background;
}

bool anyShowsBackground(xcb_connection_t* display, xcb_window_t root) {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(display, xcb_query_tree(display, root), nullptr));
    const auto* windows = xcb_query_tree_children(tree.get());
    return std::any_of(windows, windows + xcb_query_tree_children_length(tree.get()),
                       [&](xcb_window_t window) { return showsBackground(display, window); });
}

double measure(xcb_connection_t* display, xcb_window_t root, const char* program) {
    constexpr std::chrono::seconds longest(20);
    char* const arguments[]{const_cast<char*>(program), nullptr};
    pid_t process = 0;
    const auto start = Clock::now();
    if (posix_spawnp(&process, program, nullptr, nullptr, arguments, environ) != 0) {
        std::perror(program);
        std::exit(1);
    }
    while (!anyShowsBackground(display, root)) {
        if (Clock::now() - start > longest) {
            std::fprintf(stderr, "%s shows nothing\n", program);
            kill(process, SIGKILL);
            std::exit(1);
        }
        usleep(500);
    }
    const auto time = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    kill(process, SIGTERM);
    waitpid(process, nullptr, 0);
    return time;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    auto* display = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(display)) return 1;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    const int rounds = std::atoi(argv[1]);
    std::vector<std::vector<double>> times(std::size_t(argc - 2));
    for (int round = 0; round <= rounds; ++round) {
        for (int i = 2; i < argc; ++i) {
            const double time = measure(display, root, argv[i]);
            // The first round fills caches.
            if (round > 0) times[std::size_t(i - 2)].push_back(time);
        }
    }
    const auto median = [&](std::size_t program) {
        auto& all = times[program];
        std::ranges::sort(all);
        return all[all.size() / 2];
    };
    const double bare = median(0);
    const double ours = median(1);
    std::printf("%-34s %8.1f ms %8.1f ms   ratio %.2f\n", "to the first frame", ours, bare,
                ours / bare);
    xcb_disconnect(display);
    return ours / bare <= allowedRatio ? 0 : 1;
}
