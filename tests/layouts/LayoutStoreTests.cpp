#include "layouts/LayoutTest.h"

using namespace corvane;

namespace {

struct Layouts : LayoutTest {
    Workspace work = workspace("Work", {application("Pad"), application("Mail")});

    Resource application(const std::string& name) {
        const auto path = "/Applications/" + name + ".app";
        desktop.install({.path = path});
        return resource(name, path, ResourceType::application);
    }
    void startWith(bool enabled) {
        start({work, workspace("Other")}).enableAccessibilityFeatures = enabled;
    }
    void markRunning() {
        StoreState::change(store->runningWorkspaces, [&](auto& ids) { ids.insert(work.id); });
    }
    std::string stored() {
        const auto& records = store->workspaces->front().savedWindowLayouts;
        EXPECT_EQ(fileContent(), *store->workspaces);
        return records ? describedRecords(*records) : "none";
    }

    const std::string cannotSave =
        "Cannot Save Layout | The workspace 'Work' must be running to save its layout. Please "
        "start the workspace first. [OK] not a warning";
    const std::string disabled =
        "Window Layouts Disabled | Window layout features are currently disabled. Enable them in "
        "Settings → Workspace Management → Window Layout Features to save and restore window "
        "positions. [OK] not a warning (Don't show this message again)";
    const std::string noWindows =
        "No Windows Found | No application windows were found to save. Make sure the workspace "
        "applications are running and visible. [OK] not a warning";
    const std::string permission =
        "Accessibility Permission Required | Corvane needs accessibility permissions to save and "
        "restore window layouts.\n\nTo enable this:\n1. Click 'Open System Preferences'\n2. In "
        "Privacy & Security → Accessibility\n3. Add Corvane to the list and enable it\n4. Restart "
        "Corvane\n\nNote: This replaces the need for AppleScript permissions and works better "
        "with fullscreen windows. [Open System Preferences][Cancel] not a warning";
    const std::string required =
        "Accessibility Permission Required | Window layout features require Accessibility "
        "permission to save and restore window positions.\n\nTo enable this:\n1. Click 'Open "
        "System Preferences'\n2. In Privacy & Security → Accessibility\n3. Add Corvane to the "
        "list and enable it\n4. You may need to restart Corvane\n\nYou can disable this feature "
        "anytime in Settings if you prefer not to grant this permission. [Open System "
        "Preferences][Cancel] not a warning";
};

TEST_F(Layouts, theWorkspaceMustRunAndTheSwitchAndTrustMustAllowIt) {
    const std::tuple<bool, bool, bool, bool, std::string, const char*> cases[]{
        {false, true, true, true, cannotSave, "none"},
        {true, false, true, true, disabled, "none"},
        {true, false, false, false, "", "none"},
        {true, true, true, false, permission, "none"},
        {true, true, false, true, "", "Pad 300x200 at (1, 2)"}};
    open(pad, 1, {1, 2, 300, 200});
    desktop.alertAnswers["Window Layouts Disabled"] = {AlertResponse::firstButton, true};
    for (const auto& [running, enabled, wanted, trusted, alert, expected] : cases) {
        startWith(enabled);
        store->showLayoutsDisabledAlert = wanted;
        screen.isTrusted = trusted;
        if (running) markRunning();
        store->saveWorkspaceLayout(work);
        EXPECT_EQ(done(), "") << "on a later turn";
        EXPECT_EQ(told(), alert);
        desktop.log.clear();
        EXPECT_EQ(stored(), expected) << alert;
        // Its checkbox was ticked.
        EXPECT_EQ(store->showLayoutsDisabledAlert, wanted && !(running && !enabled));

        const WindowLayout layout{"Pad", {1, 2, 300, 200}, false, false, {}};
        store->persistWorkspaceLayout({{}, {layout}, {}}, work);
        store->restoreWorkspaceLayout(store->workspaces->front());
        desktop.runFor(2);
        EXPECT_EQ(!done().empty(), enabled && trusted);
    }
    startWith(true);
    store->restoreWorkspaceLayout(work);
    EXPECT_EQ(desktop.queue.pending(), 0u) << "there is none";
}

TEST_F(Layouts, aSaveReplacesTheWholeLayoutAndOneWithoutWindowsKeepsIt) {
    startWith(true);
    markRunning();
    int fired = 0;
    const auto subscription = store->objectWillChange.subscribe([&] { ++fired; });
    open(mail, 1, {0, 0, 1440, 900});
    open(pad, 2, {1, 2, 300, 200});
    open(pad, 3, {3, 4, 300, 200});
    desktop.runFor(60);
    store->saveWorkspaceLayout(work);
    EXPECT_EQ(stored(),
              "Pad 300x200 at (1, 2); Pad 300x200 at (3, 4); Mail 1440x900 at (0, 0) fullscreen");
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(screen.timesAsked, 2) << "for all windows, and for their records";
    const auto& saved = store->workspaces->front();
    EXPECT_TRUE(saved.hasLayoutSaved);
    EXPECT_EQ(saved.dateModified, desktop.queue.now());
    EXPECT_EQ(saved.savedWindowLayouts->back().recordedAt, desktop.queue.now());
    EXPECT_EQ(saved.savedWindowLayouts->back().relativeFrame, (Rect{0, 0, 1, 1}));

    screen.stack.erase(screen.stack.begin());
    store->saveWorkspaceLayout(saved);
    EXPECT_EQ(stored(), "Pad 300x200 at (1, 2); Pad 300x200 at (3, 4)");
    const auto before = *store->workspaces;
    screen.stack.clear();
    store->saveWorkspaceLayout(saved);
    screen.windowListAnswers = false;
    store->saveWorkspaceLayout(saved);
    EXPECT_EQ(told(), noWindows + "\n" + noWindows);
    EXPECT_EQ(*store->workspaces, before);

    screen.windowListAnswers = true;
    open(pad, 4, {1, 2, 300, 200});
    store->deleteWorkspace(work.id);
    const int savesBefore = saves();
    store->saveWorkspaceLayout(work);
    EXPECT_EQ(saves(), savesBefore) << "of a workspace that has gone nothing is kept";
    EXPECT_EQ(stored() + told(), "none");
}

TEST_F(Layouts, allResourcesGiveTheirNamesAndTwoNamesOfOneApplicationRecordItTwice) {
    desktop.defaultHandlers["txt"] = "/Applications/Pad.app";
    auto file = resource("notes");
    file.enabled = false;
    file.associatedApps = {"pad", "Mail", "pad"};
    work.resources = {resource("", "", ResourceType::separator), file,
                      resource("Odd", "/opt/odd tool.v2", ResourceType::application)};
    startWith(true);
    EXPECT_EQ(text::joined(store->workspaceAppNames(work), "|"), "Pad|pad|Mail|Odd|odd tool");
    open(pad, 1, {1, 2, 300, 200});
    markRunning();
    store->saveWorkspaceLayout(work);
    EXPECT_EQ(stored(), "Pad 300x200 at (1, 2); Pad 300x200 at (1, 2)");
}

TEST_F(Layouts, aStartPutsTheWindowsBackAfterTwoSecondsAndMovesALayoutOfAnEarlierVersion) {
    startWith(true);
    const std::string json =
        R"({"workspaceId":"0E0F6A53-6C1A-4A6E-9D6E-2F1A3B4C5D6E","savedDate":500,"windowLayouts":[)"
        R"({"appName":"Pad","frame":[[720,90],[144,450]],"isFullscreen":false,"isMinimized":true},)"
        R"({"appName":"Mail","frame":[[0,0],[1440,900]],"isFullscreen":true,"isMinimized":false}]})";
    const auto key = "WorkspaceLayout_" + work.id.toString();
    desktop.defaults[key] = {Bytes(json.begin(), json.end())};
    desktop.running.clear();
    desktop.queue.after(1.9, [&] { desktop.running = {pad, mail}; });
    open(pad, 3, {500, 500, 90, 80}).appearsAt = 3.2;
    open(mail, 4, {8, 8, 90, 80});

    store->startWorkspace(store->workspaces->front());
    const std::string layout = "Pad 144x450 at (720, 90); Mail 1440x900 at (0, 0) fullscreen";
    EXPECT_EQ(stored(), layout);
    EXPECT_EQ(store->workspaces->front().savedWindowLayouts->front().recordedAt, Timestamp{500});
    EXPECT_FALSE(desktop.defaults.contains(key));

    store->enableAccessibilityFeatures = false;
    desktop.runFor(1.99);
    EXPECT_EQ(desktop.logged("AX"), "");
    desktop.runFor(0.01);
    EXPECT_EQ(done("AX"), "AXPosition 7/3 720,90\nAXSize 7/3 144,450\n"
                          "AXPosition 8/4 0,0\nAXSize 8/4 1440,900\nAXFullScreen 8/4 true");
    EXPECT_DOUBLE_EQ(elapsed(), 3.5);
    store->enableAccessibilityFeatures = true;
    store->saveWorkspaceLayout(work);
    EXPECT_EQ(stored(), layout) << "what was restored is captured to the point";
}

TEST_F(Layouts, theFullscreenLimitIsToldAfterwardsUntilTheUserHasHeardEnough) {
    startWith(true);
    store->persistWorkspaceLayout(
        {{}, {{"Pad", {}, true, false, {}}, {"Mail", {}, true, false, {}}}, {}}, work);
    store->fullscreenPriority = std::string("last");
    open(pad, 1, {});
    open(mail, 2, {});
    const std::string alert = "alert macOS Fullscreen Limitation";
    for (const auto& [button, last] : {std::pair{AlertResponse::firstButton, alert},
                                       {0, alert},
                                       {AlertResponse::secondButton, alert},
                                       {0, std::string("AXSize 7/1 1440,875")}}) {
        desktop.alertAnswers["macOS Fullscreen Limitation"] = {button, false};
        store->startWorkspace(store->workspaces->front());
        desktop.runFor(2);
        EXPECT_EQ(desktop.log.back(), last);
    }
    EXPECT_TRUE(store->hasShownFullscreenLimitationAlert);
    EXPECT_EQ(desktop.shownAlerts.size(), 3u);
    desktop.shownAlerts.resize(1);
    EXPECT_EQ(alerts(), "macOS Fullscreen Limitation | macOS only allows one app to be fullscreen "
                        "at a time. 'Mail' will be fullscreen, others will be maximized.\n\nYou "
                        "can change this behavior in Settings. [OK][Don't Show Again] not a "
                        "warning");
}

TEST_F(Layouts, quittingSavesTheLayoutFirstWhereTheUserWantsIt) {
    const std::tuple<const char*, bool, bool, bool, std::string, bool> cases[]{
        {"finish", true, true, true, "01", true},
        {"finish, not wanted", true, false, true, "01", false},
        {"finish, never started", true, true, false, "", false},
        {"stop the last", false, true, true, "1", true},
        {"stop another than the last", false, true, true, "0", true},
        {"stop with no entry", false, true, true, "", true},
        {"stop one of two", false, true, true, "01", false},
        {"stop the last, never started", false, true, false, "1", false}};
    // It goes at once and takes its windows with it, so that a later save would find none.
    desktop.quitBehaviours[8] = QuitBehaviour::refuses;
    for (const auto& [name, finishes, wanted, running, launched, saved] : cases) {
        startWith(true);
        desktop.running = {mail};
        screen.stack.clear();
        open(mail, 2, {1, 2, 300, 200});
        store->autoSaveLayouts = wanted;
        if (running) markRunning();
        for (const char index : launched)
            StoreState::change(store->runningResources, [&](auto& entries) {
                entries[work.id].insert(work.resources[index == '1' ? 1 : 0].id);
            });
        if (finishes) store->finishWorkspace(work);
        if (!finishes) store->quitIndividualResource(work.resources[1], work);
        EXPECT_TRUE(desktop.running.empty());
        EXPECT_EQ(stored(), saved ? "Mail 300x200 at (1, 2)" : "none") << name;
        desktop.runFor(2);
        EXPECT_EQ(desktop.logged("alert Cannot"), "") << name;
    }
    startWith(false);
    store->autoSaveLayouts = true;
    markRunning();
    desktop.shownAlerts.clear();
    store->finishWorkspace(work);
    EXPECT_EQ(told(), disabled) << "the switch says why nothing is saved";
}

TEST_F(Layouts, thePermissionAlertOffersTheSettingsAndTheSwitchStaysOn) {
    startWith(true);
    const std::string settings =
        "open x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
    for (const int button : {AlertResponse::firstButton, AlertResponse::secondButton, 0}) {
        desktop.alertAnswers["Accessibility Permission Required"] = {button, false};
        store->showAccessibilityRequiredAlert();
        EXPECT_EQ(told(), required);
        EXPECT_EQ(done("open"), button == AlertResponse::firstButton ? settings : "");
    }
    for (const auto& [enabled, trusted] : {std::pair{false, false}, {true, true}, {true, false}}) {
        screen.isTrusted = trusted;
        store->enableAccessibilityFeatures = enabled;
        store->accessibilityFeaturesToggled(enabled);
        desktop.runFor(0.099);
        EXPECT_EQ(done(), "");
        desktop.runFor(0.002);
        EXPECT_EQ(told(), enabled && !trusted ? required : "");
        desktop.log.clear();
        EXPECT_EQ(store->enableAccessibilityFeatures, enabled);
    }
}

} // namespace
