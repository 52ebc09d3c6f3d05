#include "linux/windows/kwin/KWinAgent.h"

#include "foundation/Text.h"
#include "linux/system/FileDescriptor.h"
#include "linux/windows/WaylandSession.h"
#include "linux/windows/kwin/WindowsScript.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <map>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace corvane::kwin {
namespace {

constexpr std::size_t mostBytes = 16 << 20;
constexpr int mostSpares = 4;

/// The identifiers can't end the text that they stand in.
std::string quoted(const std::vector<std::string>& ids) {
    return '"' + text::joined(ids, "\", \"") + '"';
}

std::string written(double number) {
    std::array<char, 32> letters;
    const auto end = std::to_chars(letters.data(), letters.data() + letters.size(), number).ptr;
    return {letters.data(), end};
}

/// A script's name at KWin, which has none twice.
std::string pluginName(const std::string& file, int spare) {
    return file + '-' + std::to_string(spare);
}

/// A file that only this user reads, as long as it lives. Its path is empty where it can't be made.
class ScriptFile {
public:
    explicit ScriptFile(std::string_view text) {
        const char* folder = std::getenv("XDG_RUNTIME_DIR");
        if (!folder || *folder != '/') return;
        constexpr std::string_view ending = ".js";
        std::string path = std::string(folder) + "/corvane-XXXXXX" + std::string(ending);
        const FileDescriptor file(::mkostemps(path.data(), ending.size(), O_CLOEXEC));
        if (!file) return;
        path_ = path;
        while (!text.empty()) {
            const ssize_t written = ::write(file.get(), text.data(), text.size());
            if (written < 0 && errno != EINTR) break;
            text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
        }
        isWhole_ = text.empty();
    }
    ~ScriptFile() {
        if (!path_.empty()) ::unlink(path_.c_str());
    }
    ScriptFile(const ScriptFile&) = delete;
    bool isWhole() const { return isWhole_; }
    const std::string& path() const { return path_; }

private:
    std::string path_;
    bool isWhole_ = false;
};

/// What the bus sends to the calling thread comes to this context while it lives.
class Context {
public:
    Context() : context_(g_main_context_new()) { g_main_context_push_thread_default(context_); }
    ~Context() {
        while (g_main_context_iteration(context_, FALSE)) {
        }
        g_main_context_pop_thread_default(context_);
        g_main_context_unref(context_);
    }
    Context(const Context&) = delete;

    template <typename IsDone>
    void waitUntil(IsDone&& isDone, Deadline by) {
        while (!isDone() && millisecondsTo(by) > 0) {
            GSource* const source = g_timeout_source_new(static_cast<guint>(millisecondsTo(by)));
            g_source_set_callback(
                source, [](gpointer) -> gboolean { return G_SOURCE_REMOVE; }, nullptr, nullptr);
            g_source_attach(source, context_);
            g_main_context_iteration(context_, TRUE);
            g_source_destroy(source);
            g_source_unref(source);
        }
    }

private:
    GMainContext* const context_;
};

GDBusInterfaceInfo* answerInterface() {
    static GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(
        "<node><interface name='app.corvane.Answer'><method name='Tell'>"
        "<arg type='s' direction='in'/></method></interface></node>",
        nullptr);
    return node->interfaces[0];
}

/// Takes the answer at an object of its own, so that one to an earlier question finds nobody.
class Ear {
public:
    Ear(GDBusConnection* bus, std::string path, std::string speaker)
        : bus_(bus), path_(std::move(path)), speaker_(std::move(speaker)) {
        static const GDBusInterfaceVTable methods{&Ear::told, nullptr, nullptr, {}};
        registration_ = g_dbus_connection_register_object(bus, path_.c_str(), answerInterface(),
                                                          &methods, this, nullptr, nullptr);
    }
    ~Ear() {
        if (registration_) g_dbus_connection_unregister_object(bus_, registration_);
    }
    Ear(const Ear&) = delete;
    const std::optional<std::string>& heard() const { return heard_; }

private:
    static void told(GDBusConnection*, const char* sender, const char*, const char*, const char*,
                     GVariant* parameters, GDBusMethodInvocation* invocation, gpointer self) {
        auto& ear = *static_cast<Ear*>(self);
        const char* text = nullptr;
        g_variant_get(parameters, "(&s)", &text);
        const std::string_view answer(text);
        if (gio::text(sender) == ear.speaker_ && !ear.heard_)
            ear.heard_ = answer.size() <= mostBytes ? answer : std::string_view();
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }

    GDBusConnection* const bus_;
    const std::string path_;
    const std::string speaker_;
    guint registration_ = 0;
    std::optional<std::string> heard_;
};

} // namespace

std::optional<std::string> KWinAgent::find(const std::string& id, Deadline by) {
    return ask("tellOne(" + quoted({id}) + ')', by);
}

std::optional<std::string> KWinAgent::act(const Deed& deed, Deadline by) {
    static const std::map<Deed::Kind, std::string> functions{
        {Deed::Kind::place, "place("},
        {Deed::Kind::setFullscreen, "setFullscreen("},
        {Deed::Kind::setMaximized, "setMaximized("},
        {Deed::Kind::activate, "activate("},
        {Deed::Kind::close, "close("}};
    std::string words = functions.at(deed.kind);
    if (deed.kind == Deed::Kind::close) return ask(words + '[' + quoted(deed.windows) + "])", by);
    words += quoted(deed.windows);
    const auto& [origin, size] = deed.frame;
    if (deed.kind == Deed::Kind::place) {
        for (const double number : {origin.x, origin.y, size.width, size.height})
            words += ", " + written(number);
    } else if (deed.kind != Deed::Kind::activate) {
        words += deed.on ? ", true" : ", false";
    }
    return ask(words + ')', by);
}

std::string KWinAgent::whatToDoFirst(Deadline) {
    return "KWin doesn't answer at the moment.";
}

bool KWinAgent::run(std::int32_t number, Deadline by) {
    for (int tries = 0; tries < 2; ++tries) {
        if (kwin_.call(scripts_ + std::to_string(number), "org.kde.kwin.Script.run", nullptr, by))
            return true;
        scripts_ = scripts_ == "/" ? "/Scripting/Script" : "/";
    }
    return false;
}

std::optional<std::string> KWinAgent::ask(const std::string& question, Deadline by) {
    if (!kwin_.process(by)) return std::nullopt;
    const std::string path = "/app/corvane/question" + std::to_string(++questions_);
    const std::string us = gio::text(g_dbus_connection_get_unique_name(kwin_.bus()));
    const ScriptFile file("const bus = \"" + us + "\", path = \"" + path + "\";\n" +
                          std::string(windowsScript) + "ask(() => " + question + ");\n");
    if (!file.isWhole()) return std::nullopt;

    Context context;
    const Ear ear(kwin_.bus(), path, kwin_.owner());
    std::int32_t number = -1;
    for (int spare = spares_; spare >= 0; --spare)
        number = load(file.path(), spare, by);
    if (number >= 0 && run(number, by))
        context.waitUntil([&] { return ear.heard().has_value(); }, by);
    unload(file.path(), ear.heard().has_value() ? by : Deadline());
    if (!ear.heard()) spares_ = (spares_ + 1) % mostSpares;
    return ear.heard();
}

std::int32_t KWinAgent::load(const std::string& file, int spare, Deadline by) {
    const auto loaded =
        kwin_.call("/Scripting", "org.kde.kwin.Scripting.loadScript",
                   g_variant_new("(ss)", file.c_str(), pluginName(file, spare).c_str()), by);
    std::int32_t number = -1;
    if (loaded) g_variant_get(loaded.get(), "(i)", &number);
    return number;
}

/// Asked for also where no answer came, as KWin may have been stopped in between. Waited for where
/// it can be, as the next script might be taken for one that is going.
void KWinAgent::unload(const std::string& file, Deadline by) {
    for (int spare = spares_; spare >= 0; --spare) {
        GVariant* const name = g_variant_new("(s)", pluginName(file, spare).c_str());
        if (by != Deadline()) {
            kwin_.call("/Scripting", "org.kde.kwin.Scripting.unloadScript", name, by);
            continue;
        }
        g_dbus_connection_call(kwin_.bus(), kwin_.owner().c_str(), "/Scripting",
                               "org.kde.kwin.Scripting", "unloadScript", name, nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr, nullptr);
    }
}

bool KWinAgent::isMaximized(const std::string& id, Deadline by) {
    const auto told =
        kwin_.call("/KWin", "org.kde.KWin.getWindowInfo", g_variant_new("(s)", id.c_str()), by);
    if (!told || !g_variant_is_of_type(told.get(), G_VARIANT_TYPE("(a{sv})"))) return false;
    const CompositorOnBus::Values values(g_variant_get_child_value(told.get(), 0),
                                         &g_variant_unref);
    gint32 horizontally = 0, vertically = 0;
    g_variant_lookup(values.get(), "maximizeHorizontal", "i", &horizontally);
    g_variant_lookup(values.get(), "maximizeVertical", "i", &vertically);
    return horizontally && vertically;
}

} // namespace corvane::kwin
