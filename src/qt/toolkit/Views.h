#pragma once

#include <QVariantMap>
#include <memory>

class QQmlEngine;
class QQuickWindow;
class QString;

namespace corvane {

/// Lets an engine find the program's views and the desktop's icons. Before it loads a view.
void addViews(QQmlEngine& engine);

/// A new window of one of the views, not yet shown. Ends the program where the view can't be
/// loaded, as that is a broken build.
std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine& engine, const QString& view,
                                         const QVariantMap& properties);

} // namespace corvane
