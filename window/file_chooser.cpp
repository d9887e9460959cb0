#include "window/file_chooser.h"

#include "base/numbers.h"
#include "base/sink.h"
#include "base/texts.h"

namespace lorivan {
namespace {

/// "knot.", but not "..".
bool endsWithPoint(std::string_view path) {
  return path.ends_with('.') && fileNameOf(path).find_first_not_of('.') != std::string_view::npos;
}

}  // namespace

/// The program's own folder, or the user's documents where no file can be made in that.
std::string FileChooser::firstFolder() const {
  const std::string program = platform_.programFolder(), documents = platform_.documentsFolder();
  return documents.empty() || platform_.claim(program + "/lorivan.tmp") != nullptr ? program : documents;
}

/// The full path that a dialog starts with: the folder used last, or the first one.
std::string FileChooser::startName(const std::string& pattern) const {
  if (!lastFolder_.empty()) return lastFolder_ + pattern;
  std::string folder = firstFolder();
  const char separator = folder.find('\\') == std::string::npos ? '/' : '\\';
  if (folder.empty() || folder.back() != separator) folder += separator;
  return folder + pattern;
}

void FileChooser::rememberFolder(const std::string& path) {
  const std::string_view name = fileNameOf(path);
  if (name.size() < path.size()) lastFolder_ = path.substr(0, path.size() - name.size());
}

std::string FileChooser::ask(const FileQuestion& question, bool save, bool bare) {
  const std::string pattern = bare ? std::string() : "*." + question.extension;
  FileDialogSpec dialog;
  dialog.save = dialog.overwritePrompt = save;
  dialog.title = question.title;
  dialog.filterLabel = question.filterLabel;
  dialog.extensions = question.more.empty() ? question.extension : question.extension + ' ' + question.more;
  dialog.defaultExtension = bare ? std::string() : question.extension;
  dialog.more = question.others;
  dialog.initialName = startName(question.proposed.empty() ? pattern : question.proposed);
  std::string path = window_.chooseFile(dialog);
  // Dialogs take the point of "knot." for an extension. Another file's name goes back to them: they ask.
  while (save && endsWithPoint(path)) {
    path = path.substr(0, path.find_last_not_of('.') + 1) + '.' + question.extension;
    if (!fileExists(path)) break;
    dialog.initialName = path;
    path = window_.chooseFile(dialog);
  }
  if (lowerCase(fileNameOf(path)) == pattern) return {};
  rememberFolder(path);
  return path;
}

std::string FileChooser::NewFname(const std::string& description, const std::string& extension,
                                  std::vector<FileFilter> others) {
  return toSave({tr("Saving:  Enter your {1} file name", description),
                 tr("{1} files", description),
                 extension,
                 {},
                 std::move(others)});
}

}  // namespace lorivan
