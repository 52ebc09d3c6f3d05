#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace corvane {

/// Keeps a subscription alive; dropping it unsubscribes. Movable, not copyable.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> handle) : handle_(std::move(handle)) {}

private:
    std::shared_ptr<void> handle_;
};

/// A signal with no arguments. Subscribers are called in the order in which they came; one that
/// comes during a firing is called from the next one on, one that goes isn't called any more. One
/// thread.
class ChangeSignal {
public:
    [[nodiscard]] Subscription subscribe(std::function<void()> subscriber) {
        auto handle = std::make_shared<std::function<void()>>(std::move(subscriber));
        subscribers_.push_back(handle);
        return Subscription(std::move(handle));
    }

    void fire() {
        std::erase_if(subscribers_, [](const auto& weak) { return weak.expired(); });
        const auto present = subscribers_;
        for (const auto& weak : present) {
            if (const auto subscriber = weak.lock()) (*subscriber)();
        }
    }

private:
    std::list<std::weak_ptr<std::function<void()>>> subscribers_;
};

/// One observable field. `signal` fires before a new value becomes readable, once for each
/// assignment or `mutate`.
template <typename T>
class Published {
public:
    Published(ChangeSignal& signal, T initial = {})
        : signal_(signal), value_(std::make_shared<T>(std::move(initial))) {}
    Published(const Published&) = delete;

    const T& get() const { return *value_; }
    operator const T&() const { return *value_; }
    const T* operator->() const { return value_.get(); }
    const T& operator*() const { return *value_; }
    /// The value as it is now, for whoever keeps it: later changes are made on another one.
    std::shared_ptr<const T> kept() const { return value_; }

    Published& operator=(T value) {
        signal_.fire();
        if (isKept())
            value_ = std::make_shared<T>(std::move(value));
        else
            *value_ = std::move(value);
        return *this;
    }
    Published& operator=(const Published&) = delete;

    /// Fires once, then lets `change` work on the value.
    template <typename Change>
    void mutate(Change&& change) {
        signal_.fire();
        if (isKept()) value_ = std::make_shared<T>(*value_);
        std::forward<Change>(change)(*value_);
    }

private:
    bool isKept() const { return value_.use_count() > 1; }

    ChangeSignal& signal_;
    std::shared_ptr<T> value_;
};

} // namespace corvane
