#pragma once

#include <QQuickImageProvider>
#include <optional>
#include <string>

namespace corvane {

/// The pictures at "image://icon/": an icon of the desktop's theme by its name, or the picture of a
/// file by its path, either percent-encoded.
class IconProvider final : public QQuickImageProvider {
public:
    /// Icons of a theme belong to the main thread, where pixmaps are asked for.
    IconProvider() : QQuickImageProvider(Pixmap) {}

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;
};

/// Where an Image finds an icon that FileIcons named; empty where nothing would be seen of it.
QString iconSource(const std::optional<std::string>& icon);

} // namespace corvane
