#include "linux/files/LinuxFileSystem.h"
#include "linux/files/LinuxUserDefaults.h"
#include "machine/Machine.h"
#include "simulated/SimulatedQueue.h"

#include <filesystem>

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::machine;
namespace fs = std::filesystem;

namespace {

class LinuxUserDefaultsTest : public testing::Test {
protected:
    void SetUp() override { fs::remove_all(folder_); }
    LinuxUserDefaults open() { return LinuxUserDefaults(files_, queue_, queue_, queue_); }

    const std::string folder_ = place("defaults");
    const ScopedVariable variable_{"XDG_CONFIG_HOME", folder_};
    const std::string file_ = folder_ + "/app.corvane.Corvane.plist";
    InstalledApplications installed_;
    LinuxFileSystem files_{installed_};
    SimulatedQueue queue_;
};

TEST_F(LinuxUserDefaultsTest, comeBackAfterARestartUntilTheDomainIsRemoved) {
    EXPECT_FALSE(open().objectForKey("a"));
    EXPECT_FALSE(fs::exists(folder_)) << "reading makes nothing";
    {
        auto defaults = open();
        defaults.setObject("flag", {true});
        defaults.setObject("text", {std::string("Größe")});
        defaults.setObject("gone", {std::int64_t{1}});
        defaults.removeObject("gone");
    }
    auto defaults = open();
    EXPECT_FALSE(defaults.isUnreadable());
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.stringForKey("text"), "Größe");
    EXPECT_FALSE(defaults.objectForKey("gone"));
    EXPECT_TRUE(read(file_).starts_with("bplist00"));

    for (const auto& [value, text] : std::map<std::string, PropertyList>{
             {"1", {true}}, {"0", {false}}, {"7", {std::int64_t{7}}}, {"0.5", {0.5}}}) {
        defaults.setObject("other", text);
        EXPECT_EQ(defaults.stringForKey("other"), value);
    }
    defaults.setObject("other", {Bytes{1}});
    EXPECT_EQ(defaults.stringForKey("other"), std::nullopt);

    defaults.removePersistentDomain();
    EXPECT_FALSE(defaults.objectForKey("flag"));
    queue_.runFor(0);
    EXPECT_FALSE(open().objectForKey("flag"));
    defaults.setObject("flag", {true});
    queue_.runFor(0);
    EXPECT_TRUE(open().boolForKey("flag"));
}

TEST_F(LinuxUserDefaultsTest, aResetReachesTheFileBehindALink) {
    write(folder_ + "/elsewhere/preferences", "");
    open().setObject("flag", {true});
    fs::rename(file_, folder_ + "/elsewhere/preferences");
    fs::create_symlink("elsewhere/preferences", file_);
    auto defaults = open();
    EXPECT_TRUE(defaults.boolForKey("flag"));
    defaults.removePersistentDomain();
    queue_.runFor(0);
    EXPECT_EQ(read(folder_ + "/elsewhere/preferences").find("flag"), std::string::npos);
    EXPECT_TRUE(fs::is_symlink(file_));
}

TEST_F(LinuxUserDefaultsTest, manyChangesAreWrittenOnceATurn) {
    auto defaults = open();
    for (const char* key : {"a", "b", "c"})
        defaults.setObject(key, {true});
    EXPECT_EQ(queue_.pending(), 1u);
    EXPECT_FALSE(fs::exists(file_));
    queue_.runFor(0);
    EXPECT_TRUE(open().boolForKey("c"));
}

TEST_F(LinuxUserDefaultsTest, aFileThatAnotherProgramChangedIsKeptAside) {
    std::string told;
    auto defaults = open();
    defaults.onKeptAside = [&](const auto& kept, const auto& why) { told += kept + " " + why; };
    defaults.setObject("flag", {true});
    queue_.runFor(0);
    write(file_, "theirs");
    defaults.setObject("flag", {false});
    queue_.runFor(0);
    const auto kept = folder_ + "/app.corvane.Corvane.changed-2026-01-01T12-00-00.plist";
    EXPECT_EQ(told, kept + " ");
    EXPECT_EQ(read(kept), "theirs");
    EXPECT_TRUE(open().objectForKey("flag"));
}

TEST_F(LinuxUserDefaultsTest, aFileThatCannotBeReachedIsNeverTakenForMissing) {
    fs::create_directories(folder_);
    const AsOrdinaryUser ordinary(folder_);
    open().setObject("flag", {true});
    const auto before = read(file_);
    fs::permissions(folder_, fs::perms::none);
    auto defaults = open();
    EXPECT_TRUE(defaults.isUnreadable());
    defaults.setObject("other", {true});
    queue_.runFor(0);
    fs::permissions(folder_, fs::perms::owner_all);
    EXPECT_EQ(read(file_), before);
    defaults.setObject("other", {true});
    queue_.runFor(0);
    EXPECT_TRUE(open().boolForKey("other"));
    EXPECT_EQ(read(folder_ + "/app.corvane.Corvane.unreadable-2026-01-01T12-00-00.plist"), before);
}

TEST_F(LinuxUserDefaultsTest, anUnchangedValueIsNotWritten) {
    auto defaults = open();
    defaults.setObject("flag", {true});
    queue_.runFor(0);
    fs::remove(file_);
    defaults.setObject("flag", {true});
    defaults.removeObject("absent");
    queue_.runFor(0);
    EXPECT_FALSE(fs::exists(file_));
    defaults.setObject("flag", {false});
    queue_.runFor(0);
    EXPECT_FALSE(open().boolForKey("flag"));
    EXPECT_TRUE(fs::exists(file_));
}

TEST_F(LinuxUserDefaultsTest, anUnreadableFileIsMovedAsideBeforeTheFirstWrite) {
    const std::string kept = "app.corvane.Corvane.unreadable-2026-01-01T12-00-00";
    for (const std::string content : {"no property list", "", "<plist><array/></plist>"}) {
        write(file_, content);
        const auto before = namesIn(folder_);
        auto defaults = open();
        defaults.removeObject("absent");
        queue_.runFor(0);
        EXPECT_EQ(namesIn(folder_), before) << "nothing was written yet";
        EXPECT_TRUE(defaults.isUnreadable());
        if (content.empty()) defaults.removePersistentDomain();
        defaults.setObject("flag", {true});
        queue_.runFor(0);
        EXPECT_TRUE(open().boolForKey("flag"));
    }
    EXPECT_EQ(namesIn(folder_),
              (std::vector<std::string>{"app.corvane.Corvane.plist", kept + " 2.plist",
                                        kept + " 3.plist", kept + ".plist"}));
    EXPECT_EQ(read(folder_ + "/" + kept + ".plist"), "no property list");
}

TEST_F(LinuxUserDefaultsTest, aValueThatCannotBeStoredStaysInMemoryAndIsTriedAgain) {
    write(folder_, "a file where the folder should be");
    auto defaults = open();
    defaults.setObject("flag", {true});
    queue_.runFor(0);
    EXPECT_TRUE(defaults.boolForKey("flag"));
    fs::remove(folder_);
    defaults.setObject("flag", {true});
    queue_.runFor(0);
    EXPECT_TRUE(open().boolForKey("flag"));
}

} // namespace
