// Handlers of the 3-D view: building and showing the model, turning it.
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

void Handlers::picKnot_Mouse(const MouseEvent& event) {
  if (!bench_.solidShown()) return;
  if (event.action == MouseAction::release) bench_.session.endRun();
  if (bench_.solid.dragged(event)) bench_.viewTurned();
}

void Handlers::picNav_Mouse(const MouseEvent& event) {
  if (event.action == MouseAction::release) bench_.session.endRun();
  if (bench_.solid.rotatorMoved(event)) bench_.viewTurned();
}

bool Handlers::frmLorivan_KeyDown(const KeyEvent& key) {
  if (!bench_.solidShown() || key.ctrl || key.alt || !bench_.solid.keyPressed(key.key)) return false;
  bench_.solid.takeBackground(bench_.document());
  bench_.viewTurned();
  return true;
}

}  // namespace lorivan
