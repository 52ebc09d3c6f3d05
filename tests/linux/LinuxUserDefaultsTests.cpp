#include "linux/files/LinuxFileSystem.h"
#include "linux/files/LinuxUserDefaults.h"
#include "machine/Machine.h"
#include "simulated/SimulatedQueue.h"

using namespace corvane;
using namespace corvane::machine;

namespace {

struct LinuxUserDefaultsTest : testing::Test {
    void SetUp() override { fs::remove_all(folder_); }
    void setFlag(LinuxUserDefaults& defaults, bool value) {
        defaults.setObject("flag", {value});
        queue_.runFor(0);
    }
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
    write(folder_ + "/elsewhere/any", "");
    fs::create_symlink("elsewhere/preferences", file_);
    {
        auto defaults = open();
        defaults.setObject("flag", {true});
        defaults.setObject("text", {std::string("Größe")});
        defaults.setObject("gone", {std::int64_t{1}});
        defaults.removeObject("gone");
    }
    auto defaults = open();
    EXPECT_TRUE(!defaults.isUnreadable() && defaults.boolForKey("flag"));
    EXPECT_EQ(defaults.stringForKey("text"), "Größe");
    EXPECT_TRUE(!defaults.objectForKey("gone") && read(file_).starts_with("bplist00"));

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
    for (const char* key : {"flag", "other"})
        defaults.setObject(key, {true});
    EXPECT_EQ(queue_.pending(), 1u) << "one write for a turn";
    queue_.runFor(0);
    EXPECT_TRUE(open().boolForKey("other") && fs::is_symlink(file_));
}

TEST_F(LinuxUserDefaultsTest, anUnchangedValueIsNotWritten) {
    auto defaults = open();
    setFlag(defaults, true);
    fs::remove(file_);
    defaults.setObject("flag", {true});
    defaults.removeObject("absent");
    queue_.runFor(0);
    EXPECT_FALSE(fs::exists(file_));
    setFlag(defaults, false);
    EXPECT_TRUE(!open().boolForKey("flag") && fs::exists(file_));
}

TEST_F(LinuxUserDefaultsTest, anUnreadableFileIsKeptAsideBeforeTheFirstWriteAndThatIsTold) {
    const auto kept = folder_ + "/app.corvane.Corvane.unreadable-2026-01-01T12-00-00.plist";
    for (const auto& content :
         {std::string("no property list"), PropertyList{PropertyList::Array{}}.toBinary()}) {
        fs::remove_all(folder_);
        write(file_, content);
        std::string told;
        auto defaults = open();
        defaults.onKeptAside = [&](const auto& where, const auto& why) {
            told = where + " " + why;
        };
        defaults.removeObject("absent");
        queue_.runFor(0);
        EXPECT_EQ(read(file_), content) << "nothing was written yet";
        EXPECT_TRUE(defaults.isUnreadable());
        setFlag(defaults, true);
        EXPECT_TRUE(open().boolForKey("flag"));
        EXPECT_EQ(read(kept), content);
        EXPECT_TRUE(told.starts_with(kept + " ") && told.size() > kept.size() + 5) << told;
    }
}

TEST_F(LinuxUserDefaultsTest, aValueThatCannotBeStoredStaysInMemoryAndIsTriedAgain) {
    write(folder_, "a file where the folder should be");
    auto defaults = open();
    setFlag(defaults, true);
    EXPECT_TRUE(defaults.boolForKey("flag"));
    fs::remove(folder_);
    setFlag(defaults, true);
    EXPECT_TRUE(open().boolForKey("flag"));
}

} // namespace
