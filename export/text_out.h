// Text gathered in large blocks on its way to a sink.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "base/digits.h"
#include "base/sink.h"

namespace lorivan {

inline constexpr std::string_view kLineEnd = "\r\n";

/// Collects text and passes it on a block at a time. After the sink has refused a block nothing more is
/// passed on; writers look at ok() now and then and stop early.
class TextOut {
 public:
  explicit TextOut(Sink& sink) : sink_(sink), block_(std::make_unique<char[]>(kBlock)), at_(block_.get()) {}

  /// A place for up to `bytes` (at most kMostRoom) characters; take() says where they ended.
  char* room(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(block_.get() + kBlock - at_)) flush();
    return at_;
  }
  void take(char* end) { at_ = end; }

  void text(std::string_view text) {
    while (!text.empty()) {
      const std::string_view part = text.substr(0, kMostRoom);
      take(putText(room(part.size()), part));
      text.remove_prefix(part.size());
    }
  }
  void line(std::string_view words) {
    text(words);
    text(kLineEnd);
  }

  bool ok() const { return ok_; }

  /// Tells `progress`, when it is there, that `done` of `all` steps are made: about a hundred times in all.
  void reached(const std::function<void(double)>& progress, std::size_t done, std::size_t all) const {
    if (progress && done % (all / 100 + 1) == 0)
      progress(static_cast<double>(done) / static_cast<double>(all));
  }

  /// Passes the rest on. The error is general: the owner of the sink knows the reason.
  Status finish() {
    flush();
    if (ok_) return {};
    return unwritable("the file could not be written completely");
  }

  static constexpr std::size_t kMostRoom = 4096;

 private:
  void flush() {
    if (ok_) ok_ = sink_.write({block_.get(), static_cast<std::size_t>(at_ - block_.get())});
    at_ = block_.get();
  }

  static constexpr std::size_t kBlock = std::size_t{1} << 18;
  Sink& sink_;
  std::unique_ptr<char[]> block_;
  char* at_;
  bool ok_ = true;
};

}  // namespace lorivan
