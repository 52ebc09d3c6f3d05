#pragma once

#include "linux/windows/WindowSystem.h"

#include <string_view>

/// What an agent tells, as values. Nothing comes of an answer that isn't formed like that.
namespace corvane {

struct ToldWindow {
    /// The compositor's own, of digits, hexadecimal letters, dashes and braces.
    std::string id = {};
    std::optional<std::string> owner = {};
    /// Without numbers.
    ManagedWindow window = {};
    bool isXClient = false;
    /// An X11 client's number at the X server; 0 where it isn't told.
    std::uint32_t xNumber = 0;
    /// It is about as large as a maximized one, and the agent can't tell whether it is.
    bool mayBeMaximized = false;
};

struct Told {
    /// In the order of their creation, at most `mostWindows`.
    std::vector<ToldWindow> windows;
    /// The same from bottom to top, as indexes.
    std::vector<std::size_t> stacking;
    std::optional<std::string> active;
};

std::optional<Told> readWindows(std::string_view answer);
std::optional<std::vector<Monitor>> readMonitors(std::string_view answer);

} // namespace corvane
