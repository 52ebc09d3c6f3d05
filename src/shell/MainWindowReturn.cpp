#include "platform/Platform.h"
#include "shell/AppDelegate.h"
#include "shell/MenuBarManager.h"

namespace corvane {

namespace {

constexpr double secondActivationDelay = 0.1;
constexpr double rebuildDelayAfterReturn = 0.2;
/// By then the desktop has made a window, if it makes one.
constexpr double windowDelay = 0.2;

} // namespace

void MenuBarManager::showMainWindow() {
    toolkit_.mainQueue.async([this] { presentMainWindow(); });
}

void MenuBarManager::presentMainWindow() {
    auto& application = toolkit_.application;
    application.activate();
    if (const auto window = application.firstWindow()) {
        application.orderFront(window->identifier);
        application.deminiaturize(window->identifier);
        if (window->canBecomeKey) {
            application.makeKeyAndOrderFront(window->identifier);
        } else {
            application.orderFront(window->identifier);
        }
    } else {
        toolkit_.mainQueue.async([this] { recreateMainWindow(); });
    }
    toolkit_.mainQueue.after(secondActivationDelay, [&application] { application.activate(); });
    rebuildMenuAfter(rebuildDelayAfterReturn);
}

void MenuBarManager::recreateMainWindow() {
    notificationCenter_.post("createNewWindow");
    delegate_.applicationShouldHandleReopen(false);
    auto& application = toolkit_.application;
    application.activate();
    const bool hasCome = application.firstWindow().has_value();
    toolkit_.mainQueue.after(windowDelay, [this, hasCome] { ensureMainWindowVisible(hasCome); });
}

/// A window that came and is closed again by now needs none in its place.
void MenuBarManager::ensureMainWindowVisible(bool hasCome) {
    auto& application = toolkit_.application;
    if (const auto window = application.firstWindow()) {
        application.makeKeyAndOrderFront(window->identifier);
        application.orderFront(window->identifier);
    } else if (!hasCome) {
        application.openEmptyWindow("Corvane - Workspace Manager", {100, 100, 1200, 800});
    }
}

} // namespace corvane
