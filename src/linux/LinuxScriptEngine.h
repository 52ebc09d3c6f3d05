#pragma once

#include "platform/ScriptEngine.h"

namespace corvane {

class ApplicationOpener;

/// NSAppleScript: interprets the program's own scripts. "Terminal" is the preferred terminal
/// emulator, any other application an installed one. Main thread.
class LinuxScriptEngine final : public ScriptEngine {
public:
    explicit LinuxScriptEngine(const ApplicationOpener& opener) : opener_(opener) {}

    std::optional<ScriptOutcome> execute(const std::string& source) override;

private:
    const ApplicationOpener& opener_;
};

} // namespace corvane
