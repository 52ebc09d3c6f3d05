#pragma once

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
        install("test.eyes", "Eyes", "Name[de]=Augen\nExec=xeyes");
    }
    void TearDown() override { uninstall("test.eyes"); }

    bool lists(std::size_t count) {
        return comesTrue([&] { return running_.list().size() == count; });
    }

    InstalledApplications installed_;
    x11::X11WindowSystem system_;
    RecentWindows recent_{system_};
    LaunchedApplications launched_;
    RunningApplications running_{installed_, recent_, launched_};
    Quitting quitting_{system_, running_, {}};
};

} // namespace corvane::machine
