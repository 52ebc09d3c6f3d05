#include "Machine.h"
#include "foundation/Text.h"
#include "linux/running/ApplicationOpener.h"
#include "linux/running/LinuxApplications.h"
#include "linux/running/RunningApplications.h"
#include "linux/scripts/OpenTool.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::machine;

namespace {

class OpeningTest : public testing::Test {
protected:
    void SetUp() override {
        clearRecords();
        write(note_, "words\n");
    }
    void TearDown() override {
        std::filesystem::remove(place("bin/vanishing"));
        uninstall("test.vanishing");
    }
    /// Installed when looked up, gone when started.
    void installVanishing() {
        std::filesystem::copy(place("bin/recorder"), place("bin/vanishing"));
        install("test.vanishing", "Vanishing", "Exec=" + place("bin/vanishing"));
        ASSERT_TRUE(installed_.byDesktopId("test.vanishing.desktop"));
        std::filesystem::remove(place("bin/vanishing"));
    }
    int openTool(const std::vector<std::string>& arguments) {
        return runOpenTool(opener_, arguments).status;
    }
    std::string openWith(const std::string& url, const std::string& application) {
        std::string outcome = "not called";
        applications_.openUrl(*Url::parse(url), Url::fromPath(application),
                              [&](std::optional<Error> error) {
                                  outcome = error ? error->localizedDescription : "opened";
                              });
        return outcome;
    }

    const std::string note_ = place("notes/a note.txt");
    const std::string noteUrl_ = Url::fromPath(note_).absoluteString();
    std::vector<RunningApplication> running_;
    std::vector<int> activated_;
    InstalledApplications installed_;
    ApplicationOpener opener_{installed_,
                              {.list = [this] { return running_; },
                               .activate =
                                   [this](std::int32_t process) {
                                       activated_.push_back(process);
                                       return process != 1;
                                   }}};
    RunningApplications onDisplay_{installed_};
    LinuxApplications applications_{opener_, onDisplay_};
};

RunningApplication process(std::int32_t identifier, const std::string& bundleIdentifier) {
    RunningApplication running;
    running.processIdentifier = identifier;
    running.bundleIdentifier = bundleIdentifier;
    return running;
}

using Records = std::vector<std::string>;

TEST_F(OpeningTest, theDefaultHandlerGetsTheItem) {
    EXPECT_TRUE(applications_.openUrl(Url::fromPath(note_)));
    EXPECT_EQ(records("viewer", 1), Records{noteUrl_});
    EXPECT_TRUE(applications_.openUrl(Url::fromPath(place("notes"))));
    EXPECT_EQ(records("files", 1), Records{place("notes")});
    EXPECT_TRUE(applications_.openUrl(*Url::parse("HTTP://x.example/%20?a=b&c")));
    EXPECT_EQ(records("web", 1), Records{"HTTP://x.example/%20?a=b&c"});
}

TEST_F(OpeningTest, refusesWhatNothingOpens) {
    write(place("notes/odd.xyz"), std::string("\0\1\2", 3));
    for (const auto& url : {Url::fromPath(place("notes/missing.txt")), *Url::parse("unheard:of"),
                            Url::fromPath(place("notes/odd.xyz")), *Url::parse("relative"),
                            Url::fromPath("/Applications/Nobody.app")}) {
        EXPECT_FALSE(applications_.openUrl(url)) << url.absoluteString();
    }
    installVanishing();
    EXPECT_FALSE(applications_.openUrl(Url::fromPath("/Applications/Vanishing.app")));
}

TEST_F(OpeningTest, aBundleComesForwardOrStarts) {
    const auto viewer = Url::fromPath("/Applications/Viewer.app");
    running_ = {process(1, "test.viewer"), process(2, "test.viewer"),
                process(3, "com.apple.finder")};
    EXPECT_TRUE(applications_.openUrl(viewer));
    EXPECT_TRUE(applications_.openUrl(Url::fromPath("/Applications/Files.app")));
    EXPECT_EQ(activated_, (std::vector{1, 2, 3}));
    running_.resize(1);
    EXPECT_TRUE(applications_.openUrl(viewer));
    EXPECT_EQ(records("viewer", 1), Records{""}) << "process 1 has no window to show";
}

TEST_F(OpeningTest, aGivenApplicationOpensOrSaysWhyNot) {
    EXPECT_EQ(openWith(noteUrl_, "/Applications/Web.app"), "opened");
    EXPECT_EQ(records("web", 1), Records{noteUrl_});
    EXPECT_EQ(openWith("file:///Applications/Web.app", "/Applications/Viewer.app"), "opened");
    EXPECT_EQ(records("viewer", 1), Records{""});
    EXPECT_EQ(openWith(noteUrl_, "/Applications/Nobody.app"),
              "There is no application at /Applications/Nobody.app.");
    installVanishing();
    EXPECT_NE(openWith(noteUrl_, "/Applications/Vanishing.app").find("The program is missing"),
              std::string::npos);
}

TEST_F(OpeningTest, looksUpHandlersAndLists) {
    const auto handler = [&](const std::string& url) {
        const auto found = applications_.urlForApplicationToOpen(*Url::parse(url));
        return found ? found->path() : "";
    };
    EXPECT_EQ(handler("http://"), "/Applications/Web.app");
    EXPECT_EQ(handler(noteUrl_), "/Applications/Viewer.app");
    EXPECT_EQ(handler("file:///usr/"), "/Applications/Files.app");
    EXPECT_EQ(handler("unheard:of"), "");
    EXPECT_EQ(applications_.urlForApplication("test.web")->path(), "/Applications/Web.app");
    const auto all = applications_.urlsForApplications("");
    for (const char* path : {"/Applications/Web.app", "/Applications/Files.app"})
        EXPECT_EQ(std::ranges::count(all, Url::fromPath(path)), 1);
    EXPECT_EQ(applications_.urlsForApplications("test.web").size(), 1u);
    EXPECT_TRUE(applications_.urlsForApplications("nobody").empty());
}

TEST_F(OpeningTest, revealingWithoutASessionBusOpensTheFolder) {
    applications_.activateFileViewerSelecting(Url::fromPath(note_));
    EXPECT_EQ(records("files", 1), Records{place("notes")});
}

TEST_F(OpeningTest, openToolFindsApplicationsByEveryName) {
    install("test.named", "Plain Name",
            "Name[de]=Schöner Name\nExec=" + place("bin/special") + " named");
    std::filesystem::copy(place("bin/recorder"), place("bin/special"));
    for (const char* name : {"/Applications/Plain Name.app", "plain name", "SCHÖNER NAME",
                             "Plain Name.app", "test.named", "test.named.desktop", "special"}) {
        clearRecords();
        EXPECT_EQ(openTool({"-a", name, "--new"}), 0) << name;
        EXPECT_EQ(records("named", 1).size(), 1u) << name;
    }
    uninstall("test.named");
    EXPECT_EQ(openTool({"-a", "Plain Name"}), 1);
}

TEST_F(OpeningTest, openToolHandsOverItemsAndArguments) {
    struct Case {
        std::vector<std::string> arguments;
        std::string label;
        Records starts;
    };
    const std::vector<Case> cases{
        {{"-a", "Viewer", note_}, "viewer", {noteUrl_}},
        {{"-a", "Files", place("notes")}, "files", {place("notes")}},
        {{"-a", "Viewer", noteUrl_}, "viewer", {noteUrl_}},
        {{"--new", "-a", "Web", "--args", "http://a b"}, "web", {"http://a b"}},
        {{"-a", "Web", "--args", "--new-tab", "-a"}, "web", {"--new-tab|-a"}},
        {{"-a", "Web", note_, "http://y", "--args", "x"}, "web", {"http://y|x", noteUrl_ + "|x"}},
        {{"--new", "-a", "Viewer"}, "viewer", {""}},
        {{"-a", "/Applications/Viewer.app", "/Applications/Web.app", "--new"}, "viewer", {""}},
    };
    running_ = {process(5, "test.viewer"), process(6, "test.web")};
    for (const auto& [arguments, label, starts] : cases) {
        clearRecords();
        EXPECT_EQ(openTool(arguments), 0) << text::joined(arguments, " ");
        auto expected = starts;
        std::ranges::sort(expected);
        EXPECT_EQ(records(label, starts.size()), expected) << text::joined(arguments, " ");
    }
    EXPECT_TRUE(activated_.empty());
    EXPECT_EQ(openTool({"-a", "Viewer"}), 0);
    EXPECT_EQ(openTool({"-a", "/Applications/Viewer.app", "/Applications/Viewer.app"}), 0);
    EXPECT_EQ(activated_, (std::vector{5, 5}));
}

TEST_F(OpeningTest, openToolFailsWithStatusOne) {
    const std::vector<std::vector<std::string>> cases{
        {},
        {"-a"},
        {"-a", ""},
        {"-a", "No Such Application"},
        {"-a", "No Such Application", "--args", "x"},
        {"-a", "/Applications/Nobody.app"},
        {"-a", "Viewer", place("notes/missing")},
        {note_},
        {"-x", "-a", "Viewer", note_},
        {"-R", note_},
        {"-a", "Files", "http://x.example"},
    };
    for (const auto& arguments : cases) {
        EXPECT_EQ(openTool(arguments), 1) << text::joined(arguments, " ");
    }
}

} // namespace
