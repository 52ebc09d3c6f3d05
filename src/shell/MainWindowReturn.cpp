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
    platform_.application.activate();
    platform_.mainQueue.after(windowDelay, [this] { ensureMainWindowVisible(); });
}

void MenuBarManager::ensureMainWindowVisible() {
    auto& application = platform_.application;
    if (const auto window = application.firstWindow()) {
        application.makeKeyAndOrderFront(window->identifier);
        application.orderFront(window->identifier);
    } else {
        application.openEmptyWindow("Corvane - Workspace Manager", {100, 100, 1200, 800});
    }
}

} // namespace corvane
