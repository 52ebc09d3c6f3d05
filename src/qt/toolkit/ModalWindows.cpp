#include "qt/toolkit/ModalWindows.h"

#include <QWindow>
#include <algorithm>

namespace corvane {

void ModalWindows::add(std::unique_ptr<QObject> shown) {
    up_.push_back(std::move(shown));
}

void ModalWindows::takeDown(const QObject& shown, const QObject& listener) {
    const auto found =
        std::ranges::find_if(up_, [&](const auto& object) { return object.get() == &shown; });
    if (found == up_.end()) return;
    auto* gone = found->release();
    up_.erase(found);
    gone->disconnect(&listener);
    for (auto* model : gone->findChildren<QObject*>(Qt::FindDirectChildrenOnly))
        model->disconnect(&listener);
    if (auto* window = qobject_cast<QWindow*>(gone)) window->hide();
    gone->deleteLater();
}

} // namespace corvane
