#include "foundation/Text.h"
#include "linux/installed/ApplicationNames.h"
#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplications.h"
#include "linux/installed/LinuxBundles.h"
#include "linux/installed/LinuxMetadataQuery.h"
#include "linux/scripts/MdfindQuery.h"
#include "linux/scripts/MdfindTool.h"
#include "machine/Machine.h"

#include <chrono>
#include <thread>

#include <glib.h>
#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

bool lists(const std::vector<InstalledApplication>& applications, const std::string& path) {
    return std::ranges::count(applications, path, &InstalledApplication::bundlePath) == 1;
}

struct InstalledApplicationsTest : testing::Test {
    std::string bundlePathOf(const std::string& id) const {
        const auto found = installed_.byDesktopId(id + ".desktop");
        return found ? found->bundlePath : "";
    }
    InstalledApplications installed_;
    LinuxBundles bundles_{installed_};
};

TEST_F(InstalledApplicationsTest, anEntryIsABundleNamedInBothLanguages) {
    install("org.example.Editor", "Text Editor", "Name[de]=Textbearbeitung\nExec=sh");
    const auto editor = installed_.byBundlePath("/Applications/Text Editor.app/").value();
    EXPECT_EQ(installed_.byBundleIdentifier("ORG.example.editor"), editor);
    for (const auto* other : {"/Applications/Textbearbeitung.app", "/Applications/Text Editor",
                              "/Text Editor.app", "Text Editor.app", "/"})
        EXPECT_FALSE(installed_.byBundlePath(other)) << other;
    EXPECT_FALSE(installed_.byBundleIdentifier(""));
    const auto bundle = bundles_.open("/Applications/Text Editor.app").value();
    EXPECT_EQ(bundle.bundleIdentifier, "org.example.Editor");
    EXPECT_EQ(bundle.displayName, "Textbearbeitung");
    EXPECT_EQ(bundle.name, "Text Editor");
}

TEST_F(InstalledApplicationsTest, everyKeyOfAnEntryIsRead) {
    const std::tuple<std::string, std::string, std::string> entries[]{
        {"Name", "Name[de]=Schreiber\nExec=sh -c y\nTryExec=cat\nIcon=pen\nStartupNotify=true",
         "k.e.desktop|k.e|Name|Schreiber||sh -c y|sh|cat|pen| shown token"},
        {"", "Exec=sh\nNoDisplay=true\nTerminal=true\nStartupNotify=true",
         "k.e.desktop|k.e|k.e|k.e||sh|sh||| terminal"},
        {"Name",
         "Exec=sh\nStartupWMClass=C\nCategories=System;TerminalEmulator;\n"
         "X-TerminalArgExec=--old\nDBusActivatable=true",
         "k.e.desktop|k.e|Name|Name|C|sh|sh|||--old shown bus emulator"},
        {"Name", "Exec=sh\nTerminalArgExec=--new\nX-TerminalArgExec=--old\nCategories=Terminal;",
         "k.e.desktop|k.e|Name|Name||sh|sh|||--new shown"}};
    for (const auto& [name, keys, read] : entries) {
        install("k.e", name, keys);
        const auto a = installed_.byDesktopId("k.e.desktop").value();
        auto text =
            text::joined({a.desktopId, a.bundleIdentifier, a.name, a.displayName, a.startupWmClass,
                          a.exec, a.executable, a.tryExec, a.icon, a.terminalOption},
                         "|");
        for (const auto& [is, word] : {std::pair{a.isShown, " shown"},
                                       {a.dbusActivatable, " bus"},
                                       {a.needsTerminal, " terminal"},
                                       {a.takesToken, " token"},
                                       {a.isTerminalEmulator, " emulator"}})
            text += is ? word : "";
        EXPECT_EQ(text, read);
        EXPECT_EQ(a.desktopFile, place("data/applications/k.e.desktop"));
    }
}

TEST_F(InstalledApplicationsTest, theProgramKnowsItselfAndTheSystem) {
    EXPECT_EQ(bundles_.mainBundleIdentifier(), "app.corvane.Corvane");
    for (const auto* key : {"CFBundleShortVersionString", "CFBundleVersion"})
        EXPECT_NE(bundles_.mainBundleInfo(key).value_or(""), "") << key;
    EXPECT_EQ(bundles_.mainBundleInfo("Other"), std::nullopt);
    EXPECT_NE(bundles_.operatingSystemVersion().find(" (Linux "), std::string::npos);
}

TEST_F(InstalledApplicationsTest, sharedNamesGetTheIdInBrackets) {
    install("a.one", "In/Out");
    EXPECT_EQ(bundlePathOf("a.one"), "/Applications/In:Out.app");
    install("b.hidden", "In/Out", "Exec=sh\nNoDisplay=true");
    EXPECT_EQ(bundlePathOf("a.one"), "/Applications/In:Out.app");
    EXPECT_EQ(bundlePathOf("b.hidden"), "/Applications/In:Out [b.hidden].app");
    install("c.two", "In:Out");
    EXPECT_EQ(bundlePathOf("a.one"), "/Applications/In:Out [a.one].app");
    EXPECT_EQ(bundlePathOf("c.two"), "/Applications/In:Out [c.two].app");
    EXPECT_EQ(installed_.byBundlePath("/Applications/In:Out.app")->desktopId, "a.one.desktop")
        << "a path from before still leads somewhere";
    uninstall("c.two");
    EXPECT_EQ(installed_.byBundlePath("/Applications/In:Out [a.one].app")->bundlePath,
              "/Applications/In:Out.app");
}

TEST_F(InstalledApplicationsTest, showsOnlyWhatTheDesktopShows) {
    install("z.shown", "Z Shown");
    install("z.nodisplay", "Z NoDisplay", "Exec=sh\nNoDisplay=true");
    install("z.elsewhere", "Z Elsewhere", "Exec=sh\nOnlyShowIn=OTHER;");
    install("z.deleted", "Z Deleted", "Exec=sh\nHidden=true");
    install("z.missing", "Z Missing", "Exec=no-such-program-anywhere");
    write(place("data/applications/z.link.desktop"), "[Desktop Entry]\nType=Link\nName=Z Link\n");
    const auto folder = place("data/applications/");
    write(folder + "z.broken.desktop", "[Desktop Entry\nName");
    const std::pair<const char*, const char*> links[]{
        {"z.round.desktop", "z.round.desktop"}, {"a-round", "a-round"}, {"a-back", "."}};
    for (const auto& [name, target] : links)
        fs::create_symlink(target, folder + name);
    const std::string entry = "[Desktop Entry]\nType=Application\nExec=sh\nName=Z ";
    write(folder + "z.text.txt", entry + "Text\n");
    write(folder + "1/2/3/4/5/6/7/8/in.desktop", entry + "Deep\n");
    write(folder + "1/2/3/4/5/6/7/8/9/in.desktop", entry + "Deeper\n");
    const auto names = [](const std::vector<InstalledApplication>& applications) {
        std::vector<std::string> all;
        for (const auto& each : applications)
            if (each.name.starts_with("Z ")) all.push_back(each.name);
        return text::joined(all, ", ");
    };
    EXPECT_EQ(names(installed_.shown()), "Z Deep, Z Shown");
    EXPECT_EQ(names(installed_.all()), "Z Deep, Z Elsewhere, Z NoDisplay, Z Shown");
}

TEST_F(InstalledApplicationsTest, anEntrysFileIsItsApplicationAndSoIsACopy) {
    install("x.tool", "X Tool");
    install("x.internal", "X Internal", "Exec=sh\nNoDisplay=true");
    install("x.deleted", "X Deleted", "Exec=sh\nHidden=true");
    const std::string entry = "[Desktop Entry]\nType=Application\nExec=sh\nName=";
    write(place("Desktop/copied.desktop"), entry + "X Tool\n");
    write(place("Desktop/own.desktop"), entry + "X Tool of mine\n");
    write(place("Desktop/imposter.desktop"),
          "[Desktop Entry]\nType=Application\nExec=cat\nName=X Tool\n");
    write(place("Desktop/broken.desktop"), "[Desktop Entry\nName=X Tool");
    write(place("Desktop/text.txt"), entry + "X Tool\n");
    fs::create_symlink(place("data/applications/x.tool.desktop"), place("Desktop/linked.desktop"));
    const std::pair<const char*, std::string> cases[]{
        {"data/applications/x.tool.desktop", "X Tool"},
        {"data/applications/x.internal.desktop", "X Internal"},
        {"data/applications/x.deleted.desktop", ""},
        {"Desktop/copied.desktop", "X Tool"},
        {"Desktop/linked.desktop", "X Tool"},
        {"Desktop/own.desktop", ""},
        {"Desktop/imposter.desktop", ""},
        {"Desktop/broken.desktop", ""},
        {"Desktop/text.txt", ""},
        {"Desktop/missing.desktop", ""}};
    EXPECT_EQ(installed_.byBundlePath("/Applications/X Internal.app")->name, "X Internal");
    for (const auto& [file, name] : cases)
        EXPECT_EQ(bundles_.bundlePathOfLauncher(place(file)).value_or(""),
                  name.empty() ? "" : "/Applications/" + name + ".app")
            << file;
}

TEST_F(InstalledApplicationsTest, followsChangesOfTheFolders) {
    // Looks at what is so old that its time tells it from what comes next.
    const auto settle = [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(40));
        (void)installed_.all();
    };
    install("y.app", "Before");
    EXPECT_EQ(bundlePathOf("y.app"), "/Applications/Before.app");
    install("y.app", "Afterwards");
    EXPECT_EQ(bundlePathOf("y.app"), "/Applications/Afterwards.app");
    settle();
    uninstall("y.app");
    EXPECT_EQ(bundlePathOf("y.app"), "");

    const std::string program = place("bin/comes-later");
    install("y.later", "Later", "Exec=" + program);
    EXPECT_EQ(bundlePathOf("y.later"), "");
    settle();
    fs::copy(place("bin/recorder"), program);
    EXPECT_TRUE(comesTrue([&] { return !bundlePathOf("y.later").empty(); }));

    write(place("data/applications/y.later.desktop"),
          "[Desktop Entry]\nType=Application\nName=Edited\nExec=sh\n");
    EXPECT_TRUE(comesTrue([&] { return bundlePathOf("y.later") == "/Applications/Edited.app"; }));
}

TEST_F(InstalledApplicationsTest, theUsersEntryStandsBeforeTheSystemsEvenWhenDeleted) {
    write(place("system/applications/vendor/tool.desktop"),
          "[Desktop Entry]\nType=Application\nName=System Tool\nExec=sh\n");
    EXPECT_EQ(bundlePathOf("vendor-tool"), "/Applications/System Tool.app");
    install("vendor-tool", "My Tool");
    EXPECT_EQ(bundlePathOf("vendor-tool"), "/Applications/My Tool.app");
    install("vendor-tool", "My Tool", "Exec=sh\nHidden=true");
    EXPECT_EQ(bundlePathOf("vendor-tool"), "");
}

TEST_F(InstalledApplicationsTest, finderTerminalAndSafariAreOtherNamesOfWhatStandsForThem) {
    const auto known = [&](const std::string& id) {
        const auto found = installed_.byDesktopId(id + ".desktop");
        auto names = found.value().storedName();
        for (const auto& other : otherNames(*found, installed_.roles()))
            names += ", " + other.name + " " + other.bundleIdentifier + " " + other.bundlePath;
        return names;
    };
    EXPECT_EQ(known("test.files"),
              "Files, Finder com.apple.finder /System/Library/CoreServices/Finder.app");
    EXPECT_EQ(known("test.web"), "Web, Safari com.apple.Safari /Applications/Safari.app");
    EXPECT_EQ(known("test.viewer"), "Viewer");
    for (const auto& [path, identifier, own] :
         {std::tuple{finderPath, finderIdentifier, "/Applications/Files.app"},
          std::tuple{browserPath, browserIdentifier, "/Applications/Web.app"}}) {
        EXPECT_EQ(installed_.byBundlePath(path)->bundlePath, own);
        EXPECT_EQ(installed_.byBundleIdentifier(identifier)->bundlePath, own);
        EXPECT_TRUE(lists(installed_.visible(), own)) << "a picker shows it once";
    }
    install("s.real", "Safari");
    EXPECT_EQ(installed_.byBundlePath(browserPath)->desktopId, "s.real.desktop");
}

TEST_F(InstalledApplicationsTest, anEmulatorWithoutAnEntryIsTerminal) {
    const auto program = makeProgram("kitty/kitty", "");
    const ScopedVariable path("PATH", place("kitty"));
    const auto terminal = installed_.byBundlePath(terminalPath).value();
    EXPECT_EQ(text::joined({terminal.name, terminal.displayName, terminal.bundleIdentifier,
                            terminal.bundlePath, terminal.executable, terminal.exec},
                           "|"),
              "Terminal|Terminal|" + std::string(terminalIdentifier) + "|" +
                  std::string(terminalPath) + "|" + program + "|" + program);
    EXPECT_TRUE(terminal.isShown && terminal.isTerminalEmulator);
    EXPECT_EQ(installed_.visible().front(), terminal) << "it can be picked";
    EXPECT_FALSE(lists(installed_.shown(), std::string(terminalPath)));
}

TEST_F(InstalledApplicationsTest, aNameOfBeforeFitsWhereNothingElseIsCalledSo) {
    install("a.one", "Pad", "Name[de]=Block\nExec=sh");
    install("b.two", "Notes", "Name[de]=Block\nExec=cat");
    install("c.three", "Notes", "Name[de]=Zettel\nExec=sh");
    install("d.four", "In/Out", "Name[de]=Pad\nExec=sh");
    install("e.hidden", "In/Out", "Name[de]=Innen\nExec=sh\nNoDisplay=true");
    std::string seen;
    for (const char* id : {"a.one", "b.two", "c.three", "d.four", "e.hidden"}) {
        const auto found = installed_.byDesktopId(std::string(id) + ".desktop");
        seen += found->storedName() + " (" + text::joined(found->formerNames, ", ") + ") ";
    }
    EXPECT_EQ(seen, "Pad () Notes [b.two] () Notes [c.three] (Zettel) In:Out (In/Out) "
                    "In:Out [e.hidden] (Innen) ");
    const std::pair<std::string, const char*> names[]{
        {"a.one", "pad|/Applications/Pad.app"},
        {"b.two", "Block|NOTES|B.Two.Desktop|cat"},
        {"c.three", "zettel|c.three|Notes [c.three].app"},
        {"d.four", "in/out|In:Out.app"},
        {"e.hidden", "Innen"},
        {"test.files", "Finder"},
        {"test.web", "safari"},
        {"", "sh|Nobody||/Applications/Block.app"}};
    for (const auto& [id, all] : names) {
        for (const auto& name : text::split(all, '|')) {
            const auto found = applicationNamed(installed_, name);
            EXPECT_EQ(found ? found->bundleIdentifier : "", id) << name;
        }
    }
}

/// The items are what is to be opened, with blanks between.
std::string commandsOf(const std::string& exec, const std::string& items,
                       const std::vector<std::string>& arguments = {}) {
    InstalledApplication application;
    application.desktopFile = "/a/b.desktop";
    application.displayName = "A B";
    application.exec = exec;
    application.icon = "pen";
    const auto uris = items.empty() ? std::vector<std::string>() : text::split(items, ' ');
    const auto commands = execCommands(application, uris, arguments);
    if (!commands) return commands.error().localizedDescription;
    std::vector<std::string> lines;
    for (const auto& command : *commands)
        lines.push_back(text::joined(command, "|"));
    return text::joined(lines, " + ");
}

TEST(ExecLine, fillsInFieldCodes) {
    const std::string file = "file:///tmp/a%20b", two = file + " file:///c";
    const std::string web = "http://x.example/?q=%20";
    const std::string ownHost = g_get_host_name();
    const std::string inTheMiddle = "A B can't be started: its entry puts what is to be opened "
                                    "into the middle of other words.";
    const std::tuple<std::string, std::string, std::string> cases[]{
        {"edit %f", "", "edit"},
        {"edit %f", file, "edit|/tmp/a b"},
        {"edit %f", two, "edit|/tmp/a b + edit|/c"},
        {"edit %F", two, "edit|/tmp/a b|/c"},
        {"edit %u", web, "edit|" + web},
        {"edit -w %U end", web + " " + file, "edit|-w|" + web + "|" + file + "|end"},
        {"edit --at=%f", file, "edit|--at=/tmp/a b"},
        {"edit", file, "edit|/tmp/a b"},
        {"edit", web, "edit|" + web},
        {"edit %F", web, "The application can open only files, not " + web + "."},
        {"edit 100%", "", "edit|100%"},
        {"\"my edit\" %i %c %k 100%% %m", "", "my edit|--icon|pen|A B|/a/b.desktop|100%"},
        {"sh -c \"cat %f\"", file, "sh|-c|cat ${1+\"${1}\"}|sh|/tmp/a b"},
        {"sh -c \"cat %f\"", "", "sh|-c|cat ${1+\"${1}\"}|sh"},
        {"sh -c \"exec edit\" '' %f", "", "sh|-c|exec edit|"},
        {"sh -c", file, "sh|-c|/tmp/a b"},
        {"env A=b /bin/bash -lc 'x \"%u\" 5%% %c' me", web,
         "env|A=b|/bin/bash|-lc|x \"${1}\" 5% A B|me|" + web},
        {"sh -c \"cat %F\"", two,
         "sh|-c|cat ${1+\"${1}\"}|sh|/tmp/a b + sh|-c|cat ${1+\"${1}\"}|sh|/c"},
        {"sh -c \"x '%f'\"", file, "sh|-c|x ''${1+\"${1}\"}''|sh|/tmp/a b"},
        {"sh -c %f", file, "sh|-c|${1+\"${1}\"}|sh|/tmp/a b"},
        {R"(sh -c 'x \n %f \')", file, R"(sh|-c|x \n ${1+"${1}"} \|sh|/tmp/a b)"},
        {R"(sh -e -c 'x \" %f')", file, R"(sh|-e|-c|x \" ${1+"${1}"}|sh|/tmp/a b)"},
        {"sh -c 'x %f %'", file, "sh|-c|x ${1+\"${1}\"} %|sh|/tmp/a b"},
        {"/usr/bin/env sh +x -c \"cat %f\"", file,
         "/usr/bin/env|sh|+x|-c|cat ${1+\"${1}\"}|sh|/tmp/a b"},
        {"bash --rc %f", file, "bash|--rc|/tmp/a b"},
        {R"x(sh -c 'x "$(cat %f)"')x", file, inTheMiddle},
        {"sh -c 'x \"`cat %f`\"'", file, inTheMiddle},
        {R"x(sh -c 'x "%f" "$(y)"')x", file, R"x(sh|-c|x "${1}" "$(y)"|sh|/tmp/a b)x"},
        {"perl -e \"open %f\"", file, inTheMiddle},
        {"edit %f", "file://" + ownHost + "/c", "edit|/c"},
        {"edit %f", "file://localhost/c", "edit|/c"},
        {"edit %u", "file://otherhost/x", "file://otherhost/x is not a file of this machine."},
        {"edit %u", "file:+s!!touch", "file:+s!!touch is not a file of this machine."},
        {"edit %f", "file:///a%00b", "file:///a%00b is not a file of this machine."},
        {"edit %U", "-x", "-x is not an address."},
        {"edit \"open", "",
         "A B can't be started: Text ended before matching quote was found for \". "
         "(The text was “edit \"open”)."},
        {"", "", "A B can't be started: Text was empty (or contained only whitespace)."}};
    for (const auto& [exec, items, commands] : cases)
        EXPECT_EQ(commandsOf(exec, items), commands) << exec;
    EXPECT_EQ(commandsOf("edit %f", file, {"-n", "%f $(x)"}), "edit|/tmp/a b|-n|%f $(x)");
    for (const std::string shell : {"sh", "bash", "dash", "zsh", "ksh", "mksh", "ash"})
        EXPECT_EQ(commandsOf(shell + " -c 'cat %f'", file),
                  shell + "|-c|cat ${1+\"${1}\"}|sh|/tmp/a b");
}

std::string queryFor(const std::string& name) {
    return "kMDItemKind == 'Application' && kMDItemDisplayName == '" + name + "'";
}

TEST(MdfindQuery, readsOneFormAndNothingElse) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases{
        {queryFor("Mail"), "Mail"},
        {queryFor(""), ""},
        {queryFor("a && b == \"c\""), "a && b == \"c\""},
        {queryFor("a\\'b\\\\"), "a'b\\"},
        {" kMDItemKind=='Application'&&kMDItemDisplayName=='x' ", "x"},
        {queryFor("It's"), std::nullopt},
        {"kMDItemKind == 'Folder' && kMDItemDisplayName == 'x'", std::nullopt},
        {"kMDItemDisplayName == 'x'", std::nullopt},
        {"kMDItemKind == 'Application' && kMDItemDisplayName == '", std::nullopt}};
    for (const auto& [query, name] : cases)
        EXPECT_EQ(parseApplicationNameQuery(query), name) << query;
}

TEST_F(InstalledApplicationsTest, mdfindPrintsTheBundlesOfThatName) {
    install("m.clock", "Alarm Clock", "Name[de]=Wecker\nExec=sh");
    const auto run = [&](const std::string& name) {
        const auto result = runMdfindTool(installed_, {queryFor(name)});
        return std::to_string(result.status) + ":" + result.output;
    };
    EXPECT_EQ(run("Wecker"), "0:/Applications/Alarm Clock.app\n");
    EXPECT_EQ(run("wecker"), "0:");
    EXPECT_EQ(run("Alarm Clock"), run("Wecker"));
    EXPECT_EQ(run("Finder"), "0:/Applications/Files.app\n");
    EXPECT_EQ(run("Weck'er"), "1:");
    EXPECT_EQ(runMdfindTool(installed_, {}).status, 1);
}

TEST_F(InstalledApplicationsTest, aQueryFindsPartsOfNamesIgnoringCaseAndDiacritics) {
    install("q.cafe", "Coffee House", "Name[de]=Kaffee-Café\nExec=sh");
    LinuxMetadataQuery query(installed_);
    const std::string format =
        "kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@";
    for (const char* part : {"CAFE", "fée-c", "coffee h", "EE HOU"}) {
        const auto items = query.results(format, part);
        ASSERT_EQ(items.size(), 1) << part;
        EXPECT_EQ(items.front().path, "/Applications/Coffee House.app");
    }
    EXPECT_TRUE(query.results(format, "").empty());
    EXPECT_TRUE(query.results("kMDItemDisplayName == %@", "Coffee House").empty());
}

} // namespace
