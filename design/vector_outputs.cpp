#include "design/vector_outputs.h"

#include <algorithm>

#include "base/numbers.h"
#include "export/cut_dxf.h"
#include "strands/animated_svg.h"
#include "strands/band_crossings.h"
#include "strands/cut_drawing.h"
#include "strands/pdf_surface.h"
#include "strands/strand_pick.h"
#include "strands/svg_surface.h"

namespace lorivan {
namespace {

constexpr int kVectorWidth = 5000;  // units of a vector picture, ten to a reference pixel

/// What all vector files of one knot share.
struct VectorJob {
  const OutputJob& job;
  KnotStyle style = knotStyle(job.document.fields, job.colours);
  GridView view = viewOf(job.knot, job.document.fields, style, kVectorWidth, true);

  /// Of the knot as a picture, see drawnBox(), which takes time: empty where no size or origin asks for it.
  PictureBox box(bool classic) const {
    const bool asked = job.options.millimetres || job.options.height || job.options.cornerOrigin;
    return asked ? drawnBox(job.knot.curve, style, view, classic) : kEmptyBox;
  }
  Result<double> millimetres(const PictureBox& drawn) const {
    return pictureMillimetres(job.options, view, drawn, kReferenceMillimetres);
  }
};

VectorPage pageOf(const VectorJob& vector, double millimetres, const PictureBox& box) {
  VectorPage page{vector.view.width, vector.view.height(), millimetres, titleOf(vector.job.document)};
  page.source = sourceOf(vector.job);
  if (vector.job.options.cornerOrigin && box.right > box.left && box.bottom > box.top) page.box = box;
  return page;
}

std::string narrowNote(const CutDrawing& cut) {
  const auto text = [](double millimetres) {
    return shortestText(static_cast<float>(roundHalfEven(millimetres * 100) / 100));
  };
  return tr("the bands have no room beside each other: their outlines are {1} mm wide instead of {2}",
            text(cut.bandWidth), text(cut.bandWidth / cut.narrowed));
}

/// Whether a cut is no narrower than a knot is wide and high. Nothing could be left, after minutes of work.
bool isWiderThanKnot(double kerf, const VectorJob& vector, double millimetres) {
  if (kerf <= 0) return false;
  const PictureBox box = drawnBox(vector.job.knot.curve, vector.style, vector.view, false);
  const double least = std::min(box.right - box.left, box.bottom - box.top);
  return least > 0 && kerf * vector.view.width >= least * millimetres;
}

/// Tells what pieces lack room, and whether the kerf alone takes it from them.
void noteRoom(const VectorJob& vector, const CutOptions& options, const CutDrawing& cut) {
  if (cut.narrowed < 1) vector.job.note(narrowNote(cut));
  if (cut.apart && (cut.tight == 0 || options.kerf <= 0)) return;
  CutOptions thin = options;
  thin.kerf = 0;
  const auto before = [&] { return cutDrawing(vector.job.knot.curve, vector.style, vector.view, thin); };
  if (!cut.apart)
    vector.job.note(
        options.kerf > 0 && before().apart
            ? tr("the kerf is wider than the room between the strands: their outlines cross")
            : tr("strands touch each other whatever the width of their bands: their outlines cross there"));
  else if (const CutDrawing plain = before(); plain.narrowed > cut.narrowed || plain.tight < cut.tight)
    vector.job.note(
        tr("the kerf is wider than the room between bands: pieces are narrower there, or shorter"));
}

Result<CutDrawing> makeCut(const VectorJob& vector) {
  const OutputOptions& wanted = vector.job.options;
  const auto millimetres = vector.millimetres(vector.box(false));
  if (!millimetres) return millimetres.error();
  CutOptions options;
  options.outlines = wanted.outline;
  options.broken = !vector.job.document.fields.check(Check::FullyCrossed);
  options.kerf = wanted.kerf.value_or(0);
  options.millimetres = *millimetres;
  options.width = wanted.millimetres;
  options.height = wanted.height;
  if (isWiderThanKnot(options.kerf, vector, *millimetres))
    return wrongUsage("the cut is wider than the whole knot: it has to be narrower, or the knot larger");
  CutDrawing cut = cutDrawing(vector.job.knot.curve, vector.style, vector.view, options);
  if (!cut.complete)
    return refused("the strands cross in more than {1} places: such a tangle cannot be cut",
                   std::to_string(kMostCrossings));
  if (vector.job.note) noteRoom(vector, options, cut);
  return cut;
}

void drawInto(VectorSurface& surface, const VectorJob& vector) {
  PictureOptions options = pictureOptions(vector.job.document.fields);
  options.transparent = vector.job.options.transparent;
  drawKnotPicture(surface, vector.job.knot.graph, vector.job.knot.curve, vector.style, vector.view, options);
}

template <class FileSurface>
Result<std::string> makeFile(const OutputJob& job) {
  const VectorJob vector{job};
  if (asksForCut(job.options)) {
    const auto cut = makeCut(vector);
    if (!cut) return cut.error();
    FileSurface surface(pageOf(vector, cut->millimetres, cut->box));
    drawCut(surface, *cut);
    return surface.finish();
  }
  const PictureBox box = vector.box(job.document.fields.check(Check::Classic));
  const auto millimetres = vector.millimetres(box);
  if (!millimetres) return millimetres.error();
  FileSurface surface(pageOf(vector, *millimetres, box));
  drawInto(surface, vector);
  return surface.finish();
}

Result<std::string> makeAnimation(const OutputJob& job) {
  const VectorJob vector{job};
  const PictureBox box = vector.box(true);
  const auto millimetres = vector.millimetres(box);
  if (!millimetres) return millimetres.error();
  PictureOptions options = pictureOptions(job.document.fields);
  options.transparent = job.options.transparent;
  return animatedSvg(
      job.knot.graph, job.knot.curve, vector.style, vector.view,
      {options, pageOf(vector, *millimetres, box), frameDelay(job.document.fields.number(Param::Animate)),
       job.document.fields.check(Check::Loop)});
}

}  // namespace

Result<double> pictureMillimetres(const OutputOptions& options, const GridView& view, const PictureBox& box,
                                  double standard) {
  if (!options.millimetres && !options.height) return standard;
  const double width = box.right - box.left, height = box.bottom - box.top;
  if (!(width > 0 && height > 0)) return impossibleKnot("a knot without strands has no size to scale");
  return *wantedScale(options, width, height) * view.width;
}

std::optional<double> millimetresPerPixel(const Document& document, const Knot& knot,
                                          const OutputOptions& options) {
  if (!options.millimetres && !options.height) return {};  // before anything is drawn
  const KnotStyle style = knotStyle(document.fields, {});
  const GridView view = viewOf(knot, document.fields, style, kReferenceWidth, true);
  const PictureBox box = drawnBox(knot.curve, style, view, false);
  return wantedScale(options, box.right - box.left, box.bottom - box.top);
}

std::optional<double> strandMillimetres(const Document& document, const Knot& knot,
                                        const OutputOptions& options, int slot) {
  const auto scale = millimetresPerPixel(document, knot, options);
  if (!scale) return {};
  const GridView view = viewOf(knot, document.fields, knotStyle(document.fields, {}), kReferenceWidth, true);
  return *scale * strandLength(knot.curve, slot, view);
}

bool canBeCut(const ExportFormat& format) {
  return format.identifier == "svg" || format.identifier == "pdf" || isFlatDxf(format);
}

Result<std::string> makeSvg(const OutputJob& job) {
  return job.options.animate ? makeAnimation(job) : makeFile<SvgSurface>(job);
}

Result<std::string> makePdf(const OutputJob& job) { return makeFile<PdfSurface>(job); }

Status makeCutDxf(const OutputJob& job, Sink& sink) {
  const VectorJob vector{job};
  const auto cut = makeCut(vector);
  if (!cut) return cut.error();
  const GridView& view = vector.view;
  const double scale = cut->millimetres / view.width;
  CutPlace place{scale, view.pixelX(0), view.pixelY(0)};
  if (job.options.cornerOrigin) place = {scale, cut->box.left, cut->box.bottom};
  return writeCutDxf(*cut, place, job.options.arcs, sink);
}

}  // namespace lorivan
