#include "fuzz/Fuzz.h"
#include "linux/windows/sway/SwayTree.h"

/// Any client's words stand in the answers. Whatever comes of one, it is no more than is allowed.
void feed(std::string_view text) {
    const auto tree = corvane::sway::readTree(text);
    expect(!tree || tree->windows.size() <= corvane::mostWindows);
    corvane::sway::readPlaces(text);
    corvane::sway::readMonitors(text, text);
    corvane::sway::readSuccess(text);
}
