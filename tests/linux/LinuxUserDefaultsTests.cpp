#include "linux/files/LinuxFileSystem.h"
#include "linux/files/LinuxUserDefaults.h"
#include "machine/Machine.h"

#include <filesystem>

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::machine;
namespace fs = std::filesystem;

namespace {

struct FixedClock : Clock {
    Timestamp now() const override { return Timestamp::fromUnix(1'700'000'000); }
    void sleep(double) override {}
};

class LinuxUserDefaultsTest : public testing::Test {
protected:
    void SetUp() override { fs::remove_all(folder_); }
    LinuxUserDefaults open() { return {files_, clock_}; }

    const std::string folder_ = place("defaults");
    const ScopedVariable variable_{"XDG_CONFIG_HOME", folder_};
    const std::string file_ = folder_ + "/app.corvane.Corvane.plist";
    InstalledApplications installed_;
    LinuxFileSystem files_{installed_};
    FixedClock clock_;
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
    EXPECT_TRUE(defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.stringForKey("text"), "Größe");
    EXPECT_FALSE(defaults.objectForKey("gone"));
    EXPECT_TRUE(read(file_).starts_with("bplist00"));

    defaults.removePersistentDomain();
    EXPECT_FALSE(defaults.objectForKey("flag"));
    EXPECT_FALSE(fs::exists(file_));
    defaults.setObject("flag", {true});
    EXPECT_TRUE(open().boolForKey("flag"));
}

TEST_F(LinuxUserDefaultsTest, anUnchangedValueIsNotWritten) {
    auto defaults = open();
    defaults.setObject("flag", {true});
    fs::remove(file_);
    defaults.setObject("flag", {true});
    defaults.removeObject("absent");
    EXPECT_FALSE(fs::exists(file_));
    defaults.setObject("flag", {false});
    EXPECT_FALSE(open().boolForKey("flag"));
    EXPECT_TRUE(fs::exists(file_));
}

TEST_F(LinuxUserDefaultsTest, anUnreadableFileIsMovedAsideBeforeTheFirstWrite) {
    const std::string kept = "app.corvane.Corvane.unreadable-2023-11-14T22-13-20";
    for (const std::string content : {"no property list", "", "<plist><array/></plist>"}) {
        write(file_, content);
        const auto before = namesIn(folder_);
        auto defaults = open();
        defaults.removeObject("absent");
        EXPECT_EQ(namesIn(folder_), before) << "nothing was written yet";
        defaults.setObject("flag", {true});
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
    EXPECT_TRUE(defaults.boolForKey("flag"));
    fs::remove(folder_);
    defaults.setObject("flag", {true});
    EXPECT_TRUE(open().boolForKey("flag"));
}

} // namespace
