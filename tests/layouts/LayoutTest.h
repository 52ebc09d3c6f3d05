#pragma once

#include "core/StoreScene.h"
#include "layouts/WindowFrame.h"

namespace corvane {

/// A test on a desktop with one display of 1440 by 900, with two running applications.
struct LayoutTest : testing::Test, StoreScene {
    SimulatedScreen& screen = desktop.screen;
    RunningApplication pad = run("Pad", 7);
    RunningApplication mail = run("Mail", 8);

    /// The lines of the log with `part` in them since the last call.
    std::string done(std::string_view part = "") {
        auto lines = std::exchange(desktop.log, {});
        std::erase_if(lines, [&](const auto& line) { return line.find(part) == line.npos; });
        return text::joined(lines, "\n");
    }

    RunningApplication run(const std::string& name, std::int32_t processIdentifier) {
        desktop.running.push_back({.processIdentifier = processIdentifier, .localizedName = name});
        return desktop.running.back();
    }
    /// An ordinary window behind all others. The reference holds until the next one comes.
    SimulatedWindow& open(const RunningApplication& owner, std::int64_t number, const Rect& frame) {
        screen.stack.push_back(
            {.info = windowInfo(owner.processIdentifier, number, *owner.localizedName, frame)});
        return screen.stack.back();
    }
    double elapsed() const { return desktop.queue.now().seconds - SimulatedQueue::start.seconds; }
};

/// "Pad 800x600 at (10, 20); Mail 1440x900 at (0, 0) fullscreen"
std::string describedRecords(const auto& records) {
    std::string text;
    for (const auto& record : records)
        text += (text.empty() ? "" : "; ") + record.appName + " " + describedFrame(record.frame) +
                (record.isFullscreen ? " fullscreen" : "");
    return text;
}

} // namespace corvane
