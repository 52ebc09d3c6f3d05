#pragma once

#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"

#include <gtest/gtest.h>

namespace corvane::desktop {

/// A test on a desktop of its own. Where it fails it leaves a picture and what programs wrote.
class DesktopTest : public testing::Test {
protected:
    DesktopTest() { desktop.skipIntroduction(); }
    void TearDown() override {
        if (!HasFailure()) return;
        const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
        desktop.savePicture(FAILURE_PICTURES "/" + name + ".png");
        std::printf("%s", desktop.log().c_str());
    }

    void start(const std::vector<SceneWorkspace>& workspaces) {
        writeFile(desktop.workspacesFile(), workspacesJson(workspaces));
        desktop.startCorvane();
    }
    /// Whether Corvane shows that text soon.
    bool comes(const std::string& text) {
        return comesTrue([&] { return desktop.shows(text); });
    }
    /// Whether the file of the workspaces has that text in it soon.
    bool isSaved(const std::string& text) {
        return comesTrue(
            [&] { return readFile(desktop.workspacesFile()).find(text) != std::string::npos; });
    }
    bool opens(const std::string& windowClass, const std::string& titlePart) {
        return comesTrue([&] { return desktop.window(windowClass, titlePart).has_value(); }, 60);
    }
    /// Answers the alert that shows that text, and sees it go.
    bool answer(const std::string& text, const std::string& button) {
        return comes(text) && desktop.press(button) &&
               comesTrue([&] { return !desktop.shows(text); });
    }
    /// Ends Corvane as a user does: the window is closed.
    std::optional<int> closeWindow() {
        EXPECT_TRUE(comesTrue([&] { return desktop.act(Deed::close, "corvane", "Corvane"); }));
        return desktop.corvane().waitForEnd();
    }

    Desktop desktop;
};

} // namespace corvane::desktop
