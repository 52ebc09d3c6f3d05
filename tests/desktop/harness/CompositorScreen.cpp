#include "desktop/harness/CompositorScreen.h"

#include "desktop/harness/Scene.h"
#include "foundation/Text.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>

namespace corvane::desktop {

std::vector<CompositorScreen::Line> CompositorScreen::lines() const {
    std::vector<Line> found;
    for (const auto& line : text::split(told(), '\n')) {
        const auto parts = text::split(line, '\t');
        if (parts.size() < 7) continue;
        found.push_back({.window = {parts[0], pid_t(std::stol(parts[1])), parts[2], parts[6]},
                         .look = parts[3],
                         .isSeen = !parts[4].empty(),
                         .isInFront = !parts[5].empty()});
    }
    return found;
}

CompositorScreen::Line CompositorScreen::find(const Window& window) const {
    for (const auto& line : lines()) {
        if (line.window.id == window.id) return line;
    }
    return {};
}

std::vector<Window> CompositorScreen::windows() const {
    std::vector<Window> found;
    for (const auto& line : lines())
        found.push_back(line.window);
    return found;
}

bool CompositorScreen::isViewable(const Window& window) const {
    return find(window).isSeen;
}

std::string CompositorScreen::look(const Window& window) const {
    return find(window).look;
}

std::string CompositorScreen::front() const {
    const auto all = lines();
    const auto found = std::ranges::find_if(all, &Line::isInFront);
    return found == all.end() ? "" : found->window.title;
}

int CompositorScreen::workspace() const {
    return std::atoi(told().c_str());
}

void CompositorScreen::act(const Window& window, Deed deed) const {
    tell(window, words_.deeds.at(deed));
}

void CompositorScreen::place(const Window& window, const std::string& frame) const {
    const std::regex numbers("(.*),(.*) (.*)x(.*)");
    if (!words_.placement.empty())
        tell(window, std::regex_replace(frame, numbers, words_.placement));
}

void CompositorScreen::savePicture(const std::string& file) const {
    around_.run({"grim", file});
}

std::string CompositorScreen::report(const std::string& before) const {
    const auto file = around_.root + "/report";
    writeFile(file, "#!/bin/sh\n" + before + R"(echo "$WAYLAND_DISPLAY $DISPLAY $XAUTHORITY" >&3)" +
                        "\n");
    std::filesystem::permissions(file, std::filesystem::perms(0755));
    return file;
}

void CompositorScreen::start(const std::vector<std::string>& command) {
    std::string line;
    compositor_ = around_.startServer(command, line);
    std::istringstream words(line);
    for (const auto* name : {"WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY"}) {
        std::string value;
        if (words >> value) around_.set(name, value);
    }
    around_.set("XDG_SESSION_TYPE", "wayland");
}

} // namespace corvane::desktop
