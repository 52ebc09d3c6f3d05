#include "core/StoreScene.h"
#include "ui/AddResourceSheet.h"
#include "ui/ApplicationPicker.h"
#include "ui/OnboardingView.h"
#include "ui/SettingsSheet.h"
#include "ui/WorkspaceSheet.h"

using namespace corvane;

namespace {

using enum ResourceType;

struct Sheets : SceneTest {
    Workspace work = scene.workspace("Work", {scene.resource("note")});
    WorkspaceStore& store = scene.start({work});
    AddResourceSheet add = sheet();

    AddResourceSheet sheet(const std::optional<RecordKey>& edited = {}) {
        return AddResourceSheet(work.id, store, *scene.bookmarks, platform.panels, platform.bundles,
                                platform.fileSystem, edited);
    }

    const std::vector<Resource>& resources() const { return store.workspaces->at(0).resources; }
    static std::string shown(const WorkspaceSheet& sheet) {
        return std::string(sheet.title()) + "|" + std::string(sheet.commitTitle()) + "|" +
               sheet.name.get() + "|" + sheet.description.get() + "|" + sheet.selectedIcon.get() +
               "|" + std::to_string(sheet.availableIcons().size());
    }
    static std::string shown(const AddResourceSheet& sheet) {
        std::string text;
        for (const auto part :
             {sheet.title(), sheet.subtitle(), sheet.addTitle(), sheet.enabledTitle()})
            text += std::string(part) + "|";
        return text + sheet.resourceName.get() + "|" + sheet.resourcePath.get() + "|" +
               (sheet.enabledByDefault ? "enabled" : "disabled");
    }
};

TEST_F(Sheets, aNewWorkspaceComesLastAndOnlyWithAName) {
    const auto sheet = newSpaceSheet(store, platform.clock);
    EXPECT_EQ(shown(*sheet), "Create New Workspace|Create|||laptopcomputer|48");
    sheet->commit();
    EXPECT_EQ(scene.saves(), 0);
    sheet->name = " ";
    sheet->description = "About";
    sheet->commit();
    const auto& made = store.workspaces->back();
    auto expected = makeWorkspace(" ", "About", "laptopcomputer", SimulatedQueue::start);
    expected.id = made.id;
    EXPECT_EQ(*store.workspaces, (std::vector{work, expected}));
}

TEST_F(Sheets, anEditWritesBackTheRecordAsItWasOpened) {
    work.icon = "nothing.known";
    work.description = "Before";
    store.updateWorkspace(work);
    const auto sheet = editWorkspaceSheet(store.workspaces->front(), store, platform.clock);
    EXPECT_EQ(shown(*sheet), "Edit Workspace|Save|Work|Before|nothing.known|60");
    store.addResource(scene.resource("late"), work.id);
    sheet->name = work.name = "Renamed";
    sheet->description = work.description = "After";
    sheet->selectedIcon = work.icon = "cube";
    sheet->commit();
    work.dateModified = SimulatedQueue::start;
    EXPECT_EQ(store.workspaces->front(), work);
    store.deleteWorkspace(work.id);
    sheet->commit();
    EXPECT_TRUE(store.workspaces->empty());
}

TEST_F(Sheets, anAddressIsValidByItsFirstDecidingRule) {
    for (const auto* valid :
         {"localhost:3000", "localhost: not even this", "127.0.0.1:8080", "127.0.0.1", "https://",
          "HTTP://site.test", "ftp://host", "file:///tmp", "mailto:a@b.test", "site.test/a?b=1"})
        EXPECT_TRUE(AddResourceSheet::isValidURL(valid)) << valid;
    for (const auto* other : {"", "chrome://settings", "word", "site.test/a b", "a.b<c"})
        EXPECT_FALSE(AddResourceSheet::isValidURL(other)) << other;
}

TEST_F(Sheets, aTypedAddressNamesTheResourceOnce) {
    const std::pair<std::vector<std::string>, const char*> cases[]{
        {{"https://s", "https://si", "https://site.test"}, "s"},
        {{"https://site.test/page"}, "site.test"},
        {{"site.test"}, "site.test"},
        {{"word"}, ""},
        {{"file:///tmp/a"}, "file"},
        {{"https://"}, ""},
        {{"http:a"}, "http:a"},
        {{"http:///x"}, "http:///x"}};
    for (const auto& [typed, name] : cases) {
        add.select(url);
        for (const auto& text : typed)
            add.setPath(text);
        EXPECT_EQ(add.resourceName.get(), name) << typed.back();
    }
}

TEST_F(Sheets, eachTypeAsksForItsOwnPath) {
    EXPECT_EQ(shown(add), "Add New Resource|Add a file, folder, app, URL, or terminal command to "
                          "your workspace|Add Resource|Enabled by default|||enabled");
    std::string text;
    for (const auto type : {file, folder, application, url, terminal}) {
        add.select(type);
        add.pick();
        text += std::string(factsOf(type).title) + "|" + std::string(add.pathHeading()) + "|" +
                std::string(add.pathPrompt()) + "|" + add.pickerTitle() + "|" +
                std::string(add.pickerSymbol());
        EXPECT_FALSE(add.canAdd()) << "without a name";
        for (const auto* typed : {"", "a b", "site.test"}) {
            add.setPath(typed);
            add.resourceName = "Named";
            text += "|" + std::string(add.statusText()) + (add.canAdd() ? "+" : "");
        }
        text += "\n";
    }
    EXPECT_EQ(text, R"(File|File Path||Click to select file|doc||+|+
Folder|Folder Path||Click to select folder|folder||+|+
Application|Application Path||Click to select application|app.badge||+|+
Url|URL|https://example.com or localhost:3000|https://|||)"
                    R"(Enter a valid URL (https://example.com or localhost:3000)|Valid URL+
Terminal|Terminal Command|npm start|Click to select terminal|||This command will be executed in Terminal+|)"
                    R"(This command will be executed in Terminal+
)");
    const std::vector<OpenPanel> asked{{.title = "File Path", .content = PanelContent::file},
                                       {.title = "Folder Path", .content = PanelContent::folder},
                                       {.title = "Application Path",
                                        .content = PanelContent::application,
                                        .directory = "/Applications"}};
    EXPECT_EQ(desktop.panels.openPanels, asked);
}

TEST_F(Sheets, aResourceIsAddedWithABookmarkWhereItsFileExists) {
    desktop.files.contents["/home/user/notes.txt"] = "text";
    add.select(file);
    for (const auto* picked : {"/home/user/caf\xe9.txt", "/home/user/notes.txt"}) {
        EXPECT_EQ(add.resourcePath.get(), "") << "no path that can't be stored";
        desktop.panels.choices["File Path"] = picked;
        add.pick();
    }
    EXPECT_EQ(add.pickerTitle(), "/home/user/notes.txt");
    add.add();
    EXPECT_EQ(resources().back().name, "notes");
    add.resourceName = "Mine";
    add.pick();
    add.add();
    EXPECT_EQ(resources().back().name, "Mine") << "a typed name stays";
    add.select(folder);
    add.resourceName = "Home";
    add.setPath("/home/user");
    add.add();
    for (const auto* key : {"file:/home/user/notes.txt", "folder:/home/user"})
        EXPECT_TRUE(scene.bookmarks->bookmarkCache().contains(key)) << key;

    add.select(terminal);
    desktop.files.contents["make"] = "a file of that name";
    add.setPath("make");
    add.add();
    EXPECT_EQ(resources().back().name, "Home") << "it has no name yet";
    add.resourceName = "Run";
    add.add();
    EXPECT_EQ(resources().back().path, "make");
    EXPECT_EQ(scene.bookmarks->bookmarkCache().size(), 2u);
}

TEST_F(Sheets, aResourceIsChangedAndKeepsWhatTheSheetDoesNotShow) {
    auto before = scene.resource("Run", "make", terminal);
    before.associatedApps = {"Quill"};
    before.enabled = false;
    store.addResource(before, work.id);
    const auto edited = [&] { return sheet(RecordKey{before.id}); };
    auto edit = edited();
    EXPECT_EQ(shown(edit), "Edit Resource|Change what this resource opens|Save|Enabled|Run|make|"
                           "disabled");
    EXPECT_EQ(edit.selectedResourceType, terminal);
    edit.select(application);
    edit.resourceName = "Pad";
    edit.setPath("/Applications/Pad.app");
    edit.enabledByDefault = true;
    EXPECT_EQ(resources().back(), before);
    desktop.install({.path = "/Applications/Pad.app", .bundleIdentifier = "org.pad"});
    edit.add();
    auto expected = scene.resource("Pad", "/Applications/Pad.app", application);
    expected.id = before.id;
    expected.associatedApps = {"Quill"};
    EXPECT_EQ(resources().back(), expected);
    auto late = edited();
    store.deleteWorkspace(work.id);
    late.add();
    EXPECT_EQ(edited().resourceName.get(), "");
    EXPECT_TRUE(store.workspaces->empty());
}

TEST_F(Sheets, theSettingsSayWhatIsKnownOfTheProgramAndTheDesktop) {
    SettingsSheet settings(store, platform.bundles, platform.applications, platform.accessibility,
                           platform.mainQueue);
    settings.resetPreferences();
    EXPECT_EQ(desktop.logged(), "") << "on a later turn";
    settings.lookAtDesktop();
    EXPECT_EQ(settings.desktopLine.get(), "A desktop in memory · windows: yes · layouts: yes");
    EXPECT_EQ(settings.versionLine(), "Version 1.0.0 (Build 1)");
    desktop.defaultHandlers["mailto:"] = "/Applications/Postbox.app";
    settings.contactSupport();
    EXPECT_NE(desktop.logged().find("App%20Version:%20Unknown%0ABuild:%20Unknown%0A"),
              std::string::npos);
}

TEST_F(Sheets, theTourShowsTheProgramsPictureAndIsCompletedBeforeItsWindowGoes) {
    std::string log;
    OnboardingView tour(
        store, platform.images, [&] { log += "completed "; }, [&] { log += "dismissed "; });
    EXPECT_EQ(tour.applicationPicture()->name, "MenuBarIcon");
    desktop.statusBar.assets.clear();
    EXPECT_EQ(tour.applicationPicture()->source, Image::Source::applicationIcon);
    tour.skip();
    EXPECT_EQ(log, "completed dismissed ");
}

TEST_F(Sheets, anApplicationIsFoundByAPartOfItsName) {
    EXPECT_EQ(ApplicationPicker(platform.applications).emptyText(), "There are no applications.");
    for (const auto* name : {"Quill", "atlas", "Ärger", "Pad 10", "Pad 9"})
        desktop.install({.path = "/Applications/" + std::string(name) + ".app"});
    ApplicationPicker picker(platform.applications);
    int changes = 0;
    const auto subscription = picker.objectWillChange.subscribe([&] { ++changes; });
    /// What is shown is the names, the selected one in brackets.
    const std::tuple<const char*, std::vector<int>, const char*> cases[]{
        {"", {}, "Ärger atlas Pad 9 Pad 10 Quill "},
        {"", {1, 1}, "Ärger [atlas] Pad 9 Pad 10 Quill "},
        {"", {-1}, "Ärger atlas Pad 9 Pad 10 [Quill] "},
        {"", {1, 100, -2}, "Ärger atlas [Pad 9] Pad 10 Quill "},
        {"A", {}, "[Ärger] atlas Pad 9 Pad 10 "},
        {"ad", {1, 1}, "Pad 9 [Pad 10] "},
        {"zz", {1}, ""}};
    for (const auto& [typed, moves, expected] : cases) {
        picker.setSearchText(typed);
        for (const int by : moves)
            picker.moveSelection(by);
        std::string shown;
        for (std::size_t i = 0; i < picker.entries().size(); ++i) {
            const auto& name = picker.entries()[i].name;
            shown += (picker.selected() == i ? "[" + name + "]" : name) + " ";
        }
        EXPECT_EQ(shown, expected) << typed;
    }
    EXPECT_EQ(picker.emptyText(), "No application has this name.");
    EXPECT_EQ(picker.chosen(), std::nullopt);
    picker.setSearchText("quill");
    picker.select(1);
    EXPECT_EQ(picker.chosen(), "/Applications/Quill.app");
    EXPECT_EQ(changes, 7 + 8 + 1);
}

} // namespace
