#include "qt/MainWindows.h"

#include "qt/Activation.h"
#include "qt/Face.h"
#include "qt/HeaderModel.h"
#include "qt/WorkspaceListModel.h"
#include "shell/CorvaneApp.h"
#include "ui/ContentState.h"

#include <QGuiApplication>
#include <QPalette>
#include <QQuickWindow>
#include <QScreen>
#include <QThread>

namespace corvane {

/// A root view with all that it shows. The window goes before what it shows.
struct MainWindows::Window {
    Window(int number, CorvaneApp& app)
        : identifier(number), content(app.workspaceStore(), app.platform()), header(content.header),
          list(content.list) {}

    const int identifier;
    ContentState content;
    HeaderModel header;
    WorkspaceListModel list;
    std::unique_ptr<QQuickWindow> view;
};

MainWindows::MainWindows(QQmlEngine& engine) : engine_(engine) {}

MainWindows::~MainWindows() = default;

void MainWindows::serve(CorvaneApp& app) {
    app_ = &app;
    // What the last window's end means depends on the tray.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    connect(qGuiApp, &QCoreApplication::aboutToQuit, this,
            [&app] { app.appDelegate().applicationWillTerminate(); });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [&app](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive) app.appDelegate().applicationDidBecomeActive();
            });
}

void MainWindows::reopen() {
    const bool hasVisible = std::ranges::any_of(windows_, [](const auto& window) {
        return window->view->isVisible() && window->view->visibility() != QWindow::Minimized;
    });
    if (app_->appDelegate().applicationShouldHandleReopen(hasVisible) && windows().empty()) {
        openMainWindow();
    }
    activate();
}

bool MainWindows::isActive() const {
    return QGuiApplication::applicationState() == Qt::ApplicationActive;
}

bool MainWindows::isRunning() const {
    return QThread::currentThread()->loopLevel() > 0;
}

void MainWindows::activate() {
    const auto window = firstWindow();
    if (!window) return;
    auto& view = *find(window->identifier);
    view.raise();
    activateIgnoringOthers(view);
}

QQuickWindow* MainWindows::front() const {
    return windows_.empty() ? nullptr : windows_.front()->view.get();
}

std::vector<ApplicationWindow> MainWindows::windows() const {
    std::vector<ApplicationWindow> list;
    for (const auto& window : windows_)
        list.push_back({.identifier = window->identifier, .isSheet = false});
    for (const auto& [identifier, window] : emptyWindows_)
        list.push_back({.identifier = identifier, .isSheet = false});
    std::ranges::sort(list, {}, &ApplicationWindow::identifier);
    return list;
}

QQuickWindow* MainWindows::find(int identifier) const {
    for (const auto& window : windows_) {
        if (window->identifier == identifier) return window->view.get();
    }
    const auto empty = emptyWindows_.find(identifier);
    return empty == emptyWindows_.end() ? nullptr : empty->second.get();
}

void MainWindows::makeKeyAndOrderFront(int windowIdentifier) {
    deminiaturize(windowIdentifier);
    orderFront(windowIdentifier);
    if (auto* window = find(windowIdentifier)) window->requestActivate();
}

void MainWindows::orderFront(int windowIdentifier) {
    auto* window = find(windowIdentifier);
    if (!window) return;
    window->setVisible(true);
    window->raise();
}

void MainWindows::deminiaturize(int windowIdentifier) {
    auto* window = find(windowIdentifier);
    if (!window) return;
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
}

void MainWindows::openMainWindow() {
    windows_.push_back(std::make_unique<Window>(++lastIdentifier_, *app_));
    auto& window = *windows_.back();
    window.view = makeWindow(engine_, "MainWindow",
                             {{"header", QVariant::fromValue(&window.header)},
                              {"workspaces", QVariant::fromValue(&window.list)}});
    follow(*window.view, window.identifier);
    window.view->show();
    app_->setupApp();
}

void MainWindows::openEmptyWindow(const std::string& title, const Rect& content) {
    const int identifier = ++lastIdentifier_;
    auto& window = *(emptyWindows_[identifier] = std::make_unique<QQuickWindow>());
    window.setTitle(QString::fromStdString(title));
    window.setColor(QGuiApplication::palette().color(QPalette::Window));
    QRect place(0, 0, int(content.width), int(content.height));
    if (const auto* screen = window.screen())
        place.moveCenter(screen->availableGeometry().center());
    window.setGeometry(place);
    follow(window, identifier);
    window.show();
    makeKeyAndOrderFront(identifier);
}

void MainWindows::follow(QQuickWindow& window, int identifier) {
    // A closed window is hidden; what it showed goes once the event is over.
    connect(
        &window, &QWindow::visibleChanged, this,
        [this, identifier](bool isVisible) {
            if (!isVisible) close(identifier);
        },
        Qt::QueuedConnection);
}

void MainWindows::close(int identifier) {
    std::erase_if(windows_, [&](const auto& window) { return window->identifier == identifier; });
    emptyWindows_.erase(identifier);
    // With no status item nothing would lead back to the program.
    const bool goesOn = !app_->appDelegate().applicationShouldTerminateAfterLastWindowClosed() &&
                        app_->platform().statusBar.isShown();
    if (windows().empty() && !goesOn) terminate();
}

void MainWindows::closeAll() {
    windows_.clear();
    emptyWindows_.clear();
}

void MainWindows::terminate() {
    QCoreApplication::quit();
}

} // namespace corvane
