#include "qt/simulated/Pictures.h"

#include "qt/simulated/Contrast.h"
#include "qt/toolkit/MainWindows.h"
#include "shell/CorvaneApp.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QImage>
#include <QKeyEvent>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <functional>
#include <utility>
#include <vector>

namespace corvane {
namespace {

/// A picture is taken once the window stands still, or, as a spinner never does, after that many
/// looks. What a step needs may come later, up to so many tries.
constexpr int pauseInMilliseconds = 150;
constexpr int mostLooks = 8;
constexpr int mostTries = 60;

/// The first element of that name that can do something, in the newest window that shows one;
/// inside the element named `inside`, if there is such a name.
QAccessibleActionInterface* findIn(QAccessibleInterface* in, const QString& name,
                                   const QString& inside) {
    if (!in || !in->isValid() || in->state().invisible) return nullptr;
    const bool isWhole = !inside.isEmpty() && in->text(QAccessible::Name) == inside;
    if (inside.isEmpty() && in->text(QAccessible::Name) == name && in->actionInterface())
        return in->actionInterface();
    for (int i = 0; i < in->childCount(); ++i) {
        if (auto* found = findIn(in->child(i), name, isWhole ? QString() : inside)) return found;
    }
    return nullptr;
}

class Walk final : public QObject {
public:
    Walk(const PictureOrder& order, CorvaneApp& app, MainWindows& windows)
        : QObject(qApp), order_(order), app_(app), windows_(windows) {
        plan();
        connect(&timer_, &QTimer::timeout, this, &Walk::goOn);
        timer_.start(pauseInMilliseconds);
    }

private:
    struct Step {
        /// Of the picture that is taken once the step is done; none where it is empty.
        QString picture;
        std::function<bool()> act;
    };

    void plan() {
        const auto press = [](const char* name, const char* inside = "",
                              const char* action = "Press") {
            return [=] { return act(action, name, inside); };
        };
        const auto key = [this](int code, const char* text = "") {
            return [=, this] { return typeKey(code, text); };
        };
        auto& store = app_.workspaceStore();
        steps_ = {
            {"tour", [this] { return prepareWindow() && find("Next", ""); }},
            {"tour, later", press("Next")},
            {"list", [this] { return act("Press", "Skip", "") && takeKeyboard(); }},
            {"expanded", press("Resources", "Writing")},
            {"menu of a row", press("More", "plan.md", "ShowMenu")},
            {"", key(Qt::Key_Escape)},
            {"removed", press("Remove", "Archive")},
            {"", press("Resources", "Writing")},
            {"starting", press("Start", "Writing")},
            {"running", [this] { return find("Finish", "Writing") != nullptr; }},
            {"menu", press("More", "Writing", "ShowMenu")},
            {"", key(Qt::Key_Escape)},
            {"finish", press("Finish", "Writing")},
            {"", press("Cancel")},
            {"new workspace", press("New Workspace")},
            {"", press("Cancel")},
            {"settings", press("Settings")},
            {"", press("Done")},
            {"", press("Resources", "Design")},
            {"add", press("Add Resource", "Design")},
            {"add address", press("Url", "Add New Resource")},
            {"", press("Cancel")},
            {"", press("Search workspaces...", "", "SetFocus")},
            {"no match", key(Qt::Key_Q, "q")},
            {"", key(Qt::Key_Escape)},
            {"no workspaces",
             [&store] {
                 while (!store.workspaces->empty())
                     store.deleteWorkspace(store.workspaces->front().id);
                 return true;
             }},
        };
    }

    bool prepareWindow() {
        auto* window = windows_.front();
        if (!window) return false;
        window->setMinimumSize({});
        window->resize(order_.windowSize);
        return true;
    }

    void goOn() {
        if (++looks_ < mostLooks && !standsStill()) return;
        if (!due_.isEmpty()) take(due_);
        looks_ = 0;
        last_ = {};
        if (next_ == steps_.size()) {
            timer_.stop();
            QCoreApplication::exit(isGood_ ? 0 : 1);
            return;
        }
        const auto& step = steps_[next_];
        due_.clear();
        const bool isDone = step.act();
        if (!isDone && ++tries_ < mostTries) return;
        if (!isDone) complain("the step before the picture \"" + step.picture + "\" failed");
        due_ = step.picture;
        tries_ = 0;
        ++next_;
    }

    bool standsStill() {
        QList<QImage> now;
        for (auto* window : QGuiApplication::topLevelWindows()) {
            auto* view = qobject_cast<QQuickWindow*>(window);
            if (view && view->isVisible()) now.append(view->grabWindow());
        }
        return std::exchange(last_, now) == now && !now.isEmpty();
    }

    void take(const QString& name) {
        int number = 0;
        for (auto* window : QGuiApplication::topLevelWindows()) {
            auto* view = qobject_cast<QQuickWindow*>(window);
            if (!view || !view->isVisible()) continue;
            const auto file = name + (number++ ? QString::number(number) : QString());
            if (!view->grabWindow().save(order_.folder + "/" + file + ".png"))
                complain("no picture \"" + file + "\"");
            for (const auto& text : faintTexts(*view))
                complain(file + ": " + text);
        }
    }

    static QAccessibleActionInterface* find(const QString& name, const QString& inside) {
        for (auto* window : QGuiApplication::topLevelWindows()) {
            if (!window->isVisible()) continue;
            auto* root = QAccessible::queryAccessibleInterface(window);
            if (auto* found = findIn(root, name, inside)) return found;
        }
        return nullptr;
    }

    static bool act(const QString& action, const QString& name, const QString& inside) {
        auto* found = find(name, inside);
        if (!found || !found->actionNames().contains(action)) return false;
        found->doAction(action);
        return true;
    }

    bool takeKeyboard() {
        windows_.giveKeyboard(*windows_.front());
        return true;
    }

    bool typeKey(int code, const QString& text) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, Qt::NoModifier, text);
            QCoreApplication::sendEvent(windows_.front(), &event);
        }
        return true;
    }

    void complain(const QString& what) {
        std::printf("%s\n", qPrintable(what));
        isGood_ = false;
    }

    PictureOrder order_;
    CorvaneApp& app_;
    MainWindows& windows_;
    std::vector<Step> steps_;
    std::size_t next_ = 0;
    QString due_;
    int looks_ = 0;
    int tries_ = 0;
    QList<QImage> last_;
    QTimer timer_;
    bool isGood_ = true;
};

} // namespace

void takePictures(const PictureOrder& order, CorvaneApp& app, MainWindows& windows) {
    QAccessible::setActive(true);
    new Walk(order, app, windows);
}

} // namespace corvane
