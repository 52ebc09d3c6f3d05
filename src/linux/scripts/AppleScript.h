#pragma once

#include "foundation/Result.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// AppleScript, as far as the program's own scripts use it, as a small tree. Nothing here runs
/// anything.
namespace corvane::applescript {

struct Statement;
using Block = std::vector<Statement>;

struct Application {
    std::string name;
};
/// "window 1" of whatever is being told.
struct Window {
    int index = 1;
};
/// "process" of System Events: a running application by its name.
struct Process {
    std::string name;
};
using Target = std::variant<Application, Window, Process>;

struct Tell {
    Target target;
    Block body;
};
struct Try {
    Block body;
    /// What stands behind "on error"; empty where there is none.
    Block handler;
};
struct Activate {};
struct DoScript {
    std::string command;
};
struct OpenLocation {
    std::string url;
};
/// "make new tab with properties {URL:...}", also as the new value of "current tab".
struct MakeTab {
    std::string url;
};

/// "click button 2 of window 1"
struct Click {
    int button = 1;
    int window = 1;
};
/// "keystroke "f" using {control down, command down}"
struct Keystroke {
    std::string text;
    /// "command", "control", "option" or "shift", as they stand.
    std::vector<std::string> modifiers;
};

struct Statement {
    std::variant<Tell, Try, Activate, DoScript, OpenLocation, MakeTab, Click, Keystroke> action;
};

/// Reads a whole script, or says like AppleScript what is wrong first: `Expected end of line but
/// found identifier.` Bytes inside a text are taken as they are. Depth is limited, so no source
/// exhausts the stack.
Result<Block> parse(std::string_view source);

} // namespace corvane::applescript
