// Handlers of knot files: load, save, drop, recent ones, and the help.
#include <algorithm>

#include "base/sink.h"
#include "base/texts.h"
#include "custom/shape_file.h"
#include "design/names.h"
#include "design/outline_files.h"
#include "design/settings_table.h"
#include "design/source.h"
#include "export/formats.h"
#include "window/handlers.h"
#include "window/languages.h"

namespace lorivan {
namespace {

FileQuestion knotQuestion(const std::string& title) {
  return {title, tr("Lorivan files"), std::string(kKnotFileExtension)};
}

/// Whether the file's name tells how it is loaded.
bool hasKnownKind(const std::string& path) {
  return canHoldKnot(path) || isDrawing(path) || isPicture(path) || extensionOf(path) == kShapeFileExtension;
}

}  // namespace

bool Handlers::mayLeave(const std::string& question) {
  if (!bench_.session.modified()) return true;
  switch (bench_.window.askToSave(question, "Lorivan")) {
    case SaveAnswer::save:
      return extensionOf(bench_.session.path()) == kKnotFileExtension ? saveKnot(bench_.session.path())
                                                                      : saveAs();
    case SaveAnswer::discard:
      return true;
    case SaveAnswer::cancel:
      break;
  }
  return false;
}

bool Handlers::mnuFileSave_Click() {
  const std::string& path = bench_.session.path();
  return extensionOf(path) == kKnotFileExtension ? saveKnot(path) : saveAs();
}

/// The open file's name without its extension, or the shape's; without brackets.
std::string Handlers::knotName() const {
  std::string name(fileNameOf(bench_.session.path()));
  name = name.substr(0, name.rfind('.'));
  if (name.empty()) name = shapeName(bench_.document().fields.shape);
  std::erase_if(name, [](char c) { return c == '(' || c == ')'; });
  return name;
}

bool Handlers::mnuFileSaveAs_Click() { return saveAs(knotName() + '.' + std::string(kKnotFileExtension)); }

bool Handlers::saveAs(const std::string& proposed) {
  FileQuestion question = knotQuestion(tr("Saving knot configuration - Enter your Lorivan file name"));
  question.proposed = proposed;
  const std::string path = bench_.files.toSave(question);
  if (path.empty()) return false;
  if (hasKnownKind(path) && extensionOf(path) != kKnotFileExtension) {
    bench_.status(tr("Not saved: {1} would not open again, since knot files end in .qzd", fileNameOf(path)));
    return false;
  }
  return saveKnot(path);
}

bool Handlers::saveKnot(const std::string& path) {
  const Document& document = bench_.document();
  const Status written = writeFile(path, documentText(withPasses(document, bench_.knot().graph)));
  if (!written) {
    bench_.window.message(translated(kKnotFileProblem), "", MessageIcon::none);
    bench_.status(written.error().message);
    return false;
  }
  bench_.session.saved(path);
  remember(path);
  bench_.showCaption();
  bench_.status(tr("Saved as {1}", path));
  return true;
}

void Handlers::mnuFileLoad_Click() {
  FileQuestion question = knotQuestion(tr("Enter your Lorivan file name"));
  std::string carriers;
  for (const ExportFormat& format : exportFormats())
    if (format.carriesSource) carriers.append(format.extension).append(" ");
  carriers.pop_back();
  question.others = {{tr("Files that hold their knot"), carriers}};
  const std::string path = bench_.files.toLoad(question);
  if (!path.empty()) loadFile(path);
}

void Handlers::mnuFileRecent_Click(std::size_t place) {
  if (place >= bench_.recentFiles.size()) return;
  const std::string path = bench_.recentFiles[place];
  loadFile(path);
}

void Handlers::fileDropped(const std::string& path) {
  if (!hasKnownKind(path))
    return bench_.status(
        tr("{1} is no knot file (*.qzd), shape file (*.qzc), drawing or picture, and no file that holds its "
           "knot",
           fileNameOf(path)));
  bench_.files.rememberFolder(path);
  loadFile(path);
}

/// The working folder may be another one when the file is saved, or opened again.
void Handlers::openFile(const std::string& name) {
  const std::string path = absolutePath(name);
  bench_.files.rememberFolder(path);
  loadFile(path);
}

/// What has no knot in it is there to be traced, or gives its outline.
void Handlers::loadFile(const std::string& path) {
  if (extensionOf(path) == kShapeFileExtension)
    loadShape(path);
  else if (!isOutlineFile(path))
    loadKnot(path);
  else
    isPicture(path) ? loadTracePicture(path) : loadOutline(path);
}

/// A file that cannot be read changes nothing.
void Handlers::loadKnot(const std::string& path) {
  auto read = readKnotFile(path, bench_.document());
  if (!read) {
    std::erase(bench_.recentFiles, path);
    bench_.sortOut();
    bench_.status(tr("Could not load {1}: {2}", path, read.error().message));
    return;
  }
  if (!mayLeave(tr("The knot has changes that are not saved. Save them before another one is opened?")))
    return;
  remember(path);
  bench_.begin(tr("Load {1}", fileNameOf(path)), std::move(read->document), After::draw, path);
  std::string told = bench_.knotDrawn() ? bench_.summary() : bench_.statusText();
  for (const std::string& correction : read->corrections) told += "; " + correction;
  bench_.status(tr("Loaded {1}: {2}", path, told));
}

void Handlers::remember(const std::string& path) {
  std::vector<std::string>& recent = bench_.recentFiles;
  std::erase(recent, path);
  recent.insert(recent.begin(), path);
  if (recent.size() > kRecentFiles) recent.resize(kRecentFiles);
  bench_.sortOut();
}

/// In the window's language; the English pages lie above the others.
void Handlers::showHelp(std::string_view page) {
  const bool english = bench_.spoken == languages().front().code;
  const std::string folder = english ? "help/" : "help/" + bench_.spoken + '/';
  if (const Status opened = bench_.platform.help().open(folder + std::string(page)); !opened)
    bench_.status(opened.error().message);
}

}  // namespace lorivan
