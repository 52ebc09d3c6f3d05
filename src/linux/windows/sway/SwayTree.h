#pragma once

#include "linux/windows/WindowSystem.h"

#include <map>
#include <string_view>

/// The answers of sway as values. Nothing comes of an answer that isn't formed as sway's are.
namespace corvane::sway {

struct TreeWindow {
    ManagedWindow window = {};
    /// An X11 client's number at the X server; 0 for others.
    std::uint32_t xWindow = 0;
    /// Of the workspace that it is on.
    PixelRect workspaceArea = {};
};

struct Tree {
    /// Bottom to top, at most `mostWindows`.
    std::vector<TreeWindow> windows;
    std::optional<std::uint64_t> active;
};

/// The answer to `get_tree`. A window in the scratchpad counts as minimized, and is on no
/// workspace.
std::optional<Tree> readTree(std::string_view answer);

enum class Arrangement { tiled, floating, scratchpad };

struct PlaceInTree {
    Arrangement arrangement = Arrangement::tiled;
    std::string workspace = {};
    bool operator==(const PlaceInTree&) const = default;
};

/// The answer of i3 to `get_tree`: X11 windows by their numbers at the X server.
std::optional<std::map<std::uint64_t, PlaceInTree>> readPlaces(std::string_view answer);

/// The answers to `get_outputs` and `get_workspaces`: the outputs that are on, each with what bars
/// leave of it.
std::optional<std::vector<Monitor>> readMonitors(std::string_view outputs,
                                                 std::string_view workspaces);

/// The answer to commands: whether all of them were done.
bool readSuccess(std::string_view answer);

} // namespace corvane::sway
