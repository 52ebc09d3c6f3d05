#pragma once

#include "foundation/Published.h"

#include <functional>
#include <map>
#include <string>

namespace corvane {

/// NSNotificationCenter defaultCenter, for notifications with no object. Main thread: observers are
/// called inside `post`, in the order in which they came.
class NotificationCenter {
public:
    void post(const std::string& name) {
        if (const auto found = signals_.find(name); found != signals_.end()) found->second.fire();
    }
    [[nodiscard]] Subscription addObserver(const std::string& name, std::function<void()> block) {
        return signals_[name].subscribe(std::move(block));
    }

private:
    std::map<std::string, ChangeSignal> signals_;
};

} // namespace corvane
