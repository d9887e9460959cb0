#include "window/flat_view.h"

#include <algorithm>
#include <utility>

#include "strands/strand_pick.h"
#include "window/form_table.h"

namespace lorivan {
namespace {

constexpr ControlId kPicture = controlId("picGrid");
constexpr Colour kHoverMark = 0xFFB040, kWalkMark = 0x0080FF;
constexpr double kSlack = 4;  // reference pixels

KnotStyle styleOf(const Document& document) {
  return knotStyle(document.fields, strandColours(document.fields.boxes));
}

}  // namespace

Surface& FlatView::surface() const { return window_.surface(kPicture); }

Status FlatView::shown(Surface& surface, const Knot& knot) {
  const std::string fault = surface.fault();
  unmarked_.clear();
  if (plain_) return fault.empty() ? Status() : Status(unwritable("The picture is not whole: {1}", fault));
  drawMarks(surface, knot);
  surface.refresh();
  return fault.empty() ? Status() : Status(unwritable("The picture is not whole: {1}", fault));
}

Status FlatView::paintGrid(const Document& document, const Knot& knot) {
  Surface& picture = surface();
  PictureOptions options = pictureOptions(document.fields);
  options.showGrid = true;
  view_ = through(viewOf(knot, document.fields, styleOf(document), picture.width(), false));
  drawPictureGround(picture, knot.graph, view_, options);
  return shown(picture, knot);
}

Status FlatView::paintKnot(const Document& document, const Knot& knot) {
  Surface& picture = surface();
  const KnotStyle style = styleOf(document);
  view_ = through(viewOf(knot, document.fields, style, picture.width(), true));
  PictureOptions options = pictureOptions(document.fields);
  options.quick = true;
  options.showGrid = options.showGrid && !bare_;
  drawKnotPicture(picture, knot.graph, knot.curve, style, view_, options);
  if (markedStrand_ != 0 && !plain_) drawStrandMark(picture, knot.curve, style, view_, markedStrand_);
  return shown(picture, knot);
}

GridHand::Place FlatView::place(int x, int y) const { return {x, y, {view_.gridX(x), view_.gridY(y)}}; }

int FlatView::lineAt(const Knot& knot, int x, int y) const {
  return FindLine(knot.graph, static_cast<float>(view_.gridX(x)), static_cast<float>(view_.gridY(y)));
}

int FlatView::strandAt(const Document& document, const Knot& knot, int x, int y) const {
  return lorivan::strandAt(knot.curve, styleOf(document), view_, x, y);
}

void FlatView::setPointer(bool onLine) {
  const PointerShape pointer = onLine ? PointerShape::hand : PointerShape::arrow;
  if (pointer != std::exchange(pointer_, pointer)) window_.setPointer(kPicture, pointer);
}

double FlatView::slack() const { return kSlack * surface().width() / kReferenceWidth; }

void FlatView::setMarks(const Knot& knot, GridMarks marks) {
  if (marks == marks_) return;
  marks_ = std::move(marks);
  Surface& picture = surface();
  bringPixelsBack(picture);
  drawMarks(picture, knot);
  picture.refresh();
}

void FlatView::drawMarks(Surface& picture, const Knot& knot) {
  if (marks_.hovered.empty() && marks_.walked < 0) return;
  if (unmarked_.empty()) keepPixels(picture);
  for (const int line : marks_.hovered) ring(picture, knot.graph, line, kHoverMark);
  ring(picture, knot.graph, marks_.walked, kWalkMark);
}

/// As large as the place where a click finds the line.
void FlatView::ring(Surface& picture, const KnotGraph& graph, int line, Colour colour) const {
  if (line < 0 || line > graph.LastLine) return;
  const GridLine& at = graph.Lines[line];
  const double reach = graph.CellSize / 6.0 * view_.width / (2 * kHalfView * view_.zoom);
  const int radius = std::max(3, toInt32(reach)), width = std::max(1, toInt32(slack() / 2));
  for (const int moved : shownCopies(graph, at)) {
    const double x = at.MidX + moved - graph.wrap.left;
    if (graph.wrap && (x < 0 || x > graph.wrap.period)) continue;  // its middle is not shown here
    const PointI middle = view_.pixel(at.MidX + moved, at.MidY);
    picture.circle(middle, radius, {width + 2, 0x000000, false});
    picture.circle(middle, radius, {width, colour, false});
  }
}

void FlatView::keepPixels(Surface& picture) {
  const PixelBlock block = picture.lendPixels();
  for (int y = 0; y < block.height; ++y) {
    const std::uint32_t* const row = block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride;
    unmarked_.insert(unmarked_.end(), row, row + block.width);
  }
}

void FlatView::bringPixelsBack(Surface& picture) const {
  if (unmarked_.empty()) return;
  const PixelBlock block = picture.lendPixels();
  if (unmarked_.size() != static_cast<std::size_t>(block.width) * static_cast<std::size_t>(block.height))
    return;
  for (int y = 0; y < block.height; ++y)
    std::copy_n(unmarked_.begin() + static_cast<std::ptrdiff_t>(y) * block.width, block.width,
                block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride);
}

void FlatView::startAnimation(const Document& document, const Knot& knot) {
  const KnotStyle style = styleOf(document);
  unmarked_.clear();
  marks_ = {};
  view_ = through(viewOf(knot, document.fields, style, surface().width(), true));
  animation_.emplace(knot.graph, knot.curve, style, view_, pictureOptions(document.fields));
}

std::optional<int> FlatView::frame(const Document& document) {
  animation_->setSpeed(document.fields.number(Param::Animate));
  animation_->setLoop(document.fields.check(Check::Loop));
  Surface& picture = surface();  // another one after the window was resized
  const std::optional<int> wait = animation_->nextFrame(picture);
  picture.refresh();
  return wait;
}

void FlatView::repaintAnimation(const Document& document, const Knot& knot) {
  if (!animation_) return;
  view_ = through(viewOf(knot, document.fields, styleOf(document), surface().width(), true));
  animation_->repaint(surface(), view_);
}

void FlatView::showStep(const TraceStep& step, const StrandColours& colours) {
  Surface& picture = surface();
  const auto at = [this](PointF p) { return view_.pixel(p.x, p.y); };
  const Pen pen{view_.penWidth(1), colours.display[step.slot], false};
  picture.segment(at(step.A), at(step.X), pen);
  picture.segment(at(step.X), at(step.B), pen);
  const std::pair<PointF, int> dots[] = {{step.R, 15}, {step.A, 11}, {step.B, 1}, {step.X, 12}};
  for (const auto& [point, colour] : dots) picture.dot(at(point), view_.penWidth(3), QBColor(colour));
  picture.refresh();
}

}  // namespace lorivan
