// What writing files needs of the operating system and the standard library does not have. Each system has
// its own source, in platform/posix and platform/win32. Paths are UTF-8; errors are the system's reason
// alone.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/result.h"

namespace lorivan {

/// A file that is being written, without a buffer. One that create() made is a scrap until keep() is called:
/// it is removed with the object, and when a signal, or closing the console, ends the program.
class OutputFile {
 public:
  OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// A new file; fails where there is anything of this name. Where `like` exists it gets that file's rights
  /// and, as far as that is allowed, its owner and group, else the rights of any new file.
  Status create(const std::string& path, const std::string& like);
  /// What is there already: a device or a pipe, or whatever a program was given as its standard output.
  Status openInPlace(const std::string& path);
  Status write(std::string_view bytes);
  /// Waits until everything that was written would survive a loss of power.
  Status flushToDisk();
  /// A second close does no harm.
  Status close();
  /// The file has its name now, or has been removed.
  void keep();

  struct State;  // the system's

 private:
  std::unique_ptr<State> state_;
};

/// From now on scraps are removed before a signal or the console ends the program, which it still does.
void removeScrapsAtEnd();

/// While one exists no signal ends the program, which waits for the last one.
class EndHeldBack {
 public:
  EndHeldBack();
  EndHeldBack(const EndHeldBack&) = delete;
  EndHeldBack& operator=(const EndHeldBack&) = delete;
  ~EndHeldBack();
};

/// New names in this folder survive a loss of power, where the system can promise that.
void flushFolder(const std::string& path);

std::int64_t ownProcess();
/// Of this machine; true where that cannot be told.
bool processRuns(std::int64_t process);
/// Empty where the machine has no name.
std::string machineName();

}  // namespace lorivan
