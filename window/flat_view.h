// The picture of the grid and the 2-D knot, and the mouse on it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "design/knot.h"
#include "platform/window.h"
#include "strands/animation.h"
#include "window/flat_lens.h"
#include "window/grid_hand.h"

namespace lorivan {

/// What is laid over the picture for the one who works on it, and is no part of it.
struct GridMarks {
  std::vector<int> hovered;  // the line under the pointer and those that change with it
  int walked = -1;           // the line that the keyboard is at
  bool operator==(const GridMarks&) const = default;
};

class FlatView {
 public:
  explicit FlatView(Window& window) : window_(window) {}

  /// Both paint the whole surface, through the lens and with the marks; the error says why it is not whole.
  Status paintGrid(const Document& document, const Knot& knot);
  Status paintKnot(const Document& document, const Knot& knot);

  /// While `plain` the picture is painted as it leaves the program: whole and without marks; `bare`: without
  /// the grid behind the knot, too.
  void setPlain(bool plain, bool bare = false) {
    plain_ = plain;
    bare_ = bare;
  }
  /// Whether the picture differs from that.
  bool altered() const { return !lens.isWhole() || markedStrand_ != 0 || !(marks_ == GridMarks{}); }

  FlatLens lens;

  /// A pixel of the picture as painted last, and what lies there: the line whose midpoint is near, or -1; the
  /// strand, or 0.
  GridHand::Place place(int x, int y) const;
  int lineAt(const Knot& knot, int x, int y) const;
  int strandAt(const Document& document, const Knot& knot, int x, int y) const;
  /// The pointer tells that a line can be picked.
  void setPointer(bool onLine);
  /// A hand may tremble so many pixels.
  double slack() const;

  /// Other marks, over the picture as it is.
  void setMarks(const Knot& knot, GridMarks marks);
  /// The strand of this slot is outlined from the next painting on; 0: none.
  void setMarkedStrand(int slot) { markedStrand_ = slot; }
  int markedStrand() const { return markedStrand_; }

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
  Status shown(Surface& surface, const Knot& knot);
  GridView through(const GridView& whole) const { return plain_ ? whole : lens.through(whole); }
  void drawMarks(Surface& surface, const Knot& knot);
  void ring(Surface& surface, const KnotGraph& graph, int line, Colour colour) const;
  void keepPixels(Surface& surface);
  void bringPixelsBack(Surface& surface) const;

  Window& window_;
  GridView view_;  // of the picture as painted last
  std::optional<AnimatedDrawing> animation_;
  PointerShape pointer_ = PointerShape::arrow;
  GridMarks marks_;
  int markedStrand_ = 0;
  bool plain_ = false, bare_ = false;
  std::vector<std::uint32_t> unmarked_;  // the pixels under the marks; empty while there are none
};

}  // namespace lorivan
