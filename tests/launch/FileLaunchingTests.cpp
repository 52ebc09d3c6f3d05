#include "launch/LaunchScene.h"

using namespace corvane;

namespace {

using enum ResourceType;

struct FileLaunching : LaunchScene {
    const std::string notes = "/docs/notes.txt";
    const std::string openNotes = "open file:///docs/notes.txt";
    const std::string inPad = openNotes + " with /Applications/Pad.app";

    /// The trouble in words that `arrange` knows, what is launched then, and what comes of it.
    using Case = std::tuple<std::string, Resource, std::string, std::string>;

    void arrange(const std::string& trouble, const std::string& command) {
        const auto has = [&](const char* words) { return trouble.find(words) != trouble.npos; };
        if (has("exits with 0")) desktop.taskResults.insert({command, TaskResult{0, {}}});
        if (has("exits with 9")) desktop.taskResults.insert({command, TaskResult{9, {}}});
        if (has("can't start")) desktop.taskResults.insert({command, Error{"No memory."}});
        if (has("Pad fails")) desktop.applications.front().openError = Error{"It's damaged."};
        if (has("notes are refused")) desktop.refusedUrls.insert("file:///docs/notes.txt");
        if (has("notes vanish"))
            desktop.queue.async([this] { desktop.files.contents.erase(notes); });
        const int button = has("second button") ? AlertResponse::secondButton
                           : has("no button")   ? 0
                                                : AlertResponse::firstButton;
        for (const auto* title : {"File Not Found", "Launch Failed"})
            desktop.alertAnswers[title] = {button, false};
    }

    void check(const std::vector<Case>& cases, const std::string& command,
               const std::string& appName = "") {
        const auto applications = desktop.applications;
        const auto contents = desktop.files.contents;
        for (const auto& [trouble, resource, openings, alerts] : cases) {
            forget();
            desktop.applications = applications;
            desktop.files.contents = contents;
            desktop.refusedUrls.clear();
            desktop.taskResults.clear();
            arrange(trouble, command);
            const auto label = trouble + " " + resource.path;
            appName.empty() ? launcher.launchFileResource(resource)
                            : launcher.launchFileResourceWithApp(resource, appName);
            EXPECT_EQ(this->openings(), "") << label << ": nothing before the caller goes on";
            desktop.runUntilIdle();
            EXPECT_EQ(this->openings(), openings) << label;
            EXPECT_EQ(this->alerts(), alerts) << label;
        }
    }
};

TEST_F(FileLaunching, aFileOpensInItsDefaultHandlerAndThenInEachAssociatedApplication) {
    const std::string failed =
        "Launch Failed | Failed to open 'it'. This could be due to:\n\n• The file is corrupted or "
        "incompatible\n• No application is associated with this file type\n• Insufficient "
        "permissions\n• The application is damaged\n\nFallback: Opening in Finder instead. "
        "[Show in Finder][OK]";
    const std::string notFound =
        "File Not Found | Cannot open 'it' because the file no longer exists at:\n\n/docs/gone\n\n"
        "The file may have been moved, deleted, or renamed. [OK][Show in Finder]";
    const std::string openOdt = "open file:///docs/%C3%9Cbersicht.odt";
    // The types that lie on the disk don't resolve to a place where nothing is.
    const auto missing = resource(url, "/docs/gone", {"Pad"});
    const std::vector<Case> cases{
        {"", resource(file, notes), openNotes, ""},
        {"", resource(file, "/docs/Übersicht.odt", {"Ghost", "Pad", "writer"}),
         openOdt + "\nsheet Application Not Found\n" + openOdt + " with /Applications/Pad.app\n" +
             openOdt + " with /Applications/Writer.app",
         "Application Not Found | The application 'Ghost' could not be found. It may have been "
         "uninstalled or moved. [OK]"},
        {"Pad fails", resource(file, notes, {"Pad"}),
         openNotes + "\n" + inPad + "\nsheet App Launch Failed",
         "App Launch Failed | Failed to open 'it' with Pad.\n\nError: It's damaged.\n\nThe app may "
         "not support this file type or may be damaged. [OK]"},
        {"", resource(file, "/docs/gone.txt", {"Pad"}), "sheet Access Error",
         "Access Error | Failed to access 'it'.\n\nThe file may have been moved, renamed, or you "
         "may not have permission to access it.\n\nPath: /docs/gone.txt [OK]"},
        {"no button", missing, "sheet File Not Found", notFound},
        {"second button", missing, "sheet File Not Found\nreveal file:///docs/", notFound},
        {"notes are refused, first button", resource(file, notes, {"Pad"}),
         openNotes + "\n" + inPad + "\nsheet Launch Failed\nreveal file:///docs/notes.txt", failed},
        {"notes vanish, no button", resource(file, notes), openNotes + "\nsheet Launch Failed",
         failed}};
    check(cases, "");
}

TEST_F(FileLaunching, aFileThatMovedOpensWhereItIsNow) {
    launcher.launchFileResource(resource(file, notes));
    desktop.runUntilIdle();
    ASSERT_TRUE(desktop.files.moveItem(notes, "/docs/old.txt"));
    launcher.launchFileResource(resource(file, notes));
    launcher.launchFileResourceWithApp(resource(file, notes), "Pad");
    desktop.runUntilIdle();
    EXPECT_EQ(openings(), openNotes + "\nopen file:///docs/old.txt\n"
                                      "background task /usr/bin/open -a /Applications/Pad.app "
                                      "/docs/old.txt");
}

TEST_F(FileLaunching, aKnownApplicationIsTriedInThreeWays) {
    const std::string command = "/usr/bin/open -a /Applications/Pad.app /docs/notes.txt";
    const std::string step1 = "background task " + command;
    const std::string step2 = step1 + "\n" + inPad;
    const std::string step3 = step2 + "\n" + openNotes;
    const auto it = resource(file, notes, {"Writer"});
    const std::vector<Case> cases{
        {"", it, step1, ""},
        {"exits with 9", it, step2, ""},
        {"can't start", it, step2, ""},
        {"exits with 9, Pad fails", it, step3, ""},
        {"exits with 9, Pad fails, notes are refused", it, step3 + "\nsheet Launch Failed",
         "Launch Failed | Failed to open 'it' with Pad. Tried multiple methods but none worked.\n\n"
         "Please check if:\n• The app is installed\n• The file/folder exists\n• You have "
         "permission to access it [OK]"},
        {"", resource(folder, "/docs/gone"), "sheet Access Error",
         "Access Error | Failed to access 'it' with Pad.\n\nThe file may have been moved, renamed, "
         "or you may not have permission to access it.\n\nPath: /docs/gone [OK]"},
        {"second button", resource(url, "/docs/gone"), "sheet File Not Found",
         "File Not Found | Cannot open 'it' with Pad because the file no longer exists at:\n\n"
         "/docs/gone [OK]"}};
    check(cases, command, "Pad");
}

TEST_F(FileLaunching, anUnknownApplicationIsLeftToTheOpenCommand) {
    const std::string command = "/usr/bin/open -a It's /docs/notes.txt";
    const std::string step1 = "background task " + command;
    const std::string step2 = step1 + "\n" + openNotes;
    const auto it = resource(file, notes);
    const std::vector<Case> cases{
        {"exits with 0", it, step1, ""},
        {"exits with 9", it, step2, ""},
        {"can't start", it, step2, ""},
        {"notes are refused", it, step2 + "\nsheet Launch Failed",
         "Launch Failed | Failed to open 'it'. Please check if the file exists and you have "
         "permission to access it. [OK]"}};
    check(cases, command, "It's");
}

} // namespace
