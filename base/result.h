// Results that carry either a value or a sentence for the user. Nothing here throws.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "base/texts.h"

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

/// Errors of each kind, with a sentence that is told in the window's language. Words have their places in it,
/// see base/texts.h: unreadable("line {1}: {2}", line, reason).
inline Error wrongUsage(std::string_view sentence) { return {ErrorKind::usage, translated(sentence)}; }
inline Error unreadable(std::string_view sentence) { return {ErrorKind::input, translated(sentence)}; }
inline Error impossibleKnot(std::string_view sentence) { return {ErrorKind::knot, translated(sentence)}; }
inline Error unwritable(std::string_view sentence) { return {ErrorKind::output, translated(sentence)}; }
inline Error refused(std::string_view sentence) { return {ErrorKind::limit, translated(sentence)}; }

template <class... Words>
requires(sizeof...(Words) > 0) Error wrongUsage(Pattern<Words...> sentence, const Words&... words) {
  return {ErrorKind::usage, tr(sentence, words...)};
}
template <class... Words>
requires(sizeof...(Words) > 0) Error unreadable(Pattern<Words...> sentence, const Words&... words) {
  return {ErrorKind::input, tr(sentence, words...)};
}
template <class... Words>
requires(sizeof...(Words) > 0) Error impossibleKnot(Pattern<Words...> sentence, const Words&... words) {
  return {ErrorKind::knot, tr(sentence, words...)};
}
template <class... Words>
requires(sizeof...(Words) > 0) Error unwritable(Pattern<Words...> sentence, const Words&... words) {
  return {ErrorKind::output, tr(sentence, words...)};
}
template <class... Words>
requires(sizeof...(Words) > 0) Error refused(Pattern<Words...> sentence, const Words&... words) {
  return {ErrorKind::limit, tr(sentence, words...)};
}

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
