// Results that carry either a value or a sentence for the user. Nothing here throws.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace lorivan {

/// What went wrong, in one sentence without a final stop, fit for a status line or the error output.
struct Error {
  std::string message;
  bool ofKnot = false;  // the knot itself is the reason, not a file or the system
};

/// Either a value or an Error.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

  explicit operator bool() const { return state_.index() == 0; }
  T& operator*() { return std::get<0>(state_); }
  const T& operator*() const { return std::get<0>(state_); }
  T* operator->() { return &std::get<0>(state_); }
  const T* operator->() const { return &std::get<0>(state_); }
  const Error& error() const { return std::get<1>(state_); }

 private:
  std::variant<T, Error> state_;
};

/// Success, or an Error.
class [[nodiscard]] Status {
 public:
  Status() = default;
  Status(Error error) : error_(std::move(error)) {}

  explicit operator bool() const { return !error_; }
  const Error& error() const { return *error_; }

 private:
  std::optional<Error> error_;
};

}  // namespace lorivan
