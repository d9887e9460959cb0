// Handlers of custom shapes: the sheet, its files, and the grids made from it.
#include "base/sink.h"
#include "base/texts.h"
#include "custom/shape_file.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/names.h"
#include "design/outline_files.h"
#include "window/handlers.h"
#include "window/summaries.h"

namespace lorivan {
namespace {

FileQuestion shapeQuestion() {
  return {tr("Select an shape file"), tr("Lorivan custom files"), std::string(kShapeFileExtension)};
}

}  // namespace

void Handlers::picShape_Mouse(const MouseEvent& event) {
  const auto edit = bench_.sheet.mouse(event);
  if (!edit) return;
  Document next = bench_.document();
  const std::string name = shapeStep(outlineOf(next), bench_.sheet.shape(), edit->moved);
  if (edit->outlineChanged)
    next = withOutline(next, bench_.sheet.shape());
  else if (!(outlineOf(next) == bench_.sheet.shape()))
    next.outline = Shared(bench_.sheet.shape());
  bench_.step(name, next, After::sheet);
  if (edit->fill)
    fillRegion(*edit->fill);
  else if (!edit->refusal.empty())
    bench_.status(edit->refusal);
  else
    bench_.status(edit->outlineChanged ? shapeSummary(bench_.sheet.shape()) : shapeHint());
}

/// A place outside of all loops is told and changes nothing.
void Handlers::fillRegion(PointF at) {
  AutoGridReport report;
  const auto made = autoGrid(bench_.document(), &report, Spot{at.x, at.y});
  const std::string hint =
      made ? std::string() : autoGridHint(bench_.document(), made.error(), Spot{at.x, at.y});
  shapeGrid(tr("Fill region"), made ? fitBands(*made) : made,
            emptyShare(report, tr("more AutoGrid cells are smaller ones")));
  if (!hint.empty()) bench_.status(hint);
}

void Handlers::mnuShapeBlank_Click() {
  bench_.sheet.SaveUndo();
  bench_.sheet.picture().clear();
  bench_.step(tr("Blank shape"), blankShape(bench_.document()), After::sheet);
  bench_.bringToFront(Picture::sheet);
  bench_.status(shapeHint());
}

void Handlers::mnuShapeView_Click() {
  const bool on = bench_.picture() != Picture::sheet;
  bench_.bringToFront(on ? Picture::sheet : Picture::flat);
  if (!on) bench_.paintFlat();
  bench_.sortOut();
  bench_.status(on ? shapeSummary(bench_.sheet.shape())
                   : tr("The shape is hidden, not lost: View in the Shape menu shows it again"));
}

void Handlers::mnuShapeMakeStandard_Click() {
  const auto made = outlineFromGrid(bench_.document());
  if (made) bench_.sheet.SaveUndo();
  if (bench_.step(tr("Make from Standard"), made, After::sheet)) bench_.bringToFront(Picture::sheet);
}

void Handlers::mnuShapeClear_Click() {
  bench_.sheet.picture().clear();
  bench_.bringToFront(bench_.picture());
  bench_.sortOut();
  bench_.status(tr("The picture behind the shape was taken away"));
}

void Handlers::mnuShapeGridOnOff_Click() {
  const bool on = !bench_.sheet.alignmentGrid();
  bench_.sheet.setAlignmentGrid(on);
  bench_.bringToFront(bench_.picture());
  bench_.sortOut();
  bench_.status(
      on ? tr("Alignment grid of {1} lines each way", bench_.document().fields.text(Param::GridSize))
         : tr("Alignment grid off"));
}

void Handlers::mnuShapeSnap_Click() {
  const bool on = !bench_.sheet.snap();
  bench_.sheet.setSnap(on);
  bench_.sortOut();
  bench_.status(on ? tr("Points snap to the alignment grid") : tr("Points stay where they are put"));
}

void Handlers::mnuSheetSymmetry_Click(const Symmetry& symmetry) { drawIn(symmetry); }

void Handlers::drawIn(const Symmetry& symmetry) {
  bench_.sheet.setSymmetry(symmetry);
  bench_.bringToFront(Picture::sheet);
  bench_.sortOut();
  bench_.status(symmetry.isNone()
                    ? tr("Points and lines are drawn by themselves")
                    : tr("Points and lines are drawn with all their images, as the pale axes show"));
}

void Handlers::mnuSheetTurns_Click(int turns) {
  const Symmetry before = bench_.sheet.symmetry();
  drawIn({before.turns > 1 && before.leftRight, false, turns});
}

void Handlers::mnuSheetMirrored_Click() {
  const Symmetry before = bench_.sheet.symmetry();
  drawIn({!before.leftRight, false, before.turns});
}

void Handlers::mnuShapeSmooth_Click() {
  bench_.sheet.SaveUndo();
  CustomShape shape = bench_.sheet.shape();
  shape.smooth = !shape.smooth;
  const bool on = shape.smooth;
  bench_.step(on ? tr("Smooth outline") : tr("Straight lines"),
              withOutline(bench_.document(), std::move(shape)), After::sheet);
  bench_.bringToFront(Picture::sheet);
  bench_.status(on ? tr("Lines are curves through the points; sharp corners stay")
                   : tr("Lines are straight again"));
}

void Handlers::mnuShapeUndo_Click() {
  bench_.sheet.undo();
  bench_.step(tr("Undo shape"), withOutline(bench_.document(), bench_.sheet.shape()), After::sheet);
  bench_.bringToFront(Picture::sheet);
  bench_.status(shapeSummary(bench_.sheet.shape()));
}

void Handlers::mnuShapeSaveFile_Click() {
  const std::string path = bench_.files.toSave(shapeQuestion());
  if (path.empty()) return;
  if (const Status saved = saveShapeFile(path, bench_.sheet.shape()); !saved) {
    bench_.status(saved.error().message);
    return;
  }
  bench_.session.named(path);
  remember(path);
  bench_.showCaption();
  bench_.status(tr("Saved as {1}", path));
}

void Handlers::mnuShapeLoadFile_Click() {
  const std::string path = bench_.files.toLoad(shapeQuestion());
  if (!path.empty()) loadShape(path);
}

void Handlers::loadShape(const std::string& path) {
  auto shape = loadShapeFile(path);
  if (!shape) {
    std::erase(bench_.recentFiles, path);
    bench_.sortOut();
    bench_.status(tr("Could not load {1}", shape.error().message));
    return;
  }
  if (!mayLeave(tr("The knot has changes that are not saved. Save them before a shape is opened?"))) return;
  remember(path);
  bench_.sheet.picture().clear();
  Document next = withOutline(bench_.document(), std::move(*shape));
  next.fields.shape = Shape::Custom;
  bench_.begin(tr("Load {1}", fileNameOf(path)), next, After::sheet, path);
  bench_.sheet.SaveUndo();
  bench_.bringToFront(Picture::sheet);
  bench_.sortOut();
  bench_.status(tr("Loaded {1}. {2}", path, shapeSummary(bench_.sheet.shape())));
}

void Handlers::mnuShapeLoadPicture_Click() {
  const std::string path = bench_.files.toLoadAny(
      {tr("Select a picture to trace"), tr("Pictures"), std::string(kPictureExtensions)});
  if (!path.empty()) loadTracePicture(path);
}

void Handlers::loadTracePicture(const std::string& path) {
  bench_.files.rememberFolder(path);
  if (const Status loaded = bench_.sheet.picture().load(bench_.platform, path); !loaded) {
    bench_.status(tr("Could not load {1}: {2}", path, loaded.error().message));
    return;
  }
  Document next = bench_.document();
  next.fields.shape = Shape::Custom;
  bench_.step(shapeName(Shape::Custom), next, After::sheet);
  bench_.bringToFront(Picture::sheet);
  bench_.sortOut();
  bench_.status(
      tr("Draw the outline over the picture, or let Trace Picture in the Shape menu find it; Clear takes it "
         "away"));
}

void Handlers::mnuShapeTrace_Click() {
  auto traced = bench_.sheet.picture().traced();
  if (!traced) return bench_.status(traced.error().message);
  takeOutline(tr("Trace picture"), std::move(*traced), {});
}

void Handlers::mnuShapeLoadOutline_Click() {
  const std::string path =
      bench_.files.toLoadAny({tr("Select a drawing"), tr("Drawings"), std::string(kDrawingExtensions)});
  if (!path.empty()) loadOutline(path);
}

void Handlers::loadOutline(const std::string& path) {
  bench_.files.rememberFolder(path);
  auto read = readOutlineFile(bench_.platform, path);
  if (!read) {
    std::erase(bench_.recentFiles, path);
    bench_.sortOut();
    bench_.status(tr("Could not load {1}: {2}", path, read.error().message));
    return;
  }
  remember(path);
  bench_.sheet.picture().clear();
  takeOutline(tr("Outline {1}", fileNameOf(path)), std::move(*read), path);
}

/// The outline comes onto the sheet in the place of the shape that is there.
void Handlers::takeOutline(const std::string& name, FittedOutline&& fitted, const std::string& path) {
  bench_.sheet.SaveUndo();
  Document next = withOutline(bench_.document(), std::move(fitted.shape));
  next.fields.shape = Shape::Custom;
  bench_.step(name, next, After::sheet);
  bench_.flat.lens.reset();
  bench_.bringToFront(Picture::sheet);
  bench_.sortOut();
  const std::string told = shapeSummary(bench_.sheet.shape()) + notesOf(fitted);
  bench_.status(path.empty() ? told : tr("Loaded {1}. {2}", path, told));
}

void Handlers::mnuShapeMakeGrid_Click() { shapeGrid(tr("New Grid"), lineGrid(bench_.document())); }

void Handlers::mnuShapeAutoGrid_Click() {
  AutoGridReport report;
  const auto made = autoGrid(bench_.document(), &report);
  const std::string hint = made ? std::string() : autoGridHint(bench_.document(), made.error());
  shapeGrid(tr("AutoGrid"), made ? fitBands(*made) : made,
            emptyShare(report, tr("Fill Outline in the Shape menu finds cells that fill it")));
  if (!hint.empty()) bench_.status(tr("{1}: Fill Outline in the Shape menu takes it", hint));
}

void Handlers::mnuShapeFill_Click() {
  AutoGridReport report;
  const auto made = fillingAutoGrid(bench_.document(), &report);
  const std::string name = made ? tr("AutoGrid {1}", made->fields.text(Param::GridSize)) : tr("AutoGrid");
  shapeGrid(name, made ? fitBands(*made) : made, emptyShare(report, tr("no cells fill it better")));
}

/// A grid that could not be made leaves everything as it was.
void Handlers::shapeGrid(const std::string& name, const Result<Document>& made, const std::string& remark) {
  if (!bench_.step(name, made, After::grid)) return;
  bench_.bringToFront(Picture::flat);
  bench_.sortOut();
  const bool tight = strandsRunTogether(bench_.document());
  const std::string knot = bench_.knotDrawn() ? bench_.summary() : tr("Create 2D draws the knot");
  const auto lines = static_cast<long long>(bench_.document().lines->size());
  std::string told = trn("{1}: {n} line. {2}", "{1}: {n} lines. {2}", lines, name, knot);
  if (tight) told = tr("{1}; its strands will run together: lower Width, Edge or AutoGrid cells", told);
  bench_.status(told + remark);
}

}  // namespace lorivan
