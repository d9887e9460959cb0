// The page that is being printed.
#pragma once

#include "platform/surface.h"

namespace lorivan {

/// Units are the printer's dots, the same number of them to a millimetre across and down.
class PrintPage {
 public:
  virtual ~PrintPage() = default;
  /// The part of the paper that can be printed on. Draws lines and shapes as such, has no pixels and starts
  /// as blank paper: clear() with white leaves it so.
  virtual Surface& surface() = 0;
  virtual double dotsPerMillimetre() const = 0;
  /// Puts a picture's pixels into a rectangle of the page.
  virtual Status place(Surface& picture, PointI corner, int width, int height) = 0;
};

}  // namespace lorivan
