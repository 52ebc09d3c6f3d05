#include "qt/Interface.h"

#include <QQuickItem>
#include <QTemporaryDir>
#include <QTest>

namespace corvane {
namespace {

TEST_F(Views, aRunningWorkspaceSavesItsLayoutAndIsFinishedWhenTheUserSaysSo) {
    desktop.install({.path = "/Applications/Pad.app", .displayName = "Pad"});
    desktop.running.push_back({.processIdentifier = 7, .localizedName = "Pad"});
    desktop.screen.stack.push_back({.info = windowInfo(7, 1, "Pad", {10, 20, 800, 600})});
    desktop.quitBehaviours[7] = QuitBehaviour::asks;
    open({workspace("Work", {makeResource("Pad", "/Applications/Pad.app", ResourceType::application,
                                          platform.bundles)})});
    auto& store = this->store();
    store.enableAccessibilityFeatures = true;
    ASSERT_TRUE(press("Start"));
    runFor(2);
    EXPECT_TRUE(shows("Running"));
    ASSERT_TRUE(press("Save Layout"));
    EXPECT_TRUE(store.workspaces->front().hasLayoutSaved);
    store.enableAccessibilityFeatures = false;
    runFor(0);
    EXPECT_FALSE(shows("Save Layout"));

    for (const bool byKey : {true, false}) {
        ASSERT_TRUE(press("Finish"));
        EXPECT_TRUE(shows("This will close all running resources in \"Work\""));
        byKey ? key(Qt::Key_Escape) : void(press("Cancel"));
        EXPECT_TRUE(shows("1 resources running"));
    }
    EXPECT_EQ(desktop.logged("terminate"), "");
    ASSERT_TRUE(press("Finish") && press("Finish & Close"));
    EXPECT_FALSE(isEnabled("Start"));
    runFor(10);
    EXPECT_EQ(desktop.logged("terminate"), "terminate 7");
    EXPECT_TRUE(isEnabled("Start"));
}

TEST_F(Views, chipsLaunchAndStopTheirResources) {
    std::vector<Resource> nine(9, note());
    for (auto& resource : nine)
        resource.id = Uuid::random();
    nine[8].name = "ninth";
    auto line = note();
    line.type = ResourceType::separator;
    desktop.files.contents["/twin.txt"] = "";
    std::vector<Resource> twins(2, note());
    twins[1].name = "twin";
    twins[1].path = "/twin.txt";
    open({workspace("Work", nine), workspace("Home", {line}),
          workspace("Nine", {nine.begin(), nine.begin() + 8}), workspace("Twins", twins)});
    EXPECT_TRUE(shows("+1"));
    resize(480, 650);
    const auto isCut = [&] { return cut().find("+1|") != std::string::npos; };
    EXPECT_TRUE(isCut());
    wheel("note", 9);
    EXPECT_FALSE(isCut()) << "a plain wheel goes to the end of the chips";
    wheel("+1", -9);
    EXPECT_TRUE(isCut() && reach("+1"));
    EXPECT_FALSE(isCut()) << "and so does the keyboard";
    resize(1000, 700);
    EXPECT_TRUE(!shows("ninth") && shows("No resources configured"));
    ASSERT_TRUE(press("note", "Work"));
    EXPECT_EQ(desktop.logged("open"), "open file:///note.txt");
    EXPECT_EQ(store().runningResources->size(), 1u);
    EXPECT_TRUE(press("note", "Work"));
    runFor(5);
    EXPECT_TRUE(press("twin"));
    EXPECT_EQ(desktop.logged("open"), "open file:///note.txt\nopen file:///twin.txt");
}

TEST_F(Views, textsTakeTheLinesThatTheyHave) {
    auto odd = note();
    odd.name = "of two\nlines";
    auto plain = workspace("Home", {odd, note()});
    plain.description = "Short";
    auto wordy = workspace("Work");
    for (int i = 0; i < 30; ++i)
        wordy.description += " more words";
    open({wordy, plain});
    const auto heightOf = [&](const std::string& name) { return placeOf(name).height(); };
    EXPECT_NEAR(heightOf(wordy.description), 3 * heightOf("Short"), 3);
    EXPECT_EQ(heightOf("of two lines"), heightOf("note"));
    EXPECT_GT(heightOf("note"), 0);
}

TEST_F(Views, symbolsAreSeenAsLargeAsTheirSizeSays) {
    open({workspace("Work", {note()})});
    const auto shown = windows.front()->grabWindow();
    std::map<int, int> heights;
    for (const auto* item : items()) {
        if (item->property("symbol") != "play.fill" || !item->inherits("QQuickText")) continue;
        const auto place = item->mapRectToScene({0, 0, item->width(), item->height()}).toRect();
        auto& height = heights[item->property("size").toInt()];
        for (int y = 0; y < place.height(); ++y) {
            const auto row = shown.copy({place.topLeft() + QPoint(0, y), QSize(place.width(), 1)});
            height += row != row.mirrored(true, false);
        }
    }
    ASSERT_EQ(heights.size(), 2u) << "of the start button and of the chip";
    EXPECT_NEAR(heights[16] / 16.0, heights[12] / 12.0, 1.0 / 12);
    EXPECT_GT(heights[16], heights[12] + 1);
}

TEST_F(Views, whatIsDrawnTellsTheStateOfEachResource) {
    auto off = note();
    off.name = "off";
    off.enabled = false;
    auto gone = makeResource("gone", "/gone.txt", ResourceType::file, platform.bundles);
    const QTemporaryDir pictures;
    const auto picture = pictures.filePath("pad.png");
    QImage(64, 64, QImage::Format_RGB32).save(picture);
    desktop.install({.path = "/Applications/Pad.app", .icon = picture.toStdString()});
    desktop.files.directories.insert("/folder");
    desktop.defaultHandlers["/"] = "/Applications/Pad.app";
    auto folder = makeResource("folder", "/folder", ResourceType::folder, platform.bundles);
    folder.associatedApps = {"Nobody"};
    const auto line = makeResource("line", "", ResourceType::separator, platform.bundles);
    open({workspace("Work", {note(), off, line, gone, folder})});
    ASSERT_TRUE(press("note", "Work"));
    runFor(5);
    EXPECT_EQ(toolTipOf("note"), "Stop note\n/note.txt");
    EXPECT_EQ(toolTipOf("folder"), "Launch folder with Finder\n/folder");
    const auto leave = [&] {
        QTest::mouseMove(windows.front(), {1, 1});
        settle();
    };
    leave();
    EXPECT_EQ(drawn("Work"),
              "#f7f7f8/#d4d4d8; #2a9d49>#2f7df0; [star] #ffffff; Work #1d1d1f; "
              "What has to be done #626267; [play.fill] #ffffff; Start #ffffff; #0a66db/#095dc7; "
              "[chevron.down] #1d1d1f; Resources #1d1d1f; #f7f7f8/#d4d4d8; [ellipsis] #1d1d1f; "
              "#f7f7f8/#d4d4d8; #d4d4d8; #d4d4d8; [doc.fill] #166b2c; note #1d1d1f; "
              "[stop.fill] #d9c42b1f; #262ba24a/#80166b2c; [doc.fill] #166b2c 60%; "
              "off #1d1d1f 60%; [play.fill] #d9626267 60%; #ffffff/#d4d4d8 60%; "
              "[exclamationmark.triangle.fill] #a85b00; gone #1d1d1f; [play.fill] #d9626267; "
              "#ffffff/#d4d4d8; [folder.fill] #a85b00; folder #1d1d1f; [play.fill] #d9626267; "
              "#ffffff/#d4d4d8; ");
    ASSERT_TRUE(press("Resources", "Work"));
    leave();
    const auto rows = drawn("Work");
    EXPECT_EQ(rows.substr(rows.find("[folder.badge")),
              "[folder.badge.gearshape] #626267; "
              "Drag anything from Finder to add resources, or drag rows to reorder #626267; "
              "#d4d4d8; #f7f7f8; [dots.grip] #626267 60%; [doc.fill] #626267; note #1d1d1f; "
              "#26626267; FILE #626267; [plus] #0a5fcc; Add App #0a5fcc; [stop.fill] #c42b1f; "
              "#2ba24a; #ffffff; [trash] #c42b1f; [ellipsis] #626267; #4dd4d4d8; #80f7f7f8; "
              "[dots.grip] #626267 36%; [doc.fill] #626267 60%; off #1d1d1f 60%; #26626267 60%; "
              "FILE #626267 60%; [plus] #0a5fcc 60%; Add App #0a5fcc 60%; #1a626267/#4dc42b1f 60%; "
              "Disabled : Excluded from being opened/quit #626267 60%; [play.fill] #0a5fcc 60%; "
              "#b9b9bf 60%; #ffffff 60%; [trash] #c42b1f 60%; [ellipsis] #626267 60%; #4dd4d4d8; "
              "#4df7f7f8; [dots.grip] #626267 60%; #4d626267; line #626267; #4d626267; "
              "[trash] #c42b1f; #4dd4d4d8; #f7f7f8; [dots.grip] #626267 60%; [doc.fill] #626267; "
              "gone #1d1d1f; [exclamationmark.triangle.fill] #a85b00; #26626267; FILE #626267; "
              "[plus] #0a5fcc; Add App #0a5fcc; [play.fill] #0a5fcc; #2ba24a; #ffffff; "
              "[trash] #c42b1f; [ellipsis] #626267; #4dd4d4d8; #f7f7f8; [dots.grip] #626267 60%; "
              "[folder.fill] #626267; folder #1d1d1f; #26626267; FOLDER #626267; "
              "#1a0a5fcc/#4d0a5fcc; "
              "<image://icon/" +
                  QUrl::toPercentEncoding(picture).toStdString() +
                  ">; "
                  "#26626267/#1a626267; [app] #626267; [xmark] #626267; [plus] #0a5fcc; "
                  "Add App #0a5fcc; [play.fill] #0a5fcc; #2ba24a; #ffffff; [trash] #c42b1f; "
                  "[ellipsis] #626267; ");
    EXPECT_TRUE(isEnabled("Remove Nobody") && !shows("Remove Pad"));
    ASSERT_TRUE(press("Switch to Dark Mode"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawn("Work").starts_with("#28282b"); }));
    ASSERT_TRUE(press("Resources", "Work"));
    leave();
    EXPECT_EQ(drawn(),
              "#1e1e20; Workspace Manager #f2f2f4; Search workspaces... #a9a9b0; "
              "[magnifyingglass] #a9a9b0; #2f2f33/#3d3d42; [sun.max.fill] #f2f2f4; "
              "#28282b/#3d3d42; [scope] #f2f2f4; Focus Mode #f2f2f4; #2b2b2f/#3d3d42; "
              "[plus] #ffffff; New Workspace #ffffff; #2a6fdb/#2665c7; [gearshape.fill] #f2f2f4; "
              "#28282b/#3d3d42; #3d3d42; #28282b/#3d3d42; #2a9d49>#2f7df0; [star] #ffffff; "
              "Work #f2f2f4; What has to be done #a9a9b0; [play.fill] #ffffff; Start #ffffff; "
              "#2a6fdb/#2665c7; [chevron.down] #f2f2f4; Resources #f2f2f4; #28282b/#3d3d42; "
              "[ellipsis] #f2f2f4; #28282b/#3d3d42; #3d3d42; #3d3d42; [doc.fill] #4cd46a; "
              "note #f2f2f4; [stop.fill] #d9ff7066; #4d238a40/#804cd46a; [doc.fill] #4cd46a 60%; "
              "off #f2f2f4 60%; [play.fill] #d9a9a9b0 60%; #28282b/#3d3d42 60%; "
              "[exclamationmark.triangle.fill] #ffa53d; gone #f2f2f4; [play.fill] #d9a9a9b0; "
              "#28282b/#3d3d42; [folder.fill] #ffa53d; folder #f2f2f4; [play.fill] #d9a9a9b0; "
              "#28282b/#3d3d42; ");
    ASSERT_TRUE(press("off", "Work"));
    EXPECT_EQ(desktop.logged("open"), "open file:///note.txt\nopen file:///note.txt")
        << "what a start leaves out opens by its own chip";
}

TEST_F(Views, theMenuAndTheSheetsChangeTheList) {
    open({workspace("Work", {note()}), workspace("Home")});
    ASSERT_TRUE(press("More", "Home") && press("Edit"));
    EXPECT_TRUE(shows("Edit Workspace"));
    type("ly");
    write("Enter workspace description (optional)", "at night");
    ASSERT_TRUE(press("cube") && press("Save"));
    EXPECT_EQ(store().workspaces->back().description, "at night");
    EXPECT_EQ(store().workspaces->back().icon, "cube");
    EXPECT_EQ(described(store().workspaces), "Work(note) Homely()");

    ASSERT_TRUE(press("Search workspaces..."));
    type("none");
    for (const auto* button : {"Cancel", "Create"}) {
        ASSERT_TRUE(press("New Workspace"));
        EXPECT_EQ(focused(), "Enter workspace name");
        EXPECT_FALSE(isEnabled("Create"));
        type(" ");
        EXPECT_TRUE(press(button));
    }
    EXPECT_EQ(described(store().workspaces), "Work(note) Homely()  ()");
    EXPECT_TRUE(shows("No Results Found"));
}

TEST_F(Views, theListFollowsTheSearchAndTheStore) {
    open({workspace("Garden"), workspace("Office"), workspace("Garage")});
    ASSERT_TRUE(press("Resources", "Garage") && press("Search workspaces..."));
    type("GAR");
    EXPECT_TRUE(shows("Garden") && shows("Garage") && !shows("Office"));
    for (const char letter : {'D', 'A'}) {
        type({letter});
        EXPECT_EQ(shows("Add Resource"), letter == 'A') << "cards keep what they are";
        key(Qt::Key_Backspace);
    }
    type(" ");
    EXPECT_TRUE(shows("No Results Found") && shows("No workspaces match \"GAR \""));
    store().addWorkspace(workspace("Gar field"));
    runFor(0);
    EXPECT_TRUE(shows("Gar field"));
    for (int i = 0; i < 4; ++i)
        key(Qt::Key_Backspace);
    EXPECT_TRUE(shows("Office"));
    const auto top = placeOf("Garden").top();
    for (int i = 0; i < 9; ++i)
        store().addWorkspace(workspace("Garage " + std::to_string(i)));
    runFor(0);
    wheel("Office", 3);
    EXPECT_TRUE(QTest::qWaitFor([&] { return placeOf("Garden").top() < top; }));
    type("gar");
    EXPECT_EQ(placeOf("Garden").top(), top) << "the first match is whole";
    key(Qt::Key_Escape);
    while (!store().workspaces->empty())
        store().deleteWorkspace(store().workspaces->front().id);
    runFor(0);
    EXPECT_TRUE(shows("No Workspaces Yet"));
    ASSERT_TRUE(press("Create Your First Workspace"));
    EXPECT_EQ(focused(), "Enter workspace name");
}

TEST_F(Views, theHeaderTellsWhyNothingIsSavedAndSavesOnceMore) {
    open({workspace("Work")});
    auto& unwritable = desktop.files.unwritable;
    unwritable = {workspacesPath};
    store().addWorkspace(workspace("Later"));
    runFor(0);
    const auto mark = "Changes aren't saved. Press to try again.\n\n“" + workspacesPath +
                      "” can't be written: permission denied.";
    EXPECT_TRUE(press(mark) && shows(mark));
    unwritable.clear();
    EXPECT_TRUE(press(mark) && !shows(mark));
}

TEST_F(Views, aClosedWindowComesBackWithTheStoreAsItIs) {
    open({workspace("Work")});
    closeWindow();
    EXPECT_TRUE(windows.windows().empty());
    store().addWorkspace(workspace("Later"));
    platform.notificationCenter.post("createNewWindow");
    ASSERT_EQ(windows.windows().size(), 1u);
    runFor(0);
    EXPECT_TRUE(shows("Later"));
    platform.notificationCenter.post("createNewWindow");
    EXPECT_EQ(windows.windows().size(), 1u);

    // One that is closed while it comes to the front isn't asked for any more.
    int asked = 0;
    windows.goThrough({.activate = [&](std::uint64_t, const std::string&) { ++asked; }});
    const int last = windows.windows().front().identifier;
    windows.makeKeyAndOrderFront(last);
    EXPECT_EQ(asked, 1);
    windows.front()->hide();
    windows.makeKeyAndOrderFront(last);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(windows.front(), nullptr);
}

TEST_F(Views, theTourEndsByItsButtonsOrItsWindowAndGoesOnWhereItWasLeft) {
    auto& defaults = desktop.defaults;
    isFirstStart = true;
    open({workspace("Work")});
    runFor(1.1);
    EXPECT_TRUE(shown().starts_with("Welcome to Corvane|Skip|Welcome to Corvane|"));
    EXPECT_FALSE(isEnabled("Previous"));
    EXPECT_EQ(QGuiApplication::focusWindow()->size(), QSize(600, 500));
    // The texts and the signs of each step, and which of its dots is the blue one.
    std::string steps;
    for (int i = 0; i < 6; ++i) {
        if (i > 0) press("Next");
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return drawn().find(". #1d1d1f; ") != std::string::npos; }));
        for (const auto& each : QString::fromStdString(drawn()).split("; ")) {
            const auto color = each.indexOf(" #");
            if (color >= 0) steps += each.left(color).toStdString() + "|";
            steps += each == "#0a5fcc" ? "o" : each == "#4d626267" ? "." : "";
        }
        steps += "\n";
    }
    EXPECT_EQ(steps, R"(Skip|o.....Welcome to Corvane|Your workspace management companion|Corvane )"
                     R"(helps you organize and launch groups of applications, files, and folders )"
                     R"(together as workspaces.|Previous|1 of 6|Next|
Skip|.o....[plus.circle]|Create Your First Workspace|Group your tools together|Click the '+' )"
                     R"(button to create a new workspace. Name it after your project or task )"
                     R"((e.g., 'Development', 'Design', 'Research').|Previous|2 of 6|Next|
Skip|..o...[square.and.arrow.down]|Add Resources|Drag & drop to add items|Drag applications, )"
                     R"(files, folders, or even URLs into your workspace. You can also use the )"
                     R"('+' button to add specific types of resources.|Previous|3 of 6|Next|
Skip|...o..[play.circle]|Launch Everything at Once|One click, all your tools|Press the 'Start' )"
                     R"(button to launch all resources in your workspace. Use individual play )"
                     R"(buttons to launch specific items.|Previous|4 of 6|Next|
Skip|....o.[scope]|Use Focus Mode|Stay distraction-free|Enable Focus Mode to automatically quit )"
                     R"(all other applications when starting a workspace, keeping you focused on )"
                     R"(your current task.|Focus Mode: OFF|Previous|5 of 6|Next|
Skip|.....oAccess from Menu Bar|Always available|Find Corvane in your menu bar to quickly )"
                     R"(launch workspaces, toggle focus mode, or open this help again.|Previous|)"
                     R"(6 of 6|Get Started|
)");
    EXPECT_TRUE(press("Previous") && shows("5 of 6"));
    EXPECT_TRUE(press("Focus Mode: OFF") && shows("Focus Mode: ON") && store().focusMode);
    EXPECT_FALSE(defaults.contains("HasCompletedOnboarding"));
    press("Next");
    EXPECT_TRUE(press("Get Started"));
    runFor(0);
    EXPECT_EQ(defaults.at("HasCompletedOnboarding"), PropertyList{true});
    EXPECT_TRUE(shows("Work"));

    auto& menu = desktop.statusBar;
    app->appDelegate().applicationDidFinishLaunching();
    runFor(1);
    defaults.clear();
    ASSERT_TRUE(menu.press("Help & Tips"));
    runFor(0);
    press("Next");
    ASSERT_TRUE(shows("2 of 6"));
    closeWindow();
    EXPECT_EQ(windows.windows().size(), 1u);
    EXPECT_EQ(defaults.at("HasCompletedOnboarding"), PropertyList{true});
    ASSERT_TRUE(menu.press("Help & Tips"));
    runFor(0);
    EXPECT_TRUE(shows("2 of 6"));
}

} // namespace
} // namespace corvane
