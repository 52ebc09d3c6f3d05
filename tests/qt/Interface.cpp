#include "qt/Interface.h"

#include "qt/toolkit/Views.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QTest>

namespace corvane {

namespace {

Platform withWindows(SimulatedDesktop& desktop, MainWindows& windows) {
    const auto given = desktop.platform();
    return {{given.mainQueue, given.alerts, windows, given.statusBar, given.images,
             given.appearance, given.panels},
            given};
}

void collect(QAccessibleInterface* element, std::vector<QAccessibleInterface*>& found) {
    if (!element || !element->isValid() || element->state().invisible) return;
    found.push_back(element);
    for (int i = 0; i < element->childCount(); ++i)
        collect(element->child(i), found);
}

QList<QQuickItem*> itemsIn(QQuickItem* item) {
    QList<QQuickItem*> found{item};
    for (auto* child : item->childItems())
        found += itemsIn(child);
    return found;
}

/// The newest window that is up.
QQuickWindow* topWindow() {
    QQuickWindow* top = nullptr;
    for (auto* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible()) top = qobject_cast<QQuickWindow*>(window);
    }
    return top;
}

std::string nameOf(QAccessibleInterface* element) {
    return element->text(QAccessible::Name).toStdString();
}

std::string colorOf(const QVariant& value) {
    const auto color = value.value<QColor>();
    if (color.alpha() == 0) return "";
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb).toStdString();
}

std::string pictureOf(const QQuickItem& item) {
    const auto own = [&](const char* property) { return item.property(property); };
    const auto words = [&](const char* property) { return own(property).toString().toStdString(); };
    if (item.inherits("QQuickText")) {
        if (words("text").empty()) return "";
        const auto symbol = words("symbol");
        return (symbol.empty() ? words("text") : "[" + symbol + "]") + " " + colorOf(own("color"));
    }
    if (item.inherits("QQuickImage")) {
        const auto source = own("source").toUrl().toString().toStdString();
        return source.empty() ? "" : "<" + source + ">";
    }
    if (item.inherits("corvane::GradientSquare"))
        return colorOf(own("from")) + ">" + colorOf(own("to"));
    if (!item.inherits("QQuickRectangle")) return "";
    const auto* border = own("border").value<QObject*>();
    // One that nobody has asked for is black.
    const auto outline =
        border && border->property("width").toInt() > 0 ? colorOf(border->property("color")) : "";
    const bool isOutlined = !outline.empty() && outline != "#000000";
    return colorOf(own("color")) + (isOutlined ? "/" + outline : "");
}

} // namespace

Interface::Interface() : platform(withWindows(desktop, windows)), windows(engine, mainQueue) {
    addViews(engine);
}

Interface::~Interface() {
    windows.closeAll();
    // What a list has put aside may still move, which it can't without the engine.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Interface::open(const std::vector<Workspace>& workspaces) {
    if (!isFirstStart) desktop.defaults["HasCompletedOnboarding"] = {true};
    desktop.files.contents[workspacesPath] = encodeWorkspaces(workspaces);
    app = std::make_unique<CorvaneApp>(platform);
    windows.serve(*app);
    windows.openMainWindow();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(windows.front()));
    runFor(0);
}

void Interface::runFor(double seconds) {
    desktop.runFor(seconds);
    QTest::qWait(0);
    // Layouts and positioners take their turn before a frame, which nothing asks for here.
    if (auto* top = topWindow()) top->grabWindow();
}

void Interface::settle() {
    const auto moves = [](const QQuickItem* item) {
        return std::ranges::any_of(item->children(), [](const QObject* each) {
            const auto* animation = each->property("animation").value<QObject*>();
            return animation && animation->property("running").toBool();
        });
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::ranges::none_of(items(), moves); }));
    runFor(0);
}

QList<QQuickItem*> Interface::items() {
    return itemsIn(topWindow()->contentItem());
}

std::vector<QAccessibleInterface*> Interface::elements() {
    std::vector<QAccessibleInterface*> found;
    if (auto* top = topWindow()) collect(QAccessible::queryAccessibleInterface(top), found);
    return found;
}

QAccessibleInterface* Interface::find(const std::string& name, const std::string& inside) {
    const auto all = elements();
    const auto fits = [&](QAccessibleInterface* element) {
        return inside.empty() || std::ranges::any_of(all, [&](auto* whole) {
                   return nameOf(whole) == inside && whole->rect().contains(element->rect());
               });
    };
    QAccessibleInterface* label = nullptr;
    for (auto* element : all) {
        if (nameOf(element) != name || !fits(element)) continue;
        if (element->role() != QAccessible::StaticText) return element;
        if (!label) label = element;
    }
    return label;
}

std::string Interface::shown() {
    std::string names;
    for (auto* element : elements()) {
        const auto name = nameOf(element);
        if (!name.empty()) names += (names.empty() ? "" : "|") + name;
    }
    return names;
}

bool Interface::comes(const std::string& name) {
    return QTest::qWaitFor([&] {
        runFor(0);
        return shows(name);
    });
}

void Interface::resize(int width, int height) {
    windows.front()->setMinimumSize({});
    windows.front()->resize(width, height);
    runFor(0);
    runFor(0);
}

void Interface::wheel(const std::string& name, int notches) {
    auto* top = topWindow();
    const QPointF place = placeOf(name).center();
    constexpr int notch = 120;
    QWheelEvent event(place, top->mapToGlobal(place), {}, {0, -notch * notches}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(top, &event);
    runFor(0);
}

QRect Interface::placeOf(const std::string& name, const std::string& inside) {
    auto* element = find(name, inside);
    if (!element) return {};
    const auto place = element->rect();
    return {topWindow()->mapFromGlobal(place.topLeft()), place.size()};
}

std::string Interface::drawn(const std::string& name) {
    const QRectF place = name.empty() ? QRectF({}, topWindow()->size()) : placeOf(name);
    std::string all;
    const std::function<void(const QQuickItem&, double)> look = [&](const auto& item,
                                                                    double shown) {
        shown *= item.opacity();
        if (!item.isVisible() || shown == 0) return;
        const auto where = item.mapRectToScene({0, 0, item.width(), item.height()});
        const auto picture = pictureOf(item);
        if (!picture.empty() && place.contains(where.center())) {
            const auto percent = std::lround(100 * shown);
            all += picture + (percent == 100 ? "" : " " + std::to_string(percent) + "%") + "; ";
        }
        for (const auto* child : item.childItems())
            look(*child, shown);
    };
    look(*topWindow()->contentItem(), 1);
    return all;
}

std::string Interface::cut() {
    const auto window = topWindow()->geometry();
    std::string names;
    for (auto* element : elements()) {
        const auto place = element->rect();
        const bool isWhole = place.left() >= window.left() && place.right() <= window.right();
        if (element->actionInterface() && !isWhole) names += nameOf(element) + "|";
    }
    return names;
}

void Interface::closeWindow() {
    topWindow()->close();
    runFor(0);
}

bool Interface::isEnabled(const std::string& name, const std::string& inside) {
    auto* element = find(name, inside);
    return element && !element->state().disabled;
}

bool Interface::press(const std::string& name, const std::string& inside) {
    const auto place = placeOf(name, inside);
    if (place.isEmpty()) return false;
    QTest::mouseClick(topWindow(), Qt::LeftButton, Qt::NoModifier, place.center());
    runFor(0);
    return true;
}

void Interface::send(QEvent::Type type, const QPoint& place) {
    auto* top = topWindow();
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, top->mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(top, &event);
}

void Interface::pressTwice(const std::string& name, const std::string& inside) {
    const auto place = placeOf(name, inside).center();
    QTest::mouseClick(topWindow(), Qt::LeftButton, Qt::NoModifier, place);
    runFor(0);
    for (const auto type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease})
        send(type, place);
    runFor(0);
}

void Interface::pressAtOnce(const std::string& name, const std::vector<std::string>& insides) {
    for (const auto& inside : insides) {
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            send(type, placeOf(name, inside).center());
    }
    runFor(0);
}

std::string Interface::toolTipOf(const std::string& name) {
    auto* top = topWindow();
    if (placeOf(name).isEmpty()) return "";
    QTest::mouseMove(top, placeOf(name).center());
    std::string text;
    const auto look = [&] {
        for (const auto* item : items()) {
            for (auto* child : item->children()) {
                if (child->inherits("QQuickToolTip") && child->property("opened").toBool())
                    text = child->property("text").toString().toStdString();
            }
        }
        return !text.empty();
    };
    (void)QTest::qWaitFor(look, 2000);
    return text;
}

std::string Interface::act(const std::string& action, const std::string& name,
                           const std::string& inside) {
    (void)comes(name);
    auto* element = find(name, inside);
    auto* actions = element ? element->actionInterface() : nullptr;
    if (!actions) return "none";
    const auto names = actions->actionNames().join(' ').toStdString();
    actions->doAction(QString::fromStdString(action));
    // It comes a turn later, and some controls wait another one.
    for (int i = 0; i < 3; ++i)
        runFor(0);
    return names;
}

void Interface::hold(Qt::Key key) {
    const auto send = [&](QEvent::Type type, bool isRepeated) {
        QKeyEvent event(type, key, Qt::NoModifier, key == Qt::Key_Space ? " " : "", isRepeated);
        QCoreApplication::sendEvent(topWindow(), &event);
        runFor(0);
    };
    send(QEvent::KeyPress, false);
    for (int i = 0; i < 5; ++i) {
        send(QEvent::KeyRelease, true);
        send(QEvent::KeyPress, true);
    }
    send(QEvent::KeyRelease, false);
}

void Interface::type(const std::string& text) {
    for (const char letter : text)
        QTest::keyClick(topWindow(), letter);
    runFor(0);
}

void Interface::write(const std::string& name, const std::string& text) {
    find(name)->setText(QAccessible::Value, QString::fromStdString(text));
}

void Interface::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(topWindow(), key, modifiers);
    runFor(0);
}

void Interface::drag(const QMimeData& data, const std::string& name, bool drops,
                     const std::function<void()>& meanwhile) {
    auto* top = topWindow();
    const auto place = placeOf(name).center();
    const auto send = [&](QEvent&& event) { QCoreApplication::sendEvent(top, &event); };
    const auto actions = Qt::CopyAction | Qt::MoveAction;
    send(QDragEnterEvent(place, actions, &data, Qt::LeftButton, Qt::NoModifier));
    send(QDragMoveEvent(place, actions, &data, Qt::LeftButton, Qt::NoModifier));
    runFor(0);
    meanwhile();
    drops ? send(QDropEvent(place, actions, &data, Qt::LeftButton, Qt::NoModifier))
          : send(QDragLeaveEvent());
    runFor(0);
}

bool Interface::reach(const std::string& name) {
    constexpr int most = 60;
    for (int i = 0; i < most; ++i) {
        if (focused() == name) return true;
        key(Qt::Key_Tab);
    }
    return false;
}

std::string Interface::focused(QAccessible::Text kind) {
    for (auto* element : elements()) {
        if (element->state().focused) return element->text(kind).toStdString();
    }
    return "";
}

} // namespace corvane
