#include "linux/LinuxDesktop.h"
#include "qt/Face.h"
#include "qt/MainWindows.h"
#include "qt/QtAlerts.h"
#include "qt/QtAppearance.h"
#include "qt/QtMainQueue.h"
#include "qt/QtPanels.h"
#include "shell/CorvaneApp.h"

#include <QGuiApplication>
#include <QQmlEngine>

int main(int argc, char** argv) {
    using namespace corvane;
    prepareApplication();
    QGuiApplication application(argc, argv);
    nameApplication(application);
    QtMainQueue mainQueue;
    QtAppearance appearance;
    QQmlEngine engine;
    addViews(engine);
    MainWindows mainWindows(engine);
    QtAlerts alerts(engine, mainWindows);
    QtPanels panels(engine, mainWindows);
    LinuxDesktop desktop({mainQueue, alerts, mainWindows, appearance, panels});
    auto platform = desktop.platform();
    panels.serve(platform);
    CorvaneApp app(platform);
    mainWindows.serve(app);
    mainWindows.openMainWindow();
    const int status = QGuiApplication::exec();
    mainWindows.closeAll();
    return status;
}
