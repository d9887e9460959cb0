// The knot as a file for other 3-D programs.
#include "app/knot_model.h"
#include "app/main_window.h"
#include "base/sink.h"

namespace lorivan {
namespace {

/// Whether an error is a message of its own for the user, and not a fault of the file.
bool isMessage(const Error& error) {
  for (const std::string_view text : {kTooManyPolygonsBudget, kTooManyPolygonsBuild, kTooManyPolygonsExport,
                                      kTooManyPolygonsVrml, kTooManyPolygonsObj, kMissingPovTemplate})
    if (error.message == text) return true;
  return false;
}

}  // namespace

/// The row for the option button that is chosen; null when none is.
const ExportFormat* MainWindow::chosenFormat() const {
  const DxfKind dxf = checked(Check::DXF2D) ? DxfKind::flat : DxfKind::faces;
  for (std::size_t i = 0; i < kSaveFormats.size(); ++i)
    if (window_->checked(kSaveFormats[i])) return findSavedFormat(static_cast<int>(i + 1), dxf);
  return nullptr;
}

/// The model that the format wants, from the fields as they are now; null when there is none, which the user
/// has been told. Where the format has its own number of sides the model shown is left alone.
const TubeModel* MainWindow::modelFor(const ExportFormat& format, KnotModel& own) {
  if (format.sides == 0) {
    if (!buildTubes()) return nullptr;
    solidChanged();
    status(modelSummary());
    return &solid_.model.built();
  }
  const Status built = own.build(knot_, knotFields(), colours_, format.sides);
  if (!built) complain(built.error().message);
  return built ? &own.built() : nullptr;
}

void MainWindow::mnuFileSave3D_Click() {
  const ExportFormat* format = chosenFormat();
  if (format == nullptr) {
    status("Choose one of the 3D save formats first");
    return;
  }
  const Working working(*this);
  KnotModel own;
  const TubeModel* model = modelFor(*format, own);
  // Building a large model lets events in; the window may be closed by now.
  if (model == nullptr || !window_->processEvents()) return;
  const std::string path = NewFname(std::string(format->label), std::string(format->extension));
  // The dialog is to go from the screen before the work begins.
  if (path.empty() || !window_->processEvents()) return;
  window_->setBusy(true);
  const Status written = writeModel(*format, *model, path);
  window_->setBusy(false);
  if (written) {
    status("Saved as " + path + ": " + std::to_string(model->QuadCount) + " polygons");
    return;
  }
  if (isMessage(written.error())) {
    complain(written.error().message);
    status("Nothing was saved");
  } else {
    status(written.error().message);
  }
}

/// A file that was there before stays as it is unless the new one is complete.
Status MainWindow::writeModel(const ExportFormat& format, const TubeModel& model, const std::string& path) {
  auto sink = FileSink::create(path);
  if (!sink) return sink.error();
  int shown = -1;
  const auto progress = [&](double part) {
    const int percent = static_cast<int>(100 * part);
    if (percent != std::exchange(shown, percent))
      status("Saving " + std::string(fileNameOf(path)) + ": " + std::to_string(percent) + " %");
  };
  const Status made = writeModelFile(format, platform_, knot_, knotFields(), model, {{}, progress}, **sink);
  // It knows why bytes were refused, the writer does not.
  if (const Status closed = (*sink)->close(); !closed) return closed;
  return made ? (*sink)->commit() : made;
}

}  // namespace lorivan
