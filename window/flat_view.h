// The picture of the grid and the 2-D knot, and the mouse on it.
#pragma once

#include <optional>
#include <string>

#include "design/knot.h"
#include "platform/window.h"
#include "strands/animation.h"

namespace lorivan {

class FlatView {
 public:
  explicit FlatView(Window& window) : window_(window) {}

  /// Both paint the whole picture; the error says why it is not whole.
  Status paintGrid(const Document& document, const Knot& knot);
  Status paintKnot(const Document& document, const Knot& knot);

  /// Index of the line whose midpoint is near a pixel of the picture as painted last, or -1.
  int lineAt(const Knot& knot, int x, int y) const;
  /// The pointer tells that a line can be picked.
  void pointAt(const Knot& knot, const MouseEvent& event);

  /// Starts to draw the knot step by step; frame() draws the next step, see AnimatedDrawing::nextFrame.
  void startAnimation(const Document& document, const Knot& knot);
  std::optional<int> frame(const Document& document);
  void endAnimation() { animation_.reset(); }
  /// Draws what the animation has drawn so far again, after the picture got another size.
  void repaintAnimation(const Document& document, const Knot& knot);

  /// Paints a step of the tracer over the grid.
  void showStep(const TraceStep& step, const StrandColours& colours);

 private:
  Surface& surface() const;
  Status shown(Surface& surface) const;

  Window& window_;
  GridView view_;  // of the picture as painted last
  std::optional<AnimatedDrawing> animation_;
  PointerShape pointer_ = PointerShape::arrow;
};

}  // namespace lorivan
