#include "design/printing.h"

#include <algorithm>
#include <cmath>

#include "design/model_output.h"
#include "design/placed_surface.h"
#include "design/vector_outputs.h"

namespace lorivan {
namespace {

constexpr Colour kPaper = 0xFFFFFF;
constexpr int kMostPixels = 3000;  // across a printed 3-D picture: finer than anybody sees
constexpr int kMeasured = 5000;    // units of a view that a knot is measured in

struct FlatKnot {
  const OutputJob& job;
  KnotStyle style = knotStyle(job.document.fields, job.colours);
  PictureOptions options = paperOptions();

  GridView view(int width) const { return viewOf(job.knot, job.document.fields, style, width, true); }
  PictureBox box(const GridView& view) const {
    return drawnBox(job.knot.curve, style, view, options.classic);
  }

 private:
  /// Paper is the ground of what is printed, and the grid a help for drawing only.
  PictureOptions paperOptions() const {
    PictureOptions made = pictureOptions(job.document.fields);
    made.background = kPaper;
    made.showGrid = false;
    return made;
  }
};

Result<PrintedSize> printFlat(const OutputJob& job, PrintPage& page) {
  const FlatKnot flat{job};
  Surface& paper = page.surface();
  const GridView measured = flat.view(kMeasured);
  const PictureBox box = flat.box(measured);
  const double wide = box.right - box.left, high = box.bottom - box.top;
  if (!(wide > 0 && high > 0)) return impossibleKnot("a knot without strands cannot be printed");
  const double fitting = std::min(paper.width() / wide, paper.height() / high) * kMeasured;
  const auto millimetres =
      pictureMillimetres(job.options, measured, drawnBox(job.knot.curve, flat.style, measured, false),
                         fitting / page.dotsPerMillimetre());
  if (!millimetres) return millimetres.error();
  const double dots = *millimetres * page.dotsPerMillimetre();
  if (!(dots >= 1 && dots <= 1e6)) return wrongUsage("a knot of this size cannot be printed");
  const int across = static_cast<int>(dots);
  const double unit = dots / kMeasured;
  const PointI corner = {
      static_cast<int>(std::lround(paper.width() / 2.0 - (box.left + box.right) / 2 * unit)),
      static_cast<int>(std::lround(paper.height() / 2.0 - (box.top + box.bottom) / 2 * unit))};
  PlacedSurface surface(paper, corner, across, GridView::heightFor(across));
  paper.clear(kPaper);
  drawKnotPicture(surface, job.knot.graph, job.knot.curve, flat.style, flat.view(across), flat.options);
  const double millimetre = unit / page.dotsPerMillimetre();
  return PrintedSize{wide * millimetre, high * millimetre,
                     wide * unit < paper.width() + 1 && high * unit < paper.height() + 1};
}

Result<PrintedSize> printSolid(const OutputJob& job, PrintPage& page) {
  const Surface& paper = page.surface();
  const int width = std::max(5, std::min(paper.width(), paper.height() * 5 / 4));
  const int height = GridView::heightFor(width), pixels = std::min(width, kMostPixels);
  auto picture = job.platform.createSurface(pixels, GridView::heightFor(pixels));
  if (!picture) return picture.error();
  const bool heights = job.document.fields.check(Check::HeightMap);
  if (const Status drawn = drawSolid(job, **picture, false, heights); !drawn) return drawn.error();
  const PointI corner = {(paper.width() - width) / 2, (paper.height() - height) / 2};
  if (const Status placed = page.place(**picture, corner, width, height); !placed) return placed.error();
  return PrintedSize{width / page.dotsPerMillimetre(), height / page.dotsPerMillimetre()};
}

}  // namespace

bool printsLandscape(const OutputJob& job) {
  if (job.options.solidView) return true;
  const FlatKnot flat{job};
  const PictureBox box = flat.box(flat.view(kMeasured));
  return box.right - box.left > box.bottom - box.top;
}

Result<PrintedSize> printKnot(const OutputJob& job, PrintPage& page) {
  return job.options.solidView ? printSolid(job, page) : printFlat(job, page);
}

}  // namespace lorivan
