#include "fuzz/Fuzz.h"
#include "linux/windows/AgentAnswers.h"

/// Any process of the session can load scripts that answer in ours' place, and any client's words
/// stand in the answers. Whatever comes of one, it is no more than is allowed.
void feed(std::string_view text) {
    const auto told = corvane::readWindows(text);
    expect(!told || told->windows.size() <= corvane::mostWindows);
    expect(!told || told->stacking.size() == told->windows.size());
    corvane::readMonitors(text);
}
