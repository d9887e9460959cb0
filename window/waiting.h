// What tells that something takes its time, and goes however that ends.
#pragma once

#include <string>
#include <string_view>

#include "platform/window.h"

namespace lorivan {

/// Shows the hourglass while it lives, if it is wanted at all.
class Hourglass {
 public:
  explicit Hourglass(Window& window, bool shown = true) : window_(window), shown_(shown) {
    if (shown_) window_.setBusy(true);
  }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
  ~Hourglass() {
    if (shown_) window_.setBusy(false);
  }
  bool shown() const { return shown_; }

 private:
  Window& window_;
  bool shown_;
};

/// Gives a button another caption while it lives.
class Caption {
 public:
  Caption(Window& window, ControlId button, std::string_view meanwhile)
      : window_(window), button_(button), before_(window.text(button)) {
    window_.setText(button_, std::string(meanwhile));
  }
  Caption(const Caption&) = delete;
  Caption& operator=(const Caption&) = delete;
  ~Caption() { window_.setText(button_, before_); }

 private:
  Window& window_;
  ControlId button_;
  std::string before_;
};

}  // namespace lorivan
