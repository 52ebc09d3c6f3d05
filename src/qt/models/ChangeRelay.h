#pragma once

#include "foundation/Published.h"

#include <QObject>
#include <functional>
#include <utility>

namespace corvane {

/// Turns a signal that comes before a change into a call that comes after it: once for a burst of
/// firings, on the next turn of the event loop, when the new values can be read.
class ChangeRelay : public QObject {
public:
    ChangeRelay(ChangeSignal& signal, std::function<void()> changed)
        : changed_(std::move(changed)), subscription_(signal.subscribe([this] { schedule(); })) {}

private:
    void schedule() {
        if (std::exchange(isScheduled_, true)) return;
        QMetaObject::invokeMethod(
            this,
            [this] {
                isScheduled_ = false;
                changed_();
            },
            Qt::QueuedConnection);
    }

    std::function<void()> changed_;
    bool isScheduled_ = false;
    Subscription subscription_;
};

} // namespace corvane
