// What the running test program holds of the system's things, to see whether that grows.
#pragma once

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <system_error>

namespace lorivan::contract {

struct Held {
  long graphics = 0;   // pens, brushes, fonts, bitmaps
  long windows = 0;    // with their controls and menus
  long handles = 0;    // open files and what else the system gives handles for
  long kilobytes = 0;  // of memory; 0 where that cannot be told
};

inline std::ostream& operator<<(std::ostream& out, const Held& held) {
  return out << held.kilobytes << " kB, " << held.graphics << " graphics, " << held.windows << " windows, "
             << held.handles << " handles";
}

/// What Linux tells of files and memory; elsewhere nothing.
inline Held heldOnLinux() {
  Held held;
  std::error_code none;
  for (std::filesystem::directory_iterator file("/proc/self/fd", none), end; !none && file != end;
       file.increment(none))
    ++held.handles;
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;)
    if (word == "VmRSS:") status >> held.kilobytes;
  return held;
}

}  // namespace lorivan::contract
