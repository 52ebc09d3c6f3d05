#include "launch/LaunchScene.h"

#include <functional>

namespace corvane {
namespace {

using enum ResourceType;

class FileLaunching : public LaunchScene {
protected:
    const std::string notes = "/docs/notes.txt";
    const std::string openNotes = "open file:///docs/notes.txt";
    const std::string openCommand = "/usr/bin/open -a /Applications/Pad.app /docs/notes.txt";

    void answer(const std::string& title, int button) {
        desktop.alertAnswers[title] = {button, false};
    }
    void taskEndsIn(const std::string& words, Result<TaskResult> result) {
        desktop.taskResults.insert_or_assign(words, std::move(result));
    }
    void padFails() { installed("/Applications/Pad.app").openError = Error{"Pad is damaged."}; }
    void notesFail() { desktop.refusedUrls.insert("file:///docs/notes.txt"); }

    /// What is launched, in a scene of its own, and what comes of it.
    struct Case {
        const char* name;
        Resource resource;
        std::function<void()> arrange;
        std::string openings;
        std::string alerts;
        std::string diagnostics;
    };
    void check(const Case& expected, const std::function<void(const Resource&)>& launch) {
        const auto applications = desktop.applications;
        const auto contents = desktop.files.contents;
        forget();
        desktop.refusedUrls.clear();
        desktop.taskResults.clear();
        desktop.alertAnswers.clear();
        expected.arrange();
        launch(expected.resource);
        EXPECT_EQ(openings(), "") << expected.name << ": nothing before the caller goes on";
        desktop.runUntilIdle();
        EXPECT_EQ(openings(), expected.openings) << expected.name;
        EXPECT_EQ(alerts(), expected.alerts) << expected.name;
        EXPECT_EQ(diagnostics(), expected.diagnostics) << expected.name;
        desktop.applications = applications;
        desktop.files.contents = contents;
    }
};

TEST_F(FileLaunching, aFileOpensInItsDefaultHandlerAndThenInEachAssociatedApplication) {
    const std::string noGhost =
        "Application Not Found | The application 'Ghost' could not be found. It may have been "
        "uninstalled or moved. [OK]";
    const std::string failed =
        "Launch Failed | Failed to open 'it'. This could be due to:\n\n• The file is corrupted or "
        "incompatible\n• No application is associated with this file type\n• Insufficient "
        "permissions\n• The application is damaged\n\nFallback: Opening in Finder instead. "
        "[Show in Finder][OK]";
    // No kind of resource that is looked for on the disk resolves to a place where nothing is.
    const std::string notFound =
        "File Not Found | Cannot open 'it' because the file no longer exists at:\n\n/docs/gone\n\n"
        "The file may have been moved, deleted, or renamed. [OK][Show in Finder]";
    const Case cases[]{
        {"default only", resource(file, notes), [] {}, openNotes, "", "Successfully opened it"},
        {"folder", resource(folder, "/docs"), [] {}, "open file:///docs", "",
         "Successfully opened it"},
        {"application", resource(application, "/Applications/Pad.app"), [] {},
         "open file:///Applications/Pad.app", "", "Successfully opened it"},
        {"one unknown application of two",
         resource(file, "/docs/Übersicht.odt", {"Ghost", "Pad", "writer"}), [] {},
         "open file:///docs/%C3%9Cbersicht.odt\nsheet Application Not Found\n"
         "open file:///docs/%C3%9Cbersicht.odt with /Applications/Pad.app\n"
         "open file:///docs/%C3%9Cbersicht.odt with /Applications/Writer.app",
         noGhost,
         "Successfully opened it\nSuccessfully opened it with Pad\nSuccessfully opened it with "
         "writer"},
        {"an application that fails", resource(file, notes, {"Pad"}), [&] { padFails(); },
         openNotes + "\n" + openNotes + " with /Applications/Pad.app\nsheet App Launch Failed",
         "App Launch Failed | Failed to open 'it' with Pad.\n\nError: Pad is damaged.\n\nThe app "
         "may not support this file type or may be damaged. [OK]",
         "Successfully opened it\nFailed to open it with Pad: Pad is damaged."},
        {"missing", resource(file, "/docs/gone.txt", {"Pad"}), [] {}, "sheet Access Error",
         "Access Error | Failed to access 'it'.\n\nThe file may have been moved, renamed, or you "
         "may not have permission to access it.\n\nPath: /docs/gone.txt [OK]",
         "Failed to resolve resource: it at /docs/gone.txt"},
        {"nothing at the place", resource(url, "/docs/gone", {"Pad"}), [] {},
         "sheet File Not Found", notFound, "Resource not found at path: /docs/gone"},
        {"nothing at the place, shown", resource(url, "/docs/gone"),
         [&] { answer("File Not Found", AlertResponse::secondButton); },
         "sheet File Not Found\nreveal file:///docs/", notFound,
         "Resource not found at path: /docs/gone"},
        {"default fails, shown", resource(file, notes, {"Writer"}), [&] { notesFail(); },
         openNotes + "\n" + openNotes +
             " with /Applications/Writer.app\nsheet Launch Failed\nreveal file:///docs/notes.txt",
         failed, "Failed to open it\nSuccessfully opened it with Writer"},
        {"default fails, not shown", resource(file, notes),
         [&] {
             notesFail();
             answer("Launch Failed", AlertResponse::secondButton);
         },
         openNotes + "\nsheet Launch Failed", failed, "Failed to open it"},
        {"default fails, alert goes without a button", resource(file, notes),
         [&] {
             notesFail();
             answer("Launch Failed", 0);
         },
         openNotes + "\nsheet Launch Failed", failed, "Failed to open it"},
        {"gone before its turn", resource(file, notes),
         [&] {
             desktop.queue.async([&] { desktop.files.contents.erase(notes); });
             answer("Launch Failed", AlertResponse::secondButton);
         },
         openNotes + "\nsheet Launch Failed", failed, "Failed to open it"},
    };
    for (const auto& each : cases)
        check(each, [&](const Resource& resource) { launcher.launchFileResource(resource); });
}

TEST_F(FileLaunching, aKnownApplicationIsTriedInThreeWays) {
    const auto exits = [&](int status) { taskEndsIn(openCommand, TaskResult{status, {}}); };
    const std::string step1 = "task " + openCommand;
    const std::string step2 = step1 + "\n" + openNotes + " with /Applications/Pad.app";
    const std::string step3 = step2 + "\n" + openNotes;
    const std::string exitCode1 = "Failed to open it with Pad: exit code 1\n";
    const std::string step2Failed =
        exitCode1 + "NSWorkspace fallback failed for it with Pad: Pad is damaged.";
    const auto fails = [&] {
        exits(1);
        padFails();
    };
    const Case cases[]{
        {"at once", resource(file, notes), [] {}, step1, "", "Successfully opened it with Pad"},
        {"in itself", resource(application, "/Applications/Pad.app"), [] {},
         "task /usr/bin/open -a /Applications/Pad.app /Applications/Pad.app", "",
         "Successfully opened it with Pad"},
        {"bad exit", resource(file, notes), [&] { exits(1); }, step2, "",
         exitCode1 + "Successfully opened it with Pad (NSWorkspace fallback)"},
        {"no start", resource(file, notes), [&] { taskEndsIn(openCommand, Error{"No memory."}); },
         step2, "",
         "Failed to launch process for Pad: No memory.\nSuccessfully opened it with Pad "
         "(NSWorkspace fallback)"},
        {"only by default", resource(file, notes), fails, step3, "",
         step2Failed + "\nSuccessfully opened it with system default (final fallback)"},
        {"not at all", resource(file, notes, {"Writer"}),
         [&] {
             fails();
             notesFail();
         },
         step3 + "\nsheet Launch Failed",
         "Launch Failed | Failed to open 'it' with Pad. Tried multiple methods but none worked.\n\n"
         "Please check if:\n• The app is installed\n• The file/folder exists\n• You have "
         "permission to access it [OK]",
         step2Failed},
        {"missing", resource(folder, "/docs/gone"), [] {}, "sheet Access Error",
         "Access Error | Failed to access 'it' with Pad.\n\nThe file may have been moved, renamed, "
         "or you may not have permission to access it.\n\nPath: /docs/gone [OK]",
         "Failed to resolve resource: it at /docs/gone"},
        {"nothing at the place", resource(url, "/docs/gone"), [] {}, "sheet File Not Found",
         "File Not Found | Cannot open 'it' with Pad because the file no longer exists at:\n\n"
         "/docs/gone [OK]",
         "Resource not found at path: /docs/gone"},
    };
    for (const auto& each : cases) {
        check(each, [&](const Resource& resource) {
            launcher.launchFileResourceWithApp(resource, "Pad");
        });
    }
}

TEST_F(FileLaunching, anUnknownApplicationIsLeftToTheOpenCommand) {
    const std::string command = "/usr/bin/open -a It's /docs/notes.txt";
    const auto exits = [&](int status) { taskEndsIn(command, TaskResult{status, {}}); };
    const std::string step2 = "task " + command + "\n" + openNotes;
    const std::string notFound = "Could not find or launch 'It's', using system default";
    const Case cases[]{
        {"known to it", resource(file, notes), [&] { exits(0); }, "task " + command, "",
         "Successfully opened it with It's (direct)"},
        {"unknown", resource(file, notes), [&] { exits(9); }, step2, "",
         notFound + "\nSuccessfully opened it with system default"},
        {"no start", resource(file, notes), [&] { taskEndsIn(command, Error{"No memory."}); },
         step2, "",
         "Failed to launch process: No memory.\nSuccessfully opened it with system default"},
        {"not at all", resource(file, notes), [&] { notesFail(); }, step2 + "\nsheet Launch Failed",
         "Launch Failed | Failed to open 'it'. Please check if the file exists and you have "
         "permission to access it. [OK]",
         notFound},
    };
    for (const auto& each : cases) {
        check(each, [&](const Resource& resource) {
            launcher.launchFileResourceWithApp(resource, "It's");
        });
    }
}

TEST_F(FileLaunching, bothEntryPointsGoByTheTypeAndOnlyFilesHeedTheApplication) {
    const std::string web = "https://corvane.example/";
    const std::string script =
        "script tell application \"Terminal\" /     activate /     do script "
        "\"ls\" / end tell";
    const struct {
        ResourceType type;
        std::string path;
        std::string plain;
        std::string withApp;
    } cases[]{
        {file, notes, openNotes, "task " + openCommand},
        {folder, "/docs", "open file:///docs", "task /usr/bin/open -a /Applications/Pad.app /docs"},
        {application, "/Applications/Web.app", "open file:///Applications/Web.app",
         "task /usr/bin/open -a /Applications/Pad.app /Applications/Web.app"},
        {url, web, "open " + web, "open " + web},
        {terminal, "ls", script, script},
        {separator, "", "", ""},
    };
    for (const auto& [type, path, plain, withApp] : cases) {
        forget();
        launcher.launchResource(resource(type, path));
        desktop.runUntilIdle();
        EXPECT_EQ(openings(), plain);
        EXPECT_TRUE(diagnostics().starts_with("Launching resource: it at " + path));
        forget();
        launcher.launchResourceWithApp(resource(type, path), "Pad");
        desktop.runUntilIdle();
        EXPECT_EQ(openings(), withApp);
        EXPECT_TRUE(diagnostics().starts_with("Launching resource: it with Pad"));
        EXPECT_EQ(alerts(), "");
    }
    EXPECT_EQ(diagnostics(), "Launching resource: it with Pad") << "a separator does no more";
}

TEST_F(FileLaunching, anAlertWaitsItsTurnAndIsASheetWhereThereIsAWindow) {
    answer("Second", AlertResponse::secondButton);
    std::vector<int> responses;
    const auto answered = [&](int response) { responses.push_back(response); };
    for (const bool hasWindow : {true, false}) {
        forget();
        desktop.hasMainWindow = hasWindow;
        launcher.showLaunchAlertWithAction("First", "One", "A", "B", answered);
        launcher.showLaunchAlertWithAction("Second", "Two", "C", "D", answered);
        launcher.showLaunchAlert("Third", "Three");
        EXPECT_EQ(alerts(), "");
        desktop.runUntilIdle();
        EXPECT_EQ(alerts(), "First | One [A][B]\nSecond | Two [C][D]\nThird | Three [OK]");
        EXPECT_EQ(desktop.logged(), hasWindow ? "sheet First\nsheet Second\nsheet Third"
                                              : "alert First\nalert Second\nalert Third");
        EXPECT_EQ(responses, (std::vector{1000, 1001}));
        responses.clear();
    }
}

} // namespace
} // namespace corvane
