#pragma once

#include <memory>
#include <string>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

/// Owners for what GLib hands out.
namespace corvane::gio {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using Ref = std::unique_ptr<T, Unref>;

struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};
using Chars = std::unique_ptr<char, Free>;

struct FreeStrings {
    void operator()(char** strings) const { g_strfreev(strings); }
};
using Strings = std::unique_ptr<char*, FreeStrings>;

/// The text, empty for null.
inline std::string text(const char* chars) {
    return chars ? chars : "";
}
inline std::string take(char* chars) {
    return text(Chars(chars).get());
}
/// The message of an error, which it frees.
inline std::string takeMessage(GError* error) {
    const std::string message = error ? error->message : "unknown error";
    g_clear_error(&error);
    return message;
}

} // namespace corvane::gio
