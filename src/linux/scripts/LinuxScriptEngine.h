#pragma once

#include "platform/ScriptEngine.h"

namespace corvane {

class ApplicationOpener;
class LinuxAccessibility;

/// NSAppleScript: interprets the program's own scripts. "Terminal" is the preferred terminal
/// emulator, "System Events" controls the windows of running applications, any other application is
/// an installed or a running one. Main thread.
class LinuxScriptEngine final : public ScriptEngine {
public:
    LinuxScriptEngine(const ApplicationOpener& opener, LinuxAccessibility& accessibility)
        : opener_(opener), accessibility_(accessibility) {}

    std::optional<ScriptOutcome> execute(const std::string& source) override;

private:
    const ApplicationOpener& opener_;
    LinuxAccessibility& accessibility_;
};

} // namespace corvane
