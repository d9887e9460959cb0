// The ways of turning and lighting the 3-D view: drag, rotator, arrow keys and fields. They turn what was
// built; none builds.
#include <algorithm>

#include "app/main_window.h"
#include "base/numbers.h"
#include "graph/grid_view.h"

namespace lorivan {
namespace {

/// The keys' codes as turnByKey takes them.
int keyCode(Key key) {
  switch (key) {
    case Key::left:
      return 37;
    case Key::up:
      return 38;
    case Key::right:
      return 39;
    case Key::down:
      return 40;
    default:
      return 0;
  }
}

/// Degrees as a field shows them, without the noise of single precision: two decimals, below a full turn.
std::string shownDegrees(float degrees) {
  const double rounded = roundHalfEven(static_cast<double>(degrees) * 100) / 100;
  return shortestText(static_cast<float>(rounded >= 360 ? rounded - 360 : rounded));
}

}  // namespace

void MainWindow::picKnot_Mouse(const MouseEvent& event) {
  if (!solidShown()) return;
  // A new drag starts where it is, not where the last one ended.
  if (event.action == MouseAction::press) solid_.drag = {};
  if (event.action != MouseAction::press && event.action != MouseAction::move) return;
  const float perPixel =
      kReferenceWidth / static_cast<float>(std::max(1, window_->surface(controlId("picKnot")).width()));
  const DragState before = solid_.drag;
  const bool turned =
      dragView(solid_.angles, solid_.drag, event.button, static_cast<float>(event.x) * perPixel,
               static_cast<float>(event.y) * perPixel);
  if (turned && before.LastDragX != DragState{}.LastDragX) solidChanged();
}

void MainWindow::picNav_Mouse(const MouseEvent& event) {
  if (event.action != MouseAction::press && event.action != MouseAction::move) return;
  const Surface& surface = window_->surface(controlId("picNav"));
  if (DrawNav(solid_.angles, navGeometry(surface.width(), surface.height()), event.button,
              static_cast<float>(event.x), static_cast<float>(event.y)))
    solidChanged();
}

bool MainWindow::frmLorivan_KeyDown(const KeyEvent& key) {
  if (!solidShown() || key.ctrl || key.alt || !turnByKey(solid_.angles, keyCode(key.key))) return false;
  solid_.background = BColor();
  solidChanged();
  return true;
}

void MainWindow::vtAngle_Changed(Param angle) {
  const float degrees = number(angle);
  if (angle == Param::Theta) setTheta(solid_.angles, degrees);
  if (angle == Param::Phi) setPhi(solid_.angles, degrees);
  if (angle == Param::Psi) setPsi(solid_.angles, degrees);
  solidChanged();
}

void MainWindow::vtLight_Changed() {
  if (solidShown()) solidChanged();
}

void MainWindow::UpdateRotator() {
  window_->setText(controlId("txtRDistance"), shortestText(solid_.angles.ViewDistance));
  const AngleFields degrees = anglesInDegrees(solid_.angles);
  for (const auto& [p, value] :
       {std::pair{Param::Theta, degrees.theta}, {Param::Phi, degrees.phi}, {Param::Psi, degrees.psi}}) {
    // What a turn shows is no entry of its own that Undo would have to step through.
    field(p).text.setUnDoing(true);
    setApplied(p, shownDegrees(value));
    field(p).text.setUnDoing(false);
  }
  Surface& surface = window_->surface(controlId("picNav"));
  drawRotator(surface, solid_.angles, QBColor(15));
  surface.refresh();
}

}  // namespace lorivan
