#include "linux/LinuxDesktop.h"
#include "linux/LinuxSession.h"
#include "qt/toolkit/QtToolkit.h"
#include "qt/toolkit/Startup.h"
#include "qt/tray/QtStatusBar.h"
#include "shell/CorvaneApp.h"

#include <QApplication>
#include <optional>

int main(int argc, char** argv) {
    using namespace corvane;
    // What the session hears is posted to it, for as long as there is a session.
    std::optional<QApplication> application;
    LinuxSession session;
    const auto whyNotHere = session.whyNotHere();
    if (!session.isFirst() && whyNotHere.empty()) return session.exitStatus();
    prepareApplication();
    nameApplication(application.emplace(argc, argv));
    QtStatusBar tray;
    QtToolkit toolkit(tray, [&] { return session.prefersDark(); });
    if (!session.isFirst()) {
        toolkit.alerts().runModal(
            {.title = "Corvane Is Running", .message = whyNotHere, .buttons = {"OK"}});
        return session.exitStatus();
    }
    LinuxDesktop desktop(toolkit.mainQueue(), toolkit.alerts(), session.events());
    auto& windows = toolkit.windows();
    windows.goThrough(
        {.activate = [&](std::uint64_t number,
                         const std::string& title) { desktop.activateOwnWindow(number, title); },
         .isAway = [&](std::uint64_t number,
                       const std::string& title) { return desktop.isOwnWindowAway(number, title); },
         .corner =
             [&](std::uint64_t number, const std::string& title) {
                 return desktop.cornerOfOwnWindow(number, title);
             },
         .moveTo =
             [&](std::uint64_t number, const std::string& title, const Point& corner) {
                 return desktop.moveOwnWindow(number, title, corner);
             }});
    auto panels = toolkit.panels(desktop.machine());
    Platform platform{toolkit.facilities(panels), desktop.machine()};
    CorvaneApp app(platform);
    session.serve(
        [&](auto work) {
            QMetaObject::invokeMethod(&*application, std::move(work), Qt::QueuedConnection);
        },
        {.reopen =
             [&](const std::string& token) {
                 windows.reopen(token);
                 desktop.endLaunch(token);
             },
         .appearanceIsKnown = [&] { toolkit.readAppearanceAgain(); },
         .sessionWillEnd = [&] { windows.sessionWillEnd(); },
         .sessionGoesOn = [&] { windows.sessionGoesOn(); },
         .terminate = [&] { windows.terminate(); }});
    return toolkit.run(app);
}
