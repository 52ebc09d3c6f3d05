#include "linux/windows/gnome/GnomeExtension.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace corvane::gnome {
namespace {

constexpr const char* uuid = "windows@corvane.app";
constexpr const char* shellPath = "/org/gnome/Shell";
const std::string extensions = "org.gnome.Shell.Extensions.";

/// Of the shell's states.
constexpr int runs = 1, hasFailed = 3, isOutOfDate = 4;

struct Info {
    /// 0 where the shell doesn't know the extension.
    int state = 0;
    std::string error;
};

std::optional<Info> infoOf(CompositorOnBus& shell, Deadline by) {
    const auto told =
        shell.call(shellPath, extensions + "GetExtensionInfo", g_variant_new("(s)", uuid), by);
    if (!told || !g_variant_is_of_type(told.get(), G_VARIANT_TYPE("(a{sv})"))) return std::nullopt;
    const CompositorOnBus::Values values(g_variant_get_child_value(told.get(), 0),
                                         &g_variant_unref);
    Info info;
    double state = 0;
    const char* error = nullptr;
    if (g_variant_lookup(values.get(), "state", "d", &state))
        info.state = static_cast<int>(std::lround(state));
    if (g_variant_lookup(values.get(), "error", "&s", &error)) info.error = error;
    return info;
}

/// Nothing where the shell doesn't tell, or not in that type.
CompositorOnBus::Values property(CompositorOnBus& shell, const std::string& name,
                                 const GVariantType* type, Deadline by) {
    const auto dot = name.rfind('.');
    const auto told = shell.call(
        shellPath, "org.freedesktop.DBus.Properties.Get",
        g_variant_new("(ss)", name.substr(0, dot).c_str(), name.substr(dot + 1).c_str()), by);
    if (!told || !g_variant_is_of_type(told.get(), G_VARIANT_TYPE("(v)"))) return nullptr;
    GVariant* value = nullptr;
    g_variant_get(told.get(), "(v)", &value);
    const CompositorOnBus::Values owned(value, &g_variant_unref);
    return g_variant_is_of_type(value, type) ? owned : nullptr;
}

bool isInstalled() {
    std::vector<std::string> folders{gio::text(g_get_user_data_dir())};
    for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder)
        folders.emplace_back(*folder);
    return std::ranges::any_of(folders, [](const std::string& folder) {
        const auto file = folder + "/gnome-shell/extensions/" + uuid + "/metadata.json";
        return g_file_test(file.c_str(), G_FILE_TEST_EXISTS) != 0;
    });
}

/// Null where GNOME Shell's settings aren't installed.
gio::Ref<GSettings> shellSettings() {
    constexpr const char* name = "org.gnome.shell";
    GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
    GSettingsSchema* const schema =
        source ? g_settings_schema_source_lookup(source, name, TRUE) : nullptr;
    if (!schema) return nullptr;
    g_settings_schema_unref(schema);
    return gio::Ref<GSettings>(g_settings_new(name));
}

std::vector<std::string> listed(GSettings* settings, const char* key) {
    std::vector<std::string> names;
    const gio::Strings all(g_settings_get_strv(settings, key));
    for (char* const* each = all.get(); *each; ++each)
        names.emplace_back(*each);
    return names;
}

void setListed(GSettings* settings, const char* key, bool isListed) {
    auto names = listed(settings, key);
    if ((std::ranges::count(names, uuid) > 0) == isListed) return;
    if (isListed) names.emplace_back(uuid);
    if (!isListed) std::erase(names, uuid);
    std::vector<const char*> words;
    for (const auto& name : names)
        words.push_back(name.c_str());
    words.push_back(nullptr);
    g_settings_set_strv(settings, key, words.data());
}

bool comesWithNextLogin() {
    const auto settings = shellSettings();
    const auto has = [&](const char* key) {
        return std::ranges::count(listed(settings.get(), key), uuid) > 0;
    };
    return settings && has("enabled-extensions") && !has("disabled-extensions");
}

std::string whyItIsOff(CompositorOnBus& shell, bool isKnown, Deadline by) {
    if (!isKnown && !isInstalled())
        return "Corvane's extension for GNOME Shell isn't installed: it comes with Corvane's package.";
    const auto allowed =
        property(shell, extensions + "UserExtensionsEnabled", G_VARIANT_TYPE_BOOLEAN, by);
    if (allowed && !g_variant_get_boolean(allowed.get()))
        return "GNOME's extensions are all switched off: switch them on in the program Extensions.";
    if (!isKnown && comesWithNextLogin())
        return "Log out and in again: GNOME Shell takes in Corvane's extension when it starts.";
    return "Corvane's extension for GNOME Shell is off: switch on Window Layout Features, or save a layout, and choose Open System Preferences.";
}

} // namespace

std::string whyExtensionIsSilent(CompositorOnBus& shell, const std::string& error, Deadline by) {
    const auto info = error.empty() ? std::nullopt : infoOf(shell, by);
    if (!info) return "GNOME Shell doesn't answer at the moment.";
    if (error == "org.freedesktop.DBus.Error.AccessDenied")
        return "GNOME Shell runs the extension of another Corvane, which answers only to that one.";
    if (info->state == isOutOfDate) {
        const auto version =
            property(shell, "org.gnome.Shell.ShellVersion", G_VARIANT_TYPE_STRING, by);
        return "Corvane's extension isn't made for GNOME Shell " +
               (version ? gio::text(g_variant_get_string(version.get(), nullptr))
                        : "of this version") +
               '.';
    }
    if (info->state == hasFailed)
        return "GNOME Shell can't run Corvane's extension: " + info->error;
    if (info->state == runs)
        return "Log out and in again: GNOME Shell still runs the extension of another version of Corvane.";
    return whyItIsOff(shell, info->state != 0, by);
}

bool enableExtension(CompositorOnBus& shell, Deadline by) {
    const auto asked =
        shell.call(shellPath, extensions + "EnableExtension", g_variant_new("(s)", uuid), by);
    gboolean isEnabled = FALSE;
    if (asked && g_variant_is_of_type(asked.get(), G_VARIANT_TYPE("(b)")))
        g_variant_get(asked.get(), "(b)", &isEnabled);
    if (isEnabled || !asked || !isInstalled()) return isEnabled;
    if (const auto settings = shellSettings()) {
        setListed(settings.get(), "enabled-extensions", true);
        setListed(settings.get(), "disabled-extensions", false);
        g_settings_sync();
    }
    return false;
}

} // namespace corvane::gnome
