#pragma once

#include <optional>
#include <string>

namespace corvane {

/// The error dictionary of an AppleScript execution.
struct ScriptError {
    /// "NSAppleScriptErrorNumber", "NSAppleScriptErrorMessage"; absent where the dictionary hasn't
    /// them.
    std::optional<int> number;
    std::optional<std::string> message;
    /// The dictionary's description.
    std::string description;
};

struct ScriptOutcome {
    /// A result descriptor came back.
    bool hasResult = false;
    std::optional<ScriptError> error = {};
};

/// NSAppleScript: initWithSource: and executeAndReturnError:. Main thread; returns when the script
/// has ended.
class ScriptEngine {
public:
    virtual ~ScriptEngine() = default;
    /// Nothing where no script can be made of the source. A syntax error is an error of the
    /// outcome, number -2741.
    virtual std::optional<ScriptOutcome> execute(const std::string& source) = 0;
};

} // namespace corvane
