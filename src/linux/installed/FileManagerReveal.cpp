#include "linux/installed/FileManagerReveal.h"

#include "foundation/Diagnostics.h"
#include "linux/system/SessionBus.h"

#include <thread>

namespace corvane {
namespace {

bool showItem(const Url& item) {
    const auto bus = sessionBus();
    if (!bus) return false;
    const char* const uris[] = {item.absoluteString().c_str(), nullptr};
    return bool(callOnBus(bus.get(),
                          {.name = "org.freedesktop.FileManager1",
                           .path = "/org/freedesktop/FileManager1",
                           .interface = "org.freedesktop.FileManager1",
                           .method = "ShowItems"},
                          g_variant_new("(^ass)", uris, "")));
}

} // namespace

void revealInFileManager(const Url& item,
                         std::function<Result<void>(const Url& folder)> openFolder) {
    // The thread owns all that it uses, so it may outlive its caller.
    std::thread([item, openFolder = std::move(openFolder)] {
        if (showItem(item)) return;
        const auto opened = openFolder(item.deletingLastPathComponent());
        if (!opened)
            diagnostic({"Failed to show the folder: ", opened.error().localizedDescription});
    }).detach();
}

} // namespace corvane
