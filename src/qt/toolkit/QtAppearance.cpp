#include "qt/toolkit/QtAppearance.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

namespace corvane {

namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

/// Those of the views.
QPalette colors(bool dark) {
    QPalette palette(dark ? "#38383C" : "#F7F7F8", dark ? "#1E1E20" : "#ECECEE");
    palette.setColor(QPalette::Base, dark ? "#2F2F33" : "#FFFFFF");
    palette.setColor(QPalette::AlternateBase, dark ? "#28282B" : "#F7F7F8");
    palette.setColor(QPalette::Highlight, dark ? "#2A6FDB" : "#0A66DB");
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, dark ? "#A9A9B0" : "#626267");
    return palette;
}

} // namespace

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
    return isDark(QGuiApplication::palette());
}

void QtAppearance::setAppearance(bool dark) {
    chosen_ = dark;
    colorDialogs();
}

void QtAppearance::readAgain() {
    colorDialogs();
    screensChange_.fire();
}

void QtAppearance::colorDialogs() const {
    // That is the desktop's own again.
    QGuiApplication::setPalette({});
    const bool dark = effectiveAppearanceIsDark();
    if (isDark(QGuiApplication::palette()) != dark) QGuiApplication::setPalette(colors(dark));
}

} // namespace corvane
