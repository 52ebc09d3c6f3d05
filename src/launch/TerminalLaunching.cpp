#include "foundation/Diagnostics.h"
#include "foundation/Text.h"
#include "launch/ResourceLauncher.h"
#include "platform/MainQueue.h"
#include "platform/ScriptEngine.h"

namespace corvane {

namespace {

/// Nothing is escaped: a double quote in the command breaks the script, and the user is told.
std::string terminalScript(const std::string& shellText) {
    return "tell application \"Terminal\"\n    activate\n    do script \"" + shellText +
           "\"\nend tell";
}

} // namespace

void ResourceLauncher::launchTerminalResource(const Resource& resource) {
    diagnostic({"Executing terminal command: ", resource.path});
    const auto pieces = text::split(resource.path, '|');
    const auto& command = pieces.back();
    const bool hasDirectory = pieces.size() >= 2 && !pieces.front().empty();
    const auto source =
        terminalScript(hasDirectory ? "cd '" + pieces.front() + "' && " + command : command);
    mainQueue_.async(
        [this, self = shared_from_this(), source, command] { runTerminalScript(source, command); });
}

void ResourceLauncher::runTerminalScript(const std::string& source, const std::string& command) {
    const auto outcome = scripts_.execute(source);
    if (!outcome || !outcome->error) return;
    const auto& error = *outcome->error;
    diagnostic({"Failed to execute terminal command: ", error.description});
    showLaunchAlert(
        "Terminal Command Failed",
        "Failed to execute terminal command '" + command +
            "'.\n\nError Code: " + std::to_string(error.number.value_or(-1)) +
            "\nDetails: " + error.message.value_or("Unknown error") +
            "\n\nPossible causes:\n• Terminal.app is not available\n• Command syntax error\n• Permission denied\n• Working directory doesn't exist");
}

} // namespace corvane
