#pragma once

#include <QVariantMap>
#include <memory>

class QGuiApplication;
class QQmlEngine;
class QQuickWindow;
class QString;

namespace corvane {

/// Gives the program its name, its icon, its fonts and the style of its controls. Before the
/// application object, and right after it.
void prepareApplication();
void nameApplication(QGuiApplication& application);

/// Lets an engine find the program's views. Before it loads one.
void addViews(QQmlEngine& engine);

/// A new window of one of the views, not yet shown. Ends the program where the view can't be
/// loaded, as that is a broken build.
std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const QString& view,
                                         const QVariantMap& properties);

} // namespace corvane
