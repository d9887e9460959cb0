// The dialogs that name files, and the folder that they all open in.
#pragma once

#include <string>

#include "platform/platform.h"

namespace lorivan {

/// What a dialog asks for; the initial name and the prompt before overwriting come by themselves.
struct FileQuestion {
  std::string title;
  std::string filterLabel;              // "Lorivan files"
  std::string extension;                // added to names without one
  std::string more = {};                // further extensions that are shown: "png svg"
  std::vector<FileFilter> others = {};  // further choices beside the first one
  std::string proposed = {};            // name that the dialog starts with; empty: the pattern
};

class FileChooser {
 public:
  FileChooser(Window& window, Platform& platform) : window_(window), platform_(platform) {}

  /// Full path of the file to save or to load; empty when the user cancelled or took the pattern itself. Its
  /// folder is where the next dialog opens.
  std::string toSave(const FileQuestion& question) { return ask(question, true, false); }
  std::string toLoad(const FileQuestion& question) { return ask(question, false, false); }
  /// The same; the dialog starts with the folder alone.
  std::string toLoadAny(const FileQuestion& question) { return ask(question, false, true); }

  /// "Saving:  Enter your <description> file name".
  std::string NewFname(const std::string& description, const std::string& extension,
                       std::vector<FileFilter> others = {});

  void rememberFolder(const std::string& path);
  /// The folder used last, with its separator at the end; empty at first.
  const std::string& lastFolder() const { return lastFolder_; }
  void setLastFolder(std::string folder) { lastFolder_ = std::move(folder); }

 private:
  std::string ask(const FileQuestion& question, bool save, bool bare);
  std::string startName(const std::string& pattern) const;
  std::string firstFolder() const;

  Window& window_;
  Platform& platform_;
  std::string lastFolder_;
};

}  // namespace lorivan
