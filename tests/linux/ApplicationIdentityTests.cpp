#include "linux/running/ApplicationIdentity.h"
#include "linux/running/LaunchedApplications.h"
#include "machine/Program.h"

using namespace corvane;
using namespace corvane::machine;

namespace {

TEST(ApplicationIdentityTest, findsTheInstalledApplication) {
    const auto entry = [](const std::string& id, const std::string& program, bool shown = true) {
        InstalledApplication application;
        application.desktopId = id + ".desktop";
        application.bundleIdentifier = id;
        application.desktopFile = "/apps/" + application.desktopId;
        application.executable = program;
        application.isShown = shown;
        return application;
    };
    std::vector<InstalledApplication> installed{entry("hidden-editor", "editor", false),
                                                entry("org.x.Editor", "/usr/bin/editor"),
                                                entry("web-app", "browser"),
                                                entry("browser", "browser"),
                                                entry("gnome-clock", "env"),
                                                entry("python-thing", "python3"),
                                                entry("two-words", "/opt/two words"),
                                                entry("officer", "/opt/officer"),
                                                entry("office_calc", "/snap/calc"),
                                                entry("org.x.Editor.quick", "/opt/quick"),
                                                entry("fedora-mail", "/opt/mail"),
                                                entry("mozilla-mail.old", "/opt/mail.old"),
                                                entry("debian-mail.new", "/opt/mail.new")};
    installed[2].startupWmClass = "crx_1";
    installed[3].startupWmClass = "Browser";
    installed[4].tryExec = "clock";

    const auto ofClass = [](const std::string& instance, const std::string& name) {
        return ApplicationHints{.instanceName = instance, .className = name};
    };
    const std::tuple<ApplicationHints, ProcessFacts, std::string> cases[]{
        {{.desktopFile = "officer"}, {}, "officer"},
        {{.desktopFile = "officer.desktop"}, {}, "officer"},
        {{.applicationId = "Two Words"}, {}, "two-words"},
        {{.applicationId = "crx_1"}, {}, "web-app"},
        {ofClass("mail", ""), {}, "fedora-mail"},
        {ofClass("mail.old", ""), {}, "mozilla-mail.old"},
        {ofClass("mail.new", ""), {}, "debian-mail.new"},
        {ofClass("crx_1", "Browser"), {.sandboxIdentifier = "org.x.Editor"}, "org.x.Editor"},
        {ofClass("officer", ""), {.sandboxIdentifier = "office_writer"}, ""},
        {ofClass("office_calc", ""), {.sandboxIdentifier = "office_writer"}, "office_calc"},
        {ofClass("office_calc", ""), {.sandboxIdentifier = "office"}, "office_calc"},
        {ofClass("org.x.Editor.quick", ""),
         {.sandboxIdentifier = "org.x.Editor"},
         "org.x.Editor.quick"},
        {{.className = "Browser", .desktopFile = "/apps/gnome-clock.desktop"}, {}, "gnome-clock"},
        {ofClass("crx_1", "Browser"), {}, "web-app"},
        {ofClass("Navigator", "Browser"), {.executable = "/usr/bin/editor"}, "browser"},
        {{.applicationId = "org.x.Editor", .className = "browser"}, {}, "org.x.Editor"},
        {ofClass("browser", "Org.X.Editor"), {}, "browser"},
        {ofClass("clock", "Clock"), {.executable = "/usr/bin/editor"}, "gnome-clock"},
        {ofClass("", "Two Words"), {}, "two-words"},
        {ofClass("x", "X"), {.launchedDesktopFile = "/apps/web-app.desktop"}, "web-app"},
        {ofClass("x", "X"), {.executable = "/usr/bin/editor"}, "org.x.Editor"},
        {ofClass("x", "X"), {.executable = "/snap/editor"}, "hidden-editor"},
        {ofClass("x", "X"), {.executable = "/usr/bin/python3.11"}, ""},
        {ofClass("x", "X"), {.executable = "/usr/bin/python3"}, ""},
        {ofClass("x", "X"), {.executable = "/usr/bin/env", .commandName = "clock"}, "gnome-clock"},
        {ofClass("\xff", ""), {.launchedDesktopFile = "/gone.desktop"}, ""},
        {{}, {}, ""}};
    for (const auto& [hints, process, expected] : cases) {
        const auto shares = sharesOf(process, {{.window = {1, 1}, .hints = hints}}, installed);
        const auto* found = shares.at(0).application;
        EXPECT_EQ(found ? found->bundleIdentifier : "", expected)
            << hints.instanceName << "/" << hints.className << " " << process.executable;
    }
}

TEST(LaunchedApplicationsTest, areTheNewestThatRunAndForgottenInTime) {
    InstalledApplication older, newer;
    newer.name = "newer";
    const Program program({"sleep", "60"});
    LaunchedApplications impatient(std::chrono::seconds(0));
    impatient.add(older, {program.id()});
    EXPECT_TRUE(comesTrue([&] { return impatient.underway({}).empty(); }));

    LaunchedApplications many;
    for (auto isKind :
         {&InstalledApplication::isTerminalEmulator, &InstalledApplication::needsTerminal}) {
        InstalledApplication inTerminal;
        inTerminal.*isKind = true;
        many.add(inTerminal, {program.id()});
    }
    EXPECT_TRUE(many.underway({}).empty()) << "their windows tell nothing of what runs in them";
    many.add(older, {program.id()});
    many.add(newer, std::vector<pid_t>(300, program.id()));
    const auto kept = many.underway({});
    EXPECT_EQ(kept.at(0).application.name, "newer");
    EXPECT_LT(kept.size(), 300u);
    constexpr pid_t ended = 0x3ffffe;
    many.add(newer, {ended});
    EXPECT_EQ(many.underway({}).size(), kept.size()) << "what has ended can't be told from others";
}

} // namespace
