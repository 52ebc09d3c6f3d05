#include "layouts/LayoutScene.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

class Layouts : public testing::Test {
protected:
    LayoutScene scene;
    SimulatedDesktop& desktop = scene.desktop;
    SimulatedScreen& screen = scene.screen;
    Workspace work = scene.workspace("Work", {application("Pad"), application("Mail")});
    RunningApplication pad = scene.run("Pad", 7);
    RunningApplication mail = scene.run("Mail", 8);

    Resource application(const std::string& name) {
        const auto path = "/Applications/" + name + ".app";
        desktop.install({.path = path});
        return scene.resource(name, path, ResourceType::application);
    }
    WorkspaceStore& start(bool enabled = true) {
        scene.writeFile({work, scene.workspace("Other")});
        auto& store = scene.start();
        store.enableAccessibilityFeatures = enabled;
        return store;
    }
    void markRunning() {
        scene.store->runningWorkspaces.mutate([&](auto& ids) { ids.insert(work.id); });
    }
    /// The stored layout of the first workspace, the same in memory and in the file.
    std::string stored() {
        const auto& records = scene.store->workspaces->front().savedWindowLayouts;
        EXPECT_EQ(scene.fileContent(), *scene.store->workspaces);
        return records ? describedRecords(*records) : "none";
    }
    std::string alerts() {
        desktop.runUntilIdle();
        return scene.done("alert");
    }
};

TEST_F(Layouts, theWorkspaceMustRunAndTheSwitchAndTrustMustAllowIt) {
    const struct {
        bool running, enabled, wanted, trusted;
        const char* alert;
        const char* stored;
    } cases[]{{false, false, true, false, "alert Cannot Save Layout", "none"},
              {false, true, true, true, "alert Cannot Save Layout", "none"},
              {true, false, true, false, "alert Window Layouts Disabled", "none"},
              {true, false, true, true, "alert Window Layouts Disabled", "none"},
              {true, false, false, false, "", "none"},
              {true, true, true, false, "alert Accessibility Permission Required", "none"},
              {true, true, false, true, "", "Pad 300x200 at (1, 2)"}};
    scene.open(pad, 1, {1, 2, 300, 200});
    desktop.alertAnswers["Window Layouts Disabled"] = {AlertResponse::firstButton, true};
    for (const auto& [running, enabled, wanted, trusted, alert, expected] : cases) {
        auto& store = start(enabled);
        store.showLayoutsDisabledAlert = wanted;
        screen.isTrusted = trusted;
        if (running) markRunning();
        store.saveWorkspaceLayout(work);
        EXPECT_EQ(desktop.logged(), "") << "shown on a later turn";
        EXPECT_EQ(alerts(), alert);
        EXPECT_EQ(stored(), expected) << alert;
        // Its checkbox was ticked.
        EXPECT_EQ(store.showLayoutsDisabledAlert, wanted && !(running && !enabled));

        store.persistWorkspaceLayout({{}, {{"Pad", {1, 2, 300, 200}, false, false, {}}}, {}}, work);
        store.restoreWorkspaceLayout(store.workspaces->front());
        desktop.runFor(2);
        EXPECT_EQ(!scene.done("AX").empty(), enabled && trusted);
        EXPECT_EQ(alerts(), "");
    }
}

TEST_F(Layouts, aSaveReplacesTheWholeLayoutAndOneWithoutWindowsKeepsIt) {
    auto& store = start();
    markRunning();
    int fired = 0;
    const auto subscription = store.objectWillChange.subscribe([&] { ++fired; });
    scene.open(mail, 1, {0, 0, 1440, 900});
    scene.open(pad, 2, {1, 2, 300, 200});
    scene.open(pad, 3, {3, 4, 300, 200});
    desktop.runFor(60);
    store.saveWorkspaceLayout(work);
    EXPECT_EQ(stored(),
              "Pad 300x200 at (1, 2); Pad 300x200 at (3, 4); Mail 1440x900 at (0, 0) fullscreen")
        << "in the order of the resources, each front to back";
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(scene.told(" apps"), "Workspace apps to save layout for: Pad, Mail\n"
                                   "Actually running apps: Mail, Pad\n"
                                   "Running workspace apps: Pad, Mail");
    const auto& saved = store.workspaces->front();
    EXPECT_TRUE(saved.hasLayoutSaved);
    EXPECT_EQ(saved.dateModified, desktop.queue.now());
    EXPECT_EQ(saved.savedWindowLayouts->back().recordedAt, desktop.queue.now());
    EXPECT_EQ(saved.savedWindowLayouts->back().relativeFrame, (Rect{0, 0, 1, 1}));

    screen.stack.erase(screen.stack.begin());
    store.saveWorkspaceLayout(saved);
    EXPECT_EQ(stored(), "Pad 300x200 at (1, 2); Pad 300x200 at (3, 4)");
    const auto before = *store.workspaces;
    screen.stack.clear();
    store.saveWorkspaceLayout(saved);
    screen.windowListAnswers = false;
    store.saveWorkspaceLayout(saved);
    EXPECT_EQ(alerts(), "alert No Windows Found\nalert No Windows Found");
    EXPECT_EQ(*store.workspaces, before);

    screen.windowListAnswers = true;
    scene.open(pad, 4, {1, 2, 300, 200});
    store.deleteWorkspace(work.id);
    const int saves = scene.saves();
    store.saveWorkspaceLayout(work);
    EXPECT_EQ(scene.saves(), saves) << "of a workspace that has gone nothing is kept";
    EXPECT_EQ(stored() + alerts(), "none");
}

TEST_F(Layouts, allResourcesGiveTheirNamesAndTwoNamesOfOneApplicationRecordItTwice) {
    desktop.defaultHandlers["txt"] = "/Applications/Pad.app";
    auto file = scene.resource("notes");
    file.enabled = false;
    file.associatedApps = {"pad", "Mail", "pad"};
    work.resources = {scene.resource("", "", ResourceType::separator), file,
                      scene.resource("Odd", "/opt/odd tool.v2", ResourceType::application),
                      application("Pad")};
    auto& store = start();
    EXPECT_EQ(text::joined(store.workspaceAppNames(work), "|"), "Pad|pad|Mail|Odd|odd tool");
    // A hidden application has no windows: what covers the display stands in for it.
    desktop.running[1].isHidden = true;
    scene.open(pad, 1, {1, 2, 300, 200});
    scene.open(scene.run("Backdrop", 9), 2, {0, 0, 1440, 900}).info.layer = -5;
    markRunning();
    store.saveWorkspaceLayout(work);
    EXPECT_EQ(stored(),
              "Pad 300x200 at (1, 2); Pad 300x200 at (1, 2); Mail 1440x900 at (0, 0) fullscreen");
}

TEST_F(Layouts, aStartPutsTheWindowsBackAfterTwoSecondsAndMovesALayoutOfAnEarlierVersion) {
    auto& store = start();
    const auto json = encodeWorkspaceLayout({Uuid::random(),
                                             {{"Pad", {720, 90, 144, 450}, false, true, {}},
                                              {"Mail", {0, 0, 1440, 900}, true, false, {}}},
                                             {500}});
    const auto key = "WorkspaceLayout_" + work.id.toString();
    desktop.defaults[key] = {Bytes(json.begin(), json.end())};
    desktop.running.clear();
    desktop.queue.after(1.9, [&] { desktop.running = {pad, mail}; });
    scene.open(pad, 3, {500, 500, 90, 80}).appearsAt = 3.2;
    scene.open(mail, 4, {8, 8, 90, 80});

    store.startWorkspace(store.workspaces->front());
    const std::string layout = "Pad 144x450 at (720, 90); Mail 1440x900 at (0, 0) fullscreen";
    EXPECT_EQ(stored(), layout);
    const auto& record = store.workspaces->front().savedWindowLayouts->front();
    EXPECT_EQ(record.recordedAt, Timestamp{500});
    EXPECT_EQ(record.relativeFrame, (Rect{0.5, 0.1, 0.1, 0.5}));
    EXPECT_FALSE(desktop.defaults.contains(key));

    store.enableAccessibilityFeatures = false;
    desktop.runFor(1.99);
    EXPECT_EQ(desktop.logged("AX"), "");
    desktop.runFor(0.01);
    EXPECT_EQ(scene.done("AX"), "AXPosition 7/3 720,90\nAXSize 7/3 144,450\n"
                                "AXPosition 8/4 0,0\nAXSize 8/4 1440,900\nAXFullScreen 8/4 true");
    EXPECT_EQ(scene.told("on attempt"), "Got windows for 'Pad' on attempt 4");
    EXPECT_DOUBLE_EQ(scene.elapsed(), 3.5);
    store.enableAccessibilityFeatures = true;
    store.saveWorkspaceLayout(work);
    EXPECT_EQ(stored(), layout) << "what was restored is captured to the point";
}

TEST_F(Layouts, theFullscreenLimitIsToldAfterwardsUntilTheUserHasHeardEnough) {
    auto& store = start();
    store.persistWorkspaceLayout(
        {{}, {{"Pad", {}, true, false, {}}, {"Mail", {}, true, false, {}}}, {}}, work);
    store.fullscreenPriority = std::string("last");
    scene.open(pad, 1, {});
    scene.open(mail, 2, {});
    const std::string alert = "alert macOS Fullscreen Limitation";
    const struct {
        int button;
        std::string last;
        bool hasHeard;
    } cases[]{{AlertResponse::firstButton, alert, false},
              {AlertResponse::secondButton, alert, true},
              {AlertResponse::firstButton, "AXSize 7/1 1440,875", true}};
    for (const auto& [button, last, hasHeard] : cases) {
        desktop.alertAnswers["macOS Fullscreen Limitation"] = {button, false};
        store.startWorkspace(store.workspaces->front());
        desktop.runFor(2);
        EXPECT_EQ(desktop.log.back(), last);
        EXPECT_EQ(store.hasShownFullscreenLimitationAlert, hasHeard);
    }
}

/// When quitting saves first, and that it does so before anything has quit.
TEST_F(Layouts, quittingSavesTheLayoutFirstWhereTheUserWantsIt) {
    using Indices = std::vector<std::size_t>;
    const struct {
        const char* name;
        bool finishes, wanted, running;
        std::optional<Indices> launched;
        bool saved;
    } cases[]{{"finish", true, true, true, Indices{0, 1}, true},
              {"finish, not wanted", true, false, true, Indices{0, 1}, false},
              {"finish, never started", true, true, false, {}, false},
              {"stop the last", false, true, true, Indices{1}, true},
              {"stop another than the last", false, true, true, Indices{0}, true},
              {"stop with no entry", false, true, true, {}, true},
              {"stop one of two", false, true, true, Indices{0, 1}, false},
              {"stop the last, never started", false, true, false, Indices{1}, false}};
    // It goes at once and takes its windows with it, so that a later save would find none.
    desktop.quitBehaviours[8] = QuitBehaviour::refuses;
    for (const auto& [name, finishes, wanted, running, launched, saved] : cases) {
        auto& store = start();
        desktop.running = {mail};
        screen.stack.clear();
        scene.open(mail, 2, {1, 2, 300, 200});
        store.autoSaveLayouts = wanted;
        if (running) markRunning();
        for (const auto index : launched.value_or(Indices())) {
            store.runningResources.mutate(
                [&](auto& entries) { entries[work.id].insert(work.resources[index].id); });
        }
        if (finishes) store.finishWorkspace(work);
        if (!finishes) store.quitIndividualResource(work.resources[1], work);
        EXPECT_TRUE(desktop.running.empty());
        EXPECT_EQ(stored(), saved ? "Mail 300x200 at (1, 2)" : "none") << name;
        desktop.runFor(2);
        EXPECT_EQ(desktop.logged("alert Cannot"), "") << name;
    }
}

TEST_F(Layouts, bothPermissionAlertsOfferTheSettingsAndTheSwitchStaysOn) {
    auto& store = start();
    const std::string alert = "alert Accessibility Permission Required";
    for (const bool isCancelled : {false, true}) {
        desktop.alertAnswers["Accessibility Permission Required"] = {
            isCancelled ? AlertResponse::secondButton : AlertResponse::firstButton, false};
        const auto expected = alert + (isCancelled ? ""
                                                   : "\nopen x-apple.systempreferences:com.apple."
                                                     "preference.security?Privacy_Accessibility");
        store.showAccessibilityPermissionAlert();
        EXPECT_EQ(scene.done(), "");
        desktop.runUntilIdle();
        EXPECT_EQ(scene.done(), expected);
        store.showAccessibilityRequiredAlert();
        EXPECT_EQ(scene.done(), expected);
    }
    for (const auto& [enabled, trusted] : {std::pair{false, false}, {true, true}, {true, false}}) {
        screen.isTrusted = trusted;
        store.enableAccessibilityFeatures = enabled;
        store.accessibilityFeaturesToggled(enabled);
        desktop.runFor(0.09);
        EXPECT_EQ(scene.done(), "");
        desktop.runFor(0.02);
        EXPECT_EQ(scene.done(), enabled && !trusted ? alert : "");
        EXPECT_EQ(store.enableAccessibilityFeatures, enabled);
    }
}

} // namespace
} // namespace corvane
