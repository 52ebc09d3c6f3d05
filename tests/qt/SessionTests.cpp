#include "qt/Interface.h"

#include <QGuiApplication>
#include <QSessionManager>

namespace corvane {
namespace {

/// As the session manager of X11 asks for it, while other programs are still there.
TEST_F(Views, theEndOfASessionSavesLayoutsOnceAndOneThatIsCalledOffAnew) {
    desktop.install({.path = "/Applications/Pad.app", .displayName = "Pad"});
    desktop.running.push_back({.processIdentifier = 7, .localizedName = "Pad"});
    open({workspace("Work", {makeResource("Pad", "/Applications/Pad.app", ResourceType::application,
                                          platform.bundles)})});
    store().enableAccessibilityFeatures = true;
    store().autoSaveLayouts = true;
    ASSERT_TRUE(press("Start"));
    runFor(2);
    const auto widthAfter = [&](int width, const std::function<void()>& act) {
        desktop.screen.stack = {{.info = windowInfo(7, 1, "Pad", {10, 20, double(width), 600})}};
        act();
        const auto& saved = store().workspaces->front().savedWindowLayouts;
        return saved && !saved->empty() ? saved->front().frame.width : 0;
    };
    const auto asksToSave = [] {
        auto* const session = qGuiApp->findChild<QSessionManager*>();
        ASSERT_TRUE(session);
        emit qGuiApp->commitDataRequest(*session);
    };
    const auto ends = [this] { windows.sessionWillEnd(); };
    EXPECT_EQ(widthAfter(500, asksToSave), 500);
    EXPECT_EQ(widthAfter(510, ends), 510) << "the user ends the program in a session that goes on";
    windows.sessionGoesOn();
    EXPECT_EQ(widthAfter(520, asksToSave), 520);
    EXPECT_EQ(widthAfter(530,
                         [&] {
                             QEvent quit(QEvent::Quit);
                             QCoreApplication::sendEvent(qGuiApp, &quit);
                             ends();
                         }),
              520)
        << "others may be gone by now";
}

} // namespace
} // namespace corvane
