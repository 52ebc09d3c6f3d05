#include "qt/toolkit/Views.h"

#include "qt/items/IconProvider.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <tuple>

namespace corvane {

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
    std::ignore = made.release();
    return std::unique_ptr<QQuickWindow>(window);
}

} // namespace corvane
