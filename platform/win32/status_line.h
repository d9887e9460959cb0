// The line at the window's lower edge. A text that is too long ends in an ellipsis, and the tooltip has it
// whole.
#pragma once

#include <string>

#include "platform/win32/windows_api.h"

namespace lorivan::win32 {

class StatusLine {
 public:
  /// False when the system makes none.
  bool create(HWND parent);
  HWND handle() const { return line_; }
  void show(const std::wstring& text);
  void setFont(HFONT font);
  /// The parent has another size.
  void place();
  /// The parent has destroyed it.
  void forget() { line_ = tip_ = nullptr; }

 private:
  std::wstring shortened() const;
  void update();

  HWND line_ = nullptr, tip_ = nullptr;
  std::wstring text_;
};

}  // namespace lorivan::win32
