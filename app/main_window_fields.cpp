// Change handlers of the fields, the form-wide undo and the colours.
#include "app/main_window.h"
#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr Colour kWhite = QBColor(15), kBlack = QBColor(0);

/// Text colour on a field that shows colour number `index`.
Colour textOn(int index) { return index < 9 ? kWhite : kBlack; }

// The fields that AllOlds records, in its order.
constexpr Param kAllOlds[] = {Param::XNo,        Param::YNo,        Param::Width,       Param::Edge,
                              Param::Theta,      Param::Phi,        Param::Psi,         Param::Swish,
                              Param::Smooth,     Param::Skew,       Param::CrossOffset, Param::Scale,
                              Param::PolyZF,     Param::RingPerc,   Param::PolySmooth,  Param::PolySides,
                              Param::PolyRadius, Param::PolyPoints, Param::NFact,       Param::Ks,
                              Param::KDist,      Param::Kd,         Param::Ka};

}  // namespace

void MainWindow::fieldConfirmed(Param p) {
  Field& f = field(p);
  const std::string shown = window_->text(fieldControl(p));
  const std::string typed = f.typed.empty() ? shown : std::exchange(f.typed, {});
  f.text.type(shown);
  f.text.pressEnter();
  window_->setText(fieldControl(p), f.text.Value());
  const ParamSpec& spec = parameterSpec(p);
  const bool corrected = typed != f.text.Value() && ChkNum(typed) != ChkNum(f.text.Value());
  const std::string note = std::string(trimmed(spec.caption)) + ": \"" + typed + "\" became " +
                           f.text.Value() + " (" + std::string(spec.min) + " to " + std::string(spec.max) +
                           ")";
  if (corrected) statusText_.clear();
  fieldChanged(p);
  if (corrected) statusToo(note);
}

void MainWindow::fieldChanged(Param p) {
  Field& f = field(p);
  if (f.text.Value() == f.lastApplied) return;
  const std::string oldText = std::exchange(f.lastApplied, f.text.Value());
  if (shape() == Shape::Custom)
    behindShape([&] { followUp(p, oldText); });
  else
    followUp(p, oldText);
}

void MainWindow::followUp(Param p, const std::string& oldText) {
  switch (parameterSpec(p).followUp) {
    case FollowUp::newGrid:
      ClearThread();
      cmdNewGrid_Click();
      break;
    case FollowUp::newGridOnly:
      cmdNewGrid_Click();
      break;
    case FollowUp::scale:
      vtScale_Changed(oldText);
      break;
    case FollowUp::style:
      styleChanged();
      break;
    case FollowUp::startColour:
      vtStartColour_Changed();
      break;
    case FollowUp::background:
      vtPicKnotBackColour_Changed();
      break;
    case FollowUp::animation:
      vtAnimate_Changed();
      break;
    case FollowUp::model:
      enable(controlId("cmd3D"), true);
      break;
    case FollowUp::light:
      vtLight_Changed();
      break;
    case FollowUp::angle:
      vtAngle_Changed(p);
      break;
    case FollowUp::alignmentGrid:
      vtGridSize_Changed();
      break;
  }
}

void MainWindow::vtScale_Changed(const std::string& oldText) {
  // The lines of a shape of one's own stay whatever the scale is: nothing to ask for.
  if (knotDrawn_ && shape() != Shape::Custom &&
      !window_->confirm("Changing scale will erase your current grid. OK to continue?",
                        "Scale change warning")) {
    setApplied(Param::Scale, shortestText(static_cast<float>(parseNumber(oldText).value_or(0))));
    return;
  }
  cmdNewGrid_Click();
}

void MainWindow::vtStartColour_Changed() {
  colourStartField();
  styleChanged();
}

void MainWindow::vtPicKnotBackColour_Changed() {
  colourBackField();
  if (window_->visible(controlId("picKnot"))) enable(controlId("cmd3D"), true);
  if (window_->visible(controlId("picGrid"))) styleChanged();
}

void MainWindow::styleChanged() {
  const bool again = knotDrawn_ && !checked(Check::Animate);
  ClearThread();
  if (again) cmd2D_Click();
}

void MainWindow::AllOlds() {
  for (const Param p : kAllOlds) field(p).lastApplied = field(p).text.Value();
}

void MainWindow::UndoLatest() {
  std::optional<Param> latest;
  float best = 0;
  for (ControlId control = 0; control < static_cast<ControlId>(formTable().size()); ++control) {
    const auto p = parameterOf(control);
    if (!p || field(*p).text.UndoLevel() <= 0 || !(field(*p).text.UndoTime() > best)) continue;
    latest = p;
    best = field(*p).text.UndoTime();
  }
  if (!latest) return;
  ValidText& text = field(*latest).text;
  text.setUnDoing(true);
  text.setUndoTime(-text.UndoTime());
  text.setUndoLevel(text.UndoLevel() - 1);
  setField(*latest, std::string(text.UndoText()));
  text.setUnDoing(false);
  status(std::string(trimmed(parameterSpec(*latest).caption)) + " shows " + text.Value() +
         " again; press Enter in it to apply");
}

Colour MainWindow::BColor() const { return lorivan::BColor(boxes_, whole(Param::PicKnotBackColour)); }

void MainWindow::colourBackField() {
  const int index = whole(Param::PicKnotBackColour);
  window_->setColours(fieldControl(Param::PicKnotBackColour), BColor(), textOn(index));
}

void MainWindow::colourStartField() {
  const int index = std::abs(whole(Param::StartColour));
  window_->setColours(fieldControl(Param::StartColour), colours_.display[static_cast<std::size_t>(index)],
                      textOn(index));
}

void MainWindow::txtCol_Click(int box) {
  const auto chosen = window_->chooseColour(boxes_[static_cast<std::size_t>(box)]);
  if (!chosen) return;
  boxes_[static_cast<std::size_t>(box)] = *chosen;
  window_->setColours(kFirstColourBox + box, *chosen, kBlack);
  setStrandColour(colours_, box, *chosen);
  colourStartField();
  colourBackField();
  styleChanged();
}

}  // namespace lorivan
