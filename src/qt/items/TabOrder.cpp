#include "qt/items/TabOrder.h"

#include <algorithm>

namespace corvane {

void TabOrder::sortChildren(QQuickItem* parent) {
    auto children = parent->childItems();
    const auto isHigher = [](const QQuickItem* a, const QQuickItem* b) { return a->y() < b->y(); };
    if (std::ranges::is_sorted(children, isHigher)) return;
    std::ranges::stable_sort(children, isHigher);
    for (qsizetype i = 1; i < children.size(); ++i)
        children[i]->stackAfter(children[i - 1]);
}

} // namespace corvane
