#pragma once

#include "core/StoreScene.h"
#include "layouts/WindowFrame.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace corvane {

/// A test on a desktop with one display of 1440 by 900, with two running applications.
class LayoutTest : public testing::Test, public StoreScene {
protected:
    SimulatedScreen& screen = desktop.screen;
    RunningApplication pad = run("Pad", 7);
    RunningApplication mail = run("Mail", 8);
    DiagnosticLog diagnostics;

    /// The diagnostics with `part` in them since the last call.
    std::string told(std::string_view part = "") { return take(diagnostics.lines, part); }
    /// The same of the desktop's log.
    std::string done(std::string_view part = "") { return take(desktop.log, part); }

    RunningApplication run(const std::string& name, std::int32_t processIdentifier) {
        RunningApplication application;
        application.processIdentifier = processIdentifier;
        application.localizedName = name;
        desktop.running.push_back(application);
        return application;
    }
    /// An ordinary window behind all others. The reference holds until the next one comes.
    SimulatedWindow& open(const RunningApplication& owner, std::int64_t number, const Rect& frame) {
        screen.stack.push_back(
            {.info = windowInfo(owner.processIdentifier, number, *owner.localizedName, frame)});
        return screen.stack.back();
    }
    double elapsed() const { return desktop.queue.now().seconds - SimulatedQueue::start.seconds; }

private:
    static std::string take(std::vector<std::string>& lines, std::string_view part) {
        std::erase_if(lines, [&](const auto& line) { return line.find(part) == line.npos; });
        auto text = text::joined(lines, "\n");
        lines.clear();
        return text;
    }
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
