// A value that never changes once it is made and that copies share.
#pragma once

#include <memory>
#include <utility>

namespace lorivan {

/// Holds a T or nothing. Copies cost a pointer; two are equal when what they hold is.
template <class T>
class Shared {
 public:
  Shared() = default;
  explicit Shared(T value) : value_(std::make_shared<const T>(std::move(value))) {}

  explicit operator bool() const { return value_ != nullptr; }
  const T& operator*() const { return *value_; }
  const T* operator->() const { return value_.get(); }
  /// Whether both are one copy, which tells without a look at the values that they are equal.
  bool sameAs(const Shared& other) const { return value_ == other.value_; }

  friend bool operator==(const Shared& a, const Shared& b) {
    return a.value_ == b.value_ || (a.value_ && b.value_ && *a.value_ == *b.value_);
  }

 private:
  std::shared_ptr<const T> value_;
};

}  // namespace lorivan
