// Handlers of the 3-D view: building and showing the model, turning it.
#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/texts.h"
#include "design/edits.h"
#include "design/fit_radius.h"
#include "design/model_check.h"
#include "window/handlers.h"
#include "window/summaries.h"

namespace lorivan {

void Handlers::cmd3D_Click() {
  // Without a drawn knot its strands may be those of another grid; drawing it builds the model as well.
  const bool drawn = bench_.knotDrawn() || bench_.drawKnot(true, true);
  if (drawn && (bench_.modelCurrent() || bench_.buildModel(true))) showModel();
  bench_.sortOut();
}

void Handlers::cmd2DView_Click() {
  bench_.bringToFront(Picture::flat);
  bench_.paintFlat();
  bench_.sortOut();
  bench_.status(bench_.summary());
}

void Handlers::cmd3DView_Click() {
  // A model of other strands is never shown; one of other 3-D values is, until it is asked for anew.
  if (bench_.modelOfStrands() || bench_.buildModel(true)) showModel();
  bench_.sortOut();
}

/// The model comes to the front, and the keyboard with it: the arrow keys turn it.
void Handlers::showModel() {
  bench_.paintSolid();
  bench_.bringToFront(Picture::solid);
  bench_.status(bench_.summary());
}

/// Nothing when the question is cancelled, or the answer is no length, which the user is told.
std::optional<double> Handlers::askMillimetres(const std::string& prompt, const std::string& title,
                                               double initial) {
  const std::string text = bench_.window.inputBox(prompt, title, shortestText(static_cast<float>(initial)));
  if (text.empty()) return {};
  const auto length = parseTyped(text);
  if (length && *length >= 0 && *length <= kMostMillimetres) return length;
  bench_.status(tr("\"{1}\" is no length in millimetres", text));
  return {};
}

void Handlers::mnuViewCheckModel_Click() {
  const auto width =
      askMillimetres(tr("Width of the finished knot in millimetres:"), tr("Check model"), millimetres_);
  if (!width) return;
  if (!bench_.modelCurrent() && !bench_.buildModel(true)) return bench_.sortOut();
  OutputOptions options;
  options.millimetres = millimetres_ = std::max(*width, kLeastMillimetres);
  const auto check = checkModel(bench_.knot(), bench_.document().fields, options);
  if (!check) return bench_.tell(check.error());
  std::vector<Vec3> places;
  for (const FoundLength& found : {check->verdict.wall, check->verdict.clearance})
    if (found.found) places.push_back(found.at);
  bench_.solid.mark(places);
  showModel();
  bench_.sortOut();
  std::string text;  // in letters of any width
  for (const auto& [name, what] : checkLines(*check, nullptr))
    text.append(name.empty() ? "     " + what : tr("{1}: {2}", translated(kCheckContext, name), what)) +=
        '\n';
  bench_.window.message(text, tr("Check model"), MessageIcon::none);
  const Verdict& verdict = check->verdict;
  bench_.status(tr("{1}; the hoops mark the thinnest wall and the least clearance",
                   piecesText(check->pieces, {check->pieces, verdict.crossings, verdict.touching})));
}

void Handlers::mnuViewFitRadius_Click() {
  const auto gap = askMillimetres(
      tr("Gap between strands in millimetres, for a knot {1} mm wide (0: they meet at every crossing):",
         shortestText(static_cast<float>(millimetres_))),
      tr("Fit radius"), gap_);
  if (!gap) return;
  gap_ = *gap;
  const auto fitted = withFittedRadius(bench_.document(), bench_.knot(), *gap, millimetres_);
  if (bench_.step(tr("Fit radius"), fitted, After::all))
    bench_.statusToo(fieldStep(bench_.document(), Param::PolyRadius));
}

void Handlers::picKnot_Mouse(const MouseEvent& event) {
  if (event.action == MouseAction::release) mouseRests();
  if (!bench_.solidShown()) return;
  clickModel(event);
  const bool twice = event.action == MouseAction::doubleClick && event.button == kLeftButton;
  const int strand = twice && bench_.modelOfStrands() ? bench_.solid.strandAt(event.x, event.y) : 0;
  if (strand != 0) return recolourStrand(strand);
  if (bench_.solid.dragged(event))
    bench_.viewTurned();
  else if (bench_.solid.lensMoved(event))
    bench_.paintSolid();
}

/// A press that is let go where it was marks the strand there. A drag turns the view.
void Handlers::clickModel(const MouseEvent& event) {
  if (event.action == MouseAction::press) {
    pressed_.reset();
    if (event.button == kLeftButton) pressed_ = {event.x, event.y};
  }
  if (!pressed_) return;
  const double way = std::hypot(event.x - pressed_->x, event.y - pressed_->y);
  if (event.action == MouseAction::doubleClick || way > bench_.flat.slack()) return pressed_.reset();
  if (event.action != MouseAction::release) return;
  pressed_.reset();
  if (bench_.modelOfStrands()) pickStrand(bench_.solid.strandAt(event.x, event.y));
}

void Handlers::picNav_Mouse(const MouseEvent& event) {
  if (event.action == MouseAction::release) mouseRests();
  if (bench_.solid.rotatorMoved(event)) bench_.viewTurned();
}

/// Steps of one drag end here, and the model takes the place of what stood in for it.
void Handlers::mouseRests() {
  bench_.session.endRun();
  if (bench_.solid.rest() && bench_.solidShown()) bench_.paintSolid();
}

void Handlers::mnuViewFront_Click() {
  Document front = bench_.document();
  for (const Param angle : {Param::Theta, Param::Phi, Param::Psi}) front = withField(front, angle, "0");
  bench_.solid.resetLens();
  bench_.step(tr("Front view"), front, After::view);
}

bool Handlers::frmLorivan_KeyDown(const KeyEvent& key) {
  if (key.ctrl || key.alt) return false;
  if (bench_.picture() == Picture::variations) return variationsKey(key.key);
  return bench_.solidShown() ? solidKey(key) : bench_.picture() == Picture::flat && flatKey(key);
}

bool Handlers::solidKey(const KeyEvent& key) {
  if (bench_.solid.lensKey(key.key)) {
    bench_.paintSolid();
    return true;
  }
  if (key.key == Key::escape && bench_.flat.markedStrand() != 0) {
    pickStrand(0);
    return true;
  }
  if (!bench_.solid.keyPressed(key.key)) return false;
  bench_.solid.takeBackground(bench_.document());
  bench_.viewTurned();
  return true;
}

}  // namespace lorivan
