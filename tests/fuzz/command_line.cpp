// The command line, an argument a line: everything that it asks for is made, into memory. No file is read or
// written, whatever is named.
#include <algorithm>
#include <memory>
#include <sstream>

#include "cli/knot_maker.h"
#include "cli/lists.h"
#include "design/model_check.h"
#include "design/outputs.h"
#include "design/source.h"
#include "fuzz.h"
#include "known_document.h"
#include "platform/none/none_platform.h"

namespace lorivan::fuzz {
namespace {

constexpr int kMostWidth = 160, kMostCells = 2;

/// The knot's fields that let searches for sizes and numbers of strands take long.
bool isLarge(const CommandLine& line) {
  const auto large = [](const auto& value) {
    return (value.first == Param::XNo || value.first == Param::YNo) && value.second.size() > 1;
  };
  return std::ranges::any_of(line.values, large) || !line.sweeps.empty() || line.random;
}

void makeSmall(CommandLine& line) {
  line.knotFile.clear();
  line.output.width = std::min(line.output.width.value_or(kMostWidth), kMostWidth);
  line.output.cells = std::min(line.output.cells, kMostCells);
}

void requireOutput(const ExportFormat& format, const OutputJob& job) {
  MemorySink sink;
  const Status made = makeOutput(format, job, sink);
  const bool hasTemplate = format.identifier != "pov";  // which lies in no folder here
  if (!made)
    return require(made.error().kind != ErrorKind::input || !hasTemplate,
                   "an output is refused for what it is");
  require(!sink.bytes.empty(), "an output has bytes");
  const std::string text = documentText(withPasses(job.document, job.knot.graph));
  if (format.carriesSource && !job.options.relief)
    require(sourceInside(sink.bytes) == text, "an output carries its knot");
  if (format.identifier == "qzd") require(sink.bytes == text, "a knot file is the knot's text");
}

void makeAll(NonePlatform& platform, const CommandLine& line, const Member& member, KnotMaker& maker) {
  Document document;
  OutputOptions options = line.output;
  if (maker.make(member, document, options) != kDone) return;
  requireStored(document);
  const auto knot = std::make_unique<Knot>();
  if (!makeKnot(document, *knot)) return;
  if (polygonBudget(knot->strands, tubeSettings(document.fields)) > kMostPolygons) return;
  const StrandColours colours = strandColours(document.fields.boxes);
  OutputJob job{platform, document, *knot, colours};
  job.options = options;
  if (line.kind == CommandKind::check) return static_cast<void>(checkModel(*knot, document.fields, options));
  for (const std::string& name : line.outputs) {
    job.fileName = name;
    requireOutput(*outputFormat(name, document.fields, options), job);
  }
}

}  // namespace

void commandLine(Bytes bytes) {
  auto line = parseCommandLine(linesOf(bytes));
  if (!line) return require(line.error().kind == ErrorKind::usage, "what cannot be meant is told so");
  if (line->kind == CommandKind::list) require(!listText(line->listed).empty(), "a list has lines");
  if (line->kind != CommandKind::makeFiles && line->kind != CommandKind::check) return;
  if (line->output.animate || line->sheet || line->outputs.size() > 4) return;
  if ((line->setStrands || line->frame || line->inner || line->output.solid) && isLarge(*line)) return;
  makeSmall(*line);
  NonePlatform platform;
  std::ostringstream told;
  Report report(told, false);
  KnotMaker maker(platform, *line, report);
  if (maker.read() != kDone) return;
  const Batch batch(*line, line->seed.value_or(1));
  require(batch.count() > 0, "there is a knot to make");
  makeAll(platform, *line, batch.member(0), maker);
  if (batch.count() > 1) makeAll(platform, *line, batch.member(batch.count() - 1), maker);
}

}  // namespace lorivan::fuzz
