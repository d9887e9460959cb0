// Pictures that leave the program: picture files, the metafile, the clipboard.
#include "app/main_window.h"
#include "app/outputs.h"
#include "base/sink.h"

namespace lorivan {
namespace {

constexpr std::string_view kMetafileProblem =
    "Sorry, there was a problem creating the .emf. Perhaps it's open in an image editor";
constexpr std::string_view kVector = "svg";

}  // namespace

void MainWindow::mnuFileSaveBMP_Click() {
  const bool solid = window_->visible(controlId("picKnot"));
  // What is drawn with pixels alone cannot leave as lines and curves.
  const bool curves = !solid && (knotDrawn_ || animation_ != nullptr);
  const std::string path = NewFname(solid ? "3D-Knot BMP" : "2D-Knot BMP", "bmp", curves ? "png svg" : "png");
  if (path.empty()) return;
  const auto bytes = pictureFile(extensionOf(path), solid, curves);
  if (!bytes) {
    status("Could not save " + path + ": " + bytes.error().message);
    return;
  }
  const Status written = writeFile(path, *bytes);
  status(written ? "Saved as " + path : written.error().message);
}

/// The shown picture as a file of this kind; a name without an extension means a bitmap.
Result<std::string> MainWindow::pictureFile(const std::string& extension, bool solid, bool curves) {
  if (extension == kVector && curves) return knotFile(kVector);
  const bool png = extension == "png";
  if (!png && !extension.empty() && extension != "bmp")
    return Error{"a picture is saved as " + std::string(curves ? "bmp, png or svg" : "bmp or png") +
                 ", not as " + extension};
  const PictureFormat format = png ? PictureFormat::png : PictureFormat::bmp;
  if (solid && checked(Check::HeightMap)) {
    Surface* const heights = picBig();
    if (heights == nullptr) return Error{"the height map could not be made"};
    return platform_.encodePicture(*heights, format);
  }
  return platform_.encodePicture(window_->surface(shownPicture()), format);
}

/// The drawn knot in a format of the format table.
Result<std::string> MainWindow::knotFile(std::string_view extension) {
  const KnotFields fields = knotFields();
  const OutputJob job{platform_, knot_, fields, colours_};
  MemorySink sink;
  if (const Status made = makeOutput(*findFormat(extension, DxfKind::faces), job, sink); !made)
    return made.error();
  return std::move(sink.bytes);
}

ControlId MainWindow::shownPicture() const {
  return window_->visible(controlId("picKnot")) ? controlId("picKnot") : controlId("picGrid");
}

void MainWindow::mnuFileSaveEMF_Click() {
  FileDialogSpec dialog;
  dialog.save = true;
  dialog.title = "Saving Knot emf";
  dialog.filterLabel = "EMF files";
  dialog.extensions = dialog.defaultExtension = "emf";
  dialog.overwritePrompt = true;
  const std::string path = chooseSaveFile(dialog);
  if (path.empty()) return;
  // The menu is enabled for a grid whose strands did not come out as well.
  if (!knotDrawn_ && !drawKnotAtOnce()) return;
  const auto bytes = knotFile("emf");
  const Status written = bytes ? writeFile(path, *bytes) : Status(bytes.error());
  if (written) {
    status("Saved as " + path);
    return;
  }
  complain(std::string(kMetafileProblem));
  status(written.error().message);
}

void MainWindow::mnuEditCopy_Click() {
  Surface& picture = window_->surface(shownPicture());
  platform_.clipboard().clear();
  const Status copied = platform_.clipboard().putPicture(picture);
  status(copied ? "The picture is on the clipboard, " + std::to_string(picture.width()) + " x " +
                      std::to_string(picture.height()) + " pixels"
                : copied.error().message);
}

}  // namespace lorivan
