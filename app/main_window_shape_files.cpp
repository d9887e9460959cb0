// Shapes of one's own: their files, the picture to trace, and the grids made from them.
#include "app/custom_grid.h"
#include "app/main_window.h"
#include "base/sink.h"
#include "custom/shape_file.h"

namespace lorivan {
namespace {

constexpr std::string_view kPattern = "*.qzc";
constexpr std::string_view kPictureExtensions = "bmp png jpg jpeg";

bool names(const std::string& path) { return !path.empty() && lowerCase(fileNameOf(path)) != kPattern; }

}  // namespace

FileDialogSpec MainWindow::shapeDialog(bool save) const {
  FileDialogSpec dialog;
  dialog.save = save;
  dialog.title = "Select an shape file";
  dialog.filterLabel = "Lorivan custom files";
  dialog.extensions = kShapeFileExtension;
  dialog.initialName = folderFor(kPattern);
  dialog.defaultExtension = kShapeFileExtension;
  dialog.overwritePrompt = save;
  return dialog;
}

void MainWindow::mnuShapeSaveFile_Click() {
  const std::string path = window_->chooseFile(shapeDialog(true));
  rememberFolder(path);
  if (!names(path)) return;
  if (const Status saved = saveShapeFile(path, desk_.editor.shape()); !saved) {
    status(saved.error().message);
    return;
  }
  setCaption(path);
  status("Saved as " + path);
}

void MainWindow::mnuShapeLoadFile_Click() {
  const std::string path = window_->chooseFile(shapeDialog(false));
  rememberFolder(path);
  if (names(path)) loadShape(path);
}

void MainWindow::loadShape(const std::string& path) {
  auto shape = loadShapeFile(path);
  if (!shape) {
    status("Could not load " + shape.error().message);
    return;
  }
  desk_.picture.clear();
  showNewShape(std::move(*shape));
  keepForUndo();
  sortOutShapeMenu();
  enableCommand(commandId("mnuShapeMakeGrid"), true);
  enableCommand(commandId("mnuFileSaveEMF"), false);
  enable(controlId("cmd2D"), false);
  setCaption(path);
  status("Loaded " + path + ". " + shapeSummary());
}

void MainWindow::mnuShapeLoadPicture_Click() {
  FileDialogSpec dialog;
  dialog.title = "Select a picture to trace";
  dialog.filterLabel = "Pictures";
  dialog.extensions = kPictureExtensions;
  dialog.initialName = folderFor("");
  const std::string path = window_->chooseFile(dialog);
  if (!path.empty()) loadTracePicture(path);
}

bool MainWindow::isPicture(const std::string& path) {
  const std::string extension = extensionOf(path);
  return !extension.empty() &&
         (' ' + std::string(kPictureExtensions) + ' ').find(' ' + extension + ' ') != std::string::npos;
}

void MainWindow::loadTracePicture(const std::string& path) {
  rememberFolder(path);
  if (const Status loaded = desk_.picture.load(platform_, path); !loaded) {
    status("Could not load " + path + ": " + loaded.error().message);
    return;
  }
  chooseCustom();
  sortOutShapeMenu();
  ShapeVisible(true);
  status("Draw the outline over the picture; Clear in the Shape menu takes the picture away");
}

void MainWindow::mnuShapeMakeGrid_Click() {
  showCustomGrid(lineGridOf(knot_.graph, desk_.editor.shape(), knotFields()), "New Grid");
}

void MainWindow::mnuShapeAutoGrid_Click() {
  showCustomGrid(autoGridOf(knot_.graph, desk_.editor.shape(), knotFields()), "AutoGrid");
}

/// A grid that could not be made leaves everything as it was.
void MainWindow::showCustomGrid(const Status& made, const std::string& name) {
  if (!made) {
    if (isGridMessage(made.error())) complain(made.error().message);
    status(isGridMessage(made.error()) ? "No grid was made: the knot would be too complicated"
                                       : made.error().message);
    return;
  }
  chooseCustom();
  gridShown();
  enable(controlId("cmdOldGrid"), true);
  enable(controlId("cmd3DView"), false);
  paintGrid();
  const KnotFields fields = knotFields();
  const bool tight = strandsRunTogether(knot_.graph, fields, knotStyle(fields, colours_));
  status(name + ": " + std::to_string(knot_.graph.LastLine + 1) + " lines. Create 2D draws the knot" +
         (tight ? "; its strands will run together: lower Width, Edge or AGS" : ""));
}

}  // namespace lorivan
