#include "foundation/Text.h"
#include "linux/installed/ApplicationNames.h"
#include "linux/installed/LinuxBundles.h"
#include "linux/scripts/MdfindTool.h"
#include "machine/Machine.h"

#include <algorithm>
#include <filesystem>
#include <tuple>

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

std::string bundlePathOf(const InstalledApplications& installed, const std::string& id) {
    const auto found = installed.byDesktopId(id + ".desktop");
    return found ? found->bundlePath : "";
}

bool lists(const std::vector<InstalledApplication>& applications, const std::string& path) {
    return std::ranges::count(applications, path, &InstalledApplication::bundlePath) == 1;
}

/// Takes away what a test installed.
class InstalledApplicationsTest : public testing::Test {
protected:
    void add(const std::string& id, const std::string& name, const std::string& keys = "Exec=sh") {
        install(id, name, keys);
        added_.push_back(id);
    }
    void TearDown() override {
        for (const auto& id : added_)
            uninstall(id);
    }
    InstalledApplications installed_;
    LinuxBundles bundles_{installed_};

private:
    std::vector<std::string> added_;
};

TEST_F(InstalledApplicationsTest, anEntryIsABundleNamedInBothLanguages) {
    add("org.example.Editor", "Text Editor",
        "Name[de]=Textbearbeitung\nExec=sh -c x %f\nIcon=pen\nStartupWMClass=Edit\n"
        "TerminalArgExec=--run");
    const auto editor = installed_.byBundlePath("/Applications/Text Editor.app/");
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->bundleIdentifier, "org.example.Editor");
    EXPECT_EQ(editor->name, "Text Editor");
    EXPECT_EQ(editor->displayName, "Textbearbeitung");
    EXPECT_EQ(editor->startupWmClass, "Edit");
    EXPECT_EQ(editor->executable, "sh");
    EXPECT_EQ(editor->terminalOption, "--run");
    EXPECT_EQ(installed_.byBundleIdentifier("ORG.example.editor"), editor);
    EXPECT_FALSE(installed_.byBundlePath("/Applications/Textbearbeitung.app"));
    EXPECT_FALSE(installed_.byBundleIdentifier(""));
    const auto bundle = bundles_.open("/Applications/Text Editor.app");
    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->bundleIdentifier, "org.example.Editor");
    EXPECT_EQ(bundle->displayName, "Textbearbeitung");
    EXPECT_EQ(bundle->name, "Text Editor");
    EXPECT_FALSE(bundles_.open("/Applications/Textbearbeitung.app"));
}

TEST_F(InstalledApplicationsTest, theProgramKnowsItselfAndTheSystem) {
    EXPECT_EQ(bundles_.mainBundleIdentifier(), "app.corvane.Corvane");
    for (const auto* key : {"CFBundleShortVersionString", "CFBundleVersion"})
        EXPECT_NE(bundles_.mainBundleInfo(key).value_or(""), "") << key;
    EXPECT_EQ(bundles_.mainBundleInfo("Other"), std::nullopt);
    EXPECT_NE(bundles_.operatingSystemVersion().find(" (Linux "), std::string::npos);
}

TEST_F(InstalledApplicationsTest, sharedNamesGetTheIdInBrackets) {
    add("a.one", "In/Out");
    EXPECT_EQ(bundlePathOf(installed_, "a.one"), "/Applications/In:Out.app");
    add("b.hidden", "In/Out", "Exec=sh\nNoDisplay=true");
    EXPECT_EQ(bundlePathOf(installed_, "a.one"), "/Applications/In:Out.app");
    EXPECT_EQ(bundlePathOf(installed_, "b.hidden"), "/Applications/In:Out [b.hidden].app");
    add("c.two", "In:Out");
    EXPECT_EQ(bundlePathOf(installed_, "a.one"), "/Applications/In:Out [a.one].app");
    EXPECT_EQ(bundlePathOf(installed_, "c.two"), "/Applications/In:Out [c.two].app");
    EXPECT_EQ(installed_.byBundlePath("/Applications/In:Out.app")->desktopId, "a.one.desktop")
        << "a path from before still leads somewhere";
    uninstall("c.two");
    EXPECT_EQ(installed_.byBundlePath("/Applications/In:Out [a.one].app")->bundlePath,
              "/Applications/In:Out.app");
}

TEST_F(InstalledApplicationsTest, showsOnlyWhatTheDesktopShows) {
    add("z.shown", "Z Shown");
    add("z.nodisplay", "Z NoDisplay", "Exec=sh\nNoDisplay=true");
    add("z.elsewhere", "Z Elsewhere", "Exec=sh\nOnlyShowIn=OTHER;");
    add("z.deleted", "Z Deleted", "Exec=sh\nHidden=true");
    add("z.missing", "Z Missing", "Exec=no-such-program-anywhere");
    write(place("data/applications/z.link.desktop"), "[Desktop Entry]\nType=Link\nName=Z Link\n");
    const auto folder = place("data/applications/");
    write(folder + "z.broken.desktop", "[Desktop Entry\nName");
    const std::pair<const char*, const char*> links[]{
        {"z.round.desktop", "z.round.desktop"}, {"a-round", "a-round"}, {"a-back", "."}};
    for (const auto& [name, target] : links)
        std::filesystem::create_symlink(target, folder + name);
    const auto shown = installed_.shown();
    const auto all = installed_.all();
    EXPECT_TRUE(lists(shown, "/Applications/Z Shown.app"));
    EXPECT_TRUE(std::ranges::is_sorted(shown, {}, &InstalledApplication::name));
    for (const char* name : {"NoDisplay", "Elsewhere"}) {
        EXPECT_FALSE(lists(shown, "/Applications/Z " + std::string(name) + ".app")) << name;
        EXPECT_TRUE(lists(all, "/Applications/Z " + std::string(name) + ".app")) << name;
    }
    for (const char* name : {"Deleted", "Missing", "Link", "Broken"}) {
        EXPECT_FALSE(lists(all, "/Applications/Z " + std::string(name) + ".app")) << name;
    }
    for (const auto& [name, target] : links)
        std::filesystem::remove(folder + name);
    uninstall("z.link");
    uninstall("z.broken");
}

TEST_F(InstalledApplicationsTest, anEntrysFileIsItsApplicationAndSoIsACopy) {
    add("x.tool", "X Tool");
    add("x.internal", "X Internal", "Exec=sh\nNoDisplay=true");
    add("x.deleted", "X Deleted", "Exec=sh\nHidden=true");
    const std::string entry = "[Desktop Entry]\nType=Application\nExec=sh\nName=";
    write(place("Desktop/copied.desktop"), entry + "X Tool\n");
    write(place("Desktop/own.desktop"), entry + "X Tool of mine\n");
    write(place("Desktop/broken.desktop"), "[Desktop Entry\nName=X Tool");
    write(place("Desktop/text.txt"), entry + "X Tool\n");
    std::filesystem::create_symlink(place("data/applications/x.tool.desktop"),
                                    place("Desktop/linked.desktop"));
    const std::pair<const char*, std::string> cases[]{
        {"data/applications/x.tool.desktop", "X Tool"},
        {"data/applications/x.internal.desktop", "X Internal"},
        {"data/applications/x.deleted.desktop", ""},
        {"Desktop/copied.desktop", "X Tool"},
        {"Desktop/linked.desktop", "X Tool"},
        {"Desktop/own.desktop", ""},
        {"Desktop/broken.desktop", ""},
        {"Desktop/text.txt", ""},
        {"Desktop/missing.desktop", ""}};
    for (const auto& [file, name] : cases) {
        EXPECT_EQ(bundles_.bundlePathOfLauncher(place(file)).value_or(""),
                  name.empty() ? "" : "/Applications/" + name + ".app")
            << file;
    }
}

TEST_F(InstalledApplicationsTest, followsChangesOfTheFolders) {
    add("y.app", "Before");
    EXPECT_EQ(bundlePathOf(installed_, "y.app"), "/Applications/Before.app");
    add("y.app", "Afterwards");
    EXPECT_EQ(bundlePathOf(installed_, "y.app"), "/Applications/Afterwards.app");
    uninstall("y.app");
    EXPECT_EQ(bundlePathOf(installed_, "y.app"), "");

    const std::string program = place("bin/comes-later");
    add("y.later", "Later", "Exec=" + program);
    EXPECT_EQ(bundlePathOf(installed_, "y.later"), "");
    std::filesystem::copy(place("bin/recorder"), program);
    EXPECT_TRUE(comesTrue([&] { return !bundlePathOf(installed_, "y.later").empty(); }));

    write(place("data/applications/y.later.desktop"),
          "[Desktop Entry]\nType=Application\nName=Edited\nExec=sh\n");
    EXPECT_TRUE(comesTrue(
        [&] { return bundlePathOf(installed_, "y.later") == "/Applications/Edited.app"; }));
}

TEST_F(InstalledApplicationsTest, theUsersEntryStandsBeforeTheSystemsEvenWhenDeleted) {
    write(place("system/applications/vendor/tool.desktop"),
          "[Desktop Entry]\nType=Application\nName=System Tool\nExec=sh\n");
    EXPECT_EQ(bundlePathOf(installed_, "vendor-tool"), "/Applications/System Tool.app");
    add("vendor-tool", "My Tool");
    EXPECT_EQ(bundlePathOf(installed_, "vendor-tool"), "/Applications/My Tool.app");
    add("vendor-tool", "My Tool", "Exec=sh\nHidden=true");
    EXPECT_EQ(bundlePathOf(installed_, "vendor-tool"), "");
}

TEST_F(InstalledApplicationsTest, finderTerminalAndSafariAreOtherNamesOfWhatStandsForThem) {
    const auto known = [&](const std::string& id) {
        const auto found = installed_.byDesktopId(id + ".desktop");
        std::string names = found ? found->storedName() : "nothing";
        if (!found) return names;
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
    add("s.real", "Safari");
    EXPECT_EQ(installed_.byBundlePath(browserPath)->desktopId, "s.real.desktop");
}

TEST_F(InstalledApplicationsTest, aNameOfBeforeFitsWhereNothingElseIsCalledSo) {
    add("a.one", "Pad", "Name[de]=Block\nExec=sh");
    add("b.two", "Notes", "Name[de]=Block\nExec=sh");
    add("c.three", "Notes", "Name[de]=Zettel\nExec=sh");
    add("d.four", "In/Out", "Name[de]=Pad\nExec=sh");
    add("e.hidden", "In/Out", "Name[de]=Innen\nExec=sh\nNoDisplay=true");
    std::string seen;
    for (const char* id : {"a.one", "b.two", "c.three", "d.four", "e.hidden"}) {
        const auto found = installed_.byDesktopId(std::string(id) + ".desktop");
        seen += found->storedName() + " (" + text::joined(found->formerNames, ", ") + ") ";
    }
    EXPECT_EQ(seen, "Pad () Notes [b.two] () Notes [c.three] (Zettel) In:Out (In/Out) "
                    "In:Out [e.hidden] (Innen) ");
}

} // namespace
