// Results that carry either a value or a sentence for the user. Nothing here throws.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace lorivan {

/// What stood in the way. Callers decide by it what to do; the sentence is for people alone.
enum class ErrorKind {
  usage,   // what was asked for makes no sense
  input,   // a file or picture that cannot be read
  knot,    // a grid or shape that no knot can be made of
  output,  // a file, picture or clipboard that cannot be filled, or a call of the system that failed
  limit,   // more than a table or a format may hold
};

/// What went wrong, in one sentence without a final stop, fit for a status line or the error output.
struct Error {
  ErrorKind kind;
  std::string message;
};

inline Error wrongUsage(std::string_view sentence) { return {ErrorKind::usage, std::string(sentence)}; }
inline Error unreadable(std::string_view sentence) { return {ErrorKind::input, std::string(sentence)}; }
inline Error impossibleKnot(std::string_view sentence) { return {ErrorKind::knot, std::string(sentence)}; }
inline Error unwritable(std::string_view sentence) { return {ErrorKind::output, std::string(sentence)}; }
inline Error refused(std::string_view sentence) { return {ErrorKind::limit, std::string(sentence)}; }

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
