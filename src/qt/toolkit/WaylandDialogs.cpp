#include "qt/toolkit/WaylandDialogs.h"

#include "qt/toolkit/GtkShell.h"

#include <QGuiApplication>
#include <QWindow>
#include <string_view>

#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>

namespace corvane {
namespace {

/// What the compositor offers for dialogs; none where it is another one than GNOME's.
gtk_shell1* offeredBy(wl_display* display) {
    static constexpr std::uint32_t canRelease = 4;
    static constexpr wl_registry_listener listener{
        [](void* data, wl_registry* registry, std::uint32_t name, const char* interface,
           std::uint32_t version) {
            if (std::string_view(interface) != gtk_shell1_interface.name || version < canRelease)
                return;
            *static_cast<void**>(data) =
                wl_registry_bind(registry, name, &gtk_shell1_interface, canRelease);
        },
        [](void*, wl_registry*, std::uint32_t) {}};
    // The toolkit's own messages wait meanwhile.
    auto* const queue = wl_display_create_queue(display);
    auto* const here = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(here), queue);
    auto* const registry = wl_display_get_registry(here);
    wl_proxy_wrapper_destroy(here);
    void* shell = nullptr;
    wl_registry_add_listener(registry, &listener, static_cast<void*>(&shell));
    wl_display_roundtrip_queue(display, queue);
    wl_registry_destroy(registry);
    if (shell) wl_proxy_set_queue(static_cast<wl_proxy*>(shell), nullptr);
    wl_event_queue_destroy(queue);
    return static_cast<gtk_shell1*>(shell);
}

gtk_shell1* shellOf(QPlatformNativeInterface& toolkit) {
    auto* const display =
        static_cast<wl_display*>(toolkit.nativeResourceForIntegration("wl_display"));
    return display ? offeredBy(display) : nullptr;
}

} // namespace

bool isOnWayland() {
    return QGuiApplication::platformName().startsWith("wayland");
}

void showAsDialog(QWindow& window) {
    auto* const toolkit = QGuiApplication::platformNativeInterface();
    static gtk_shell1* const shell = isOnWayland() ? shellOf(*toolkit) : nullptr;
    if (window.isVisible()) return;
    window.show();
    // It has a place once it has a picture, which comes later.
    auto* const surface =
        shell ? static_cast<wl_surface*>(toolkit->nativeResourceForWindow("surface", &window))
              : nullptr;
    if (!surface) return;
    auto* const dialog = gtk_shell1_get_gtk_surface(shell, surface);
    gtk_surface1_set_modal(dialog);
    gtk_surface1_release(dialog);
}

} // namespace corvane
