#include "qt/toolkit/Startup.h"

#include "platform/Bundles.h"
#include "qt/items/ControlAccessible.h"
#include "qt/items/MovingLists.h"
#include "qt/items/Pictures.h"

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QIcon>
#include <QQuickWindow>

#include <fontconfig/fontconfig.h>

void qml_register_types_Corvane();

namespace corvane {

namespace {

bool hasGraphicsProcessor() {
    return !QDir("/dev/dri").entryList({"renderD*"}, QDir::System).isEmpty();
}

/// The symbols' font is installed for web pages too, packed, and was taken so: to unpack it takes a
/// twentieth of the start.
void leaveOutWebFonts() {
    constexpr auto rule =
        "<fontconfig><selectfont><rejectfont><glob>*.woff*</glob></rejectfont></selectfont></fontconfig>";
    FcConfig* fonts = FcInitLoadConfig();
    if (!fonts) return;
    if (FcConfigParseAndLoadFromMemory(fonts, reinterpret_cast<const FcChar8*>(rule), FcFalse))
        FcConfigSetCurrent(fonts);
    FcConfigDestroy(fonts);
}

} // namespace

void prepareApplication() {
    leaveOutWebFonts();
    // A graphics driver that only imitates a processor of its own doubles the time of the start and
    // the memory. The environment can still ask for it.
    if (!hasGraphicsProcessor() && !qEnvironmentVariableIsSet("QSG_RHI_BACKEND")) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    qml_register_types_Corvane();
    describeControls();
}

void nameApplication(QGuiApplication& application) {
    application.setApplicationName("corvane");
    application.setApplicationDisplayName("Corvane");
    application.setDesktopFileName(programIdentifier);
    application.setWindowIcon(iconOf({.source = Image::Source::applicationIcon}));
    QFont font("Inter");
    font.setPixelSize(13);
    application.setFont(font);
    // Small desktops name no theme, though its icons are there.
    QIcon::setFallbackThemeName("Adwaita");
    stopMovingListsAtClicks(application);
}

} // namespace corvane
