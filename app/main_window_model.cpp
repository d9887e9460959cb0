// The 3-D model: building it from the traced knot, painting it, and switching between the two views.
#include "app/main_window.h"

namespace lorivan {
namespace {

constexpr std::int64_t kLargeModel = 100'000;  // polygons; from here on the work is felt

/// Shows the hourglass while it lives, if it is worth it.
class Hourglass {
 public:
  Hourglass(Window& window, std::int64_t polygons) : window_(window), shown_(polygons >= kLargeModel) {
    if (shown_) window_.setBusy(true);
  }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;
  ~Hourglass() {
    if (shown_) window_.setBusy(false);
  }
  bool shown() const { return shown_; }

 private:
  Window& window_;
  bool shown_;
};

}  // namespace

void MainWindow::cmd3D_Click() {
  bool made = false;
  if (knotDrawn_) {
    made = buildTubes();
  } else {
    // The strands kept may be those of another grid; drawing the knot builds the model as well.
    cmd2D_Click();
    made = knotDrawn_ && window_->enabled(controlId("cmd3DView"));
  }
  if (made) cmd3DView_Click();
}

void MainWindow::modelFollowsKnot() {
  const bool made = buildTubes();
  enable(controlId("cmd3DView"), made);
  enable(controlId("cmd2DView"), false);
  if (made) return;
  enable(controlId("cmd3D"), true);
  enableCommand(commandId("mnuFileSave3D"), false);
}

bool MainWindow::buildTubes() {
  const Working working(*this);
  const KnotFields fields = knotFields();
  const std::int64_t polygons = polygonBudget(knot_.strands, tubeSettings(fields));
  const ControlId button = controlId("cmd3D");
  const std::string caption = window_->text(button);
  window_->setText(button, "wait..");
  Status built;
  {
    const Hourglass hourglass(*window_, polygons);
    if (hourglass.shown()) status("Building " + std::to_string(polygons) + " polygons ...");
    if (!hourglass.shown() || window_->processEvents()) built = solid_.model.build(knot_, fields, colours_);
  }
  window_->setText(button, caption);
  if (!built) {
    complain(built.error().message);
    status("No model: it would have " + std::to_string(polygons) + " polygons");
    return false;
  }
  if (solid_.model.built().QuadCount == 0) return false;
  solid_.drag = {};
  solid_.heightMap = fields.check(Check::HeightMap);
  solid_.background = BColor();
  window_->setText(controlId("txtNPoly"), std::to_string(polygons));
  enable(button, false);
  enableCommand(commandId("mnuFileSave3D"), true);
  return true;
}

std::string MainWindow::modelSummary() const {
  return knotSummary() + ", " + std::to_string(solid_.model.built().QuadCount) + " polygons";
}

void MainWindow::cmd2DView_Click() {
  // The background may have changed while the other picture was shown.
  if (window_->surface(controlId("picGrid")).background() != BColor()) paintPicture();
  showPicture(Shown::grid);
  enable(controlId("cmd3DView"), true);
  enable(controlId("cmd2DView"), false);
}

void MainWindow::cmd3DView_Click() {
  const Hourglass hourglass(*window_, solid_.model.built().QuadCount);
  paintSolid();
  UpdateRotator();
  showPicture(Shown::knot);
  window_->setText(controlId("txtNPoly"), std::to_string(solid_.model.built().QuadCount));
  enable(controlId("cmd2DView"), true);  // takes over the focus of the other one
  enable(controlId("cmd3DView"), false);
  status(modelSummary());
}

bool MainWindow::solidShown() const {
  return window_->enabled(controlId("cmd2DView")) && window_->visible(controlId("picKnot"));
}

void MainWindow::paintSolid() {
  Surface& surface = window_->surface(controlId("picKnot"));
  surface.clear(solid_.background);
  solid_.renderer.render(solid_.model.built(), lightSettings(knotFields()), solid_.angles, solid_.background,
                         solid_.heightMap, surface.lendPixels());
  surface.refresh();
  if (const std::string fault = surface.fault(); !fault.empty()) status("The picture is not whole: " + fault);
}

void MainWindow::solidChanged() {
  if (solidShown()) paintSolid();
  UpdateRotator();
}

Surface* MainWindow::picBig() {
  const Surface& shown = window_->surface(controlId("picKnot"));
  const int width = 2 * shown.width(), height = 2 * shown.height();
  const TubeModel& model = solid_.model.built();
  if (model.QuadCount == 0) return nullptr;
  auto made = platform_.createSurface(width, height);
  if (!made) return nullptr;
  solid_.picBig = std::move(*made);
  solid_.picBig->clear(solid_.background);
  solid_.renderer.render(model, lightSettings(knotFields()), solid_.angles, solid_.background, true,
                         solid_.picBig->lendPixels());
  return solid_.picBig.get();
}

}  // namespace lorivan
