#pragma once

#include "platform/Images.h"

namespace corvane {

/// The program's own drawings, and its symbols.
class QtImages final : public Images {
public:
    std::optional<Image> named(const std::string& name) const override;
    std::optional<Image> applicationIcon() const override;
    std::optional<Image> systemSymbol(const std::string& name,
                                      const std::string& accessibilityDescription) const override;
};

} // namespace corvane
