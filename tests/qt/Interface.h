#pragma once

#include "core/StoreScene.h"
#include "qt/toolkit/MainWindows.h"
#include "qt/toolkit/QtMainQueue.h"
#include "shell/CorvaneApp.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickWindow>

class QMimeData;

namespace corvane {

/// The program with its real windows on the simulated desktop. What is shown is the newest window;
/// its controls are found by what a screen reader says of them.
struct Interface {
    Interface();
    ~Interface();

    SimulatedDesktop desktop;
    Platform platform;
    QQmlEngine engine;
    QtMainQueue mainQueue;
    MainWindows windows;
    std::unique_ptr<CorvaneApp> app;

    bool isFirstStart = false;
    void open(const std::vector<Workspace>& workspaces);
    WorkspaceStore& store() { return app->workspaceStore(); }

    /// Moves the time, and lets the views follow.
    void runFor(double seconds);
    /// Waits until all that grows or shrinks after a change has done so.
    void settle();
    /// The names of all that is shown, in order, joined by "|".
    std::string shown();
    bool shows(const std::string& name) { return find(name) != nullptr; }
    bool comes(const std::string& name);
    bool isEnabled(const std::string& name, const std::string& inside = "");
    /// Clicks in the middle of a control; false where it isn't shown. Of several it takes the one
    /// inside the element named `inside`, and rather a control than its label.
    bool press(const std::string& name, const std::string& inside = "");
    /// Presses twice at the place where it was before the first press.
    void pressTwice(const std::string& name, const std::string& inside);
    /// Clicks on such a control in each of several elements before the views follow.
    void pressAtOnce(const std::string& name, const std::vector<std::string>& insides);
    /// What comes up where the pointer rests in the middle of an element.
    std::string toolTipOf(const std::string& name);
    /// Does what an assistive program does; gives the names of all actions that the control has.
    std::string act(const std::string& action, const std::string& name,
                    const std::string& inside = "");
    void hold(Qt::Key key);
    void type(const std::string& text);
    /// Writes over what a field has, as an assistive program does.
    void write(const std::string& name, const std::string& text);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void resize(int width, int height);
    /// Turns the wheel over an element, down where the number is above zero.
    void wheel(const std::string& name, int notches);
    QRect placeOf(const std::string& name, const std::string& inside = "");
    /// Each item of the newest window, behind the one that holds it.
    QList<QQuickItem*> items();
    /// What is drawn within an element, or in all of the window, from back to front: texts, symbols
    /// by name, pictures, gradients and surfaces (with their outline), in their colours, and how
    /// faded each is.
    std::string drawn(const std::string& name = "");
    /// The names of the controls of which a part is beyond the left or right edge of the window.
    std::string cut();
    void closeWindow();
    /// Drops what a drag carries in the middle of an element, or leads the drag away from there.
    void drag(
        const QMimeData& data, const std::string& name, bool drops = true,
        const std::function<void()>& meanwhile = [] {});
    bool reach(const std::string& name);
    /// The name of the element that has the keyboard, and what is said of it besides.
    std::string focused(QAccessible::Text kind = QAccessible::Name);
    std::string focusedDescription() { return focused(QAccessible::Description); }

private:
    QAccessibleInterface* find(const std::string& name, const std::string& inside = "");
    std::vector<QAccessibleInterface*> elements();
    void send(QEvent::Type type, const QPoint& place);
};

struct Views : testing::Test, Interface {
    Workspace workspace(const std::string& name, std::vector<Resource> resources = {}) {
        auto made = makeWorkspace(name, name == "Work" ? "What has to be done" : "", "star", {});
        made.resources = std::move(resources);
        return made;
    }
    Resource note() {
        desktop.files.contents["/note.txt"] = "A note";
        return makeResource("note", "/note.txt", ResourceType::file, platform.bundles);
    }
};

} // namespace corvane
