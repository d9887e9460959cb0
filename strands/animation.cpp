#include "strands/animation.h"

#include <algorithm>

#include "base/numbers.h"
#include "strands/band_painter.h"

namespace lorivan {
namespace {

constexpr int kFirstPoints = 2;  // of a strand's first frame
constexpr int kMorePoints = 3;   // with every further one

void appendGrowth(int slot, int points, std::vector<AnimationStep>& steps) {
  for (int f = kFirstPoints; f < points; f += kMorePoints) steps.push_back({slot, f, false, {}});
  steps.push_back({slot, points, true, {}});
}

/// Whether a later one of `steps` draws the same strand further.
bool isOutgrown(std::span<const AnimationStep> steps, std::size_t i) {
  return i + 1 < steps.size() && steps[i + 1].grows() && steps[i + 1].slot == steps[i].slot;
}

}  // namespace

int frameDelay(float speed) {
  const int delay = toInt16(180.0 / speed);
  return delay < 21 ? toInt16(delay / 2.0) : delay;
}

std::vector<AnimationStep> animationSteps(const KnotCurve& curve) {
  std::vector<AnimationStep> steps;
  std::vector<OverRun> runs;
  for (int slot = 1; slot < kStrandSlots; ++slot)
    if (curve.used(slot)) appendGrowth(slot, curve.last[slot] - curve.first[slot] + 1, steps);
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    overRuns(curve, slot, runs);
    for (const OverRun& run : runs) steps.push_back({slot, 0, false, run});
  }
  return steps;
}

void drawAnimationFrame(Surface& surface, const KnotGraph& graph, const KnotCurve& curve,
                        const KnotStyle& style, const GridView& view, const PictureOptions& options,
                        std::span<const AnimationStep> steps, std::size_t count) {
  if (count >= steps.size()) return drawKnotPicture(surface, graph, curve, style, view, options);
  drawPictureGround(surface, graph, view, options);
  const SeamClip clip(surface, seamOf(curve, view));
  BandPainter painter(surface, curve, style, view);
  const auto drawn = steps.first(count);
  for (std::size_t i = 0; i < drawn.size(); ++i) {
    if (!drawn[i].grows())
      painter.overRun(drawn[i].slot, drawn[i].run);
    else if (!isOutgrown(drawn, i))
      painter.strandStart(drawn[i].slot, drawn[i].points);
  }
}

AnimatedDrawing::AnimatedDrawing(const KnotGraph& graph, const KnotCurve& curve, const KnotStyle& style,
                                 const GridView& view, const PictureOptions& options)
    : graph_(graph),
      curve_(curve),
      style_(style),
      view_(view),
      options_(options),
      steps_(animationSteps(curve)) {}

std::optional<int> AnimatedDrawing::nextFrame(Surface& surface) {
  if (next_ == steps_.size() && (!loop_ || steps_.empty())) {
    drawKnotPicture(surface, graph_, curve_, style_, view_, options_);
    return std::nullopt;
  }
  if (next_ == steps_.size()) next_ = 0;
  if (next_ == 0) drawPictureGround(surface, graph_, view_, options_);
  const AnimationStep& step = steps_[next_];
  draw(surface, step);
  ++next_;
  if (next_ == steps_.size() && loop_) return 5 * delay_;
  return step.grows() ? delay_ : 0;
}

void AnimatedDrawing::repaint(Surface& surface, const GridView& view) {
  view_ = view;
  drawPictureGround(surface, graph_, view_, options_);
  const auto drawn = std::span<const AnimationStep>(steps_).first(next_);
  for (std::size_t i = 0; i < drawn.size(); ++i)
    if (!drawn[i].grows() || !isOutgrown(drawn, i)) draw(surface, drawn[i]);
}

void AnimatedDrawing::draw(Surface& surface, const AnimationStep& step) {
  if (step.grows())
    loopPoints(curve_, step.slot, view_, true, points_);
  else
    runPoints(curve_, step.slot, step.run, view_, true, points_);
  const double lap = curve_.lap(step.slot) * acrossScale(view_);
  // Round a cylinder the closed band ends a lap on from where it begins.
  if (step.closed && lap != 0)
    points_.push_back({static_cast<float>(points_.front().x + lap), points_.front().y});
  const bool closed = step.closed && lap == 0;
  const std::size_t all = points_.size();
  const std::size_t inner =
      step.grows() && !step.closed ? std::min(all, static_cast<std::size_t>(step.points)) : all;
  // The black of an over-crossing stops three points short, as in the smooth picture.
  const std::size_t outer = step.grows() ? inner : all - std::min<std::size_t>(all, 3);
  const SeamClip clip(surface, seamOf(curve_, view_));
  drawLines(surface, outer, closed, style_.outerWidth(), 0);
  drawLines(surface, inner, closed, style_.innerWidth(), style_.bandColour(step.slot));
}

void AnimatedDrawing::drawLines(Surface& surface, std::size_t count, bool closed, double referenceWidth,
                                Colour colour) {
  if (count < 2) return;
  const Pen pen{view_.penWidth(referenceWidth), colour, false};
  Reach reach;
  reach.add(std::span(points_).first(count));
  eachCopy(seamOf(curve_, view_), reach.low - pen.width, reach.high + pen.width, [&](double right) {
    pixels_.clear();
    for (std::size_t i = 0; i < count; ++i)
      pixels_.push_back({toInt32(points_[i].x + right), toInt32(points_[i].y)});
    if (closed)
      surface.polygonOutline(pixels_, pen);
    else
      surface.polyline(pixels_, pen);
  });
}

}  // namespace lorivan
