#pragma once

#include "foundation/Published.h"

namespace corvane {

/// The application's appearance: NSApplication effectiveAppearance and setAppearance:, reduced to
/// dark or light (NSAppearanceNameDarkAqua, NSAppearanceNameAqua). Main thread.
class Appearance {
public:
    virtual ~Appearance() = default;
    /// The appearance that was set, else the system's.
    virtual bool effectiveAppearanceIsDark() const = 0;
    virtual void setAppearance(bool dark) = 0;
    /// NSApplicationDidChangeScreenParametersNotification.
    virtual ChangeSignal& screenParametersDidChange() = 0;
};

} // namespace corvane
