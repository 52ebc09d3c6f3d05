#include "core/StoreScene.h"
#include "ui/ContentState.h"

using namespace corvane;

namespace {

struct Window : SceneTest {
    WorkspaceStore& store =
        scene.start({scene.workspace("My Workspace", {scene.resource("Mail")}),
                     scene.workspace("Homework "), scene.workspace("Écrire-Größe")});
    ContentState content{store, platform};
    HeaderState& header = content.header;

    std::string names() const {
        std::string text;
        for (const auto* workspace : content.list.filteredWorkspaces())
            text += "[" + workspace->name + "]";
        return text;
    }
};

TEST_F(Window, theThemeStartsAsTheSystemsAndFollowsItOnlyAtAChangeOfTheScreens) {
    for (const bool dark : {true, false}) {
        desktop.systemIsDark = dark;
        ThemeManager theme(platform.appearance, platform.mainQueue);
        EXPECT_EQ(theme.isDarkMode, dark);
        desktop.systemIsDark = !dark;
        desktop.runFor(60);
        EXPECT_EQ(theme.isDarkMode, dark);
        desktop.screenParametersDidChange.fire();
        EXPECT_EQ(theme.isDarkMode, dark) << "a turn later";
        desktop.runUntilIdle();
        EXPECT_EQ(theme.isDarkMode, !dark);
        // It goes while that is under way.
        theme.updateTheme();
    }
}

TEST_F(Window, aToggleFixesTheThemeForAllWindowsToCome) {
    for (const bool dark : {true, false}) {
        const bool before = content.theme.isDarkMode;
        bool seen = !before;
        const auto subscription =
            content.theme.objectWillChange.subscribe([&] { seen = content.theme.isDarkMode; });
        content.theme.toggleTheme();
        EXPECT_EQ(seen, before) << "told before it changes";
        desktop.systemIsDark = dark;
        content.theme.updateTheme();
        desktop.runUntilIdle();
        EXPECT_EQ(content.theme.isDarkMode, !before);
        EXPECT_EQ(ContentState(store, platform).theme.isDarkMode, !before);
    }
}

TEST_F(Window, theHeaderFollowsFocusModeAndThemeWhereverTheyChange) {
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
    header.toggleFocusMode();
    EXPECT_EQ(shown(), off + light);
    store.focusMode = true;
    header.toggleTheme();
    EXPECT_EQ(shown(), on + "Switch to Light Mode sun.max.fill");
    EXPECT_EQ(fired, 4);
}

TEST_F(Window, theSearchLooksAtNamesOnlyAndKeepsTheOrder) {
    StoreState::change(store.workspaces, [](auto& list) { list.back().description = "Work"; });
    const std::pair<const char*, const char*> cases[]{
        {"", "[My Workspace][Homework ][Écrire-Größe]"},
        {"WORK", "[My Workspace][Homework ]"},
        {" ", "[My Workspace][Homework ]"},
        {"work ", "[Homework ]"},
        {"éCR", "[Écrire-Größe]"},
        {"GRÖSSE", "[Écrire-Größe]"},
        {"ecr", ""},
        {"Mail", ""},
        {"  ", ""}};
    for (const auto& [search, expected] : cases) {
        header.setSearchText(search);
        EXPECT_EQ(header.searchText(), search);
        EXPECT_EQ(names(), expected) << search;
        EXPECT_EQ(content.list.content(content.list.filteredWorkspaces().size()),
                  *expected ? ListContent::cards : ListContent::emptySearch);
        EXPECT_EQ(content.list.emptySearchMessage(),
                  "No workspaces match \"" + std::string(search) + "\"");
    }
    EXPECT_EQ(ContentState(store, platform).header.searchText(), "") << "of a new window";
    StoreState::set(store.searchText, "new");
    EXPECT_EQ(header.searchText(), "  ") << "stays as typed";
    store.addWorkspace(scene.workspace("Newest"));
    EXPECT_EQ(names(), "[Newest]");
    StoreState::set(store.workspaces, {});
    EXPECT_EQ(content.list.content(0), ListContent::emptySearch);
    header.setSearchText("");
    EXPECT_EQ(content.list.content(0), ListContent::emptyWorkspaces);
}

} // namespace
