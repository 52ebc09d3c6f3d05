#pragma once

#include "platform/Accessibility.h"
#include "platform/ApplicationObject.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QPoint;
class QQmlEngine;
class QQuickWindow;
class QWindow;

namespace corvane {

class CorvaneApp;
class QtMainQueue;

/// The windows of the program, and its end.
class MainWindows final : public QObject, public ApplicationObject {
public:
    /// Both outlive the windows.
    MainWindows(QQmlEngine& engine, QtMainQueue& mainQueue);
    ~MainWindows() override;

    /// Whom later windows show, and who hears of the program's events. Comes before the first
    /// window; outlives them all.
    void serve(CorvaneApp& app);
    /// What whoever shows the windows does for one of these, by its number and title.
    struct Door {
        /// Gives it the keyboard, where the toolkit alone may not.
        std::function<void(std::uint64_t number, const std::string& title)> activate = {};
        /// It is known to be iconified or on another workspace than the one that is shown.
        std::function<bool(std::uint64_t number, const std::string& title)> isAway = {};
        /// The corner of its frame, and puts it there: on Wayland the toolkit can do neither. False
        /// where it may be put there at another time.
        std::function<std::optional<Point>(std::uint64_t number, const std::string& title)> corner =
            {};
        std::function<bool(std::uint64_t number, const std::string& title, const Point& corner)>
            moveTo = {};
    };
    /// Without one the toolkit's requests stand alone, and every window counts as on the screen.
    void goThrough(Door door);
    /// The user started the program again, with a token for its window or none.
    void reopen(const std::string& token);
    /// The user's session is about to end, or goes on after all. The layouts are saved at the
    /// first, while the windows of other programs are there, and then not again at the end.
    void sessionWillEnd();
    void sessionGoesOn() { isSaved_ = false; }
    /// What the windows show is about to go.
    void closeAll();

    /// The first main window that hasn't been closed; null where there is none.
    QQuickWindow* front() const;
    /// What another window may belong to without being hidden with it.
    bool isInSight(const QWindow& window) const;
    /// For a window that is shown.
    void giveKeyboard(QWindow& window) const;

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
    void endWithLastWindow();
    std::string rememberedPlace() const;
    void rememberPlace(const QWindow& window);
    void moveOnceShown(QQuickWindow& window, const QPoint& corner);
    void move(QQuickWindow& window, const QPoint& corner, int tries);
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Lets a window go once it was closed; a tour is kept.
    void follow(QQuickWindow& window, int identifier);
    void close(int identifier);

    QQmlEngine& engine_;
    QtMainQueue& mainQueue_;
    CorvaneApp* app_ = nullptr;
    Door door_;
    std::vector<std::unique_ptr<Window>> windows_;
    std::map<int, std::unique_ptr<QQuickWindow>> emptyWindows_;
    std::map<int, std::unique_ptr<Tour>> tours_;
    int lastIdentifier_ = 0;
    bool isSaved_ = false;
    /// The X11 session manager has asked for all that is to be kept. Whether the session goes on
    /// then isn't told; what comes if it doesn't is an event that ends the program.
    bool isCommitted_ = false;
};

} // namespace corvane
