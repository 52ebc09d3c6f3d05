#include "qt/toolkit/MainWindows.h"

#include "qt/models/HeaderModel.h"
#include "qt/models/OnboardingModel.h"
#include "qt/models/SettingsModel.h"
#include "qt/models/UndoModel.h"
#include "qt/models/WorkspaceListModel.h"
#include "qt/toolkit/Places.h"
#include "qt/toolkit/QtMainQueue.h"
#include "qt/toolkit/Views.h"
#include "qt/toolkit/WaylandDialogs.h"
#include "shell/CorvaneApp.h"
#include "ui/AddResourceSheet.h"
#include "ui/ContentState.h"
#include "ui/OnboardingView.h"
#include "ui/WorkspaceSheet.h"

#include <QGuiApplication>
#include <QPalette>
#include <QPointer>
#include <QQuickWindow>
#include <QThread>
#include <QTimer>

namespace corvane {

namespace {

/// Whoever shows the windows hears of this one before it is asked for it. Events come in the
/// meantime; false where it was closed by one.
bool staysWhileHeardOf(QWindow& window) {
    const QPointer<QWindow> shown(&window);
    QGuiApplication::sync();
    return shown && shown->handle();
}

constexpr std::string_view placeKey = "MainWindowPlace";

std::unique_ptr<ResourceListModel> resourceList(const Uuid& workspaceId, CorvaneApp& app,
                                                ContentState& content) {
    auto& store = app.workspaceStore();
    const auto& platform = app.platform();
    const ResourceManagement::Desktop desktop{.mainQueue = platform.mainQueue,
                                              .alerts = platform.alerts,
                                              .panels = platform.panels,
                                              .fileSystem = platform.fileSystem,
                                              .bundles = platform.bundles,
                                              .applications = platform.applications,
                                              .fileIcons = platform.fileIcons};
    return std::make_unique<ResourceListModel>(
        std::make_unique<ResourceManagement>(workspaceId, store, desktop, content.undo,
                                             content.missing),
        [workspaceId, &app, desktop](const std::optional<RecordKey>& edited) {
            return std::make_unique<AddResourceSheet>(workspaceId, app.workspaceStore(),
                                                      app.bookmarks(), desktop.panels,
                                                      desktop.bundles, desktop.fileSystem, edited);
        });
}

} // namespace

/// A root view with all that it shows. The window goes before what it shows.
struct MainWindows::Window {
    Window(int number, CorvaneApp& app)
        : identifier(number), content(app.workspaceStore(), app.platform()),
          header(content.header,
                 [&app] { return newSpaceSheet(app.workspaceStore(), app.platform().clock); }),
          list(
              content.list, app.workspaceStore(),
              [&app](const Workspace& workspace) {
                  return editWorkspaceSheet(workspace, app.workspaceStore(), app.platform().clock);
              },
              [this, &app](const Uuid& workspaceId) {
                  return resourceList(workspaceId, app, content);
              }),
          settings(content.settings, app.workspaceStore()), undo(content.undo) {}

    const int identifier;
    ContentState content;
    HeaderModel header;
    WorkspaceListModel list;
    SettingsModel settings;
    UndoModel undo;
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

MainWindows::MainWindows(QQmlEngine& engine, QtMainQueue& mainQueue)
    : engine_(engine), mainQueue_(mainQueue) {
    qGuiApp->installEventFilter(this);
}

MainWindows::~MainWindows() = default;

void MainWindows::serve(CorvaneApp& app) {
    app_ = &app;
    // What the last window's end means depends on the tray.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    connect(qGuiApp, &QCoreApplication::aboutToQuit, this, [this] {
        if (const auto* window = front()) rememberPlace(*window);
        sessionWillEnd();
    });
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [this] {
        app_->appDelegate().applicationWillTerminate();
        isCommitted_ = true;
    });
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [&app](Qt::ApplicationState state) {
                if (state == Qt::ApplicationActive) app.appDelegate().applicationDidBecomeActive();
            });
}

void MainWindows::sessionWillEnd() {
    if (!std::exchange(isSaved_, true)) app_->appDelegate().applicationWillTerminate();
}

void MainWindows::reopen(const std::string& token) {
    // The toolkit takes it with its next request on Wayland; elsewhere nobody asks for one.
    if (!token.empty() && isOnWayland())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(token));
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
    // Behind an alert no window takes anything.
    auto* view = QGuiApplication::modalWindow();
    if (const auto window = firstWindow(); window && !view) view = find(window->identifier);
    if (!view) return;
    view->raise();
    giveKeyboard(*view);
}

void MainWindows::goThrough(Door door) {
    door_ = std::move(door);
}

bool MainWindows::isInSight(const QWindow& window) const {
    if (!door_.isAway || !window.handle()) return true;
    return !door_.isAway(std::uint64_t(window.winId()), window.title().toStdString());
}

void MainWindows::giveKeyboard(QWindow& window) const {
    window.requestActivate();
    if (!door_.activate || !window.handle()) return;
    if (staysWhileHeardOf(window))
        door_.activate(std::uint64_t(window.winId()), window.title().toStdString());
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
                              {"settings", QVariant::fromValue(&window.settings)},
                              {"undo", QVariant::fromValue(&window.undo)}});
    follow(*window.view, window.identifier);
    const auto place = restorePlace(*window.view, rememberedPlace());
    if (place.isMaximized) {
        window.view->showMaximized();
    } else {
        if (place.corner) moveOnceShown(*window.view, *place.corner);
        window.view->show();
    }
    app_->setupApp();
}

void MainWindows::openEmptyWindow(const std::string& title, const Rect& content) {
    const int identifier = ++lastIdentifier_;
    auto& window = *(emptyWindows_[identifier] = std::make_unique<QQuickWindow>());
    window.setTitle(QString::fromStdString(title));
    window.setColor(QGuiApplication::palette().color(QPalette::Window));
    window.resize(int(content.width), int(content.height));
    center(window);
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
    tour.view->resize(int(content.width), int(content.height));
    center(*tour.view);
    // At once, as the program may be on its way out.
    connect(tour.view.get(), &QWindow::visibleChanged, this, [&tour](bool isVisible) {
        if (!isVisible) tour.windowWillClose();
    });
    follow(*tour.view, identifier);
    // On Wayland nobody else can put it over what is there.
    if (auto* const main = front(); main && isOnWayland()) tour.view->setTransientParent(main);
    showAsDialog(*tour.view);
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
    endWithLastWindow();
}

/// With no status item nothing on the screen would show that the program still runs. What the user
/// asked for just before comes true all the same.
void MainWindows::endWithLastWindow() {
    constexpr double secondsAtMost = 10;
    const auto isLast = [this] {
        return windows().empty() &&
               (app_->appDelegate().applicationShouldTerminateAfterLastWindowClosed() ||
                !app_->platform().statusBar.isShown());
    };
    if (!isLast()) return;
    mainQueue_.whenDone(secondsAtMost, [this, isLast] {
        if (isLast()) terminate();
    });
}

void MainWindows::closeAll() {
    // A tour that goes with the program wasn't closed by anyone.
    for (const auto& [identifier, tour] : tours_)
        tour->view->disconnect(this);
    windows_.clear();
    emptyWindows_.clear();
    tours_.clear();
}

/// Windows stay as they are: whoever closes one says something by it.
void MainWindows::terminate() {
    QCoreApplication::exit();
}

/// Sees the events of all objects.
bool MainWindows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) {
        for (const auto& window : windows_) {
            if (window->view.get() == watched) rememberPlace(*window->view);
        }
    }
    if (event->type() == QEvent::WindowUnblocked) {
        for (const auto& window : windows_) {
            if (window->view.get() == watched) emit window->settings.alertHasGone();
        }
    }
    // The toolkit would close all windows first.
    if (event->type() != QEvent::Quit || watched != qGuiApp) return false;
    if (isCommitted_) isSaved_ = true;
    terminate();
    return true;
}

std::string MainWindows::rememberedPlace() const {
    const auto value = app_->platform().userDefaults.objectForKey(placeKey);
    const auto* text = value ? value->as<std::string>() : nullptr;
    return text ? *text : "";
}

void MainWindows::rememberPlace(const QWindow& window) {
    const auto before = rememberedPlace();
    auto corner = window.framePosition();
    if (isOnWayland()) {
        const auto told =
            door_.corner ? door_.corner(std::uint64_t(window.winId()), window.title().toStdString())
                         : std::nullopt;
        if (!told) return;
        corner = {qRound(told->x), qRound(told->y)};
    }
    const auto place = placeOf(window, corner, before);
    if (place != before) app_->platform().userDefaults.setObject(placeKey, {place});
}

void MainWindows::moveOnceShown(QQuickWindow& window, const QPoint& corner) {
    if (!isOnWayland() || !door_.moveTo) return;
    constexpr int mostTries = 10;
    connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [this, &window, corner] { move(window, corner, mostTries); },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
}

/// A busy compositor may not have put it anywhere yet.
void MainWindows::move(QQuickWindow& window, const QPoint& corner, int tries) {
    constexpr std::chrono::milliseconds pause(200);
    if (!staysWhileHeardOf(window)) return;
    const bool stands = door_.moveTo(std::uint64_t(window.winId()), window.title().toStdString(),
                                     {double(corner.x()), double(corner.y())});
    if (!stands && tries > 1)
        QTimer::singleShot(pause, &window,
                           [this, &window, corner, tries] { move(window, corner, tries - 1); });
}

} // namespace corvane
