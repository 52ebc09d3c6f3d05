#include "linux/session/SystemAppearance.h"

#include "linux/system/EventThread.h"

#include <utility>

namespace corvane {

namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto settings = "org.freedesktop.portal.Settings";
constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto colorScheme = "color-scheme";
constexpr unsigned dark = 1;
constexpr unsigned light = 2;

struct Unref {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Variant = std::unique_ptr<GVariant, Unref>;

} // namespace

SystemAppearance::SystemAppearance(EventThread& events) {
    constexpr std::chrono::milliseconds longestWait(100);
    deadline_ = std::chrono::steady_clock::now() + longestWait;
    const BusCall read{portal, portalPath, settings, "Read"};
    events.async([this, &events, read] {
        events.listen(read, [this](std::string_view signal, GVariant* parameters) {
            if (signal == "SettingChanged") change(parameters);
        });
        events.call(read, g_variant_new("(ss)", appearance, colorScheme), [this](GVariant* answer) {
            if (answer) take(Variant(g_variant_get_child_value(answer, 0)).get());
            answered_.set_value();
        });
    });
}

void SystemAppearance::change(GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)"))) return;
    const char* group = nullptr;
    const char* key = nullptr;
    GVariant* value = nullptr;
    g_variant_get(parameters, "(&s&sv)", &group, &key, &value);
    const Variant owner(value);
    if (group == std::string_view(appearance) && key == std::string_view(colorScheme)) take(value);
}

/// The number comes in a variant or in two.
void SystemAppearance::take(GVariant* value) {
    Variant inner(g_variant_ref(value));
    while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT))
        inner.reset(g_variant_get_variant(inner.get()));
    if (!g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_UINT32)) return;
    colorScheme_ = g_variant_get_uint32(inner.get());
    if (!std::exchange(isTold_, true) && told_) told_();
}

void SystemAppearance::whenTold(EventThread& events, std::function<void()> told) {
    events.async([this, told = std::move(told)] {
        told_ = told;
        if (isTold_) told_();
    });
}

std::optional<bool> SystemAppearance::isDark() const {
    answer_.wait_until(deadline_);
    const unsigned scheme = colorScheme_;
    if (scheme != dark && scheme != light) return std::nullopt;
    return scheme == dark;
}

} // namespace corvane
