#pragma once

#include "platform/ApplicationObject.h"

#include <QObject>
#include <memory>
#include <vector>

class QQmlEngine;
class QQuickWindow;

namespace corvane {

class CorvaneApp;

/// The main windows of the program, and its end.
class MainWindows final : public QObject, public ApplicationObject {
public:
    explicit MainWindows(QQmlEngine& engine);
    ~MainWindows() override;

    /// Whom later windows show, and who hears of the program's end. Comes before the first window;
    /// outlives them all.
    void serve(CorvaneApp& app);
    /// What the windows show is about to go.
    void closeAll();

    /// The first main window that hasn't been closed; null where there is none.
    QQuickWindow* front() const;

    std::vector<ApplicationWindow> windows() const override;
    void bringToFront(int windowIdentifier) override;
    void openMainWindow() override;
    void terminate() override;

private:
    struct Window;
    void close(int identifier);

    QQmlEngine& engine_;
    CorvaneApp* app_ = nullptr;
    std::vector<std::unique_ptr<Window>> windows_;
    int lastIdentifier_ = 0;
};

} // namespace corvane
