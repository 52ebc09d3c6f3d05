#include "qt/toolkit/QtAppearance.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

namespace corvane {

QtAppearance::QtAppearance(Preference prefersDark) : prefersDark_(std::move(prefersDark)) {
    const auto changed = [this] { screensChange_.fire(); };
    const auto follow = [this, changed](QScreen* screen) {
        connect(screen, &QScreen::geometryChanged, this, changed);
        connect(screen, &QScreen::logicalDotsPerInchChanged, this, changed);
    };
    for (auto* screen : QGuiApplication::screens())
        follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [follow, changed](QScreen* screen) {
        follow(screen);
        changed();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, changed);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, changed);
}

bool QtAppearance::effectiveAppearanceIsDark() const {
    if (chosen_) return *chosen_;
    if (const auto preferred = prefersDark_()) return *preferred;
    const auto palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

} // namespace corvane
