#include "linux/windows/sway/SwayTree.h"

#include "foundation/Json.h"
#include "foundation/Text.h"

#include <algorithm>
#include <map>
#include <utility>

namespace corvane::sway {
namespace {

/// What is above a node.
struct Surroundings {
    std::string workspace;
    PixelRect workspaceArea;
    bool isScratchpad = false, isFloating = false;
};

PixelRect rectOf(const json::Value& value) {
    const auto number = [&](std::string_view key) { return value.required(key).number(); };
    return {{number("x"), number("y")}, {number("width"), number("height")}};
}

std::string textOf(const json::Value& value, std::string_view key) {
    const auto text = value.optional(key);
    return text ? std::string(text->text()) : std::string();
}

template <typename Number>
Number numberOf(const json::Value& value) {
    const auto number = value.int64();
    if (number < 0 || !std::in_range<Number>(number)) value.fail("out of range");
    return static_cast<Number>(number);
}

class TreeReader {
public:
    Tree take(const json::Value& root) {
        read(root, {});
        setOwners();
        if (tree_.windows.size() > mostWindows)
            tree_.windows.erase(tree_.windows.begin(), tree_.windows.end() - mostWindows);
        return std::move(tree_);
    }

private:
    void read(const json::Value& node, Surroundings above);
    void readChildren(const json::Value& node, const Surroundings& above);
    void readWindow(const json::Value& node, const Surroundings& above);
    void readHints(const json::Value& node, ManagedWindow& window);
    void setOwners();

    Tree tree_;
    std::map<std::uint32_t, std::uint64_t> byXWindow_;
    /// The X11 window that a window is for.
    std::map<std::uint64_t, std::uint32_t> owners_;
};

void TreeReader::read(const json::Value& node, Surroundings above) {
    const bool isWorkspace = node.required("type").text() == "workspace";
    if (isWorkspace) {
        const auto name = textOf(node, "name");
        above = {name, rectOf(node.required("rect")), name == "__i3_scratch"};
        if (above.isScratchpad) above.workspace.clear();
    }
    // A group of windows may float as one.
    if (node.required("type").text() == "floating_con") above.isFloating = true;
    if (node.optional("pid")) readWindow(node, above);
    const auto first = static_cast<std::ptrdiff_t>(tree_.windows.size());
    readChildren(node, above);
    if (!isWorkspace) return;
    // One that fills the screen is above all others of its workspace, which it covers.
    const auto covering =
        std::stable_partition(tree_.windows.begin() + first, tree_.windows.end(),
                              [](const TreeWindow& each) { return !each.window.isFullscreen; });
    if (covering == tree_.windows.end() || !covering->window.isOnScreen) return;
    for (auto each = tree_.windows.begin() + first; each != covering; ++each)
        each->window.isOnScreen = true;
}

/// Tiled windows are below floating ones, and what had the keyboard last is above the others of its
/// kind.
void TreeReader::readChildren(const json::Value& node, const Surroundings& above) {
    std::map<std::int64_t, std::size_t> recency;
    if (const auto focus = node.optional("focus")) {
        for (const auto& id : focus->elements())
            recency.emplace(id.int64(), recency.size());
    }
    auto tiled = node.required("nodes").elements();
    std::ranges::stable_sort(tiled, std::ranges::greater(), [&](const json::Value& child) {
        const auto found = recency.find(child.required("id").int64());
        return found == recency.end() ? recency.size() : found->second;
    });
    for (const auto& child : tiled)
        read(child, above);
    for (const auto& child : node.required("floating_nodes").elements())
        read(child, above);
}

void TreeReader::readWindow(const json::Value& node, const Surroundings& above) {
    TreeWindow each{.workspaceArea = above.workspaceArea};
    auto& window = each.window;
    window.window.number = numberOf<std::uint64_t>(node.required("id"));
    window.window.process = numberOf<pid_t>(node.required("pid"));
    if (const auto title = node.optional("name")) window.title = title->text();
    // The rectangle is what is below the title bar.
    window.frame = rectOf(node.required("rect"));
    const double titleBar = rectOf(node.required("deco_rect")).size.height;
    window.frame.origin.y -= titleBar;
    window.frame.size.height += titleBar;
    window.workspace = above.workspace;
    window.isMinimized = above.isScratchpad;
    const auto visible = node.optional("visible");
    window.isOnScreen = visible && visible->flag() && !window.isMinimized;
    window.isFullscreen = node.required("fullscreen_mode").int64() != 0;
    window.isTiled = !above.isFloating && !above.isScratchpad;
    window.canBeAskedToClose = true;
    readHints(node, window);
    if (node.required("focused").flag()) tree_.active = window.window.number;

    if (const auto x = node.optional("window")) each.xWindow = numberOf<std::uint32_t>(*x);
    if (each.xWindow) byXWindow_[each.xWindow] = window.window.number;
    tree_.windows.push_back(std::move(each));
}

void TreeReader::readHints(const json::Value& node, ManagedWindow& window) {
    window.hints.applicationId = textOf(node, "app_id");
    window.hints.sandboxId = textOf(node, "sandbox_app_id");
    const auto properties = node.optional("window_properties");
    if (!properties) return;
    window.hints.className = textOf(*properties, "class");
    window.hints.instanceName = textOf(*properties, "instance");
    const auto type = textOf(*properties, "window_type");
    const auto ordinary = {"", "normal", "dialog", "unknown"};
    if (std::ranges::count(ordinary, type) == 0) window.kind = WindowKind::other;
    if (const auto owner = properties->optional("transient_for"))
        owners_[window.window.number] = numberOf<std::uint32_t>(*owner);
}

void TreeReader::setOwners() {
    for (auto& [window, xWindow, area] : tree_.windows) {
        const auto owner = owners_.find(window.window.number);
        const auto found =
            owner == owners_.end() ? byXWindow_.end() : byXWindow_.find(owner->second);
        if (found != byXWindow_.end()) window.owner = found->second;
    }
}

/// Of i3 a floating window is inside of what floats.
void readPlacesBelow(const json::Value& node, PlaceInTree place,
                     std::map<std::uint64_t, PlaceInTree>& places) {
    const auto type = node.required("type").text();
    auto& [arrangement, workspace] = place;
    if (type == "floating_con" && arrangement == Arrangement::tiled)
        arrangement = Arrangement::floating;
    if (type == "workspace") workspace = textOf(node, "name");
    if (workspace == "__i3_scratch") {
        workspace.clear();
        arrangement = Arrangement::scratchpad;
    }
    if (const auto window = node.optional("window"))
        places[numberOf<std::uint32_t>(*window)] = place;
    for (const auto* children : {"nodes", "floating_nodes"})
        for (const auto& child : node.required(children).elements())
            readPlacesBelow(child, place, places);
}

template <typename Read>
auto readAnswer(std::string_view answer, Read&& read)
    -> std::optional<decltype(read(std::declval<json::Value>()))> {
    try {
        // Titles come as the clients gave them.
        const auto text = text::replacingInvalidUtf8(answer);
        const json::Document document(text, "sway");
        return read(document.root());
    } catch (const json::DecodeError&) {
        return std::nullopt;
    }
}

} // namespace

std::optional<Tree> readTree(std::string_view answer) {
    return readAnswer(answer, [](const json::Value& root) { return TreeReader().take(root); });
}

std::optional<std::map<std::uint64_t, PlaceInTree>> readPlaces(std::string_view answer) {
    return readAnswer(answer, [](const json::Value& root) {
        std::map<std::uint64_t, PlaceInTree> places;
        readPlacesBelow(root, {}, places);
        return places;
    });
}

std::optional<std::vector<Monitor>> readMonitors(std::string_view outputs,
                                                 std::string_view workspaces) {
    const auto areas = readAnswer(workspaces, [](const json::Value& root) {
        std::map<std::string, PixelRect, std::less<>> byOutput;
        for (const auto& workspace : root.elements()) {
            if (workspace.required("visible").flag())
                byOutput[textOf(workspace, "output")] = rectOf(workspace.required("rect"));
        }
        return byOutput;
    });
    if (!areas) return std::nullopt;
    return readAnswer(outputs, [&](const json::Value& root) {
        std::vector<Monitor> monitors;
        for (const auto& output : root.elements()) {
            if (!output.required("active").flag()) continue;
            const auto frame = rectOf(output.required("rect"));
            const auto area = areas->find(output.required("name").text());
            monitors.push_back({frame, area == areas->end() ? frame : area->second});
        }
        return monitors;
    });
}

bool readSuccess(std::string_view answer) {
    const auto success = readAnswer(answer, [](const json::Value& root) {
        return std::ranges::all_of(root.elements(), [](const json::Value& each) {
            return each.required("success").flag();
        });
    });
    return success.value_or(false);
}

} // namespace corvane::sway
