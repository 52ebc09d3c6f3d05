#pragma once

#include "foundation/Uuid.h"
#include "linux/windows/WindowSystem.h"

#include <string_view>

/// What windows.js tells, as values. Nothing comes of an answer that isn't formed like that.
namespace corvane::kwin {

struct ToldWindow {
    Uuid id = {};
    std::optional<Uuid> owner = {};
    /// Without numbers, which KWin doesn't give.
    ManagedWindow window = {};
    bool isXClient = false;
    /// An X11 client's number at the X server; 0 where it isn't told.
    std::uint32_t xNumber = 0;
    /// It is about as large as a maximized one, and KWin doesn't tell scripts whether it is.
    bool mayBeMaximized = false;
};

struct Told {
    /// In the order of their creation, at most `mostWindows`.
    std::vector<ToldWindow> windows;
    /// The same from bottom to top, as indexes.
    std::vector<std::size_t> stacking;
    std::optional<Uuid> active;
};

std::optional<Told> readWindows(std::string_view answer);
std::optional<std::vector<Monitor>> readMonitors(std::string_view answer);

/// As KWin writes it: in braces, in small letters.
std::string kwinText(const Uuid& id);

} // namespace corvane::kwin
