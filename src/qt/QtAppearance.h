#pragma once

#include "platform/Appearance.h"

#include <QObject>
#include <optional>

namespace corvane {

/// The system's appearance as its palette shows it, until one is chosen for the program.
class QtAppearance final : public QObject, public Appearance {
public:
    /// Needs an application object, for its palette and screens.
    QtAppearance();

    bool effectiveAppearanceIsDark() const override;
    void setAppearance(bool dark) override { chosen_ = dark; }
    ChangeSignal& screenParametersDidChange() override { return screensChange_; }

private:
    std::optional<bool> chosen_;
    ChangeSignal screensChange_;
};

} // namespace corvane
