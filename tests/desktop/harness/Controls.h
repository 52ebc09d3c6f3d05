#pragma once

#include "foundation/Rect.h"

#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

using GDBusConnection = struct _GDBusConnection;

namespace corvane::desktop {

/// What assistive technology says of one element on the screen.
struct Control {
    std::string name;
    /// As AT-SPI names it: "push button", "label", "dialog".
    std::string role;
    bool isEnabled = false;
    /// In screen pixels, from the top left.
    Rect place;
    /// The first of what a window shows: the window itself, where it has a title.
    bool isWindow = false;
    bool hasKeyboard = false;
    /// Where on the bus it is.
    std::string bus = {}, path = {};
};

/// The AT-SPI bus of a session.
class Accessibility {
public:
    /// Throws std::runtime_error where the session has none.
    explicit Accessibility(const std::string& sessionBusAddress);
    ~Accessibility();
    Accessibility(const Accessibility&) = delete;

    /// The named elements that a process shows now, parents before their children.
    std::vector<Control> controls(pid_t pid) const;
    /// Does what an assistive program offers, as "Press", "Toggle" or "SetFocus"; false where the
    /// control offers no such thing, or doesn't do it.
    bool act(const Control& control, const std::string& action) const;
    /// Writes at the start of the first text that a process shows and lets be changed, or makes it
    /// all of it.
    bool write(pid_t pid, const std::string& text, bool isAll = false) const;
    /// The texts of the notifications that have shown themselves since the first call of this, as a
    /// screen reader says them.
    const std::vector<std::string>& announced();

private:
    /// Unnamed ones too.
    std::vector<Control> shownBy(pid_t pid) const;
    void notice(const std::string& bus, const std::string& path);

    std::shared_ptr<GDBusConnection> bus_;
    unsigned listener_ = 0;
    std::vector<std::string> announced_;
};

} // namespace corvane::desktop
