#pragma once

#include "platform/Images.h"

#include <QIcon>

namespace corvane {

/// The program's own drawings, and its symbols.
class QtImages final : public Images {
public:
    std::optional<Image> named(const std::string& name) const override;
    std::optional<Image> applicationIcon() const override;
    std::optional<Image> systemSymbol(const std::string& name,
                                      const std::string& accessibilityDescription) const override;
};

/// The resource that holds the drawing of an asset or of the application's icon.
QString drawingOf(const Image& image);
/// The picture of an image, in the sizes that desktops use up to about twice its own.
QIcon iconOf(const Image& image);

} // namespace corvane
