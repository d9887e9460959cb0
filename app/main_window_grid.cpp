// The grid: building, showing and editing it, and random knots.
#include "app/main_window.h"
#include "app/random_knot.h"
#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr std::string_view kKindWords[] = {
    "is taken out: strands pass as if it were not there", "is an ordinary line: strands cross on it",
    "is a wall: strands turn back at it", "is reversed: over and under start the other way round"};

// The fields that a random knot draws.
constexpr Param kRandomFields[] = {Param::XNo,   Param::YNo,         Param::Scale,
                                   Param::Swish, Param::CrossOffset, Param::Smooth,
                                   Param::Width, Param::Edge,        Param::StartColour};

}  // namespace

void MainWindow::cmdNewGrid_Click() {
  const KnotFields asked = knotFields();
  if (asked.shape == Shape::Custom) {
    customGridAsked();
    return;
  }
  const auto built = buildStandardGrid(knot_.graph, gridFields(asked), randomKnot_ ? &random_ : nullptr);
  if (built)
    takeBuiltGrid(*built, asked);
  else
    complain(built.error().message);
  gridShown();
  enable(controlId("cmdOldGrid"), true);
  enable(controlId("cmd3DView"), false);
  paintGrid();
  status(built ? gridSummary() : "The grid could not be made");
}

/// Shows the counts, scale and offset that the grid was really built with. They count as acted on.
void MainWindow::takeBuiltGrid(const StandardGrid& grid, const KnotFields& asked) {
  KnotFields corrected = asked;
  takeCorrections(corrected, grid.fields);
  for (const Param p : {Param::XNo, Param::YNo, Param::CrossOffset, Param::Scale})
    if (corrected.text(p) != asked.text(p)) setApplied(p, corrected.text(p));
}

void MainWindow::cmdOldGrid_Click() {
  gridShown();
  paintGrid();
}

void MainWindow::gridShown() {
  knotDrawn_ = false;
  window_->setText(controlId("txtNPoly"), "");
  enable(controlId("cmd2D"), !knot_.graph.NoGrid);
  enable(controlId("cmd3D"), false);
  enable(controlId("cmd2DView"), false);
  enableCommand(commandId("mnuFileSaveEMF"), false);
  enableCommand(commandId("mnuFileSave3D"), false);
  showPicture(Shown::grid);
}

void MainWindow::paintGrid() {
  const KnotFields fields = knotFields();
  Surface& surface = window_->surface(controlId("picGrid"));
  const PictureOptions options = pictureOptions(fields);
  surface.clear(options.background);
  view_ = viewOf(knot_, fields, knotStyle(fields, colours_), surface.width(), false);
  const Status drawn = DrawGrid(knot_.graph, surface, view_, options.grid);
  surface.refresh();
  if (!drawn) complain(drawn.error().message);
}

void MainWindow::paintPicture() {
  if (animation_ != nullptr)
    repaintAnimation();
  else if (knotDrawn_)
    paintKnot();
  else
    paintGrid();
}

std::string MainWindow::gridSummary() const {
  const KnotFields fields = knotFields();
  return std::string(shapeTable()[static_cast<std::size_t>(fields.shape)].name) + ", " +
         fields.text(Param::XNo) + " x " + fields.text(Param::YNo) + ", scale " + fields.text(Param::Scale) +
         ": " + std::to_string(knot_.graph.LastLine + 1) + " lines";
}

void MainWindow::cmdRandknot_Click() {
  const Working working(*this);
  const std::string caption = window_->text(controlId("cmdRandknot"));
  window_->setText(controlId("cmdRandknot"), "wait...");
  KnotFields drawn = knotFields();
  drawRandomFields(drawn, checked(Check::ConstantShape), random_);
  window_->select(controlId("lstType"), static_cast<int>(drawn.shape));
  lstType_Click();
  for (const Param p : kRandomFields) setField(p, drawn.text(p));
  AllOlds();
  setApplied(Param::StartColour, drawn.text(Param::StartColour));
  colourStartField();
  randomKnot_ = true;
  cmdNewGrid_Click();
  randomKnot_ = false;
  if (window_->processEvents()) {
    // An animation is no time of waiting.
    window_->setBusy(!checked(Check::Animate));
    if (checked(Check::Animate)) window_->setText(controlId("cmdRandknot"), caption);
    cmd2D_Click();
    window_->setBusy(false);
  }
  window_->setText(controlId("cmdRandknot"), caption);
}

void MainWindow::lstType_Click() {
  if (shape() == Shape::Custom) {
    ShapeVisible(true);
    status(shapeSummary());
  } else if (!starting_) {
    cmdNewGrid_Click();
  }
  showOffsetField();
}

void MainWindow::showOffsetField() {
  const std::string_view label = shapeTable()[static_cast<std::size_t>(shape())].offsetLabel;
  window_->setVisible(controlId("lblXF"), !label.empty());
  window_->setVisible(fieldControl(Param::CrossOffset), !label.empty());
  if (!label.empty()) window_->setText(controlId("lblXF"), std::string(label));
}

void MainWindow::showPicture(Shown shown) {
  window_->setVisible(controlId("picGrid"), shown == Shown::grid);
  window_->setVisible(controlId("picKnot"), shown == Shown::knot);
  window_->setVisible(controlId("picShape"), shown == Shown::shape);
  window_->setCommandChecked(commandId("mnuShapeView"), shown == Shown::shape);
}

int MainWindow::lineAt(int x, int y) const {
  return FindLine(knot_.graph, static_cast<float>(view_.gridX(x)), static_cast<float>(view_.gridY(y)));
}

void MainWindow::picGrid_Mouse(const MouseEvent& event) {
  const int line = event.action == MouseAction::leave ? -1 : lineAt(event.x, event.y);
  const PointerShape pointer = line >= 0 ? PointerShape::hand : PointerShape::arrow;
  if (pointer != pointer_) window_->setPointer(controlId("picGrid"), pointer);
  pointer_ = pointer;
  if (event.action != MouseAction::press || line < 0) return;
  if (event.button == 1) stepLineKind(line, 1);
  if (event.button == 2) stepLineKind(line, 3);
}

/// Kinds follow each other 1, 2, 3, 0 and round again; three steps on are one back.
void MainWindow::stepLineKind(int line, int step) {
  std::int16_t& kind = knot_.graph.Lines[static_cast<std::size_t>(line)].Kind;
  kind = static_cast<std::int16_t>((kind + step) & 3);
  enable(controlId("cmd3DView"), false);
  const std::string words = "Line " + std::to_string(line + 1) + ' ' + std::string(kKindWords[kind]);
  if (knotDrawn_) {
    knotDrawn_ = false;
    if (drawKnotAtOnce()) {
      modelFollowsKnot();
      status(words + "; " + knotSummary());
      return;
    }
    gridShown();
  }
  paintGrid();
  status(words);
}

}  // namespace lorivan
