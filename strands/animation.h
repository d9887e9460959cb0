// The drawing that grows: strands a few points at a time, then every over-crossing on top. Steps are plain
// data; one player draws them on a window's picture, frame after frame, and a frame can be drawn by itself.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "strands/knot_drawing.h"

namespace lorivan {

/// Pause after a growing frame in milliseconds, for a speed of 1 (180 ms) to 9 (10 ms). Fast speeds, below
/// 21 ms, take half of it.
int frameDelay(float speed);

/// What one frame adds to the picture.
struct AnimationStep {
  int slot = 0;
  int points = 0;       // growing: the first so many points of the band are drawn; 0: `run` is laid on top
  bool closed = false;  // growing: these are all points, the closed band
  OverRun run;

  bool grows() const { return points > 0; }
};

/// All steps of a knot, in order. A strand of m + 1 samples is drawn to its
/// 2nd, 5th, 8th ... point; the last step draws it closed, whether or not the threes end there.
std::vector<AnimationStep> animationSteps(const KnotCurve& curve);

/// Draws the picture as it stands after the first `count` steps: smooth bands on a fresh ground. After all
/// steps it is the picture of drawKnotPicture().
void drawAnimationFrame(Surface& surface, const KnotGraph& graph, const KnotCurve& curve,
                        const KnotStyle& style, const GridView& view, const PictureOptions& options,
                        std::span<const AnimationStep> steps, std::size_t count);

/// Plays an animation on a picture that someone watches. Its owner keeps the window alive:
///
///   while (const auto wait = animation.nextFrame(surface)) {
///     surface.refresh(); sleep *wait ms; handle waiting events; if (stop was asked for) break;
///   }
///
/// Frames are drawn over one another as plain lines and polygons in whole pixels, which is fast at any size.
class AnimatedDrawing {
 public:
  /// The references must stay valid, and graph and curve unchanged, while it plays.
  AnimatedDrawing(const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style,
                  const GridView& view, const PictureOptions& options);

  /// Both may change between two frames.
  void setSpeed(float speed) { delay_ = frameDelay(speed); }
  void setLoop(bool loop) { loop_ = loop; }

  /// Draws one frame and returns the milliseconds to wait before the next call: the frame delay after a
  /// growing frame, 0 between over-crossings, five frame delays before a loop begins again. The first frame
  /// also clears the picture and draws the grid where that is wanted. Without a loop, the last call draws the
  /// finished knot as drawKnotPicture() does and returns nothing.
  std::optional<int> nextFrame(Surface& surface);

  /// Draws the present state again, after the picture got another size.
  void repaint(Surface& surface, const GridView& view);

 private:
  void draw(Surface& surface, const AnimationStep& step);
  void drawLines(Surface& surface, std::size_t count, bool closed, double referenceWidth, Colour colour);

  const KnotGraph& graph_;
  const KnotCurve& curve_;
  KnotStyle style_;
  GridView view_;
  PictureOptions options_;
  std::vector<AnimationStep> steps_;
  std::size_t next_ = 0;
  int delay_ = frameDelay(1);
  bool loop_ = false;
  std::vector<PointF> points_;
  std::vector<PointI> pixels_;
};

}  // namespace lorivan
