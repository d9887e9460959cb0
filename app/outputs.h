// The table of output formats: what -o, the dialogs and --list formats know.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "app/knot.h"
#include "platform/platform.h"

namespace lorivan {

/// What an output is made from.
struct OutputJob {
  Platform& platform;
  const Knot& knot;
  const KnotFields& fields;
  const StrandColours& colours;
  int width = 1000;                   // pixels of pictures
  std::optional<double> millimetres;  // width of the finished knot
  bool transparent = false;
};

struct OutputFormat {
  std::string_view extension;
  std::string_view about;
  /// The whole file, or why it cannot be made.
  Result<std::string> (*make)(const OutputJob& job);
};

std::span<const OutputFormat> outputTable();

/// The row for an extension in lower case, or null.
const OutputFormat* findOutput(std::string_view extension);

/// "qzd, svg, ..." for texts.
std::string outputExtensions();

}  // namespace lorivan
