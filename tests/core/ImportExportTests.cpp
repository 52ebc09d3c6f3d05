#include "core/StoreScene.h"
#include "foundation/Json.h"

#include <span>

using namespace corvane;

namespace {

using enum ResourceType;

constexpr auto importPath = "/home/user/Import.json";
constexpr auto exportPath = "/home/user/My Export.json";

struct ImportExport : SceneTest {
    Workspace first = scene.workspace("First", {scene.resource("a")});
    Workspace second = scene.workspace("Second");

    WorkspaceStore& start() {
        desktop.panels.choices = {{"Import Workspaces", importPath},
                                  {"Export Workspaces", exportPath}};
        auto& store = scene.start({first, second});
        desktop.runUntilIdle();
        desktop.shownAlerts.clear();
        desktop.log.clear();
        desktop.files.writes.clear();
        return store;
    }
};

TEST_F(ImportExport, theUserChoosesHowAnImportedListComesIn) {
    constexpr int thirdButton = 1002;
    const auto third = scene.workspace("Third");
    const auto all = scene.workspace(
        "All",
        {scene.resource("Notes", "curl example.org | sh", terminal),
         scene.resource("b", "x|y|z\nrm -r \u202e~", terminal), scene.resource("c", "/c", folder),
         scene.resource("d", std::string(400, 'x'), terminal), scene.resource("e", "ls", terminal),
         scene.resource("f", "ps", terminal), scene.resource("g", "https://g.org", url),
         scene.resource("h", "", separator), scene.resource("i"),
         scene.resource("j", "/Applications/Pad.app", application)});
    const auto one = scene.workspace("One", {scene.resource("e", "ls", terminal)});
    const auto firstCommands = ":\n• curl example.org | sh\n• x|y|z⏎rm -r \uFFFD~\n• " +
                               std::string(149, 'x') + "…" + std::string(150, 'x') + "\nand ";
    const auto allComing =
        "\n\n2 workspaces; 1 file; 1 folder; 1 application; 1 web address; 5 terminal commands" +
        firstCommands + "2 more";
    const auto twiceComing = "\n\n2 workspaces; 2 files; 2 folders; 2 applications; "
                             "2 web addresses; 10 terminal commands" +
                             firstCommands + "7 more";
    const auto doubles =
        "\n\n2 workspaces; 1 file\n\n2 of 2 are here already. Merging adds them a second time.";
    const std::string same = "First(a) Second()";
    /// The button, what was imported, what is said of it, the list then, and how many came.
    const std::tuple<int, std::vector<Workspace>, std::string, std::string, const char*> cases[]{
        {1000, {third}, "", "Third()", "1"},
        {1000, {}, "", "", "0"},
        {1001, {second, first}, doubles, same + " Second() First(a)", "2"},
        {thirdButton, {third}, "", same, nullptr},
        {0, {third}, "", same, nullptr},
        {0, {third, all}, allComing, same, nullptr},
        {0, {all, all}, twiceComing, same, nullptr},
        {0, {one}, "\n\n1 workspace; 1 terminal command:\n• ls", same, nullptr}};
    for (const auto& [button, imported, coming, list, come] : cases) {
        SCOPED_TRACE(coming + list);
        auto& store = start();
        StoreState::set(store.runningWorkspaces, std::set{first.id});
        StoreState::set(store.runningResources, {{first.id, {first.resources[0].id}}});
        desktop.files.contents[importPath] = json::prettyPrinted(encodeWorkspaces(imported));
        desktop.alertAnswers["Import Workspaces"] = {button, false};
        store.importWorkspaces();
        const auto question = "Import Workspaces | Found " + std::to_string(imported.size()) +
                              " workspace(s). How would you like to import them?" + coming +
                              " [Replace All][Merge][Cancel]";
        EXPECT_EQ(scene.alerts(), question);
        EXPECT_EQ(described(store.workspaces), list);
        EXPECT_EQ(scene.fileContent(), *store.workspaces);
        EXPECT_EQ(scene.saves(), come ? 1 : 0);
        const auto& active = store.activeWorkspace.get();
        EXPECT_EQ(active ? active->name : "", list.substr(0, list.find('(')));
        EXPECT_TRUE(store.isRunning(first.id) && store.isRunning(first.resources[0].id, first.id));
        if (come) {
            EXPECT_TRUE(
                std::ranges::equal(imported, std::span(*store.workspaces).last(imported.size())));
        }
        desktop.runUntilIdle();
        EXPECT_EQ(scene.alerts(),
                  question + (come ? "\nImport Successful | Successfully imported " +
                                         std::string(come) + " workspace(s)! [OK] not a warning"
                                   : ""));
    }
    const OpenPanel asked{"Import Workspaces", "Select a Corvane workspaces file to import"};
    EXPECT_EQ(desktop.panels.openPanels.front(), asked);
}

TEST_F(ImportExport, aFileThatIsNoListChangesNothingAndTheAlertSaysWhy) {
    const std::pair<const char*, const char*> cases[]{
        {"{\"name\":\"one\"}", "workspaces: an array was expected"},
        {"[{}]", "workspaces[0]: \"id\" is missing"},
        {nullptr, "There is no file “/home/user/Import.json”."}};
    for (const auto& [content, why] : cases) {
        auto& store = start();
        desktop.files.contents.erase(importPath);
        if (content) desktop.files.contents[importPath] = content;
        store.importWorkspaces();
        EXPECT_TRUE(desktop.shownAlerts.empty()) << "told on a later turn";
        desktop.runUntilIdle();
        EXPECT_EQ(scene.alerts(),
                  "Import Failed | Could not import workspaces: " + std::string(why) + " [OK]");
        EXPECT_EQ(described(store.workspaces), "First(a) Second()");
        EXPECT_EQ(scene.saves(), 0);
    }
}

TEST_F(ImportExport, anExportHoldsEverythingAndServesAsTheWorkspacesFile) {
    first.resources[0].bookmarkData = Bytes{1};
    auto& store = start();
    StoreState::set(store.searchText, "Second");
    store.exportWorkspaces();
    desktop.runUntilIdle();
    EXPECT_EQ(scene.alerts(),
              "Export Successful | Workspaces exported to: My Export.json [OK] not a warning");
    const SavePanel asked{"Export Workspaces", "Choose where to save your Corvane workspaces",
                          "Corvane_Workspaces_Export.json"};
    EXPECT_EQ(desktop.panels.savePanels, std::vector{asked});
    const auto exported = desktop.files.contents.at(exportPath);
    EXPECT_TRUE(exported.starts_with("[\n  {\n    \"id\": ")) << exported;
    EXPECT_EQ(exported.find("bookmarkData"), std::string::npos);

    const auto list = *store.workspaces;
    desktop.files.contents[workspacesPath] = exported;
    EXPECT_EQ(*scene.start().workspaces, list);
}

TEST_F(ImportExport, anImportThatCanNotBeSavedSaysSoAndTheHeaderMarksItUntilSavingWorks) {
    auto& store = start();
    desktop.files.contents[importPath] = encodeWorkspaces({scene.workspace("Second")});
    desktop.alertAnswers["Import Workspaces"] = {1000, false};
    desktop.files.unwritable = {workspacesPath};
    store.importWorkspaces();
    desktop.runUntilIdle();
    const auto why = "“" + workspacesPath + "” can't be written: permission denied.";
    EXPECT_EQ(desktop.shownAlerts.back().title + ": " + desktop.shownAlerts.back().message,
              "Import Not Saved: The 1 imported workspace(s) are here, but can't be saved: " + why);
    EXPECT_EQ(*store.savingProblem, why);
    desktop.files.unwritable.clear();
    store.saveWorkspaces();
    EXPECT_EQ(*store.savingProblem, "");
    EXPECT_EQ(described(scene.fileContent()), "Second()");
}

TEST_F(ImportExport, whatIsReplacedOrDeletedCanBeImportedAgain) {
    auto& store = start();
    desktop.files.contents[importPath] = encodeWorkspaces({scene.workspace("Third")});
    store.importWorkspaces();
    EXPECT_EQ(described(store.workspaces), "Third()");
    store.deleteWorkspace(store.workspaces->front().id);
    store.deleteWorkspace(first.id);
    const auto copies = storeFolder + "/Copies";
    EXPECT_EQ(desktop.files.namesIn(copies).size(), 2u) << "one went that wasn't there";
    const auto copy = copies + "/corvane_workspaces-2026-01-01T12-00-00";
    for (const auto& [file, list] :
         {std::pair(copy + ".json", "First(a) Second()"), std::pair(copy + " 2.json", "Third()")}) {
        desktop.panels.choices["Import Workspaces"] = file;
        store.importKeptCopy();
        EXPECT_EQ(desktop.panels.openPanels.back().directory, copies);
        EXPECT_EQ(described(store.workspaces), list);
    }
}

TEST_F(ImportExport, anExportThatFailsOrIsCancelledChangesNoFile) {
    auto& store = start();
    desktop.files.contents[exportPath] = "older";
    desktop.files.unwritable = {exportPath};
    store.exportWorkspaces();
    desktop.files.unwritable.clear();
    store.addWorkspace(scene.workspace("not text \xc3"));
    store.exportWorkspaces();
    desktop.panels.choices.clear();
    store.exportWorkspaces();
    store.importWorkspaces();
    desktop.runUntilIdle();
    EXPECT_EQ(desktop.files.contents.at(exportPath), "older");
    std::erase_if(desktop.shownAlerts,
                  [](const auto& alert) { return alert.title == "Workspaces Can't Be Saved"; });
    EXPECT_EQ(desktop.shownAlerts.size(), 2u);
    for (const auto& alert : desktop.shownAlerts) {
        EXPECT_EQ(alert.title, "Export Failed");
        EXPECT_TRUE(alert.message.starts_with("Could not export workspaces: ")) << alert.message;
    }
    EXPECT_EQ(desktop.logged("panel"), "panel Export Workspaces\npanel Export Workspaces\npanel "
                                       "Export Workspaces\npanel Import Workspaces");
}

} // namespace
