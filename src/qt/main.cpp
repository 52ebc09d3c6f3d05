#include "linux/LinuxDesktop.h"
#include "linux/LinuxSession.h"
#include "qt/toolkit/QtToolkit.h"
#include "qt/toolkit/Startup.h"
#include "qt/tray/QtStatusBar.h"
#include "shell/CorvaneApp.h"

#include <QApplication>

int main(int argc, char** argv) {
    using namespace corvane;
    LinuxSession session;
    if (!session.isFirst()) return session.exitStatus();
    prepareApplication();
    QApplication application(argc, argv);
    nameApplication(application);
    QtStatusBar tray;
    QtToolkit toolkit(tray, [&] { return session.prefersDark(); });
    const auto facilities = toolkit.facilities();
    LinuxDesktop desktop(facilities.mainQueue, facilities.alerts, session.events());
    auto& windows = toolkit.windows();
    windows.activateWith([&](std::uint64_t number, const std::string& title) {
        desktop.activateOwnWindow(number, title);
    });
    Platform platform{facilities, desktop.machine()};
    CorvaneApp app(platform);
    session.serve(
        [&](auto work) {
            QMetaObject::invokeMethod(&application, std::move(work), Qt::QueuedConnection);
        },
        [&] { windows.reopen(); }, [&] { windows.terminate(); });
    return toolkit.run(app);
}
