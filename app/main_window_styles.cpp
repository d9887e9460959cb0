// The Style menu: a style is shown while its item is under the pointer, and taken when it is chosen.
#include <memory>

#include "app/main_window.h"
#include "app/presets.h"

namespace lorivan {
namespace {

/// The fields that a style sets.
constexpr Param kStyleFields[] = {Param::Width,  Param::Edge,        Param::Swish,
                                  Param::Smooth, Param::StartColour, Param::PicKnotBackColour};

bool isStyle(CommandId command) { return command >= kFirstStyle && command <= kLastStyle; }

}  // namespace

void MainWindow::highlightedCommand(CommandId command) {
  if (working_ > 0 || !window_->visible(controlId("picGrid")) || knot_.graph.NoGrid) return;
  if (isStyle(command)) {
    previewStyle(command - kFirstStyle);
  } else if (previewing_) {
    previewing_ = false;
    paintPicture();
    status(statusBeforePreview_);
  }
}

/// Draws the knot in a style without touching the fields or the knot itself.
void MainWindow::previewStyle(int style) {
  KnotFields fields = knotFields();
  applyPreset(fields, style);
  const auto copy = std::make_unique<Knot>(knot_);
  if (!traceKnot(*copy, fields)) return;
  if (!previewing_) statusBeforePreview_ = statusText_;
  previewing_ = true;
  Surface& surface = window_->surface(controlId("picGrid"));
  const KnotStyle bands = knotStyle(fields, strandColours(fields.boxes));
  const GridView view = viewOf(*copy, fields, bands, surface.width(), true);
  drawKnotPicture(surface, copy->graph, copy->curve, bands, view, pictureOptions(fields));
  surface.refresh();
  status(std::string(presetTable()[static_cast<std::size_t>(style)].about));
}

void MainWindow::mnuStyle_Click(int style) {
  previewing_ = false;
  KnotFields fields = knotFields();
  applyPreset(fields, style);
  for (const Param p : kStyleFields) setApplied(p, fields.text(p));
  boxes_ = fields.boxes;
  colours_ = strandColours(boxes_);
  for (int box = 0; box < kColourBoxes; ++box)
    window_->setColours(kFirstColourBox + box, boxes_[static_cast<std::size_t>(box)], 0);
  colourBackField();
  colourStartField();
  behindShape([this] { cmd2D_Click(); });
}

}  // namespace lorivan
