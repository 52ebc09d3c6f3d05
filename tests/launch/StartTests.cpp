#include "launch/LaunchScene.h"

using namespace corvane;

namespace {

using enum ResourceType;

struct Start : LaunchScene {
    WorkspaceStore& store = scene.start();
    const std::string script = terminalScript("make");
    const std::string page = "open https://corvane.example/";

    Start() { forget(); }

    Workspace workspace(std::vector<Resource> resources) const {
        return scene.workspace("Work", std::move(resources));
    }
    Resource named(std::string name, Resource resource, bool enabled = true) const {
        resource.name = std::move(name);
        resource.enabled = enabled;
        return resource;
    }
    /// The names of the resources that count as running in the workspace, "none" with no entry.
    std::string running(const Workspace& workspace) const {
        const auto entry = store.runningResources->find(workspace.id);
        if (entry == store.runningResources->end()) return "none";
        std::vector<std::string> names;
        for (const auto& resource : workspace.resources) {
            if (entry->second.contains(resource.id)) names.push_back(resource.name);
        }
        EXPECT_EQ(entry->second.size(), names.size());
        return text::joined(names, " ");
    }
};

TEST_F(Start, allEnabledResourcesOpenBackToBackWhateverBecomesOfThem) {
    const auto work = workspace(
        {named("text", resource(file, "/docs/notes.txt", {"Ghost", "Writer"})),
         named("off", resource(file, "/docs/notes.txt"), false),
         named("line", resource(separator, "")), named("gone", resource(file, "/docs/gone.txt")),
         named("bad", resource(url, "no scheme")),
         named("page", resource(url, "https://corvane.example/", {"Google Chrome"})),
         named("build", resource(terminal, "make")), named("folder", resource(folder, "/docs")),
         named("app", resource(application, "/Applications/Pad.app"))});
    const int savesBefore = scene.saves();
    const auto active = store.activeWorkspace.get();
    store.startWorkspace(work);
    EXPECT_EQ(openings(),
              "task /usr/bin/open --new -a Google Chrome --args https://corvane.example/")
        << "only a new tab is waited for";
    EXPECT_EQ(running(work), "text gone bad page build folder app");
    EXPECT_TRUE(store.isRunning(work.id) && store.hasLaunchedResources);

    forget();
    desktop.runUntilIdle();
    EXPECT_EQ(openings(), "open file:///docs/notes.txt\nsheet Application Not Found\n"
                          "open file:///docs/notes.txt with /Applications/Writer.app\n"
                          "sheet Access Error\nsheet Invalid URL\n" +
                              page + "\n" + page + "\n" + script +
                              "\nopen file:///docs\nopen file:///Applications/Pad.app");
    EXPECT_EQ(running(work), "text gone bad page build folder app");
    EXPECT_EQ(scene.saves(), savesBefore);
    EXPECT_EQ(store.activeWorkspace.get(), active) << "that is the caller's to choose";
}

TEST_F(Start, theFirstFiveFailuresComeOneByOneAndTheRestInOneList) {
    std::vector<Resource> missing;
    for (int i = 1; i <= 300; ++i)
        missing.push_back(named("no " + std::to_string(i), resource(file, "/docs/missing")));
    missing[6].name = std::string(300, 'x');
    for (const bool hasWindow : {false, true}) {
        desktop.hasMainWindow = hasWindow;
        forget();
        store.startWorkspace(workspace(missing));
        desktop.runUntilIdle();
        ASSERT_EQ(desktop.shownAlerts.size(), 6u);
        EXPECT_TRUE(desktop.shownAlerts[4].message.starts_with("Failed to access 'no 5'."));
        const auto& list = desktop.shownAlerts[5];
        EXPECT_EQ(list.title + text::joined(list.buttons, "|"), "And 295 MoreOK");
        EXPECT_EQ(desktop.log.back(), hasWindow ? "sheet And 295 More" : "alert And 295 More");
        EXPECT_TRUE(list.message.starts_with("• Access Error: Failed to access 'no 6'.\n• "));
        EXPECT_EQ(text::characterCount(text::split(list.message, '\n')[1]), 202u);
        EXPECT_TRUE(list.message.ends_with("access 'no 105'.\n\nand 195 more")) << list.message;
    }
    missing.resize(6);
    forget();
    store.startWorkspace(workspace(missing));
    store.launchIndividualResource(missing.front(), workspace(missing));
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.shownAlerts.size(), 7u) << "the last is of another start";
}

TEST_F(Start, theFlagsFollowWhenEverythingIsUnderWay) {
    const auto work = workspace({named("build", resource(terminal, "make")),
                                 named("page", resource(url, "https://corvane.example/"))});
    std::vector<std::string> seen;
    const auto subscription = store.objectWillChange.subscribe(
        [&] { seen.push_back(running(work) + (store.hasLaunchedResources ? ", launched" : "")); });
    store.startWorkspace(work);
    EXPECT_TRUE(store.isRunning(work.id));
    EXPECT_EQ(seen, (std::vector<std::string>{"none", "", "build", "build page",
                                              "build page, launched"}));
    store.startWorkspace(work);
    desktop.runUntilIdle();
    EXPECT_EQ(openings(), script + "\n" + page + "\n" + script + "\n" + page)
        << "a second start opens everything again";
}

TEST_F(Start, aWorkspaceOfWhichNothingOpensRunsAllTheSame) {
    const auto idle =
        workspace({named("off", resource(terminal, "make"), false), resource(separator, "")});
    store.startWorkspace(idle);
    EXPECT_EQ(running(idle), "");
    EXPECT_TRUE(store.isRunning(idle.id) && store.hasLaunchedResources);
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.logged(), "");
}

TEST_F(Start, oneResourceOpensInOneWay) {
    desktop.install({.path = "/Applications/Finder.app"});
    desktop.files.contents["/docs/strange.xyz"] = "";
    const std::string openIn = "background task /usr/bin/open -a /Applications/";
    const std::string site = "https://corvane.example/";
    const std::pair<Resource, std::string> cases[]{
        {resource(file, "/docs/notes.txt", {"Writer", "Pad"}),
         openIn + "Writer.app /docs/notes.txt"},
        {named("it", resource(file, "/docs/notes.txt"), false), openIn + "Pad.app /docs/notes.txt"},
        {resource(file, "/docs/strange.xyz"),
         "open file:///docs/strange.xyz\nsheet Launch Failed\nreveal file:///docs/strange.xyz"},
        {resource(folder, "/docs"), openIn + "Finder.app /docs"},
        {resource(application, "/Applications/Web.app"), openIn + "Web.app /Applications/Web.app"},
        {resource(url, site, {"Web", "Writer"}),
         page + " with /Applications/Web.app\n" + page + " with /Applications/Writer.app\n" + page},
        {resource(url, site), page},
        {resource(terminal, "make", {"Pad"}), script},
        {resource(separator, ""), ""}};
    for (const auto& [resource, openings] : cases) {
        forget();
        const auto work = workspace({resource});
        store.launchIndividualResource(resource, work);
        EXPECT_EQ(running(work), openings.empty() ? "none" : "it");
        EXPECT_FALSE(store.isRunning(work.id));
        desktop.runUntilIdle();
        EXPECT_EQ(this->openings(), openings);
    }
    EXPECT_FALSE(store.hasLaunchedResources);
}

} // namespace
