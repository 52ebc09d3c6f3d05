#include "linux/windows/AgentAnswers.h"

#include "foundation/Diagnostics.h"
#include "foundation/Json.h"
#include "foundation/Text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace corvane {
namespace {

PixelRect rectOf(const json::Value& value) {
    const auto rect = value.rect();
    return {{rect.x, rect.y}, {rect.width, rect.height}};
}

std::string idOf(const json::Value& value) {
    const auto text = value.text();
    if (text.empty() || text.find_first_not_of("0123456789abcdef-{}") != std::string_view::npos)
        value.fail("is no identifier");
    return std::string(text);
}

std::optional<std::string> optionalId(const json::Value& value, std::string_view key) {
    const auto id = value.optional(key);
    return id ? std::optional(idOf(*id)) : std::nullopt;
}

WindowKind kindOf(std::string_view name) {
    if (name == "dock") return WindowKind::dock;
    if (name == "desktop") return WindowKind::desktop;
    return name == "ordinary" ? WindowKind::ordinary : WindowKind::other;
}

WindowLayer layerOf(double number) {
    if (number > 0) return WindowLayer::above;
    return number < 0 ? WindowLayer::below : WindowLayer::normal;
}

ToldWindow windowOf(const json::Value& value) {
    const auto text = [&](std::string_view key) { return std::string(value.required(key).text()); };
    const auto flag = [&](std::string_view key) { return value.required(key).flag(); };
    ToldWindow told{.id = idOf(value.required("id")),
                    .owner = optionalId(value, "owner"),
                    .isXClient = flag("isXClient"),
                    .mayBeMaximized = flag("mayBeMaximized")};
    const auto xNumber = value.required("xNumber").int64();
    if (std::in_range<std::uint32_t>(xNumber)) told.xNumber = static_cast<std::uint32_t>(xNumber);
    auto& window = told.window;
    window.window.process = std::max(value.required("pid").int32(), 0);
    window.title = text("title");
    // What a client of Wayland calls itself is its application's id; a class is an X11 client's.
    const auto name = text("resourceClass");
    if (told.isXClient) window.hints = {.instanceName = text("resourceName"), .className = name};
    if (!told.isXClient) window.hints.applicationId = name;
    // A toolkit's program tells its own id beside what it was started as.
    if (const auto own = value.optional("applicationId"); own && !told.isXClient)
        window.hints = {.applicationId = std::string(own->text()), .className = name};
    window.hints.desktopFile = text("desktopFile");
    if (const auto sandbox = value.optional("sandboxId")) window.hints.sandboxId = sandbox->text();
    window.kind = kindOf(value.required("kind").text());
    window.layer = layerOf(value.required("layer").number());
    window.frame = rectOf(value.required("frame"));
    window.workspace = text("workspace");
    window.isOnScreen = flag("isOnScreen");
    window.isMinimized = flag("isMinimized");
    window.isFullscreen = flag("isFullscreen");
    window.isMaximized = flag("isMaximized");
    window.skipsTaskbar = flag("skipsTaskbar");
    window.canBeAskedToClose = flag("closeable");
    return told;
}

template <typename Read>
auto readAnswer(std::string_view answer, Read&& read)
    -> std::optional<decltype(read(std::declval<json::Value>()))> {
    try {
        const auto text = text::replacingInvalidUtf8(answer);
        const json::Document document(text, "the compositor");
        if (const auto error = document.root().optional("error")) error->fail(error->text());
        return read(document.root());
    } catch (const json::DecodeError& error) {
        diagnostic({error.what()});
        return std::nullopt;
    }
}

} // namespace

std::optional<Told> readWindows(std::string_view answer) {
    return readAnswer(answer, [](const json::Value& root) {
        Told told{.windows = {}, .stacking = {}, .active = optionalId(root, "active")};
        std::vector<double> heights;
        for (const auto& value : root.required("windows").elements()) {
            if (told.windows.size() == mostWindows) break;
            told.windows.push_back(windowOf(value));
            heights.push_back(value.required("stacking").number());
        }
        told.stacking.resize(told.windows.size());
        std::iota(told.stacking.begin(), told.stacking.end(), std::size_t(0));
        std::ranges::stable_sort(told.stacking, {}, [&](std::size_t at) { return heights[at]; });
        return told;
    });
}

std::optional<std::vector<Monitor>> readMonitors(std::string_view answer) {
    return readAnswer(answer, [](const json::Value& root) {
        std::vector<Monitor> monitors;
        for (const auto& value : root.required("monitors").elements()) {
            monitors.push_back(
                {rectOf(value.required("frame")), rectOf(value.required("workArea"))});
        }
        return monitors;
    });
}

} // namespace corvane
