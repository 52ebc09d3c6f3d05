#include "core/RecordCoding.h"
#include "qt/simulated/Pictures.h"
#include "qt/toolkit/QtToolkit.h"
#include "qt/toolkit/Startup.h"
#include "qt/tray/QtStatusBar.h"
#include "shell/CorvaneApp.h"
#include "simulated/SimulatedDesktop.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

using namespace corvane;

namespace {

struct MadeUp {
    const char* name;
    const char* identifier;
    const char* icon;
};

constexpr MadeUp applications[]{{"Quill", "com.example.quill", "accessories-text-editor"},
                                {"Ledger", "com.example.ledger", "x-office-spreadsheet"},
                                {"Postbox", "com.example.postbox", "emblem-mail"},
                                {"Atlas Browser", "com.example.atlas", "web-browser"},
                                {"Easel", "com.example.easel", "applications-graphics"}};

void furnish(SimulatedDesktop& desktop) {
    for (const auto& [name, identifier, icon] : applications) {
        const auto path = std::string("/Applications/") + name + ".app";
        desktop.install(
            {.path = path, .bundleIdentifier = identifier, .displayName = name, .icon = icon});
    }
    desktop.install({.path = "/System/Library/CoreServices/Finder.app",
                     .bundleIdentifier = "com.apple.finder",
                     .displayName = "Finder"});
    desktop.defaultHandlers = {{"md", "/Applications/Quill.app"},
                               {"csv", "/Applications/Ledger.app"},
                               {"/", "/System/Library/CoreServices/Finder.app"},
                               {"https:", "/Applications/Atlas Browser.app"},
                               {"http:", "/Applications/Atlas Browser.app"}};
    desktop.files.contents = {{"/home/user/Documents/plan.md", "# Plan"},
                              {"/home/user/Documents/budget.csv", "1,2,3"}};
    desktop.files.directories.insert("/home/user/Pictures");
}

std::vector<Workspace> workspaces(const Platform& platform) {
    const auto resource = [&](const char* name, const char* path, ResourceType type) {
        return makeResource(name, path, type, platform.bundles);
    };
    const auto now = platform.clock.now();
    auto writing = makeWorkspace("Writing", "Drafts, notes and the mail about them", "pencil", now);
    writing.resources = {
        resource("plan.md", "/home/user/Documents/plan.md", ResourceType::file),
        resource("Postbox", "/Applications/Postbox.app", ResourceType::application),
        resource("Guide", "https://example.org/style", ResourceType::url),
        resource("Letters", "/home/user/Pictures", ResourceType::folder),
        resource("Count", "/home/user|wc -w Documents/plan.md", ResourceType::terminal),
        resource("Quill", "/Applications/Quill.app", ResourceType::application),
        resource("Words", "https://example.org/words", ResourceType::url),
        resource("Map", "https://example.org/map", ResourceType::url),
        resource("Archive", "/home/user/Pictures", ResourceType::folder)};
    writing.resources[1].launchOnStart = true;
    auto accounts = makeWorkspace("Accounts", "", "chart.bar", now);
    accounts.resources = {
        resource("budget.csv", "/home/user/Documents/budget.csv", ResourceType::file),
        resource("Lost ledger", "/home/user/Documents/lost.csv", ResourceType::file)};
    auto design = makeWorkspace("Design", "Pictures for the autumn brochure", "paintbrush", now);
    design.resources = {resource("Pictures of autumn", "/home/user/Pictures", ResourceType::folder),
                        resource("Easel", "/Applications/Easel.app", ResourceType::application),
                        resource("Render", "/home/user|make pictures", ResourceType::terminal)};
    return {writing, accounts, design, makeWorkspace("Someday", "Still empty", "cloud", now)};
}

/// What `--pictures` and what goes with it ask for.
std::optional<PictureOrder> ordered(const QApplication& application) {
    const QCommandLineOption pictures("pictures", "Puts a picture of each state there.", "folder");
    const QCommandLineOption width("width", "Of the window in the pictures.", "width", "1000");
    const QCommandLineOption dark("dark", "They are dark.");
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({pictures, width, dark});
    parser.process(application);
    if (!parser.isSet(pictures)) return std::nullopt;
    constexpr int height = 700;
    return PictureOrder{.folder = parser.value(pictures),
                        .windowSize = {parser.value(width).toInt(), height},
                        .isDark = parser.isSet(dark)};
}

} // namespace

/// The program over a desktop in memory, to be tried or to have its picture taken.
int main(int argc, char** argv) {
    prepareApplication();
    QApplication application(argc, argv);
    nameApplication(application);
    const auto pictures = ordered(application);
    QtStatusBar tray;
    QtToolkit toolkit(
        tray, [&] { return pictures ? std::optional(pictures->isDark) : std::optional<bool>(); });

    SimulatedDesktop desktop;
    furnish(desktop);
    const auto simulated = desktop.platform();
    desktop.files.contents[desktop.files.applicationSupportDirectory() +
                           "/Corvane/corvane_workspaces.json"] =
        encodeWorkspaces(workspaces(simulated));
    auto panels = toolkit.panels(simulated);
    Platform platform{toolkit.facilities(panels), simulated};
    // What the desktop itself does later is done in step with the time of the wall.
    QTimer steps;
    constexpr int stepInMilliseconds = 20;
    QObject::connect(&steps, &QTimer::timeout,
                     [&] { desktop.runFor(stepInMilliseconds / 1000.0); });
    steps.start(stepInMilliseconds);

    CorvaneApp app(platform);
    if (pictures) takePictures(*pictures, app, toolkit.windows());
    return toolkit.run(app);
}
