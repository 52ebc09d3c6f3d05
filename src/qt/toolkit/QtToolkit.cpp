#include "qt/toolkit/QtToolkit.h"

#include "qt/toolkit/Views.h"
#include "shell/CorvaneApp.h"

#include <QApplication>
#include <utility>

namespace corvane {

QtToolkit::QtToolkit(StatusBar& tray, QtAppearance::Preference prefersDark)
    : tray_(tray), appearance_(std::move(prefersDark)) {
    addViews(engine_);
}

Toolkit QtToolkit::facilities(Panels& panels) {
    return {.mainQueue = mainQueue_,
            .alerts = alerts_,
            .application = windows_,
            .statusBar = tray_,
            .images = images_,
            .appearance = appearance_,
            .panels = panels};
}

int QtToolkit::run(CorvaneApp& app) {
    windows_.serve(app);
    windows_.openMainWindow();
    appearance_.colorDialogs();
    app.appDelegate().applicationDidFinishLaunching();
    const int status = QApplication::exec();
    windows_.closeAll();
    return status;
}

} // namespace corvane
