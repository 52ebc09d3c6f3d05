#include "linux/LinuxDesktop.h"
#include "linux/LinuxSession.h"
#include "qt/Face.h"
#include "qt/MainWindows.h"
#include "qt/NoPanels.h"
#include "qt/QtAlerts.h"
#include "qt/QtAppearance.h"
#include "qt/QtImages.h"
#include "qt/QtMainQueue.h"
#include "qt/QtStatusBar.h"
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
    NoPanels panels;
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
    auto platform = desktop.platform();
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
