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
    platform_.mainQueue.async([this] { presentMainWindow(); });
}

void MenuBarManager::presentMainWindow() {
    auto& application = platform_.application;
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
        platform_.mainQueue.async([this] { recreateMainWindow(); });
    }
    platform_.mainQueue.after(secondActivationDelay, [&application] { application.activate(); });
    rebuildMenuAfter(rebuildDelayAfterReturn);
}

void MenuBarManager::recreateMainWindow() {
    platform_.notificationCenter.post("createNewWindow");
    delegate_.applicationShouldHandleReopen(false);
    auto& application = platform_.application;
    application.activate();
    const bool hasCome = application.firstWindow().has_value();
    platform_.mainQueue.after(windowDelay, [this, hasCome] { ensureMainWindowVisible(hasCome); });
}

/// A window that came and is closed again by now needs none in its place.
void MenuBarManager::ensureMainWindowVisible(bool hasCome) {
    auto& application = platform_.application;
    if (const auto window = application.firstWindow()) {
        application.makeKeyAndOrderFront(window->identifier);
        application.orderFront(window->identifier);
    } else if (!hasCome) {
        application.openEmptyWindow("Corvane - Workspace Manager", {100, 100, 1200, 800});
    }
}

} // namespace corvane
