#pragma once

#include "platform/ApplicationObject.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QQmlEngine;
class QQuickWindow;

namespace corvane {

class CorvaneApp;

/// The windows of the program, and its end.
class MainWindows final : public QObject, public ApplicationObject {
public:
    explicit MainWindows(QQmlEngine& engine);
    ~MainWindows() override;

    /// Whom later windows show, and who hears of the program's events. Comes before the first
    /// window; outlives them all.
    void serve(CorvaneApp& app);
    /// What gives the keyboard to a window, by its number and title, where the toolkit alone may
    /// not. Without one the toolkit's request stands alone.
    using Activation = std::function<void(std::uint64_t number, const std::string& title)>;
    void activateWith(Activation activation);
    /// The user started the program again.
    void reopen();
    /// What the windows show is about to go.
    void closeAll();

    /// The first main window that hasn't been closed; null where there is none.
    QQuickWindow* front() const;

    bool isActive() const override;
    bool isRunning() const override;
    void activate() override;
    std::vector<ApplicationWindow> windows() const override;
    void makeKeyAndOrderFront(int windowIdentifier) override;
    void orderFront(int windowIdentifier) override;
    void deminiaturize(int windowIdentifier) override;
    void openMainWindow() override;
    void openEmptyWindow(const std::string& title, const Rect& content) override;
    int openOnboardingWindow(const std::string& title, const Rect& content,
                             std::function<void()> windowWillClose) override;
    void terminate() override;

private:
    struct Window;
    struct Tour;
    QQuickWindow* find(int identifier) const;
    void giveKeyboard(QQuickWindow& window);
    /// Lets a window go once it was closed; a tour is kept.
    void follow(QQuickWindow& window, int identifier);
    void close(int identifier);

    QQmlEngine& engine_;
    CorvaneApp* app_ = nullptr;
    Activation activation_;
    std::vector<std::unique_ptr<Window>> windows_;
    std::map<int, std::unique_ptr<QQuickWindow>> emptyWindows_;
    std::map<int, std::unique_ptr<Tour>> tours_;
    int lastIdentifier_ = 0;
};

} // namespace corvane
