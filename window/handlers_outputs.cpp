// Handlers of what leaves the program: picture files, the metafile, the clipboard, files for 3-D programs.
#include "base/sink.h"
#include "design/outputs.h"
#include "window/handlers.h"

namespace lorivan {
namespace {

constexpr std::string_view kMetafileProblem =
    "Sorry, there was a problem creating the .emf. Perhaps it's open in an image editor";
constexpr std::string_view kVector = "svg";

}  // namespace

void Handlers::mnuFileSaveBMP_Click() {
  const bool solid = bench_.solidShown();
  // What is drawn with pixels alone cannot leave as lines and curves.
  const bool curves = !solid && bench_.knotDrawn();
  const std::string path =
      bench_.files.NewFname(solid ? "3D-Knot BMP" : "2D-Knot BMP", "bmp", curves ? "png svg" : "png");
  if (path.empty()) return;
  const auto bytes = pictureFile(extensionOf(path), solid, curves);
  if (!bytes) {
    bench_.status("Could not save " + path + ": " + bytes.error().message);
    return;
  }
  const Status written = writeFile(path, *bytes);
  bench_.status(written ? "Saved as " + path : written.error().message);
}

/// The shown picture as a file of this kind; a name without an extension means a bitmap.
Result<std::string> Handlers::pictureFile(const std::string& extension, bool solid, bool curves) {
  if (extension == kVector && curves) return knotOutput(kVector);
  const bool png = extension == "png";
  if (!png && !extension.empty() && extension != "bmp")
    return wrongUsage("a picture is saved as " + std::string(curves ? "bmp, png or svg" : "bmp or png") +
                      ", not as " + extension);
  const PictureFormat format = png ? PictureFormat::png : PictureFormat::bmp;
  if (solid && bench_.document().fields.check(Check::HeightMap)) {
    Surface* const heights = bench_.solid.picBig(bench_.document());
    if (heights == nullptr) return unwritable("the height map could not be made");
    return bench_.platform.encodePicture(*heights, format);
  }
  return bench_.platform.encodePicture(bench_.window.surface(pictureInFront()), format);
}

/// The drawn knot in a format of the format table.
Result<std::string> Handlers::knotOutput(std::string_view extension) {
  const StrandColours colours = strandColours(bench_.document().fields.boxes);
  const OutputJob job{bench_.platform, bench_.document(), bench_.knot(), colours};
  MemorySink sink;
  if (const Status made = makeOutput(*findFormat(extension, DxfKind::faces), job, sink); !made)
    return made.error();
  return std::move(sink.bytes);
}

ControlId Handlers::pictureInFront() const {
  return bench_.solidShown() ? controlId("picKnot") : controlId("picGrid");
}

void Handlers::mnuFileSaveEMF_Click() {
  const std::string path = bench_.files.toSave({"Saving Knot emf", "EMF files", "emf"});
  if (path.empty()) return;
  const auto bytes = knotOutput("emf");
  const Status written = bytes ? writeFile(path, *bytes) : Status(bytes.error());
  if (written) {
    bench_.status("Saved as " + path);
    return;
  }
  bench_.complain(std::string(kMetafileProblem));
  bench_.status(written.error().message);
}

void Handlers::mnuEditCopy_Click() {
  Surface& picture = bench_.window.surface(pictureInFront());
  Clipboard& clipboard = bench_.platform.clipboard();
  clipboard.clear();
  const Status copied = clipboard.putPicture(picture);
  bench_.status(copied ? "The picture is on the clipboard, " + std::to_string(picture.width()) + " x " +
                             std::to_string(picture.height()) + " pixels"
                       : copied.error().message);
}

/// The row for the option button that is chosen; null when none is.
const ExportFormat* Handlers::chosenFormat() const {
  const DxfKind dxf = bench_.document().fields.check(Check::DXF2D) ? DxfKind::flat : DxfKind::faces;
  for (const ExportFormat& format : exportFormats())
    if (!format.option.empty() && bench_.window.checked(controlNamed(format.option)))
      return findSavedFormat(format.saveNumber, dxf);
  return nullptr;
}

/// The model that the format wants, from the fields as they are now; null when there is none, which the user
/// has been told. Where the format has its own number of sides the model shown is left alone.
std::shared_ptr<KnotModel> Handlers::modelFor(const ExportFormat& format) {
  if (format.sides == 0) {
    if (!bench_.modelCurrent() && !bench_.buildModel(true)) return nullptr;
    if (bench_.solidShown()) bench_.paintSolid();
    return bench_.solid.sharedModel();
  }
  const Document& document = bench_.document();
  auto own = std::make_shared<KnotModel>();
  const Status built =
      own->build(bench_.knot(), document.fields, strandColours(document.fields.boxes), format.sides);
  if (!built) bench_.tell(built.error());
  return built ? own : nullptr;
}

void Handlers::mnuFileSave3D_Click() {
  const ExportFormat* format = chosenFormat();
  if (format == nullptr) {
    bench_.status("Choose one of the 3D save formats first");
    return;
  }
  Window& window = bench_.window;
  const Deeds::Working working(bench_.deeds);
  const std::shared_ptr<KnotModel> model = modelFor(*format);
  // Building a large model lets events in; the window may be closed by now.
  if (model == nullptr || !window.processEvents()) return;
  const std::string path = bench_.files.NewFname(std::string(format->label), std::string(format->extension));
  bench_.sortOut();
  // The dialog is to go from the screen before the work begins.
  if (path.empty() || !window.processEvents()) return;
  window.setBusy(true);
  std::string note;
  const Status written = writeModel(*format, model, path, note);
  window.setBusy(false);
  if (written) {
    bench_.status("Saved as " + path + ": " + std::to_string(model->built().QuadCount) + " polygons");
    if (!note.empty()) bench_.statusToo(note);
    return;
  }
  const ErrorKind kind = written.error().kind;
  // Limits and the template that is not there have messages of their own.
  const bool message = kind == ErrorKind::limit || kind == ErrorKind::input;
  if (message) bench_.complain(written.error().message);
  bench_.status(message ? "Nothing was saved" : written.error().message);
}

/// A file that was there before stays as it is unless the new one is complete. `note` is what its maker must
/// know of it.
Status Handlers::writeModel(const ExportFormat& format, std::shared_ptr<KnotModel> model,
                            const std::string& path, std::string& note) {
  auto sink = FileSink::create(path);
  if (!sink) return sink.error();
  int shown = -1;
  const auto progress = [&](double part) {
    const int percent = static_cast<int>(100 * part);
    if (percent != std::exchange(shown, percent))
      bench_.status("Saving " + std::string(fileNameOf(path)) + ": " + std::to_string(percent) + " %");
  };
  const StrandColours colours = strandColours(bench_.document().fields.boxes);
  OutputJob job{bench_.platform, bench_.document(), bench_.knot(), colours};
  job.progress = progress;
  job.note = [&note](const std::string& text) { note = text; };
  job.fileName = path;
  job.model = std::move(model);
  const Status made = makeOutput(format, job, **sink);
  // It knows why bytes were refused, the writer does not.
  if (const Status closed = (*sink)->close(); !closed) return closed;
  return made ? (*sink)->commit() : made;
}

}  // namespace lorivan
