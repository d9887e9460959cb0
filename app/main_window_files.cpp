// Knot files: load, save, drop, and the dialogs that name files.
#include "app/knot_file.h"
#include "app/main_window.h"
#include "base/sink.h"
#include "custom/shape_file.h"

namespace lorivan {
namespace {

constexpr std::string_view kExtension = "qzd";
constexpr std::string_view kPattern = "*.qzd";

}  // namespace

/// The full path that a dialog starts with: the folder used last, or the program's own.
std::string MainWindow::folderFor(std::string_view pattern) const {
  if (!lastFolder_.empty()) return lastFolder_ + std::string(pattern);
  std::string folder = platform_.programFolder();
  const char separator = folder.find('\\') == std::string::npos ? '/' : '\\';
  if (folder.empty() || folder.back() != separator) folder += separator;
  return folder + std::string(pattern);
}

void MainWindow::rememberFolder(const std::string& path) {
  const std::string_view name = fileNameOf(path);
  if (name.size() < path.size()) lastFolder_ = path.substr(0, path.size() - name.size());
}

/// Full path of the file to save; empty when the user cancelled or took the pattern itself.
std::string MainWindow::chooseSaveFile(FileDialogSpec dialog) {
  const std::string pattern = "*." + lowerCase(dialog.defaultExtension);
  dialog.initialName = folderFor(pattern);
  std::string path = window_->chooseFile(dialog);
  if (lowerCase(fileNameOf(path)) == pattern) return {};
  if (!path.empty()) rememberFolder(path);
  return path;
}

std::string MainWindow::NewFname(const std::string& description, const std::string& extension,
                                 const std::string& moreExtensions) {
  FileDialogSpec dialog;
  dialog.save = true;
  dialog.title = "Saving:  Enter your " + description + " file name";
  dialog.filterLabel = description + " files";
  dialog.extensions = moreExtensions.empty() ? extension : extension + ' ' + moreExtensions;
  dialog.defaultExtension = extension;
  dialog.overwritePrompt = true;
  return chooseSaveFile(std::move(dialog));
}

void MainWindow::mnuFileSave_Click() {
  FileDialogSpec dialog;
  dialog.save = true;
  dialog.title = "Saving knot configuration - Enter your Lorivan file name";
  dialog.filterLabel = "Lorivan files";
  dialog.extensions = kExtension;
  dialog.defaultExtension = kExtension;
  dialog.overwritePrompt = true;
  const std::string path = chooseSaveFile(std::move(dialog));
  if (path.empty()) return;
  setCaption(path);
  const Status written = writeFile(path, writeKnotFile(knotFields(), knot_.graph));
  if (written) {
    status("Saved as " + path);
    return;
  }
  window_->message(std::string(kKnotFileProblem), "", MessageIcon::none);
  status(written.error().message);
}

void MainWindow::mnuFileLoad_Click() {
  if (commandLineLoading_) {
    openFile(options_.knotFile);
    return;
  }
  FileDialogSpec dialog;
  dialog.title = "Enter your Lorivan file name";
  dialog.filterLabel = "Lorivan files";
  dialog.extensions = kExtension;
  dialog.initialName = folderFor(kPattern);
  dialog.defaultExtension = kExtension;
  const std::string path = window_->chooseFile(dialog);
  rememberFolder(path);
  if (path.empty() || lowerCase(fileNameOf(path)) == kPattern) return;
  loadKnotFile(path);
}

void MainWindow::fileDropped(const std::string& path) {
  const std::string extension = extensionOf(path);
  if (extension == kExtension || extension == kShapeFileExtension) {
    rememberFolder(path);
    openFile(path);
  } else if (isPicture(path)) {
    loadTracePicture(path);
  } else {
    status(std::string(fileNameOf(path)) + " is no knot file (*.qzd), shape file (*.qzc) or picture");
  }
}

void MainWindow::openFile(const std::string& path) {
  if (extensionOf(path) == kShapeFileExtension)
    loadShape(path);
  else
    loadKnotFile(path);
}

/// What was read before a fault stays in the fields; then the picture is left as it is.
void MainWindow::loadKnotFile(const std::string& path) {
  const auto bytes = readFile(path, kLargestKnotFile);
  if (!bytes) {
    status("Could not load " + path + ": " + bytes.error().message);
    return;
  }
  const KnotFile file = parseKnotFile(*bytes);
  if (file.shape) {
    window_->select(controlId("lstType"), static_cast<int>(*file.shape));
    lstType_Click();
  }
  if (file.CellSize) knot_.graph.CellSize = *file.CellSize;
  for (std::size_t i = 0; i < file.fields.size(); ++i)
    if (file.fields[i]) setField(kKnotFileFields[i], *file.fields[i]);
  colourStartField();
  if (file.fault) {
    status("Could not load " + path + ": " + file.fault->message);
    return;
  }
  if (const Status taken = takeLines(knot_.graph, file); !taken) {
    status("Could not load " + path + ": " + taken.error().message);
    return;
  }
  enable(controlId("cmdOldGrid"), true);
  enable(controlId("cmd3DView"), false);
  AllOlds();
  field(Param::StartColour).lastApplied = field(Param::StartColour).text.Value();
  setCaption(path);
  statusText_.clear();
  cmdOldGrid_Click();
  cmd2D_Click();
  const std::string fault = statusText_;
  status("Loaded " + path + ": " + (knotDrawn_ ? knotSummary() : fault.empty() ? "no knot is drawn" : fault));
}

}  // namespace lorivan
