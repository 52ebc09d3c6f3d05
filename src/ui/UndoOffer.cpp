#include "ui/UndoOffer.h"

#include "platform/MainQueue.h"

#include <utility>

namespace corvane {

namespace {

constexpr double shownFor = 8;

} // namespace

std::string UndoOffer::text() const {
    return removals_->empty() ? "" : "Removed '" + removals_->back().name + "'";
}

void UndoOffer::offer(const std::string& removed, std::function<void()> restore) {
    removals_.mutate([&](auto& list) { list.push_back({removed, std::move(restore)}); });
    queue_.after(shownFor, [this, offer = ++*offers_, offers = std::weak_ptr(offers_)] {
        const auto present = offers.lock();
        if (present && *present == offer) dismiss();
    });
}

void UndoOffer::undo() {
    if (removals_->empty()) return;
    const auto restore = removals_->back().restore;
    removals_.mutate([](auto& list) { list.pop_back(); });
    restore();
}

void UndoOffer::dismiss() {
    if (!removals_->empty()) removals_.mutate([](auto& list) { list.clear(); });
}

} // namespace corvane
