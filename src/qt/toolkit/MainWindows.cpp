#include "qt/toolkit/MainWindows.h"

#include "qt/models/HeaderModel.h"
#include "qt/models/OnboardingModel.h"
#include "qt/models/SettingsModel.h"
#include "qt/models/WorkspaceListModel.h"
#include "qt/toolkit/Views.h"
#include "shell/CorvaneApp.h"
#include "ui/AddResourceSheet.h"
#include "ui/ContentState.h"
#include "ui/OnboardingView.h"
#include "ui/WorkspaceSheet.h"

#include <QGuiApplication>
#include <QPalette>
#include <QQuickWindow>
#include <QScreen>
#include <QThread>

namespace corvane {

namespace {

std::unique_ptr<ResourceListModel> resourceList(const Uuid& workspaceId, CorvaneApp& app) {
    return std::make_unique<ResourceListModel>(
        std::make_unique<ResourceManagement>(workspaceId, app.workspaceStore(), app.platform()),
        [workspaceId, &app] {
            return std::make_unique<AddResourceSheet>(workspaceId, app.workspaceStore(),
                                                      app.bookmarks(), app.platform());
        });
}

void center(QWindow& window, const Rect& content) {
    QRect place(0, 0, int(content.width), int(content.height));
    if (const auto* screen = window.screen())
        place.moveCenter(screen->availableGeometry().center());
    window.setGeometry(place);
}

} // namespace

/// A root view with all that it shows. The window goes before what it shows.
struct MainWindows::Window {
    Window(int number, CorvaneApp& app)
        : identifier(number), content(app.workspaceStore(), app.platform()),
          header(content.header,
                 [&app] { return newSpaceSheet(app.workspaceStore(), app.platform().clock); }),
          list(
              content.list,
              [&app](const Workspace& workspace) {
                  return editWorkspaceSheet(workspace, app.workspaceStore(), app.platform().clock);
              },
              [&app](const Uuid& workspaceId) { return resourceList(workspaceId, app); }),
          settings(content.settings) {}

    const int identifier;
    ContentState content;
    HeaderModel header;
    WorkspaceListModel list;
    SettingsModel settings;
    std::unique_ptr<QQuickWindow> view;
};

/// The tour with its window, both kept when the window is closed.
struct MainWindows::Tour {
    Tour(CorvaneApp& app, std::function<void()> closed)
        : state(
              app.workspaceStore(), app.platform().images,
              [&app] { completeOnboarding(app.platform().userDefaults); },
              [this] { view->close(); }),
          model(state), windowWillClose(std::move(closed)) {}

    OnboardingView state;
    OnboardingModel model;
    std::function<void()> windowWillClose;
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
    giveKeyboard(view);
}

void MainWindows::activateWith(Activation activation) {
    activation_ = std::move(activation);
}

void MainWindows::giveKeyboard(QQuickWindow& window) {
    window.requestActivate();
    if (!activation_ || !window.handle()) return;
    // Whoever shows the windows hears of this one before it is asked for it.
    QGuiApplication::sync();
    activation_(std::uint64_t(window.winId()), window.title().toStdString());
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
    for (const auto& [identifier, tour] : tours_) {
        if (tour->view->isVisible()) list.push_back({.identifier = identifier, .isSheet = false});
    }
    return list;
}

QQuickWindow* MainWindows::find(int identifier) const {
    for (const auto& window : windows_) {
        if (window->identifier == identifier) return window->view.get();
    }
    const auto tour = tours_.find(identifier);
    if (tour != tours_.end()) return tour->second->view.get();
    const auto empty = emptyWindows_.find(identifier);
    return empty == emptyWindows_.end() ? nullptr : empty->second.get();
}

void MainWindows::makeKeyAndOrderFront(int windowIdentifier) {
    deminiaturize(windowIdentifier);
    orderFront(windowIdentifier);
    if (auto* window = find(windowIdentifier)) giveKeyboard(*window);
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
    window.view = makeWindow(engine_, "window/MainWindow",
                             {{"header", QVariant::fromValue(&window.header)},
                              {"workspaces", QVariant::fromValue(&window.list)},
                              {"settings", QVariant::fromValue(&window.settings)}});
    follow(*window.view, window.identifier);
    window.view->show();
    app_->setupApp();
}

void MainWindows::openEmptyWindow(const std::string& title, const Rect& content) {
    const int identifier = ++lastIdentifier_;
    auto& window = *(emptyWindows_[identifier] = std::make_unique<QQuickWindow>());
    window.setTitle(QString::fromStdString(title));
    window.setColor(QGuiApplication::palette().color(QPalette::Window));
    center(window, content);
    follow(window, identifier);
    makeKeyAndOrderFront(identifier);
}

int MainWindows::openOnboardingWindow(const std::string& title, const Rect& content,
                                      std::function<void()> windowWillClose) {
    const int identifier = ++lastIdentifier_;
    auto& tour = *(tours_[identifier] = std::make_unique<Tour>(*app_, std::move(windowWillClose)));
    tour.view =
        makeWindow(engine_, "tour/OnboardingWindow", {{"tour", QVariant::fromValue(&tour.model)}});
    tour.view->setTitle(QString::fromStdString(title));
    center(*tour.view, content);
    // At once, as the program may be on its way out.
    connect(tour.view.get(), &QWindow::visibleChanged, this, [&tour](bool isVisible) {
        if (!isVisible) tour.windowWillClose();
    });
    follow(*tour.view, identifier);
    makeKeyAndOrderFront(identifier);
    return identifier;
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
    // With no status item nothing on the screen would show that the program still runs.
    const bool goesOn = !app_->appDelegate().applicationShouldTerminateAfterLastWindowClosed() &&
                        app_->platform().statusBar.isShown();
    if (windows().empty() && !goesOn) terminate();
}

void MainWindows::closeAll() {
    windows_.clear();
    emptyWindows_.clear();
    tours_.clear();
}

void MainWindows::terminate() {
    QCoreApplication::quit();
}

} // namespace corvane
