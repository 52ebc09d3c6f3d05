#include "qt/toolkit/Startup.h"

#include <QAccessible>
#include <QApplication>

#include <gtest/gtest.h>

/// The real views without a display, drawn by the processor.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleTest(&argc, argv);
    corvane::prepareApplication();
    QApplication application(argc, argv);
    corvane::nameApplication(application);
    QAccessible::setActive(true);
    return RUN_ALL_TESTS();
}
