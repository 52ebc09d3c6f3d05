#pragma once

#include "linux/running/ApplicationOpener.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/Quitting.h"
#include "linux/running/RunningApplications.h"
#include "linux/windows/RecentWindows.h"
#include "linux/windows/x11/X11WindowSystem.h"
#include "machine/XDisplay.h"

namespace corvane::machine {

/// A display with what the machine says of its windows.
class DisplayTest : public testing::Test, protected XDisplay {
protected:
    void SetUp() override {
        startServer("800x600x24");
        startManager(windowManager());
        ASSERT_TRUE(windowsBecome(0));
        std::filesystem::remove(place("emulators/x-terminal-emulator"));
        std::filesystem::create_symlink("/usr/bin/xterm", place("emulators/x-terminal-emulator"));
        install("test.eyes", "Eyes", "Name[de]=Augen\nExec=xeyes");
    }
    void TearDown() override {
        uninstall("test.eyes");
        std::filesystem::remove(place("emulators/x-terminal-emulator"));
    }

    bool lists(std::size_t count) {
        return comesTrue([&] { return running_.list().size() == count; });
    }

    ScopedVariable path_{"PATH", place("emulators") + ":/usr/bin:/bin"};
    InstalledApplications installed_;
    x11::X11WindowSystem system_;
    RecentWindows recent_{system_};
    LaunchedApplications launched_;
    RunningApplications running_{installed_, recent_, launched_};
    /// What the user would be asked, and what "Terminate" does.
    std::vector<std::string> jobsAskedAbout_;
    std::function<void()> terminateJobs_;
    Quitting quitting_{system_, running_, [this](auto names, auto terminate) {
                           jobsAskedAbout_ = std::move(names);
                           terminateJobs_ = std::move(terminate);
                       }};
    ApplicationOpener opener_{
        installed_,
        {.list = [this] { return running_.list(); },
         .activate = [this](const auto& which) { return running_.activate(which); },
         .launched = [this](const auto& application,
                            const auto& processes) { launched_.add(application, processes); }}};
};

} // namespace corvane::machine
