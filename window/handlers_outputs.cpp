// Handlers of what leaves the program: picture files, the metafile, the clipboard, files for 3-D programs.
#include "base/sink.h"
#include "base/texts.h"
#include "design/edits.h"
#include "design/outputs.h"
#include "design/source.h"
#include "design/vector_outputs.h"
#include "window/handlers.h"
#include "window/save_options.h"
#include "window/summaries.h"
#include "window/waiting.h"

namespace lorivan {
namespace {

constexpr std::string_view kMetafileProblem =
    "Sorry, there was a problem creating the .emf. Perhaps it's open in an image editor";

/// The formats of pictures beside bitmaps; lines and curves only where the picture is drawn with them.
std::vector<FileFilter> pictureFilters(bool curves) {
  std::vector<FileFilter> filters;
  for (const ExportFormat& format : exportFormats())
    if (format.carriesSource &&
        (format.kind == FormatKind::picture || (curves && format.kind == FormatKind::vector)))
      filters.push_back({tr("{1} files", format.label), std::string(format.extension)});
  return filters;
}

/// Models that no option button stands for are chosen in the dialog.
bool hasNoButton(const ExportFormat* format) {
  return format != nullptr && format->kind == FormatKind::model && format->option.empty();
}

std::vector<FileFilter> modelFilters() {
  std::vector<FileFilter> filters;
  for (const ExportFormat& format : exportFormats())
    if (hasNoButton(&format))
      filters.push_back({tr("{1} files", format.label), std::string(format.extension)});
  return filters;
}

}  // namespace

void Handlers::mnuFileSaveBMP_Click() {
  const bool solid = bench_.solidShown();
  // What is drawn with pixels alone cannot leave as lines and curves.
  const bool sheet = bench_.picture() == Picture::variations;
  const bool curves = !solid && (sheet || bench_.knotDrawn());
  const std::string path =
      bench_.files.NewFname(solid ? tr("3D-Knot BMP") : tr("2D-Knot BMP"), "bmp", pictureFilters(curves));
  const ActionQueue::Working working(bench_.actions);
  // The dialog is to go from the screen before the work begins: outlines of fine grids take seconds.
  if (path.empty() || !bench_.window.processEvents()) return;
  // The mark is for choosing only.
  if (sheet) bench_.variations.setPlain(true);
  std::string note;
  const auto bytes = [&] {
    const Hourglass hourglass(bench_.window);
    return pictureFile(extensionOf(path), solid, curves, note);
  }();
  if (sheet) bench_.variations.setPlain(false);
  if (!bytes) {
    bench_.status(tr("Could not save {1}: {2}", path, bytes.error().message));
    return;
  }
  const Status written = writeFile(path, *bytes);
  if (!written) return bench_.status(written.error().message);
  tellSaved(path);
  bench_.status(bench_.statusText() + note);
}

/// Options that were chosen once are easily forgotten.
void Handlers::tellSaved(const std::string& path, const std::string& more) {
  const bool options = bench_.saveOptions != OutputOptions{};
  bench_.status(options ? tr("Saved as {1}{2}, with the saving options", path, more)
                        : tr("Saved as {1}{2}", path, more));
}

/// The shown picture as a file of this kind; a name without an extension means a bitmap. `note` becomes what
/// its maker must know of it, "; " before each.
Result<std::string> Handlers::pictureFile(const std::string& extension, bool solid, bool curves,
                                          std::string& note) {
  if (bench_.picture() == Picture::variations) {
    if (extension == "svg") return bench_.variations.svg();
    if (extension.empty() || extension == "bmp" || extension == "png") return shownPicture(extension, false);
    return wrongUsage("variations are saved as bmp, png or svg, not as {1}", extension);
  }
  const ExportFormat* format = findFormat(extension.empty() ? "bmp" : extension, DxfKind::faces);
  const bool picture = format != nullptr && format->kind == FormatKind::picture;
  const bool drawing = curves && format != nullptr && format->kind == FormatKind::vector;
  if (!picture && !drawing)
    return wrongUsage("a picture is saved as {1}, not as {2}",
                      curves ? tr("bmp, png, svg, pdf or emf") : tr("bmp or png"), extension);
  const bool anew = (bench_.saveOptions.width || bench_.saveOptions.transparent) && (curves || solid);
  if (!drawing && !anew) return shownPicture(extension, solid);
  // Bands without room look otherwise than in the window.
  if (drawing && !asksForCut(bench_.saveOptions)) note = knotNotes(bench_.document(), bench_.knot());
  return knotOutput(format->extension, false, [&note](const std::string& text) { note += "; " + text; });
}

/// What is in front: the whole picture without marks, or the model as it is shown.
Result<std::string> Handlers::shownPicture(const std::string& extension, bool solid) {
  const PictureFormat format = extension == "png" ? PictureFormat::png : PictureFormat::bmp;
  const auto encode = [&](Surface& picture) { return bench_.platform.encodePicture(picture, format); };
  Result<std::string> bytes = unwritable("the height map could not be made");
  if (solid && bench_.document().fields.check(Check::HeightMap)) {
    if (Surface* const heights = bench_.solid.picBig(bench_.document())) bytes = encode(*heights);
  } else {
    bytes = bench_.lendPicture(encode);
  }
  if (!bytes || format != PictureFormat::png || !bench_.knotDrawn()) return bytes;
  return withPngSource(std::move(*bytes), sourceOf(outputJob(strandColours(bench_.document().fields.boxes))));
}

OutputJob Handlers::outputJob(const StrandColours& colours) const {
  OutputJob job{bench_.platform, bench_.document(), bench_.knot(), colours, bench_.saveOptions};
  job.options.solidView = bench_.solidShown();
  return job;
}

/// The drawn knot in a format of the format table.
Result<std::string> Handlers::knotOutput(std::string_view extension, bool bare, const NoteTeller& tellNote) {
  const StrandColours colours = strandColours(bench_.document().fields.boxes);
  OutputJob job = outputJob(colours);
  const Document withoutGrid = withCheck(job.document, Check::ShowGrid, false);
  job.note = tellNote;
  const OutputJob bareJob{job.platform, withoutGrid, job.knot, colours, job.options};
  MemorySink sink;
  const Status made = makeOutput(*findFormat(extension, DxfKind::faces), bare ? bareJob : job, sink);
  if (!made) return made.error();
  return std::move(sink.bytes);
}

void Handlers::mnuFileSaveOptions_Click() {
  const auto lines = bench_.window.chooseOptions(saveOptionsDialog(bench_.saveOptions));
  if (!lines) return;
  bench_.saveOptions = optionsOf(*lines);
  bench_.status(bench_.saveOptions == OutputOptions{} ? tr("Files are saved as usual")
                                                      : tr("Files are saved with these options from now on"));
}

void Handlers::mnuFileSaveEMF_Click() {
  const std::string path = bench_.files.toSave({tr("Saving Knot emf"), tr("{1} files", "EMF"), "emf"});
  if (path.empty()) return;
  const auto bytes = knotOutput("emf");
  const Status written = bytes ? writeFile(path, *bytes) : Status(bytes.error());
  if (written) return tellSaved(path);
  bench_.complain(translated(kMetafileProblem));
  bench_.status(written.error().message);
}

void Handlers::mnuEditCopy_Click() {
  Clipboard& clipboard = bench_.platform.clipboard();
  clipboard.clear();
  int width = 0, height = 0;
  const Status copied = bench_.lendPicture([&](Surface& picture) {
    width = picture.width();
    height = picture.height();
    return clipboard.putPicture(picture);
  });
  bench_.status(copied ? tr("The picture is on the clipboard, {1} x {2} pixels", width, height)
                       : copied.error().message);
}

/// The row for the option button that is chosen; null when none is.
const ExportFormat* Handlers::chosenFormat() const {
  const bool flat = bench_.document().fields.check(Check::DXF2D) || asksForCut(bench_.saveOptions);
  const DxfKind dxf = flat ? DxfKind::flat : DxfKind::faces;
  for (const ExportFormat& format : exportFormats())
    if (!format.option.empty() && bench_.window.checked(controlNamed(format.option)))
      return findSavedFormat(format.saveNumber, dxf);
  return nullptr;
}

/// The model that the format wants, from the fields as they are now; null when there is none, which the user
/// has been told. Where the format has its own number of sides the model shown is left alone.
std::shared_ptr<KnotModel> Handlers::modelFor(const ExportFormat& format) {
  if (format.sides == 0) {
    const bool built = bench_.modelCurrent() || bench_.buildModel(true);
    if (built && bench_.solidShown()) bench_.paintSolid();
    bench_.sortOut();
    return built ? bench_.solid.sharedModel() : nullptr;
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
    bench_.status(tr("Choose one of the 3D save formats first"));
    return;
  }
  Window& window = bench_.window;
  const ActionQueue::Working working(bench_.actions);
  std::shared_ptr<KnotModel> model = modelFor(*format);
  // Building a large model lets events in; the window may be closed by now.
  if (model == nullptr || !window.processEvents()) return;
  const std::string path =
      bench_.files.NewFname(std::string(format->label), std::string(format->extension), modelFilters());
  // The dialog is to go from the screen before the work begins.
  if (path.empty() || !window.processEvents()) return;
  if (const ExportFormat* const named = findFormat(extensionOf(path), DxfKind::faces); hasNoButton(named)) {
    format = named;
    model = modelFor(*format);
    if (model == nullptr || !window.processEvents()) return;
  }
  std::string note;
  const Status written = [&] {
    const Hourglass hourglass(window);
    return writeModel(*format, model, path, note);
  }();
  if (!written) return tellNotSaved(written.error());
  const bool body = bench_.saveOptions.solid && format->takesSolid;  // whose polygons are others
  tellSaved(path, body ? std::string() : trn(": {n} polygon", ": {n} polygons", model->built().QuadCount));
  if (!note.empty()) bench_.statusToo(note);
}

/// Limits and the template that is not there have messages of their own.
void Handlers::tellNotSaved(const Error& error) {
  const bool message = error.kind == ErrorKind::limit || error.kind == ErrorKind::input;
  if (message) bench_.complain(error.message);
  bench_.status(message ? tr("Nothing was saved") : error.message);
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
      bench_.status(tr("Saving {1}: {2} %", fileNameOf(path), percent));
  };
  const StrandColours colours = strandColours(bench_.document().fields.boxes);
  OutputJob job = outputJob(colours);
  job.progress = progress;
  job.note = [&note](const std::string& text) { note += (note.empty() ? "" : "; ") + text; };
  job.fileName = path;
  job.model = std::move(model);
  const Status made = makeOutput(format, job, **sink);
  // It knows why bytes were refused, the writer does not.
  if (const Status closed = (*sink)->close(); !closed) return closed;
  return made ? (*sink)->commit() : made;
}

}  // namespace lorivan
