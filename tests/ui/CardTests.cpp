#include "core/StoreScene.h"
#include "ui/ContentState.h"
#include "ui/ResourcePreview.h"

using namespace corvane;

namespace {

using enum ResourceType;

struct Card : SceneTest {
    Workspace work = scene.workspace("Work", {scene.resource("build", "make", terminal),
                                              scene.resource("line", "", separator),
                                              scene.resource("serve", "serve", terminal)});
    Workspace other = scene.workspace("Other");
    WorkspaceStore& store = scene.start({other, work});
    std::optional<ContentState> window{std::in_place, store, platform};

    WorkspaceCardState& card() { return window->list.card(work.id); }
    /// "button title | status text | running?"
    std::string shown() {
        return std::string(card().startTitle()) + " | " + card().statusText(work) +
               (card().isRunning() ? " | running" : "");
    }
    std::size_t scriptsRun() const {
        return static_cast<std::size_t>(std::ranges::count_if(
            desktop.log, [](const auto& line) { return line.starts_with("script"); }));
    }
};

TEST_F(Card, aStartTakesHalfASecondAndItsSpinnerOneMore) {
    auto edited = work;
    edited.resources.clear();
    int changes = 0;
    const auto subscription = window->list.objectWillChange.subscribe([&] { ++changes; });
    card().start(work);
    EXPECT_GT(changes, 0) << "the list tells what changes in its cards";
    store.updateWorkspace(edited);
    const std::tuple<double, std::string, std::size_t> moments[]{
        {0, "Starting... | Starting...", 0},
        {0.49, "Starting... | Starting...", 0},
        {0.51, "Starting... | Starting... | running", 2},
        {1.49, "Starting... | Starting... | running", 2},
        {1.51, "Start | 2 resources running | running", 2}};
    double now = 0;
    for (const auto& [moment, state, scripts] : moments) {
        desktop.runFor(moment - std::exchange(now, moment));
        EXPECT_EQ(shown(), state);
        EXPECT_EQ(scriptsRun(), scripts);
        EXPECT_EQ(*store.activeWorkspace.get(), now < 0.5 ? other : work);
        if (card().isLoading) card().start(work);
    }
}

TEST_F(Card, aStartUnderWayOutlivesItsCard) {
    for (const double gone : {0.2, 0.7}) {
        StoreState::set(store.runningWorkspaces, {});
        desktop.log.clear();
        card().start(work);
        desktop.runFor(gone);
        window.emplace(store, platform);
        EXPECT_EQ(card().isLoading, false) << "a new window's card is idle";
        desktop.runFor(2);
        EXPECT_TRUE(card().isRunning());
        EXPECT_EQ(scriptsRun(), 2u);
        EXPECT_EQ(store.activeWorkspace.get(), work);
    }
}

TEST_F(Card, whatRunsIsCountedFromTheStoreWithoutSeparators) {
    EXPECT_EQ(runningResourceCount(work, store), 0u);
    store.launchIndividualResource(work.resources[0], work);
    EXPECT_EQ(shown(), "Start | 1 resources running");
    store.startWorkspace(work);
    EXPECT_EQ(shown(), "Start | 2 resources running | running");
    StoreState::set(store.runningResources, {{work.id, {work.resources[1].id, Uuid::random()}}});
    EXPECT_EQ(runningResourceCount(work, store), 0u);
}

TEST_F(Card, aDeletedWorkspaceComesBackToItsPlaceAndAQuestionGoesWithItsCard) {
    for (const int button : {AlertResponse::secondButton, 0, AlertResponse::firstButton}) {
        EXPECT_EQ(described(store.workspaces), "Other() Work(build line serve)");
        desktop.alertAnswers["Delete Workspace"].button = button;
        window->list.card(other.id).deleteWorkspace(other);
        EXPECT_EQ(scene.told(),
                  "Delete Workspace | Are you sure you want to delete 'Other'? This action cannot "
                  "be undone. [Delete][Cancel] destructive");
    }
    EXPECT_EQ(store.workspaces->size(), 1u);
    EXPECT_EQ(window->undo.text(), "Removed 'Other'");
    window->undo.undo();
    EXPECT_EQ(*store.workspaces, (std::vector{other, work}));

    card().isExpanded = true;
    for (const auto* search : {"work", "other"}) {
        card().showingFinishConfirm = true;
        store.search(search);
        window->list.tidy();
        EXPECT_EQ(card().showingFinishConfirm, search == std::string("work"));
    }
    store.deleteWorkspace(work.id);
    window->list.tidy();
    EXPECT_FALSE(card().isExpanded) << "it is another card";
}

TEST_F(Card, aFinishTakesOneAndAHalfSecondsAndThenItsQuestionGoes) {
    card().showingFinishConfirm = true;
    card().finish(work);
    EXPECT_EQ(shown(), "Closing resources... | Closing resources...");
    for (const bool isOver : {false, true}) {
        desktop.runFor(isOver ? 0.02 : 1.49);
        EXPECT_EQ(card().isLoading, !isOver);
        EXPECT_EQ(card().showingFinishConfirm, !isOver);
    }
    card().finish(work);
    window.reset();
    desktop.runFor(2);
}

TEST_F(Card, aLayoutIsSavedOfWhatRunsAndToldUntilTheUserHasHeardEnough) {
    desktop.running = {{.processIdentifier = 7, .localizedName = "Terminal"}};
    desktop.screen.stack = {{.info = windowInfo(7, 1, "Terminal", {1, 2, 300, 200})}};
    store.enableAccessibilityFeatures = true;
    const auto save = [&] {
        card().saveLayout(work);
        return scene.told();
    };
    EXPECT_EQ(save(), "Cannot Save Layout | The workspace 'Work' must be running to save its "
                      "layout. Please start the workspace first, then save the layout. [OK]");
    EXPECT_EQ(described(store.workspaces), "Other() Work(build line serve)");
    StoreState::set(store.runningWorkspaces, {work.id});
    desktop.alertAnswers["Layout Saved"].checkboxIsOn = true;
    EXPECT_EQ(save(), "Layout Saved | The current window layout has been saved for 'Work'. It "
                      "will be restored when you start this workspace. [OK] not a warning "
                      "(Don't show this message again)");
    EXPECT_EQ(described(store.workspaces), "Other() Work(build line serve)+");
    EXPECT_EQ(save(), "");
    std::set<std::size_t> gradients;
    for (const char name : std::string("abcdefghij"))
        gradients.insert(cardGradientIndex({name}));
    EXPECT_GT(gradients.size(), 1u);
    EXPECT_LT(*gradients.rbegin(), cardGradientCount);
}

TEST_F(Card, thePreviewShowsEightResourcesAndCountsTheRest) {
    const auto described = [&](const Workspace& workspace) {
        const auto preview = resourcePreview(workspace, store, window->missing);
        std::string text;
        for (const auto& chip : preview.chips)
            text += chip.name +
                    (chip.state == ChipState::running       ? "!"
                     : chip.state == ChipState::startMarked ? "*"
                                                            : "") +
                    (chip.enabled ? "" : "-") + (chip.isMissing ? "?" : "");
        return text + preview.counter;
    };
    const std::pair<const char*, const char*> cases[]{{"--", ""},
                                                      {"-abcd-efgh-", "abcdefgh"},
                                                      {"abcdefgh-i", "abcdefgh+1"},
                                                      {"ab-cdefghijklmnopqrst", "abcdefgh+12"}};
    for (const auto& [names, expected] : cases) {
        Workspace workspace = other;
        for (const char name : std::string_view(names))
            workspace.resources.push_back(
                scene.resource({name}, "/x", name == '-' ? separator : file));
        EXPECT_EQ(described(workspace), expected);
    }
    store.addResource(scene.resource("gone", "/gone"), other.id);
    desktop.runUntilIdle();
    EXPECT_EQ(described(store.workspaces->front()), "gone?");
    work.resources[0].enabled = false;
    work.resources[2].launchOnStart = true;
    EXPECT_EQ(described(work), "build-serve*");
    StoreState::set(store.runningResources, {{other.id, {work.resources[0].id}}});
    EXPECT_EQ(described(work), "build-serve*") << "it runs for another workspace";
    StoreState::set(store.runningResources,
                    {{work.id, {work.resources[0].id, work.resources[2].id}}});
    EXPECT_EQ(described(work), "build!-serve!");
    const auto hidden = scene.resource("Notes", "é" + std::string(998, 'x') + "|rm", terminal);
    EXPECT_EQ(chipTooltip(hidden, ChipState::running, store),
              "Stop Notes\né" + std::string(498, 'x') + "…" + std::string(497, 'x') + "|rm");
}

} // namespace
