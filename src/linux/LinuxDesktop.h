#pragma once

#include "platform/Platform.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

class EventThread;

/// The desktop that is there: its windows, freedesktop entries, processes, files. Everything is
/// found through the environment of this process.
class LinuxDesktop {
public:
    /// All outlive the desktop.
    LinuxDesktop(MainQueue& mainQueue, Alerts& alerts, EventThread& events);
    /// Waits for background work.
    ~LinuxDesktop();

    /// Valid while the desktop lives.
    Machine machine();

    /// Gives the keyboard to a window of this program, even where it would be kept where it is.
    /// The number is the toolkit's; where the display has others, the title tells.
    void activateOwnWindow(std::uint64_t number, const std::string& title);
    /// Such a window is iconified or on another workspace than the one that is shown. False also
    /// where that can't be told.
    bool isOwnWindowAway(std::uint64_t number, const std::string& title);
    /// Where the corner of its frame is, and puts it there, or as near as its monitor allows: in
    /// the window system's own space, which isn't always the toolkit's, y downward. False where
    /// that may come true at another time, as the window isn't there yet or nobody answers.
    std::optional<Point> cornerOfOwnWindow(std::uint64_t number, const std::string& title);
    bool moveOwnWindow(std::uint64_t number, const std::string& title, const Point& corner);
    /// A later start of the program has ended in this process's windows: whoever started it stops
    /// telling that it starts.
    void endLaunch(const std::string& token);

private:
    struct Facilities;
    std::unique_ptr<Facilities> facilities_;
};

} // namespace corvane
