#pragma once

#include <optional>
#include <string>

namespace corvane {

/// NSImage: what to draw, not its pixels.
struct Image {
    enum class Source { asset, applicationIcon, symbol };

    Source source = Source::symbol;
    /// Of the asset or the symbol.
    std::string name = {};
    std::string accessibilityDescription = {};
    /// Width and height in points; 0 is the image's own size.
    double size = 0;
    /// Drawn in the colour of the text around it.
    bool isTemplate = false;

    bool operator==(const Image&) const = default;
};

/// The images that are there. Main thread.
class Images {
public:
    virtual ~Images() = default;
    /// imageNamed: one of the application's own images.
    virtual std::optional<Image> named(const std::string& name) const = 0;
    /// applicationIconImage.
    virtual std::optional<Image> applicationIcon() const = 0;
    /// imageWithSystemSymbolName:accessibilityDescription:
    virtual std::optional<Image>
    systemSymbol(const std::string& name, const std::string& accessibilityDescription) const = 0;
};

} // namespace corvane
