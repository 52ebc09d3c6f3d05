#include "core/StoreScene.h"
#include "quit/RunningApplicationMatching.h"

using namespace corvane;

namespace {

struct Quitting : SceneTest {
    void run(const std::string& name, const std::string& path = "",
             QuitBehaviour behaviour = QuitBehaviour::quits, const std::string& identifier = "",
             int policy = 0) {
        const auto process = static_cast<std::int32_t>(desktop.running.size()) + 1;
        RunningApplication application{.processIdentifier = process};
        if (!name.empty()) application.localizedName = name;
        if (!identifier.empty()) application.bundleIdentifier = identifier;
        application.bundleURL =
            Url::fromPath(path.empty() ? "/Applications/" + name + ".app" : path);
        application.activationPolicy = policy;
        desktop.running.push_back(application);
        desktop.quitBehaviours[process] = behaviour;
    }
    Resource application(const std::string& name) {
        return scene.resource(name, "/Applications/" + name + ".app", ResourceType::application);
    }
    /// The processes that were asked ("1") or ended by force ("1!"), in order.
    std::string asked() {
        std::vector<std::string> processes;
        for (const auto& line : desktop.log) {
            const auto words = text::words(line);
            if (words[0] == "terminate") processes.push_back(words[1]);
            if (words[0] == "forceTerminate") processes.push_back(words[1] + "!");
        }
        return text::joined(processes, " ");
    }
    /// The last alert's title and message, once everything due within that time has happened.
    std::string alertWithin(double seconds) {
        desktop.shownAlerts.clear();
        desktop.runFor(seconds);
        if (desktop.shownAlerts.empty()) return "";
        return desktop.shownAlerts.back().title + ": " + desktop.shownAlerts.back().message;
    }

    WorkspaceStore& store = scene.start();
};

struct QuittingAmongMany : Quitting {
    QuittingAmongMany() {
        using enum QuitBehaviour;
        run("Corvane", "", quits, "app.corvane.Corvane");
        run("Finder", "", quits, "com.apple.finder");
        run("Panel", "", quits, "", 1);
        run("Editor");
        run("Stubborn", "", refuses);
        run("Immortal", "", refusesForce);
        run("Tool", "/usr/lib/Tool.app");
        run("Renamed", "", quits, "com.example.mail");
        run("Other");
        run("Asker", "", asks);
        run("Refuser", "", refuses);
        run("Rock", "", refusesForce);
        run("Ghost", "", vanishes);
        run("", "/home/me/nameless.app");
        run("System", "/System/System.app");
        run("Bare");
        desktop.running.back().bundleURL.reset();

        desk.resources = {scene.resource("Home", "/home/me", ResourceType::folder)};
        for (const auto* name : {"Corvane", "Panel", "Editor", "Stubborn", "Immortal", "Tool"})
            desk.resources.push_back(application(name));
        desk.resources.push_back(application("Mail"));
        desk.resources.back().bundleIdentifier = "com.example.mail";
        desk.resources.push_back(application("Other"));
        desk.resources.back().enabled = false;
        desk.resources.push_back(scene.resource("", "", ResourceType::separator));
        desk.resources.back().associatedApps = {"Asker"};
        StoreState::set(store.activeWorkspace, desk);
        StoreState::set(store.hasLaunchedResources, true);
        StoreState::set(store.runningWorkspaces, {desk.id});
        StoreState::set(store.runningResources, {{desk.id, {}}, {Uuid::random(), {}}});
    }
    bool isMarkedRunning() {
        return store.hasLaunchedResources && store.isRunning(desk.id) &&
               store.runningResources->size() == 2;
    }

    Workspace desk = scene.workspace("Desk");
};

TEST_F(QuittingAmongMany, focusModeQuitsWhatTheWorkspaceDoesntName) {
    store.quitNonWorkspaceApplications(desk);
    EXPECT_EQ(alertWithin(2), "");
    EXPECT_EQ(asked(), "9 10 11 11! 12 12! 13 13! 14");
    EXPECT_TRUE(isMarkedRunning());
}

TEST_F(QuittingAmongMany, quitAllAsksEveryUserApplicationAndForcesNone) {
    store.quitAllApplications();
    EXPECT_EQ(alertWithin(0.99), "");
    EXPECT_EQ(alertWithin(0.02), "Applications Closed: Successfully closed 5 of 10 applications.");
    EXPECT_EQ(asked(), "4 5 6 8 9 10 11 12 13 14");
    EXPECT_TRUE(isMarkedRunning());
}

TEST_F(QuittingAmongMany, finishingQuitsWhatTheWorkspaceNamesSystemOrNot) {
    store.finishWorkspace();
    EXPECT_EQ(alertWithin(0.99), "");
    EXPECT_EQ(alertWithin(0.02), "Workspace Applications Closed: Closed 5 of 6 workspace "
                                 "applications.\n\n• Gracefully quit: 4\n• Force quit: 1\n"
                                 "• Failed: 1");
    EXPECT_EQ(desktop.shownAlerts.back().checkbox, "Don't show this message again");
    EXPECT_EQ(asked(), "2 4 5 5! 6 6! 7 8");
    EXPECT_TRUE(!store.hasLaunchedResources && store.runningWorkspaces->empty());
    EXPECT_EQ(store.runningResources->size(), 1u);
    EXPECT_EQ(store.activeWorkspace.get(), desk);
}

TEST_F(Quitting, otherNamesAndIdentifiersCountLikeAnApplicationsOwn) {
    const auto known = [&](const std::string& own, std::vector<OtherName> others) {
        run(own, "", QuitBehaviour::quits, "org." + own);
        desktop.running.back().otherNames = std::move(others);
    };
    known("Files", {{"Finder", "com.apple.finder", "/System/Library/CoreServices/Finder.app"}});
    known("XTerm", {{"Terminal", "com.apple.Terminal", "/System/Applications/Terminal.app"}});
    known("Web", {{"Safari", "com.apple.Safari", "/Applications/Safari.app"}, {"Netz"}});
    known("Pad", {{"Block"}});
    known("Notes", {});
    run("", "/Applications/Nameless.app");
    EXPECT_EQ(findRunningApplication(desktop.platform().applications, "Netz")->localizedName,
              "Web");
    EXPECT_EQ(
        findRunningApplication(desktop.platform().applications, "com.apple.finder")->localizedName,
        "Files");
    auto page = scene.resource("Page", "http://x.example", ResourceType::url);
    auto job = scene.resource("Job", "ls", ResourceType::terminal);
    auto pad = application("Block");
    const Workspace workspace = scene.workspace("W", {page, job, pad, application("Unknown")});
    store.quitNonWorkspaceApplications(workspace);
    EXPECT_EQ(asked(), "5") << "the file manager is Finder, the others are the workspace's";
    store.finishWorkspace(workspace);
    EXPECT_EQ(asked(), "5 2 3 4 6") << "what has no name is Unknown";
    store.quitAllApplications();
    EXPECT_EQ(asked(), "5 2 3 4 6 2 3 4 5 6") << "but never Finder";
}

TEST_F(Quitting, theSummaryOfAFinishCountsAndCanBeSwitchedOff) {
    const std::vector<RunningApplication> three(3);
    desktop.alertAnswers["Workspace Applications Closed"] = {AlertResponse::firstButton, true};
    store.showWorkspaceClosedSummary(1, 2, three);
    EXPECT_EQ(alertWithin(0), "Workspace Applications Closed: Successfully closed 3 workspace "
                              "applications!\n\n• Gracefully quit: 1\n• Force quit: 2");
    EXPECT_FALSE(store.showWorkspaceClosedAlert) << "its checkbox was on";
    EXPECT_TRUE(store.showApplicationsClosedAlert);
    store.showWorkspaceClosedAlert = true;
    // What counts is the preference when the summary is due.
    run("Editor");
    store.finishWorkspace(scene.workspace("Desk", {application("Editor")}));
    desktop.runFor(0.5);
    store.showWorkspaceClosedAlert = false;
    EXPECT_EQ(alertWithin(1), "");
    run("Editor");
    store.quitAllApplications();
    desktop.alertAnswers["Applications Closed"] = {AlertResponse::firstButton, true};
    EXPECT_NE(alertWithin(1), "");
    EXPECT_FALSE(store.showApplicationsClosedAlert) << "its checkbox was on";
    run("Editor");
    store.quitAllApplications();
    EXPECT_EQ(alertWithin(1), "");
    EXPECT_EQ(asked(), "1 1 1");
}

TEST_F(Quitting, aFinishWithNothingToDoSaysSo) {
    StoreState::set(store.activeWorkspace, std::nullopt);
    store.finishWorkspace();
    EXPECT_EQ(alertWithin(0), "No Workspace Selected: Please select a workspace first.");
    store.quitAllApplications();
    EXPECT_EQ(alertWithin(0), "Quit All Applications: No user applications found to close.");

    // Its resources are all disabled, or name no application.
    auto desk =
        scene.workspace("Desk", {application("Editor"), scene.resource("plain", "/x.none")});
    desk.resources[0].enabled = false;
    run("Editor");
    store.startWorkspace(desk);
    desktop.runFor(1);
    store.finishWorkspace(desk);
    EXPECT_EQ(alertWithin(2), "No Applications to Quit: No applications found in this workspace's "
                              "resources.");
    EXPECT_TRUE(store.runningWorkspaces->contains(desk.id));
    EXPECT_TRUE(store.runningResources->contains(desk.id));

    // They name one that doesn't run.
    desk.resources[1] = application("Absent");
    StoreState::set(store.activeWorkspace, scene.workspace("Other"));
    store.finishWorkspace(desk);
    EXPECT_EQ(alertWithin(2), "");
    EXPECT_TRUE(store.runningWorkspaces->empty());
    EXPECT_TRUE(store.hasLaunchedResources) << "it isn't the active one";
    EXPECT_EQ(asked(), "");
}

TEST_F(Quitting, whereNobodyTellsWhatRunsThatIsSaidAndNothingIsAsked) {
    const auto desk = scene.workspace("Desk", {application("Editor")});
    StoreState::set(store.runningWorkspaces, {desk.id});
    desktop.screen.facts = {"Other", false, false, "Log in again."};
    run("Editor");
    run("Other");
    const std::string said = "Applications Not Quit: Corvane can't see which applications run, so "
                             "it asks none to quit.\n\nLog in again.";
    store.quitNonWorkspaceApplications(desk);
    EXPECT_EQ(alertWithin(0.1), said) << "Focus Mode";
    store.quitIndividualResource(desk.resources[0], desk);
    EXPECT_EQ(alertWithin(0.1), said);
    store.finishWorkspace(desk);
    EXPECT_EQ(alertWithin(0.1), said);
    EXPECT_FALSE(store.isRunning(desk.id));
    store.quitAllApplications();
    EXPECT_EQ(alertWithin(0.1), said);
    EXPECT_EQ(asked(), "");
}

TEST_F(Quitting, theRunningStateIsClearedBeforeAnythingIsAsked) {
    run("Editor");
    const auto first = scene.workspace("First", {application("Editor")});
    const auto second = scene.workspace("Second", {application("Editor")});
    store.startWorkspace(first);
    store.startWorkspace(second);
    StoreState::set(store.activeWorkspace, first);
    const auto subscription = store.objectWillChange.subscribe([&] { EXPECT_EQ(asked(), ""); });
    store.finishWorkspace(first);
    EXPECT_EQ(asked(), "1");
    EXPECT_TRUE(store.hasLaunchedResources) << "another one is left running";
    EXPECT_EQ(store.runningWorkspaces.get(), std::set{second.id});
    EXPECT_TRUE(store.runningResources->contains(second.id));
}

TEST_F(Quitting, oneResourceQuitsAloneAndItsWorkspaceGoesOn) {
    run("Editor");
    run("Viewer", "", QuitBehaviour::refuses);
    run("Renamed", "", QuitBehaviour::quits, "com.example.mail");
    run("Other");
    desktop.defaultHandlers["txt"] = "/Applications/Editor.app";
    auto note = scene.resource("Note");
    note.enabled = false;
    note.associatedApps = {"Viewer", "Editor"};
    auto mail = application("Mail");
    mail.bundleIdentifier = "com.example.mail";
    const auto line = scene.resource("Line", "", ResourceType::separator);
    const auto plain = scene.resource("Plain", "/x.none");
    const auto desk = scene.workspace("Desk", {note, mail, line, plain});
    StoreState::set(store.runningWorkspaces, {desk.id});
    StoreState::set(store.runningResources, {{desk.id, {note.id, mail.id, line.id, plain.id}}});
    StoreState::set(store.hasLaunchedResources, true);
    const auto stillMarked = [&] { return store.runningResources->at(desk.id).size(); };

    store.quitIndividualResource(line, desk);
    EXPECT_EQ(stillMarked(), 4u);
    store.quitIndividualResource(plain, desk);
    EXPECT_EQ(stillMarked(), 3u);
    EXPECT_EQ(asked(), "");
    store.quitIndividualResource(note, desk);
    EXPECT_EQ(asked(), "1 2 2!");
    store.quitIndividualResource(mail, desk);
    EXPECT_EQ(stillMarked(), 1u);
    EXPECT_EQ(alertWithin(2), "");
    EXPECT_EQ(asked(), "1 2 2! 3");
    EXPECT_TRUE(store.runningWorkspaces->contains(desk.id) && store.hasLaunchedResources);

    StoreState::set(store.runningResources, {});
    store.quitIndividualResource(note, desk);
    EXPECT_TRUE(store.runningResources->empty());
}

TEST_F(Quitting, focusModeClearsTheDeskBeforeAStart) {
    run("Safari");
    run("Other");
    run("Finder", "", QuitBehaviour::quits, "com.apple.finder");
    desktop.defaultHandlers["/"] = "/System/Library/CoreServices/Finder.app";
    desktop.files.directories.insert("/home/me");
    auto desk = scene.workspace("Desk", {scene.resource("Site", "https://a.b", ResourceType::url)});
    for (const bool focus : {false, true}) {
        store.focusMode = focus;
        store.startWorkspace(scene.workspace("Empty"));
        EXPECT_EQ(asked(), "");
        desktop.log.clear();
        store.startWorkspace(desk);
        EXPECT_EQ(asked(), focus ? "2" : "");
    }
    EXPECT_EQ(alertWithin(2).find("Closed"), std::string::npos);
    EXPECT_EQ(desktop.log.front(), "terminate 2") << "before anything is opened";
    EXPECT_GT(desktop.log.size(), 1u);

    desk.resources = {scene.resource("Home", "/home/me", ResourceType::folder)};
    desktop.log.clear();
    store.startWorkspace(desk);
    EXPECT_EQ(asked(), "1") << "a browser that no resource names";
}

TEST(ResourceAppNames, eachTypeHasItsWayToAnApplication) {
    using enum ResourceType;
    StoreScene scene;
    auto& store = scene.start();
    scene.desktop.defaultHandlers = {{"txt", "/Applications/Text Edit 2.1.app"},
                                     {"md", "/opt/pad"},
                                     {"https:", "/Applications/Web.app"},
                                     {"/", "/Applications/Files.app"}};
    const std::tuple<ResourceType, std::string, std::optional<std::string>> cases[]{
        {file, "/docs/no such file #1.txt", "Text Edit 2.1"},
        {file, "/docs/a.md", "pad"},
        {file, "/docs/a.xyz", std::nullopt},
        {folder, "/docs", "Finder"},
        {application, "/Applications/Ünter Wegs.app", "Ünter Wegs"},
        {application, "/Applications/Pad.app/", "named"},
        {application, "/Applications/Pad.APP", "named"},
        {url, "https://corvane.example/", "Safari"},
        {terminal, "/tmp|make", "Terminal"},
        {separator, "", std::nullopt}};
    for (const auto& [type, path, expected] : cases)
        EXPECT_EQ(store.appNameForResource(scene.resource("named", path, type)), expected) << path;
}

} // namespace
