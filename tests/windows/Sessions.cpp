#include "machine/XDisplay.h"
#include "windows/WindowSession.h"

#include <sstream>

namespace corvane {

/// A window system more is a line more.
std::vector<SessionKind> sessionsOfThisMachine() {
    return {{"memory", startMemorySession},
            {"chosen", [] { return startX11Session(machine::windowManager()); }},
            {"xfwm4", [] { return startX11Session({"xfwm4"}); }}};
}

std::string frameText(const PixelRect& frame) {
    std::ostringstream text;
    text << frame.origin.x << "," << frame.origin.y << " " << frame.size.width << "x"
         << frame.size.height;
    return text.str();
}

} // namespace corvane
