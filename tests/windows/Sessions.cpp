#include "windows/WindowSession.h"

#include <array>
#include <cstdio>
#include <sstream>

namespace corvane {

/// A window system more is a line more.
std::vector<SessionKind> sessionsOfThisMachine() {
    return {{"memory", startMemorySession},
            {"chosen", [] { return startSession(desktop::variable("WINDOW_MANAGER", "openbox")); }},
            {"xfwm4", [] { return startSession("xfwm4"); }},
            {"i3", [] { return startSession("i3"); }},
            {"sway", [] { return startSession("sway"); }},
            {"kwin", [] { return startSession("kwin_wayland"); }},
            {"gnome", [] { return startSession("gnome-shell"); }}};
}

std::vector<std::string> clientWords(const ClientWishes& wishes) {
    const auto number = [](double value) { return std::to_string(int(value)); };
    std::vector<std::string> words{WINDOW_CLIENT, wishes.title};
    for (const auto& size : {wishes.size, wishes.least, wishes.step})
        words.insert(words.end(), {number(size.width), number(size.height)});
    words.push_back(wishes.atClose == ClientWishes::AtClose::ignores ? "ignores" : "closes");
    if (!wishes.dialog.empty()) words.push_back(wishes.dialog);
    return words;
}

std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen((command + " 2>/dev/null").c_str(), "r"),
                                                     pclose);
    std::string output;
    std::array<char, 4096> bytes;
    while (const auto count = fread(bytes.data(), 1, bytes.size(), pipe.get()))
        output.append(bytes.data(), count);
    return output;
}

std::string frameText(const PixelRect& frame) {
    std::ostringstream text;
    text << frame.origin.x << "," << frame.origin.y << " " << frame.size.width << "x"
         << frame.size.height;
    return text.str();
}

} // namespace corvane
