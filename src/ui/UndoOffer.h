#pragma once

#include "foundation/Published.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

class MainQueue;

/// What one main window offers to take back: the removals of the last eight seconds, the latest
/// first. The queue outlives it. Main thread.
class UndoOffer {
public:
    explicit UndoOffer(MainQueue& queue) : queue_(queue) {}

    /// Fires before the text changes.
    ChangeSignal objectWillChange;
    /// "Removed 'x'"; empty where nothing can be taken back.
    std::string text() const;

    /// `restore` is called at most once; it tests for itself what is still there.
    void offer(const std::string& removed, std::function<void()> restore);
    /// Takes the latest removal back.
    void undo();
    void dismiss();

private:
    struct Removal {
        std::string name;
        std::function<void()> restore;
    };

    MainQueue& queue_;
    Published<std::vector<Removal>> removals_{objectWillChange};
    /// Counts the offers; what ends one later asks by it whether this is still there.
    std::shared_ptr<int> offers_ = std::make_shared<int>(0);
};

} // namespace corvane
