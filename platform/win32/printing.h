// Printing: the dialog, and the page as a device context draws it.
#pragma once

#include "platform/win32/paper_surface.h"
#include "platform/window.h"

namespace lorivan::win32 {

/// As Window::print.
Result<bool> printOnPaper(HWND owner, const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw);

/// A page on a context, which must outlive it. One whose dots are not square gets square units.
class PaperPage final : public PrintPage {
 public:
  explicit PaperPage(HDC context);
  Surface& surface() override { return surface_; }
  double dotsPerMillimetre() const override;
  Status place(Surface& picture, PointI corner, int width, int height) override;

 private:
  HDC context_;
  PaperSurface surface_;
};

}  // namespace lorivan::win32
