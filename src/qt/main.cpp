#include "linux/LinuxDesktop.h"
#include "linux/LinuxSession.h"
#include "qt/toolkit/MainWindows.h"
#include "qt/toolkit/QtAlerts.h"
#include "qt/toolkit/QtAppearance.h"
#include "qt/toolkit/QtImages.h"
#include "qt/toolkit/QtMainQueue.h"
#include "qt/toolkit/QtPanels.h"
#include "qt/toolkit/Startup.h"
#include "qt/toolkit/Views.h"
#include "qt/tray/QtStatusBar.h"
#include "shell/CorvaneApp.h"

#include <QApplication>
#include <QQmlEngine>

int main(int argc, char** argv) {
    using namespace corvane;
    LinuxSession session;
    if (!session.isFirst()) return session.exitStatus();
    prepareApplication();
    QApplication application(argc, argv);
    nameApplication(application);
    QtMainQueue mainQueue;
    QtAppearance appearance([&] { return session.prefersDark(); });
    QQmlEngine engine;
    addViews(engine);
    MainWindows mainWindows(engine);
    QtAlerts alerts(engine, mainWindows);
    QtPanels panels(engine, mainWindows);
    QtImages images;
    QtStatusBar statusBar;
    LinuxDesktop desktop({.mainQueue = mainQueue,
                          .alerts = alerts,
                          .application = mainWindows,
                          .statusBar = statusBar,
                          .images = images,
                          .appearance = appearance,
                          .panels = panels},
                         session.events());
    mainWindows.activateWith([&](std::uint64_t number, const std::string& title) {
        desktop.activateOwnWindow(number, title);
    });
    auto platform = desktop.platform();
    panels.serve(platform);
    CorvaneApp app(platform);
    mainWindows.serve(app);
    session.serve(
        [&](auto work) {
            QMetaObject::invokeMethod(&application, std::move(work), Qt::QueuedConnection);
        },
        [&] { mainWindows.reopen(); }, [&] { mainWindows.terminate(); });
    mainWindows.openMainWindow();
    app.appDelegate().applicationDidFinishLaunching();
    const int status = QApplication::exec();
    mainWindows.closeAll();
    return status;
}
