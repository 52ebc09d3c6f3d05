#include "qt/toolkit/Startup.h"
#include "world/World.h"

#include <QAccessible>
#include <QApplication>
#include <QStyleHints>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// The real views without a display, drawn by the processor.
int main(int argc, char** argv) {
    const QTemporaryDir folder;
    corvane::world::enter(folder.path().toStdString());
    qputenv("LANG", "C.UTF-8");
    qputenv("HOME", folder.path().toLocal8Bit());
    for (const auto* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"})
        qputenv(name, (folder.path() + "/own").toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    corvane::prepareApplication();
    QApplication application(argc, argv);
    corvane::nameApplication(application);
    // A platform without a screen has none of its own.
    QGuiApplication::styleHints()->setUseHoverEffects(true);
    QAccessible::setActive(true);
    return RUN_ALL_TESTS();
}
