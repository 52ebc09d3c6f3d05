#include "core/StoreScene.h"
#include "ui/ContentState.h"

using namespace corvane;

namespace {

struct Window : SceneTest {
    WorkspaceStore& store =
        scene.start({scene.workspace("My Workspace", {scene.resource("Mail")}),
                     scene.workspace("Homework "), scene.workspace("Écrire-Größe")});

    ContentState window() { return ContentState(store, scene.platform); }
    static std::string names(const WorkspaceListState& list) {
        std::string text;
        for (const auto* workspace : list.filteredWorkspaces())
            text += "[" + workspace->name + "]";
        return text;
    }
};

TEST_F(Window, theThemeStartsAsTheSystemsAndFollowsItOnlyAtAChangeOfTheScreens) {
    for (const bool dark : {true, false}) {
        desktop.systemIsDark = dark;
        const auto content = std::make_unique<ContentState>(store, scene.platform);
        EXPECT_EQ(content->theme.isDarkMode, dark);
        desktop.systemIsDark = !dark;
        desktop.runFor(60);
        EXPECT_EQ(content->theme.isDarkMode, dark);
        desktop.screenParametersDidChange.fire();
        EXPECT_EQ(content->theme.isDarkMode, dark) << "a turn later";
        desktop.runUntilIdle();
        EXPECT_EQ(content->theme.isDarkMode, !dark);
    }
}

TEST_F(Window, aToggleFixesTheThemeForAllWindowsToCome) {
    for (const bool dark : {true, false}) {
        ThemeManager theme(platform.appearance, platform.mainQueue);
        const bool before = theme.isDarkMode;
        bool seen = !before;
        const auto subscription =
            theme.objectWillChange.subscribe([&] { seen = theme.isDarkMode; });
        theme.toggleTheme();
        EXPECT_EQ(seen, before) << "told before it changes";
        EXPECT_EQ(theme.isDarkMode, !before);
        desktop.systemIsDark = dark;
        theme.updateTheme();
        desktop.runUntilIdle();
        EXPECT_EQ(theme.isDarkMode, !before);
        EXPECT_EQ(window().theme.isDarkMode, !before);
    }
}

TEST_F(Window, anUpdateThatIsUnderWayOutlivesTheWindow) {
    {
        const auto content = std::make_unique<ContentState>(store, scene.platform);
        content->theme.updateTheme();
    }
    desktop.runUntilIdle();
    desktop.screenParametersDidChange.fire();
    EXPECT_EQ(desktop.queue.pending(), 0u);
}

TEST_F(Window, eachKeystrokeReachesTheStoreAsTypedAndNothingComesBack) {
    auto first = std::make_unique<ContentState>(store, scene.platform);
    for (const std::string typed : {"w", "wo", "wo ", "  ", ""}) {
        first->header.setSearchText(typed);
        EXPECT_EQ(first->header.searchText(), typed);
        EXPECT_EQ(store.searchText.get(), typed);
    }
    first->header.setSearchText("home");
    const auto second = std::make_unique<ContentState>(store, scene.platform);
    EXPECT_EQ(second->header.searchText(), "");
    EXPECT_EQ(names(second->list), "[Homework ]");
    StoreState::set(store.searchText, "other");
    EXPECT_EQ(first->header.searchText(), "home");
}

TEST_F(Window, theHeaderFollowsFocusModeAndThemeWhereverTheyChange) {
    const auto content = std::make_unique<ContentState>(store, scene.platform);
    auto& header = content->header;
    int fired = 0;
    const auto subscription = header.objectWillChange.subscribe([&] { ++fired; });
    const auto shown = [&] {
        return header.focusModeTooltip() + "; " + std::string(header.themeTooltip()) + " " +
               std::string(header.themeSymbol());
    };
    const std::string off = "Focus Mode: OFF - Will not quit other apps; ";
    const std::string on = "Focus Mode: ON - Will quit unrelated apps when launching workspace; ";
    const std::string light = "Switch to Dark Mode moon.fill";
    EXPECT_EQ(shown(), off + light);
    header.toggleFocusMode();
    EXPECT_EQ(shown(), on + light);
    EXPECT_EQ(desktop.defaults.at("CorvaneFocusMode"), PropertyList{true});
    header.toggleFocusMode();
    EXPECT_EQ(shown(), off + light);
    EXPECT_EQ(desktop.defaults.at("CorvaneFocusMode"), PropertyList{false});
    store.focusMode = true;
    header.toggleTheme();
    EXPECT_EQ(shown(), on + "Switch to Light Mode sun.max.fill");
    EXPECT_EQ(fired, 4);
}

TEST_F(Window, theHeaderTellsWhyNothingIsSavedAndSavesOnceMore) {
    const auto content = std::make_unique<ContentState>(store, scene.platform);
    auto& header = content->header;
    EXPECT_EQ(header.savingProblem(), "");
    desktop.files.unwritable = {workspacesPath};
    header.saveAgain();
    EXPECT_EQ(header.savingProblem(), "Changes aren't saved. Press to try again.\n\n“" +
                                          workspacesPath +
                                          "” can't be written: permission denied.");
    desktop.files.unwritable.clear();
    header.saveAgain();
    EXPECT_EQ(header.savingProblem(), "");
    EXPECT_EQ(scene.saves(), 1);
}

TEST_F(Window, theSearchLooksAtNamesOnlyAndKeepsTheOrder) {
    StoreState::change(store.workspaces, [](auto& list) { list.back().description = "Work"; });
    const auto content = std::make_unique<ContentState>(store, scene.platform);
    const std::tuple<const char*, const char*, ListContent> cases[]{
        {"", "[My Workspace][Homework ][Écrire-Größe]", ListContent::cards},
        {"WORK", "[My Workspace][Homework ]", ListContent::cards},
        {" ", "[My Workspace][Homework ]", ListContent::cards},
        {"work ", "[Homework ]", ListContent::cards},
        {"éCR", "[Écrire-Größe]", ListContent::cards},
        {"GRÖSSE", "[Écrire-Größe]", ListContent::cards},
        {"ecr", "", ListContent::emptySearch},
        {"Mail", "", ListContent::emptySearch},
        {"  ", "", ListContent::emptySearch}};
    for (const auto& [search, expected, shown] : cases) {
        content->header.setSearchText(search);
        EXPECT_EQ(names(content->list), expected) << search;
        EXPECT_EQ(content->list.content(content->list.filteredWorkspaces().size()), shown);
        EXPECT_EQ(content->list.emptySearchMessage(),
                  "No workspaces match \"" + std::string(search) + "\"");
    }
    content->header.setSearchText("new");
    store.addWorkspace(scene.workspace("Newest"));
    EXPECT_EQ(names(content->list), "[Newest]");
    StoreState::set(store.workspaces, {});
    EXPECT_EQ(content->list.content(0), ListContent::emptySearch);
    content->header.setSearchText("");
    EXPECT_EQ(content->list.content(0), ListContent::emptyWorkspaces);
}

} // namespace
