// Handlers of the fields, check boxes and colours, and of undo.
#include "base/numbers.h"
#include "base/texts.h"
#include "design/edits.h"
#include "design/kept_walls.h"
#include "design/names.h"
#include "export/formats.h"
#include "window/handlers.h"
#include "window/summaries.h"

namespace lorivan {
namespace {

/// How the pictures follow a change of a field.
After follows(const Workbench& bench, Param p) {
  switch (parameterSpec(p).followUp) {
    case FollowUp::newGrid:
    case FollowUp::newGridOnly:
    case FollowUp::scale:
      // Where knots are drawn at once, what is in front follows; else the grid is shown, and a knot when
      // asked for.
      return bench.drawAtOnce || bench.document().fields.shape == Shape::Custom ? After::same : After::grid;
    case FollowUp::style:
    case FollowUp::startColour:
    case FollowUp::background:
      return After::same;
    case FollowUp::alignmentGrid:
    case FollowUp::light:
    case FollowUp::angle:
      return After::view;
    case FollowUp::model:
    case FollowUp::animation:
      return After::nothing;
  }
  return After::same;
}

After followsCheck(const Workbench& bench, Check c) {
  if (c == Check::Wrap && !bench.drawAtOnce) return After::grid;
  if (c == Check::Smooth) return After::view;
  return checkSpec(c).inPicture ? After::same : After::nothing;
}

}  // namespace

Handlers::Handlers(Workbench& bench) : bench_(bench) {
  bench_.fieldConfirmed = [this](Param p) { vt_Changed(p); };
}

void Handlers::vt_Changed(Param p) {
  const Form::Confirmed confirmed = bench_.form.confirm(p);
  if (confirmed.changed)
    applyField(p, confirmed.text, {}, confirmed.correction);
  else if (!confirmed.correction.empty())
    bench_.status(confirmed.correction);
}

void Handlers::vt_Stepped(Param p, int steps) {
  const std::string text = bench_.form.stepped(p, steps);
  if (text != bench_.document().fields.text(p)) applyField(p, text, std::string(parameterSpec(p).field), {});
}

void Handlers::vt_Escaped(Param p) { bench_.form.restore(p); }

void Handlers::applyField(Param p, const std::string& text, const std::string& run, const std::string& note) {
  if (scaleRefused(p)) return;
  const Document before = bench_.document();
  const auto next = changeField(before, p, text);
  const bool taken = bench_.step(next ? fieldStep(*next, p) : std::string(), next, follows(bench_, p), run);
  if (taken && parameterSpec(p).followUp == FollowUp::model) bench_.modelFieldChanged();
  const std::string& given = bench_.document().fields.text(p);
  if (taken && given != text)
    bench_.statusToo(p == Param::Scale ? tr("{1}: {2} became {3} to fit", fieldName(p), text, given)
                                       : tr("{1}: {2} became {3} for this shape", fieldName(p), text, given));
  else if (!note.empty())
    bench_.statusToo(note);
  if (makesGrid(p)) tellDropped(before);
}

/// Walls that found no place in the grid that followed are never lost in silence.
void Handlers::tellDropped(const Document& before) {
  const int dropped = wallCount(before) - wallCount(bench_.document());
  if (dropped <= 0) return;
  bench_.status(trn("{n} wall dropped, Ctrl+Z brings it back; {1}",
                    "{n} walls dropped, Ctrl+Z brings them back; {1}", dropped, bench_.statusText()));
}

/// Asks before a new scale erases a grid that is not drawn again by itself. The refused scale is gone from
/// the field.
bool Handlers::scaleRefused(Param p) {
  // The lines of a custom shape stay whatever the scale is: nothing to ask for.
  if (p != Param::Scale || bench_.drawAtOnce || !bench_.knotDrawn() ||
      bench_.document().fields.shape == Shape::Custom ||
      bench_.window.confirm(tr("Changing scale will erase your current grid. OK to continue?"),
                            tr("Scale change warning")))
    return false;
  bench_.form.forgetLatest(p);
  bench_.form.restore(p);
  return true;
}

void Handlers::chk_Click(Check c) {
  const bool on = bench_.form.checked(c);
  const Document before = bench_.document();
  bench_.step(checkStep(c, on), withCheck(before, c, on), followsCheck(bench_, c));
  if (c == Check::HeightMap) bench_.modelFieldChanged();
  if (c == Check::Wrap) tellDropped(before);
}

void Handlers::txtCol_Click(int box) { chooseColour(box); }

void Handlers::chooseColour(int box) {
  const auto chosen = bench_.window.chooseColour(bench_.document().fields.boxes[box]);
  if (chosen) bench_.step(tr("Colour {1}", box + 1), withColour(bench_.document(), box, *chosen), After::all);
}

void Handlers::lstType_Click() {
  const Shape shape = bench_.form.shape();
  const std::string name = shapeName(shape);
  const Document before = bench_.document();
  const auto next = chooseShape(before, shape);
  if (shape == Shape::Custom)
    bench_.step(name, next, After::sheet);
  else
    bench_.begin(name, next, After::grid);
  tellDropped(before);
}

/// The chosen format is no part of the knot; it is read when a file is saved.
void Handlers::opt_Click() {
  if (const ExportFormat* format = chosenFormat())
    bench_.status(tr("3D files: {1}", translated(format->summary)));
}

void Handlers::mnuStyle_Click(int style) {
  bench_.step(tr("Style {1}", styleName(style)), withFittedStyle(bench_.document(), style),
              bench_.picture() == Picture::flat ? After::draw : After::all);
}

void Handlers::mnuEditUndo_Click() {
  const auto p = bench_.form.undoLatest();
  if (p)
    bench_.status(tr("{1} shows {2} again; press Enter in it to apply", fieldName(*p), bench_.form.text(*p)));
}

void Handlers::mnuEditUndoStep_Click() {
  const std::string name = bench_.session.history().undoName();
  const Document before = bench_.document();
  const bool fromSheet = bench_.session.undo();
  if (fromSheet) bench_.bringToFront(Picture::sheet);
  showHistory(before, tr("Undone: {1}", name), fromSheet);
}

void Handlers::mnuEditRedoStep_Click() {
  const std::string name = bench_.session.history().redoName();
  const Document before = bench_.document();
  bench_.session.redo();
  showHistory(before, tr("Done again: {1}", name));
}

/// What is another one now comes to the front: the sheet with a custom shape, or the knot. `stays`: the
/// picture in front is the one that belongs to it.
void Handlers::showHistory(const Document& before, const std::string& what, bool stays) {
  const Document& now = bench_.document();
  const bool linesNew = now.lines != before.lines;
  const bool shapeNew = outlineOf(now) != outlineOf(before) || now.fields.shape != before.fields.shape;
  const bool onSheet = linesNew ? !now.lines : now.fields.shape == Shape::Custom;
  if (!stays && (linesNew || shapeNew) && (onSheet || bench_.picture() == Picture::sheet))
    bench_.bringToFront(onSheet ? Picture::sheet : Picture::flat);
  bench_.status({});
  bench_.show(After::all, false);
  bench_.status(tr("{1}; {2}", what, bench_.summary()));
}

}  // namespace lorivan
