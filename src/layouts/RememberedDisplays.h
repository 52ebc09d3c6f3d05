#pragma once

#include "platform/Displays.h"

namespace corvane {

/// The displays as they were when first asked for: for a capture or a restoration, which needs them
/// again and again in one turn of the main thread.
class RememberedDisplays final : public Displays {
public:
    explicit RememberedDisplays(const Displays& displays) : displays_(displays) {}

    std::vector<Display> screens() const override {
        if (!screens_) screens_ = displays_.screens();
        return *screens_;
    }
    std::optional<Display> mainScreen() const override {
        if (!mainScreen_) mainScreen_ = displays_.mainScreen();
        return *mainScreen_;
    }

private:
    const Displays& displays_;
    mutable std::optional<std::vector<Display>> screens_;
    mutable std::optional<std::optional<Display>> mainScreen_;
};

} // namespace corvane
