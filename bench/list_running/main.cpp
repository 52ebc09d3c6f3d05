#include "linux/installed/InstalledApplications.h"
#include "linux/running/LaunchedApplications.h"
#include "linux/running/RunningApplications.h"
#include "linux/windows/WindowSystems.h"

#include <cstdio>

using namespace corvane;

/// Lists the running applications of the display once, a line each, as `wmctrl -lp` lists windows.
int main() {
    InstalledApplications installed;
    const auto system = windowSystemHere();
    LaunchedApplications launched;
    for (const auto& application : RunningApplications(installed, *system, launched).list()) {
        std::printf("%d %d %s\n", application.processIdentifier, application.activationPolicy,
                    application.localizedName.value_or("").c_str());
    }
}
