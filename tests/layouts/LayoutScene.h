#pragma once

#include "core/StoreScene.h"
#include "foundation/Diagnostics.h"
#include "foundation/Text.h"

#include <string>
#include <vector>

namespace corvane {

/// A desktop with one display of 1440 by 900, its diagnostics kept.
struct LayoutScene : StoreScene {
    LayoutScene() {
        setDiagnosticSink([this](const std::string& line) { diagnostics.push_back(line); });
    }
    ~LayoutScene() { setDiagnosticSink({}); }

    SimulatedScreen& screen = desktop.screen;
    std::vector<std::string> diagnostics;

    /// The lines since the last call, joined by line breaks.
    std::string told() {
        auto lines = text::joined(diagnostics, "\n");
        diagnostics.clear();
        return lines;
    }
    /// The lines of the desktop's log since the last call.
    std::string done() {
        auto lines = desktop.logged();
        desktop.log.clear();
        return lines;
    }

    RunningApplication run(const std::string& name, std::int32_t processIdentifier) {
        RunningApplication application;
        application.processIdentifier = processIdentifier;
        application.localizedName = name;
        desktop.running.push_back(application);
        return application;
    }
    /// An ordinary window behind all others. The reference holds until the next one comes.
    SimulatedWindow& open(const RunningApplication& owner, std::int64_t number, const Rect& frame) {
        screen.stack.push_back({.info = windowInfo(owner.processIdentifier, number,
                                                   owner.localizedName.value_or(""), frame)});
        return screen.stack.back();
    }
    double elapsed() const { return desktop.queue.now().seconds - SimulatedQueue::start.seconds; }
};

/// "Pad 10,20 800x600", with " fullscreen" behind where it is.
inline std::string described(const std::string& appName, const Rect& frame, bool isFullscreen) {
    return appName + " " + text::number(frame.x) + "," + text::number(frame.y) + " " +
           text::number(frame.width) + "x" + text::number(frame.height) +
           (isFullscreen ? " fullscreen" : "");
}

template <typename Record>
std::string describedRecords(const std::vector<Record>& records) {
    std::string text;
    for (const auto& record : records) {
        text += (text.empty() ? "" : "; ") +
                described(record.appName, record.frame, record.isFullscreen);
    }
    return text;
}

} // namespace corvane
