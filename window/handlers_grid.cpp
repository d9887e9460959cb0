// Handlers of the hand on the flat picture: lines, strands, symmetry, and how closely it is looked at.
#include "base/numbers.h"
#include "base/texts.h"
#include "design/edits.h"
#include "design/kept_walls.h"
#include "design/vector_outputs.h"
#include "window/handlers.h"
#include "window/summaries.h"

namespace lorivan {
namespace {

constexpr ControlId kGridPicture = controlId("picGrid");
constexpr int kLeft = 1, kRight = 2;

}  // namespace

void Handlers::picGrid_Mouse(const MouseEvent& event) {
  if (bench_.picture() == Picture::variations) return variationsMouse(event);
  GridHand& hand = bench_.hand;
  if (bench_.flat.lens.moved(event, bench_.window.surface(kGridPicture).width())) bench_.paintFlat();
  const auto at = bench_.flat.place(event.x, event.y);
  switch (event.action) {
    case MouseAction::press:
      if (event.button == kLeft || event.button == kRight) hand.press(event.button, at);
      break;
    case MouseAction::release:
      bench_.session.endRun();
      if (const auto click = hand.release()) clickGrid(*click);
      break;
    case MouseAction::doubleClick:
      if (event.button == kLeft) recolourStrand(event);
      break;
    case MouseAction::leave:
      hoverLine(-1);
      break;
    case MouseAction::move:
    case MouseAction::wheel:
      if (hand.button() != 0)
        stroke(at);
      else
        hoverLine(bench_.flat.lineAt(bench_.knot(), event.x, event.y));
      break;
  }
}

/// The status line explains the line while the pointer is on it.
void Handlers::hoverLine(int line) {
  bench_.flat.setPointer(line >= 0);
  if (line == std::exchange(bench_.hand.hovered, line)) return;
  bench_.showMarks();
  bench_.hint(line < 0 ? std::string()
                       : lineHint(bench_.document(), line, bench_.symmetry.imagesOf(line).size()));
}

void Handlers::clickGrid(const GridHand::Click& click) {
  const int line = bench_.flat.lineAt(bench_.knot(), click.at.x, click.at.y);
  if (line >= 0)
    stepLineKind(line, click.button == kLeft ? 1 : 3);
  else if (click.button == kLeft)
    pickStrand(bench_.knotDrawn()
                   ? bench_.flat.strandAt(bench_.document(), bench_.knot(), click.at.x, click.at.y)
                   : 0);
}

/// Kinds follow each other 1, 2, 3, 0 and round again; three steps on are one back.
void Handlers::stepLineKind(int line, int steps) {
  const Document next = stepLine(bench_.document(), line, steps, bench_.symmetry.inForce());
  const int kind = (*next.lines)[line].Kind;
  bench_.step(kindStep(kind), next, afterLines());
  const std::string told = lineSummary(next, line);
  bench_.status(bench_.knotDrawn() ? tr("{1}; {2}", told, bench_.summary()) : told);
}

/// Lines leave the picture in front as it is, but for a grid that waits for Create 2D.
After Handlers::afterLines() const {
  return bench_.knotDrawn() || bench_.drawAtOnce ? After::same : After::grid;
}

/// The left button leaves walls where it passes, the right one ordinary lines.
void Handlers::stroke(const GridHand::Place& at) {
  GridHand& hand = bench_.hand;
  const std::vector<int> passed = hand.move(bench_.knot().graph, at, bench_.flat.slack());
  if (hand.stroking()) hoverLine(-1);
  if (passed.empty()) return;
  const bool walls = hand.button() == kLeft;
  const Document next =
      withKind(bench_.document(), passed, walls ? kWall : kOrdinary, bench_.symmetry.inForce());
  if (next == bench_.document()) return;
  bench_.step(walls ? tr("Walls") : tr("Ordinary lines"), next, afterLines(), "stroke");
  bench_.status(trn("{n} wall; {1}", "{n} walls; {1}", wallCount(next), bench_.summary()));
}

void Handlers::pickStrand(int slot) {
  if (slot == 0 && bench_.flat.markedStrand() == 0) return;
  if (slot != bench_.flat.markedStrand()) {
    bench_.markStrand(slot);
    bench_.solidShown() ? bench_.solid.paintMark(bench_.document()) : bench_.paintFlat();
  }
  if (slot == 0) return bench_.status(bench_.summary());
  bench_.status(strandSummary(bench_.knot(), slot,
                              strandMillimetres(bench_.document(), bench_.knot(), bench_.saveOptions, slot)));
}

void Handlers::recolourStrand(const MouseEvent& event) {
  if (!bench_.knotDrawn() || bench_.flat.lineAt(bench_.knot(), event.x, event.y) >= 0) return;
  const int slot = bench_.flat.strandAt(bench_.document(), bench_.knot(), event.x, event.y);
  if (slot == 0) return;
  // The dialog may swallow the release.
  static_cast<void>(bench_.hand.release());
  recolourStrand(slot);
}

void Handlers::recolourStrand(int slot) {
  pickStrand(slot);
  if (const auto box = colourBoxOf(bench_.document().fields, slot))
    chooseColour(*box);
  else
    bench_.status(tr("Strand colour 15 is always white: a start colour above or below leads round it"));
}

bool Handlers::flatKey(const KeyEvent& key) {
  if (bench_.flat.lens.key(key.key)) {
    bench_.paintFlat();
    return true;
  }
  if (!key.onPicture || !bench_.document().lines) return false;
  switch (key.key) {
    case Key::left:
      return walk(-1, 0);
    case Key::right:
      return walk(1, 0);
    case Key::up:
      return walk(0, 1);
    case Key::down:
      return walk(0, -1);
    case Key::space:
      if (bench_.hand.walk.line() < 0) return walk(0, 0);
      stepLineKind(bench_.hand.walk.line(), key.shift ? 3 : 1);
      return true;
    case Key::escape:
      if (bench_.hand.walk.line() < 0 && bench_.flat.markedStrand() == 0) return false;
      bench_.hand.walk.end();
      bench_.showMarks();
      pickStrand(0);
      return true;
    default:
      return false;
  }
}

/// The first step shows where the keyboard is: at the line under the pointer, or in the middle of the
/// picture.
bool Handlers::walk(int dx, int dy) {
  GridHand& hand = bench_.hand;
  const Surface& picture = bench_.window.surface(kGridPicture);
  const auto middle = bench_.flat.place(picture.width() / 2, picture.height() / 2).grid;
  if (hand.walk.line() < 0)
    hand.walk.start(hand.hovered >= 0 ? hand.hovered : nearestLine(bench_.knot().graph, middle));
  else
    hand.walk.step(bench_.knot().graph, dx, dy);
  const int line = hand.walk.line();
  if (line < 0) return false;
  bench_.showMarks();
  bench_.status(lineHint(bench_.document(), line, bench_.symmetry.imagesOf(line).size()));
  return true;
}

void Handlers::mnuEditLines_Click() {
  bench_.window.focus(kGridPicture);
  if (bench_.hand.walk.line() < 0) walk(0, 0);
}

void Handlers::mnuSymmetry_Click(const Symmetry& symmetry) {
  bench_.symmetry.choose(symmetry, bench_.knot().graph);
  bench_.hand.hovered = -1;
  bench_.showMarks();
  bench_.sortOut();
  bench_.status(symmetry.isNone() ? tr("Every line is changed by itself")
                                  : tr("Lines that are each other's image are changed together"));
}

void Handlers::mnuSymmetryTurns_Click(std::size_t place) {
  const auto& turns = bench_.symmetry.turns();
  if (place < turns.size()) mnuSymmetry_Click({false, false, turns[place]});
}

void Handlers::mnuStrands_Click(int strands) { setStrands(strands); }

void Handlers::mnuStrandsMost_Click() { setStrands(std::nullopt); }

void Handlers::mnuStrandsOther_Click() {
  const std::string text =
      bench_.window.inputBox(tr("How many strands is the knot to have?"), tr("Strands"), "7");
  if (text.empty()) return;
  if (const auto number = parseInteger(trimmed(text), 1, kMostStrands))
    setStrands(static_cast<int>(*number));
  else
    bench_.status(tr("A knot has 1 to {1} strands", kMostStrands));
}

/// Walls come and go until the knot has so many strands; none: as many as possible.
void Handlers::setStrands(std::optional<int> strands) {
  const std::string name = !strands ? tr("Most strands") : countedStrands(*strands);
  const Document before = bench_.document();
  const auto next = withStrands(before, strands, bench_.symmetry.inForce());
  // What changes is to be seen.
  if (bench_.picture() == Picture::sheet || bench_.picture() == Picture::variations) cmd2DView_Click();
  if (!bench_.step(name, next, afterLines())) return;
  const bool same = before == bench_.document();
  bench_.status(same ? tr("{1}: no wall had to be changed", bench_.summary())
                     : tr("{1}; Ctrl+Z brings the walls back", bench_.summary()));
}

void Handlers::mnuViewWhole_Click() {
  bench_.flat.lens.reset();
  bench_.solid.resetLens();
  bench_.solidShown() ? bench_.paintSolid() : bench_.paintFlat();
}

}  // namespace lorivan
