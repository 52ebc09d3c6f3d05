#include "qt/MainWindows.h"

#include "qt/Face.h"
#include "qt/HeaderModel.h"
#include "qt/WorkspaceListModel.h"
#include "shell/CorvaneApp.h"
#include "ui/ContentState.h"

#include <QCoreApplication>
#include <QQuickWindow>

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
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            [&app] { app.appDelegate().applicationWillTerminate(); });
}

QQuickWindow* MainWindows::front() const {
    return windows_.empty() ? nullptr : windows_.front()->view.get();
}

std::vector<ApplicationWindow> MainWindows::windows() const {
    std::vector<ApplicationWindow> list;
    for (const auto& window : windows_)
        list.push_back({.identifier = window->identifier, .isSheet = false});
    return list;
}

void MainWindows::bringToFront(int windowIdentifier) {
    for (const auto& window : windows_) {
        if (window->identifier != windowIdentifier) continue;
        window->view->show();
        window->view->raise();
        window->view->requestActivate();
    }
}

void MainWindows::openMainWindow() {
    windows_.push_back(std::make_unique<Window>(++lastIdentifier_, *app_));
    auto& window = *windows_.back();
    window.view = makeWindow(engine_, "MainWindow",
                             {{"header", QVariant::fromValue(&window.header)},
                              {"workspaces", QVariant::fromValue(&window.list)}});
    // A closed window is hidden; what it showed goes once the event is over.
    connect(
        window.view.get(), &QWindow::visibleChanged, this,
        [this, identifier = window.identifier](bool isVisible) {
            if (!isVisible) close(identifier);
        },
        Qt::QueuedConnection);
    window.view->show();
    app_->setupApp();
}

void MainWindows::close(int identifier) {
    std::erase_if(windows_, [&](const auto& window) { return window->identifier == identifier; });
}

void MainWindows::closeAll() {
    windows_.clear();
}

void MainWindows::terminate() {
    QCoreApplication::quit();
}

} // namespace corvane
