#pragma once

#include "platform/Alerts.h"
#include "qt/toolkit/ModalWindows.h"

#include <QObject>
#include <deque>
#include <memory>
#include <vector>

class QQmlEngine;
class QQuickWindow;

namespace corvane {

class MainWindows;

/// Alerts as windows of the program, where the user is: over the modal window that asks, or else
/// over its main window, if that is in sight.
class QtAlerts final : public QObject, public Alerts {
public:
    /// Both outlive the alerts.
    QtAlerts(QQmlEngine& engine, const MainWindows& mainWindows);
    ~QtAlerts() override;

    AlertResponse runModal(const Alert& alert) override;
    bool beginSheet(const Alert& alert, std::function<void(AlertResponse)> completion) override;

private:
    struct Sheet {
        Alert alert;
        std::function<void(AlertResponse)> completion;
    };

    /// `answered` is called once, when the window has gone.
    QQuickWindow& show(const Alert& alert, Qt::WindowModality modality,
                       std::function<void(AlertResponse)> answered);
    void showNextSheet();

    QQmlEngine& engine_;
    const MainWindows& mainWindows_;
    ModalWindows up_;
    std::deque<Sheet> sheets_;
    bool sheetIsUp_ = false;
};

} // namespace corvane
