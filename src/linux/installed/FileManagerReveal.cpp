#include "linux/installed/FileManagerReveal.h"

#include "foundation/Diagnostics.h"
#include "linux/system/SessionBus.h"

#include <system_error>
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

void show(const std::function<Result<void>(const Url& folder)>& openFolder, const Url& folder) {
    const auto opened = openFolder(folder);
    if (!opened) diagnostic({"Failed to show the folder: ", opened.error().localizedDescription});
}

} // namespace

void revealInFileManager(const Url& item,
                         const std::function<Result<void>(const Url& folder)>& openFolder) {
    const auto folder = item.deletingLastPathComponent();
    try {
        // The thread owns all that it uses, so it may outlive its caller.
        std::thread([=] {
            if (!showItem(item)) show(openFolder, folder);
        }).detach();
    } catch (const std::system_error&) {
        show(openFolder, folder);
    }
}

} // namespace corvane
