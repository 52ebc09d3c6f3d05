#include "qt/tray/QtStatusBar.h"

#include "qt/tray/QtStatusItem.h"

namespace corvane {

std::unique_ptr<StatusItem> QtStatusBar::statusItem(double) {
    auto item = std::make_unique<QtStatusItem>(tray_);
    item_ = item.get();
    return item;
}

bool QtStatusBar::isShown() const {
    return item_ && item_->isPlacedIn(tray_.kind());
}

} // namespace corvane
