#pragma once

#include <optional>
#include <string>
#include <utility>

namespace corvane {

/// Why an operation failed, in words for the user.
struct Error {
    std::string localizedDescription;
    /// There is no such file or folder, for certain: one that can't be reached isn't missing.
    bool isMissing = false;

    bool operator==(const Error&) const = default;
};

/// A value, or the error that stood in its way.
template <typename T>
class Result {
public:
    Result(T value) : value_(std::move(value)) {}
    Result(Error error) : error_(std::move(error)) {}

    explicit operator bool() const { return value_.has_value(); }
    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }
    /// Meaningful only where there is no value.
    const Error& error() const { return error_; }

private:
    std::optional<T> value_;
    Error error_;
};

/// Success, or the error that stood in its way.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : error_(std::move(error)) {}

    explicit operator bool() const { return !error_; }
    /// Meaningful only after a failure.
    const Error& error() const { return *error_; }

private:
    std::optional<Error> error_;
};

} // namespace corvane
