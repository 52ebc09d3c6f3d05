#include "linux/windows/gnome/GnomeAgent.h"

#include "linux/windows/gnome/GnomeExtension.h"

#include <cmath>
#include <thread>

namespace corvane::gnome {
namespace {

constexpr std::size_t mostBytes = 16 << 20;

/// On the machine's steady clock, which the shell reads too.
std::int64_t microseconds(Deadline by) {
    return std::chrono::duration_cast<std::chrono::microseconds>(by.time_since_epoch()).count();
}

guint64 number(const std::string& id) {
    return g_ascii_strtoull(id.c_str(), nullptr, 10);
}

gint32 pixels(double length) {
    return static_cast<gint32>(std::lround(length));
}

GVariant* numbers(const std::vector<std::string>& ids) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("at"));
    for (const auto& id : ids)
        g_variant_builder_add(&builder, "t", number(id));
    return g_variant_builder_end(&builder);
}

GVariant* frames(const std::vector<std::string>& ids, const PixelRect& frame) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a(tiiii)"));
    for (const auto& id : ids) {
        g_variant_builder_add(&builder, "(tiiii)", number(id), pixels(frame.origin.x),
                              pixels(frame.origin.y), pixels(frame.size.width),
                              pixels(frame.size.height));
    }
    return g_variant_builder_end(&builder);
}

} // namespace

std::optional<std::string> GnomeAgent::ask(const std::string& method, GVariant* parameters,
                                           Deadline by) {
    const CompositorOnBus::Values sent(
        g_variant_ref_sink(parameters ? parameters : g_variant_new("()")), &g_variant_unref);
    error_.clear();
    if (!shell_.process(by)) return std::nullopt;
    const auto answer = shell_.call("/app/corvane/Windows", "app.corvane.Windows1." + method,
                                    sent.get(), by, &error_);
    if (!answer || !g_variant_is_of_type(answer.get(), G_VARIANT_TYPE("(s)"))) return std::nullopt;
    const char* text = nullptr;
    g_variant_get(answer.get(), "(&s)", &text);
    const std::string_view told(text);
    return told.size() <= mostBytes ? std::optional<std::string>(told) : std::nullopt;
}

std::optional<std::string> GnomeAgent::list(Deadline by) {
    return ask("List", nullptr, by);
}

std::optional<std::string> GnomeAgent::monitors(Deadline by) {
    return ask("Monitors", nullptr, by);
}

std::optional<std::string> GnomeAgent::act(const Deed& deed, Deadline by) {
    const auto end = microseconds(by);
    const auto one = number(deed.windows.front());
    switch (deed.kind) {
    case Deed::Kind::place:
        return ask("Place", g_variant_new("(x@a(tiiii))", end, frames(deed.windows, deed.frame)),
                   by);
    case Deed::Kind::setFullscreen:
        return ask("SetFullscreen", g_variant_new("(xtb)", end, one, deed.on), by);
    case Deed::Kind::setMaximized:
        return ask("SetMaximized", g_variant_new("(xtb)", end, one, deed.on), by);
    case Deed::Kind::activate:
        return ask("Activate", g_variant_new("(xt)", end, one), by);
    case Deed::Kind::close:
        return ask("Close", g_variant_new("(x@at)", end, numbers(deed.windows)), by);
    }
    return std::nullopt;
}

std::string GnomeAgent::whatToDoFirst(Deadline by) {
    return whyExtensionIsSilent(shell_, error_, by);
}

std::string GnomeAgent::switchOn(Deadline by) {
    constexpr auto pause = std::chrono::milliseconds(20);
    constexpr auto toSayWhy = std::chrono::milliseconds(200);
    const bool isAsked = shell_.process(by) && enableExtension(shell_, by);
    bool isOn = monitors(by).has_value();
    while (isAsked && !isOn && std::chrono::steady_clock::now() + pause + toSayWhy < by) {
        std::this_thread::sleep_for(pause);
        isOn = monitors(by).has_value();
    }
    if (!isOn) return whatToDoFirst(by);
    return "Corvane's extension for GNOME Shell is on: Corvane can see and place windows now.";
}

} // namespace corvane::gnome
