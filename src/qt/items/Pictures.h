#pragma once

#include "platform/Images.h"

#include <QIcon>

namespace corvane {

/// The resource that holds the drawing of an asset or of the application's icon.
QString drawingOf(const Image& image);
/// The picture of an image, in the sizes that desktops use up to about twice its own.
QIcon iconOf(const Image& image);

} // namespace corvane
