#pragma once

#include "platform/Alerts.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class MainQueue;

/// Tells of what a start couldn't open, each on a later turn of the main queue: a sheet where there
/// is a main window. The first five of a start come one by one, and what comes after them together,
/// as a list. What is handed over outlives this; scheduled work keeps it.
class LaunchAlerts : public std::enable_shared_from_this<LaunchAlerts> {
public:
    LaunchAlerts(Alerts& alerts, MainQueue& mainQueue) : alerts_(alerts), mainQueue_(mainQueue) {}

    /// Those that are shown from now on are of another start. Any thread, as below.
    void beginStart();
    /// The handler takes the response to an alert that comes on its own.
    void show(Alert alert, std::function<void(int response)> handler);

private:
    void present(const Alert& alert, const std::function<void(int response)>& handler);
    void showOthers();
    void ask(const Alert& alert, const std::function<void(AlertResponse)>& answered);

    Alerts& alerts_;
    MainQueue& mainQueue_;
    /// How many more of the start come one by one; as many as there are where none has begun.
    std::optional<int> left_;
    /// A line for each that waits to be shown in the list.
    std::vector<std::string> others_;
    /// The list is due, or up.
    bool othersAreComing_ = false;
};

} // namespace corvane
