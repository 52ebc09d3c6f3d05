#include "machine/Machine.h"

#include "world/World.h"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include <glib.h>
#include <unistd.h>

namespace corvane::machine {
namespace {

std::string root;

/// Takes away what the test before has installed and recorded.
struct Cleaning : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        const auto folder = place("data/applications");
        for (const auto& name : namesIn(folder)) {
            if (name != "test.viewer.desktop" && name != "test.files.desktop" &&
                name != "test.web.desktop")
                fs::remove_all(folder + "/" + name);
        }
        clearRecords();
    }
};

/// GLib looks at the environment only once, so it is set before any test.
struct Environment : testing::Environment {
    void SetUp() override {
        // A library that complains was asked for something that makes no sense.
        g_log_set_always_fatal(GLogLevelFlags(G_LOG_LEVEL_CRITICAL | G_LOG_FATAL_MASK));
        root = world::makeFolder("corvane-tests");
        world::enter(place("chosen"), {{"debian-xterm"}, {}, "xterm"});
        for (const auto& [name, value] : std::map<std::string, std::string>{
                 {"HOME", place("home")},
                 {"XDG_DATA_HOME", place("data")},
                 {"XDG_CONFIG_HOME", place("config")},
                 {"XDG_RUNTIME_DIR", place("runtime")},
                 {"XDG_DATA_DIRS", place("system") + ":" + place("chosen/share")},
                 {"SHELL", "/bin/bash"},
                 {"LANGUAGE", "de"},
                 {"LANG", "de_DE.UTF-8"}})
            setenv(name.c_str(), value.c_str(), 1);
        makeProgram("bin/recorder", "label=$1; shift\nfile=" + place("records/") +
                                        "$label.$$\nfor word in \"$@\"; do printf '%s|' \"$word\""
                                        "; done > $file.part\nmv $file.part $file\n");
        install("test.viewer", "Viewer", recording("viewer", "%U") + "\nMimeType=text/plain;");
        install("test.files", "Files", recording("files", "%F") + "\nMimeType=inode/directory;");
        install("test.web", "Web", recording("web", "%u"));
        write(place("config/mimeapps.list"), "[Default Applications]\n"
                                             "text/plain=test.viewer.desktop\n"
                                             "inode/directory=test.files.desktop\n"
                                             "x-scheme-handler/http=test.web.desktop\n");
        testing::UnitTest::GetInstance()->listeners().Append(new Cleaning);
    }
    /// What a session's services write last may come while they go.
    void TearDown() override {
        EXPECT_TRUE(comesTrue([] {
            std::error_code error;
            fs::remove_all(root, error);
            return !error;
        }));
    }
};

const auto* const environment = testing::AddGlobalTestEnvironment(new Environment);

} // namespace

std::string place(const std::string& relative) {
    const auto result = fs::path(root) / relative;
    fs::create_directories(result.parent_path());
    return result;
}

void write(const std::string& file, const std::string& content) {
    fs::create_directories(fs::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

std::string makeProgram(const std::string& relative, const std::string& script) {
    const auto file = place(relative);
    write(file, "#!/bin/sh\n" + script);
    fs::permissions(file, fs::perms::owner_all);
    return file;
}

std::string read(const std::string& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

void install(const std::string& id, const std::string& name, const std::string& keys) {
    const auto file = place("data/applications/" + id + ".desktop");
    write(file + ".new", "[Desktop Entry]\nType=Application\nName=" + name + "\n" + keys + "\n");
    fs::rename(file + ".new", file);
}

void uninstall(const std::string& id) {
    fs::remove(place("data/applications/" + id + ".desktop"));
}

std::string recording(const std::string& label, const std::string& fieldCodes) {
    return "Exec=" + place("bin/recorder") + " " + label + " " + fieldCodes;
}

void clearRecords() {
    fs::remove_all(place("records"));
    place("records/any");
}

bool comesTrue(const std::function<bool()>& condition) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (Clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

void comesToShow(const std::string& expected, const std::function<std::string()>& look) {
    std::string last;
    comesTrue([&] { return (last = look()) == expected; });
    EXPECT_EQ(last, expected);
}

std::vector<std::string> records(const std::string& label, std::size_t count) {
    std::vector<std::string> found;
    comesTrue([&] {
        found.clear();
        for (const auto& name : namesIn(place("records"))) {
            if (!name.starts_with(label + ".") || name.ends_with(".part")) continue;
            found.push_back(read(place("records/" + name)));
            if (!found.back().empty()) found.back().pop_back();
        }
        return found.size() >= count;
    });
    std::ranges::sort(found);
    return found;
}

AsOrdinaryUser::AsOrdinaryUser(const std::string& folder) {
    constexpr uid_t nobody = 65534;
    if (geteuid() != 0) return;
    fs::permissions(root, fs::perms(0755));
    EXPECT_EQ(chown(folder.c_str(), nobody, nobody), 0);
    // The saved identity stays root's, which is the way back.
    EXPECT_EQ(setresuid(nobody, nobody, 0), 0);
}

AsOrdinaryUser::~AsOrdinaryUser() {
    uid_t real = 0, effective = 0, saved = 0;
    getresuid(&real, &effective, &saved);
    if (effective != saved) {
        EXPECT_EQ(setresuid(saved, saved, saved), 0);
    }
}

ScopedVariable::ScopedVariable(const std::string& name, const std::string& value) : name_(name) {
    if (const char* present = getenv(name.c_str())) before_ = present;
    setenv(name.c_str(), value.c_str(), 1);
}

ScopedVariable::~ScopedVariable() {
    before_.empty() ? unsetenv(name_.c_str()) : setenv(name_.c_str(), before_.c_str(), 1);
}

} // namespace corvane::machine
