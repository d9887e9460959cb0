// The words of the command line as a job description. Parsing touches no file.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/result.h"
#include "design/fit_size.h"
#include "design/materials.h"
#include "design/output_options.h"
#include "design/parameters.h"
#include "export/formats.h"
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

/// A field that takes one value after the other.
struct Sweep {
  Param field = Param::XNo;
  std::vector<std::string> values;
};

struct CommandLine;

/// What --list prints.
inline constexpr std::array<std::string_view, 4> kLists = {"parameters", "shapes", "presets", "formats"};

/// An option that not every output follows.
struct OutputOption {
  std::string_view name;
  /// Whether an output of this format comes out otherwise with the option.
  bool (*heeds)(const ExportFormat& format, const CommandLine& line) = nullptr;
  /// Told for each format that does not follow; else only where none does.
  bool toldForEach = false;
};

struct CommandLine {
  CommandKind kind = CommandKind::window;
  std::string listed;    // one of kLists
  std::string knotFile;  // empty: none named
  std::optional<Shape> shape;
  std::optional<int> preset;
  std::vector<std::pair<Param, std::string>> values;  // in the order given
  std::vector<std::pair<Check, bool>> checks;
  bool random = false;
  std::optional<std::uint64_t> seed, lastSeed;  // the last one of many random knots
  std::vector<Sweep> sweeps;                    // at most two
  bool sheet = false;  // the outputs without a place for numbers hold all knots in one picture
  OutputOptions output;
  bool fit = false;                    // bands and picture
  std::optional<TwoLengths> frame;     // width and height of the drawn knot
  std::optional<double> inner;         // diameter of a ring; its height is among the output options
  std::optional<double> fitRadius;     // gap between the model's strands; 0: they meet
  const Material* material = nullptr;  // that a check is to judge by
  bool setStrands = false;
  std::optional<int> strands;  // none: as many as possible
  bool quiet = false;
  bool stepDisplay = false;  // --step, for looking into the tracer; not in the usage text
  std::vector<std::string> outputs;
  std::vector<OutputOption> outputOptions;  // of those that were given, each once

  /// Whether there is a knot for each of several seeds; a sheet of nothing else holds random knots.
  bool seedsVary() const { return lastSeed || (sheet && sweeps.empty()); }
  bool manyKnots() const { return seedsVary() || !sweeps.empty(); }
};

/// The error is one sentence; usageText() tells the rest.
Result<CommandLine> parseCommandLine(const std::vector<std::string>& arguments);

std::string usageText();

/// What the usage text says of an option.
struct OptionUsage {
  std::string_view name;
  std::string_view
      value;  // what follows it: PLACEHOLDER, word, or several of them, parted by "|"; or nothing
  std::string_view about;
};
/// Every option of the usage text, in its order.
std::vector<OptionUsage> optionUsages();

struct StatusUsage {
  ExitStatus status;
  std::string_view about;
};
std::span<const StatusUsage> statusUsages();

}  // namespace lorivan
