// The words of the command line as a job description. Parsing touches no file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/result.h"
#include "design/materials.h"
#include "design/output_options.h"
#include "design/parameters.h"
#include "graph/standard_grids.h"

namespace lorivan {

/// Exit statuses of the program.
enum ExitStatus {
  kDone = 0,
  kWrongUsage = 2,
  kBadInput = 3,
  kNoKnot = 4,
  kBadOutput = 5,
  kNoDisplay = 6,
};

/// The status for a run that this kind of error ends.
ExitStatus exitStatusOf(ErrorKind kind);

enum class CommandKind { window, makeFiles, check, help, version, list };

struct CommandLine {
  CommandKind kind = CommandKind::window;
  std::string listed;    // parameters, shapes, presets or formats
  std::string knotFile;  // empty: none named
  std::optional<Shape> shape;
  std::optional<int> preset;
  std::vector<std::pair<Param, std::string>> values;  // in the order given
  std::vector<std::pair<Check, bool>> checks;
  bool random = false;
  std::optional<std::uint64_t> seed;
  OutputOptions output;
  bool fit = false;                    // bands and picture
  std::optional<double> fitRadius;     // gap between the model's strands; 0: they meet
  const Material* material = nullptr;  // that a check is to judge by
  bool setStrands = false;
  std::optional<int> strands;  // none: as many as possible
  bool quiet = false;
  bool stepDisplay = false;  // --step, for looking into the tracer; not in the usage text
  std::vector<std::string> outputs;
};

/// The error is one sentence; usageText() tells the rest.
Result<CommandLine> parseCommandLine(const std::vector<std::string>& arguments);

std::string usageText();

/// What --list prints.
std::string listText(const std::string& what);

}  // namespace lorivan
