#pragma once

#include "platform/Appearance.h"

#include <QObject>
#include <functional>
#include <optional>

namespace corvane {

/// The system's appearance, until one is chosen for the program.
class QtAppearance final : public QObject, public Appearance {
public:
    using Preference = std::function<std::optional<bool>()>;
    /// Needs an application object, for its palette and screens. The palette decides where the
    /// system's preference for dark is empty.
    explicit QtAppearance(Preference prefersDark = [] { return std::optional<bool>(); });

    bool effectiveAppearanceIsDark() const override;
    void setAppearance(bool dark) override;
    ChangeSignal& screenParametersDidChange() override { return screensChange_; }

    /// What was read before came too early: whoever follows the screens reads once more.
    void readAgain();
    /// Gives the toolkit's own dialogs colours of the effective appearance, where the desktop's
    /// aren't: once the program is up, and then by itself after each of the above.
    void colorDialogs() const;

private:
    const Preference prefersDark_;
    std::optional<bool> chosen_;
    ChangeSignal screensChange_;
};

} // namespace corvane
