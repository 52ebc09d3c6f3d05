#include "qt/Face.h"

#include "qt/IconProvider.h"
#include "qt/QtImages.h"

#include <QDir>
#include <QFont>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>

void qml_register_types_Corvane();

namespace corvane {

namespace {

bool hasGraphicsProcessor() {
    return !QDir("/dev/dri").entryList({"renderD*"}, QDir::System).isEmpty();
}

} // namespace

void prepareApplication() {
    QQuickStyle::setStyle("Basic");
    // A graphics driver that only imitates a processor of its own doubles the time of the start and
    // the memory. The environment can still ask for it.
    if (!hasGraphicsProcessor() && !qEnvironmentVariableIsSet("QSG_RHI_BACKEND")) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    qml_register_types_Corvane();
}

void nameApplication(QGuiApplication& application) {
    application.setApplicationName("corvane");
    application.setApplicationDisplayName("Corvane");
    application.setDesktopFileName("app.corvane.Corvane");
    application.setWindowIcon(iconOf({.source = Image::Source::applicationIcon}));
    QFont font("Inter");
    font.setPixelSize(13);
    application.setFont(font);
    // Small desktops name no theme, though its icons are there.
    QIcon::setFallbackThemeName("Adwaita");
}

void addViews(QQmlEngine& engine) {
    engine.addImportPath("qrc:/qt/qml");
    engine.addImageProvider("icon", new IconProvider);
}

std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const QString& view,
                                         const QVariantMap& properties) {
    QQmlComponent component(&engine, QUrl("qrc:/qt/qml/Corvane/views/" + view + ".qml"));
    std::unique_ptr<QObject> made;
    if (component.isReady()) made.reset(component.createWithInitialProperties(properties));
    auto* window = qobject_cast<QQuickWindow*>(made.get());
    if (!window) qFatal("%s", qPrintable(component.errorString()));
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    made.release();
    return std::unique_ptr<QQuickWindow>(window);
}

} // namespace corvane
