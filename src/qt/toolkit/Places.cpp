#include "qt/toolkit/Places.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <sstream>

namespace corvane {

namespace {

QRect movedInside(QRect place, const QRect& area) {
    place.moveRight(std::min(place.right(), area.right()));
    place.moveBottom(std::min(place.bottom(), area.bottom()));
    place.moveLeft(std::max(place.left(), area.left()));
    place.moveTop(std::max(place.top(), area.top()));
    return place;
}

constexpr auto maximized = " maximized";

/// The one that shows most of it; the primary one where none does.
const QScreen* nearestScreen(const QRect& place) {
    const QScreen* nearest = QGuiApplication::primaryScreen();
    int most = 0;
    for (const auto* screen : QGuiApplication::screens()) {
        const auto part = screen->geometry().intersected(place);
        if (part.width() * part.height() <= most) continue;
        most = part.width() * part.height();
        nearest = screen;
    }
    return nearest;
}

} // namespace

void center(QWindow& window, const QWindow* over) {
    const auto* screen = over ? over->screen() : QGuiApplication::screenAt(QCursor::pos());
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const auto area = screen->availableGeometry();
    QRect place(QPoint(), window.size());
    place.moveCenter((over ? over->frameGeometry() : area).center());
    window.setGeometry(movedInside(place, area));
}

std::string placeOf(const QWindow& window, const QPoint& corner, const std::string& before) {
    const auto states = window.windowStates();
    const auto beforeThat = before.substr(0, before.find(maximized));
    if (states & (Qt::WindowMaximized | Qt::WindowFullScreen)) return beforeThat + maximized;
    if (states & Qt::WindowMinimized) return before;
    std::ostringstream text;
    text << corner.x() << " " << corner.y() << " " << window.width() << " " << window.height();
    return text.str();
}

RestoredPlace restorePlace(QWindow& window, const std::string& place) {
    RestoredPlace restored{.isMaximized = place.ends_with(maximized)};
    std::istringstream text(place);
    int x = 0, y = 0, width = 0, height = 0;
    if (text >> x >> y >> width >> height && width > 0 && height > 0) {
        const QRect wish(x, y, width, height);
        const auto* screen = nearestScreen(wish);
        const auto area = screen ? screen->availableGeometry() : wish;
        const auto size = wish.size().boundedTo(area.size()).expandedTo(window.minimumSize());
        window.resize(size);
        const QRect exact(wish.topLeft(), size);
        // Decorations, which nobody knows yet, lie around that.
        constexpr QMargins decorations(8, 0, 8, 40);
        window.setFramePosition(
            area.contains(exact) ? exact.topLeft()
                                 : movedInside(exact, area.marginsRemoved(decorations)).topLeft());
        restored.corner = wish.topLeft();
    }
    return restored;
}

} // namespace corvane
