#include "linux/windows/Approach.h"

#include <cmath>

namespace corvane {
namespace {

using Asked = ApproachSteps::Asked;

constexpr int mostTries = 4;

double distance(const PixelRect& a, const PixelRect& b) {
    return std::abs(a.origin.x - b.origin.x) + std::abs(a.origin.y - b.origin.y) +
           std::abs(a.size.width - b.size.width) + std::abs(a.size.height - b.size.height);
}

/// False where there was no answer.
bool comeNear(const PixelRect& target, const ApproachSteps& steps, std::optional<PixelRect>& now) {
    struct Attempt {
        PixelRect aim, frame;
    };
    std::optional<Attempt> best;
    PixelRect aim = target;
    for (int tries = 0; tries < mostTries; ++tries) {
        const auto before = now;
        if (before == target) return true;
        if (steps.isLate()) return false;
        const auto asked = steps.ask(aim);
        if (asked == Asked::unanswered) return false;
        if (asked == Asked::nothingNew) break;
        now = steps.look();
        if (!now) return true;
        if (!best || distance(target, *now) < distance(target, best->frame)) best = {aim, *now};
        // Some window managers take the first request for another one, so the second shows.
        if (tries > 0 && now == before) break;
        aim.origin.x += target.origin.x - now->origin.x;
        aim.origin.y += target.origin.y - now->origin.y;
    }
    if (best && now != best->frame && !steps.isLate()) {
        steps.ask(best->aim);
        now = steps.look();
    }
    return true;
}

} // namespace

bool isPossible(const FrameWish& wish) {
    constexpr double most = 1e6;
    const auto origin = wish.origin.value_or(PixelPoint());
    const auto size = wish.size.value_or(PixelSize());
    // No comparison holds for what isn't a number.
    return std::abs(origin.x) <= most && std::abs(origin.y) <= most &&
           std::abs(size.width) <= most && std::abs(size.height) <= most;
}

PixelRect wishedFrame(const FrameWish& wish, const PixelRect& now) {
    return {wish.origin.value_or(now.origin), wish.size.value_or(now.size)};
}

WindowAnswer approach(const FrameWish& wish, const ApproachSteps& steps) {
    const auto start = steps.look();
    if (!start) return WindowAnswer::gone;
    // What isn't asked for stays as it is from here on, however often the rest is tried.
    const PixelRect target = wishedFrame(wish, *start);
    auto end = start;
    const bool isHeard = comeNear(target, steps, end);
    if (!end) return WindowAnswer::gone;
    if (end == target) return WindowAnswer::done;
    if (!isHeard) return WindowAnswer::unanswered;
    // Steps and limits of a window's size are its own, but a place that isn't taken is refused.
    const bool hasWishedSize = wish.size && end->size == target.size;
    const bool isIgnored = end == start && target.origin != end->origin && !hasWishedSize;
    return isIgnored ? WindowAnswer::refused : WindowAnswer::done;
}

} // namespace corvane
