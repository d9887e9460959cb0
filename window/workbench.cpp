// Steps, and how what is shown follows them.
#include "window/workbench.h"

#include "design/edits.h"
#include "design/version.h"
#include "window/commands.h"
#include "window/control_handlers.h"
#include "window/summaries.h"

namespace lorivan {

Workbench::Workbench(Platform& itsPlatform, Window& itsWindow, Document floor, MainWindowOptions itsOptions)
    : platform(itsPlatform),
      window(itsWindow),
      options(std::move(itsOptions)),
      session(platform, std::move(floor)),
      form(window, platform),
      files(window, platform),
      flat(window),
      solid(platform, window),
      sheet(window),
      variations(platform, window),
      random(options.random ? options.random : seededRandom(platform.clock().seed())) {}

bool Workbench::step(const std::string& name, const Result<Document>& next, After after,
                     std::string_view run) {
  if (next) session.step(name, *next, run);
  return showTaken(next, after);
}

bool Workbench::begin(const std::string& name, const Result<Document>& next, After after,
                      const std::string& path) {
  if (next) {
    session.begin(name, *next, path);
    flat.lens.reset();  // both were held over another knot
    solid.resetLens();
  }
  return showTaken(next, after);
}

/// What the session has taken is shown; what was chosen and refused goes from the form.
bool Workbench::showTaken(const Result<Document>& next, After after) {
  if (!next) {
    form.show(document());
    tell(next.error());
    return false;
  }
  status({});
  show(after);
  if (status_.empty()) status(summary());
  return true;
}

void Workbench::show(After after, bool record) {
  previewing_ = false;
  if (picture_ == Picture::variations)
    bringToFront(beforeVariations_ == Picture::sheet ? Picture::flat : beforeVariations_);
  form.show(document(), record);
  sheet.take(outlineOf(document()));
  sheet.setLines(document().fields.whole(Param::GridSize));
  solid.takeAngles(document());
  if (const Status taken = stages_.followGrid(document()); !taken) tell(taken.error());
  if (symmetry.follow(document(), knot().graph)) {
    hand = {};
    showMarks();
  }
  follow(after);
  solid.paintRotator();
  showCaption();
  sortOut();
}

void Workbench::follow(After after) {
  switch (after) {
    case After::same:
    case After::all:
      showSame(after == After::all);
      break;
    case After::grid:
      bringToFront(Picture::flat);
      if (!drawAtOnce || !drawKnot(false)) showGrid();
      break;
    case After::draw:
      bringToFront(Picture::flat);
      if (!drawKnot(true)) showGrid();
      break;
    case After::view:
      if (solidShown()) paintSolid();
      if (picture_ == Picture::sheet) sheet.RedrawCustom();
      break;
    case After::sheet:
      // The rule for corners between rings depends on the shape, which is one's own from now on.
      if (drawn_ && !drawKnot(false)) showGrid();
      bringToFront(Picture::sheet);
      // The shape's name alone may lead the strands otherwise.
      if (drawn_ && !drawKnot(false)) showGrid();
      break;
    case After::nothing:
      break;
  }
}

/// The picture in front stays; one that cannot be made any more gives way to the flat one.
void Workbench::showSame(bool model) {
  if (!(drawn_ || drawAtOnce) || !drawKnot(false)) showGrid();
  if (model && drawn_ && !modelCurrent()) static_cast<void>(buildModel(false));
  if (picture_ == Picture::solid && !modelOfStrands()) bringToFront(Picture::flat);
  if (picture_ == Picture::solid) paintSolid();
  if (picture_ == Picture::sheet) sheet.RedrawCustom();
}

void Workbench::bringToFront(Picture picture) {
  picture_ = picture;
  session.setOnSheet(picture == Picture::sheet);
  window.setVisible(controlId("picGrid"), picture == Picture::flat || picture == Picture::variations);
  window.setVisible(controlId("picKnot"), picture == Picture::solid);
  window.setVisible(controlId("picShape"), picture == Picture::sheet);
  if (picture == Picture::sheet) sheet.RedrawCustom();
}

void Workbench::showVariations(std::vector<Variation> shown, const std::string& step) {
  if (shown.empty()) return status(tr("There are no variations of this knot"));
  if (picture_ != Picture::variations) beforeVariations_ = picture_;
  variations.take(std::move(shown), document(), step);
  bringToFront(Picture::variations);
  variations.paint();
  window.focus(controlId("picGrid"));
  sortOut();
  status(summary());
}

void Workbench::leaveVariations() {
  bringToFront(beforeVariations_);
  paintFlat();
  sortOut();
  status(summary());
}

void Workbench::status(const std::string& text) {
  window.setStatus(status_ = asSentence(text));
  statusTime_ = platform.clock().milliseconds();
}

void Workbench::pointed(ControlId control) {
  constexpr std::int64_t kTimeToRead = 1500;  // milliseconds that news stay
  if (control >= 0 && platform.clock().milliseconds() - statusTime_ < kTimeToRead) return;
  hint(controlHint(control));
}

void Workbench::modelFieldChanged() {
  modelFieldsTouched_ = true;
  sortOut();
  if (drawn_ && !modelCurrent()) status(tr("Press Create 3D to show the changed 3D values"));
}

void Workbench::viewTurned() {
  session.step(tr("Turn"), solid.withAngles(document()), "turn");
  form.show(document(), false);
  if (solidShown()) paintSolid();
  solid.paintRotator();
  showCaption();
  sortOut();
}

void Workbench::confirmPending(bool undone) {
  for (const Param p : form.pending(undone)) fieldConfirmed(p);
}

void Workbench::sortOut() {
  window.setText(controlId("txtNPoly"), modelOfStrands() ? std::to_string(solid.model().QuadCount) : "");
  sortOutCommands(*this);
  sortOutControls(*this);
}

/// "Lorivan - V3.44k  /home/ann/knot.qzd *": the star marks changes that are not in the file.
void Workbench::showCaption() {
  std::string caption = "Lorivan - V" + std::string(kVersion) + ' ';
  if (!session.caption().empty()) caption += ' ' + session.caption();
  if (session.modified()) caption += " *";
  window.setTitle(caption);
}

void Workbench::resized(ControlId picture) {
  if (picture == controlId("picGrid")) picture_ == Picture::variations ? variations.paint() : paintFlat();
  if (picture == controlId("picKnot") && solidShown()) paintSolid();
  if (picture == controlId("picNav")) solid.paintRotator();
  if (picture == controlId("picShape") && picture_ == Picture::sheet) sheet.RedrawCustom();
}

std::string Workbench::summary() const {
  if (picture_ == Picture::variations)
    return trn("{n} variation: click one, or go there with the arrow keys and press Enter; Esc goes back",
               "{n} variations: click one, or go there with the arrow keys and press Enter; Esc goes back",
               static_cast<long long>(variations.count()));
  if (picture_ == Picture::sheet) return shapeSummary(sheet.shape());
  if (!document().lines) return shapeSummary(sheet.shape());
  if (!drawn_) return gridSummary(document());
  const std::string knot = knotSummary(stages_.knot());
  const std::string note = knotNotes(document(), stages_.knot());
  if (picture_ == Picture::flat) return knot + note;
  const std::string model = trn("{1}, {n} polygon", "{1}, {n} polygons", solid.model().QuadCount, knot);
  return (modelCurrent() ? model : tr("{1}; press Create 3D to show the changed 3D values", model)) + note;
}

void Workbench::tell(const Error& error) {
  if (error.kind == ErrorKind::limit) complain(error.message);
  status(error.kind == ErrorKind::limit ? tr("Nothing was changed: a limit was reached") : error.message);
}

}  // namespace lorivan
