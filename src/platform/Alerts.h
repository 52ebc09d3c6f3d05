#pragma once

#include <functional>
#include <string>
#include <vector>

namespace corvane {

enum class AlertStyle { warning = 0, informational = 1, critical = 2 };

/// NSAlert.
struct Alert {
    std::string title = {};
    std::string message = {};
    AlertStyle style = AlertStyle::warning;
    /// Left to right in order of importance: the first is the default button.
    std::vector<std::string> buttons = {};
    /// The title of a checkbox in the accessory view; none where empty.
    std::string checkbox = {};
    /// setHasDestructiveAction: of the first button.
    bool firstButtonIsDestructive = false;

    bool operator==(const Alert&) const = default;
};

struct AlertResponse {
    static constexpr int firstButton = 1000;
    static constexpr int secondButton = 1001;

    /// 1000 for the first button, 1001 for the second, and so on; 0 where the alert went without a
    /// button.
    int button = 0;
    bool checkboxIsOn = false;
};

/// Alert windows. Main thread.
class Alerts {
public:
    virtual ~Alerts() = default;
    /// runModal: returns when the user has answered.
    virtual AlertResponse runModal(const Alert& alert) = 0;
    /// beginSheetModalForWindow: on NSApplication.mainWindow. False, with nothing done, where there
    /// is no main window. Sheets of one window come one after the other.
    virtual bool beginSheet(const Alert& alert, std::function<void(AlertResponse)> completion) = 0;
};

} // namespace corvane
