#pragma once

#include "linux/windows/WindowSystem.h"

#include <functional>

namespace corvane {

/// How one window system moves a window: both look and ask, each in its own words.
struct ApproachSteps {
    enum class Asked { answered, unanswered, nothingNew };
    /// Asks for a visible frame and waits until that has been dealt with. `nothingNew` where it
    /// would be the last request word for word.
    std::function<Asked(const PixelRect& aim)> ask;
    /// The visible frame as it is now; nothing where the window is gone.
    std::function<std::optional<PixelRect>()> look;
    /// There is no time for another try.
    std::function<bool()> isLate;
};

/// Finite numbers, of a million at most.
bool isPossible(const FrameWish& wish);
/// The frame that is wished for, with what isn't named as it is now.
PixelRect wishedFrame(const FrameWish& wish, const PixelRect& now);

/// Asks for the frame, looks, corrects by what is missing, four times at most, and keeps the best
/// that came of it. `done` where the window took the place, or the size as far as its steps and
/// limits allow; `refused` where it took nothing.
WindowAnswer approach(const FrameWish& wish, const ApproachSteps& steps);

} // namespace corvane
