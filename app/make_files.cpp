#include "app/make_files.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <optional>

#include "app/custom_grid.h"
#include "app/frame_files.h"
#include "app/knot.h"
#include "app/knot_file.h"
#include "app/outputs.h"
#include "app/presets.h"
#include "app/progress_line.h"
#include "app/random_knot.h"
#include "base/numbers.h"
#include "base/sink.h"
#include "custom/shape_file.h"

namespace lorivan {
namespace {

/// One run. Every step returns an exit status; the first that is not kDone ends the run. Files that were not
/// committed vanish with it.
class FileMaker {
 public:
  FileMaker(Platform& platform, const CommandLine& line, std::ostream& errors)
      : platform_(platform),
        line_(line),
        errors_(errors),
        progress_(platform.clock(), errors, platform.errorsGoToTerminal() && !line.quiet) {}

  int run();

 private:
  int fail(ExitStatus status, const std::string& message);
  void note(const std::string& message);
  int readFile();
  int readShape(const std::string& text);
  int takeFileFields(const KnotFile& file);
  void drawRandom();
  void takeChecks();
  void takeValues();
  bool mustBuild() const;
  int build();
  int trace();
  int writeOne(const OutputJob& job, const std::string& name);
  int writeFrames(const OutputJob& job, const std::string& pattern);
  int keep(std::unique_ptr<FileSink> sink);
  void noteIgnoredWidth();
  int write();

  Platform& platform_;
  const CommandLine& line_;
  std::ostream& errors_;
  ProgressLine progress_;
  KnotFields fields_ = firstRunFields();
  Rnd random_;
  std::unique_ptr<Knot> knot_ = std::make_unique<Knot>();
  std::optional<CustomShape> shape_;  // to lay an AutoGrid in
  std::vector<std::unique_ptr<FileSink>> sinks_;
};

int FileMaker::fail(ExitStatus status, const std::string& message) {
  std::string oneLine = message;
  std::erase(oneLine, '\r');
  std::replace(oneLine.begin(), oneLine.end(), '\n', ' ');
  progress_.clear();
  errors_ << "lorivan: " << oneLine << '\n';
  return status;
}

void FileMaker::note(const std::string& message) {
  if (line_.quiet) return;
  progress_.clear();
  errors_ << "lorivan: " << message << '\n';
}

int FileMaker::readFile() {
  const auto bytes = lorivan::readFile(line_.knotFile, kLargestKnotFile);
  if (!bytes) return fail(kBadInput, line_.knotFile + ": " + bytes.error().message);
  if (extensionOf(line_.knotFile) == kShapeFileExtension) return readShape(*bytes);
  KnotFile file = parseKnotFile(*bytes);
  if (!file.fault && file.lines.empty()) file.fault = Error{"line 3: the knot has no lines"};
  if (file.fault) return fail(kBadInput, line_.knotFile + ", " + file.fault->message);
  if (const int status = takeFileFields(file); status != kDone) return status;
  fields_.shape = *file.shape;
  knot_->graph.CellSize = *file.CellSize;
  if (const Status taken = takeLines(knot_->graph, file); !taken) return fail(kNoKnot, taken.error().message);
  return kDone;
}

int FileMaker::readShape(const std::string& text) {
  auto shape = readShapeText(text);
  if (!shape) return fail(kBadInput, line_.knotFile + ", " + shape.error().message);
  shape_ = std::move(*shape);
  fields_.shape = Shape::Custom;
  return kDone;
}

int FileMaker::takeFileFields(const KnotFile& file) {
  for (std::size_t i = 0; i < kKnotFileFields.size(); ++i) {
    if (!file.fields[i]) continue;
    const Param p = kKnotFileFields[i];
    const std::string& text = *file.fields[i];
    const std::string name(parameterSpec(p).field);
    if (!parseNumber(text))
      return fail(kBadInput, line_.knotFile + ", line 2: " + quoted(text) + " is not a number for " + name);
    fields_.text(p) = correctedText(p, text);
    if (parseNumber(fields_.text(p)) != parseNumber(text))
      note(line_.knotFile + ", line 2: " + name + " " + quoted(text) + " corrected to " + fields_.text(p));
  }
  return kDone;
}

void FileMaker::drawRandom() {
  const std::uint64_t seed = line_.seed.value_or(platform_.clock().seed() % 1'000'000'000);
  random_ = seededRandom(seed);
  if (!line_.seed) note("--random " + std::to_string(seed));
  const bool constantShape =
      line_.shape.has_value() || !line_.knotFile.empty() || fields_.check(Check::ConstantShape);
  drawRandomFields(fields_, constantShape, random_);
}

void FileMaker::takeChecks() {
  for (const auto& [box, on] : line_.checks) fields_.checks[static_cast<std::size_t>(box)] = on;
}

void FileMaker::takeValues() {
  for (const auto& [parameter, text] : line_.values) {
    fields_.text(parameter) = correctedText(parameter, text);
    if (parseNumber(fields_.text(parameter)) != parseNumber(text))
      note(std::string(parameterSpec(parameter).field) + "=" + text + " corrected to " +
           fields_.text(parameter));
  }
}

/// A knot file keeps its own lines unless a field is set that lines are made from.
bool FileMaker::mustBuild() const {
  if (line_.knotFile.empty() || line_.random) return true;
  return std::any_of(line_.values.begin(), line_.values.end(), [](const auto& value) {
    return value.first == Param::XNo || value.first == Param::YNo || value.first == Param::Scale ||
           value.first == Param::CrossOffset;
  });
}

int FileMaker::build() {
  if (shape_) {
    const Status made = autoGridOf(knot_->graph, *shape_, fields_);
    return made ? kDone : fail(kNoKnot, made.error().message);
  }
  if (!mustBuild()) return kDone;
  if (fields_.shape == Shape::Custom)
    return fail(kWrongUsage, line_.knotFile + " holds a custom grid, which no field can build again");
  const auto grid = buildStandardGrid(knot_->graph, gridFields(fields_), random_ ? &random_ : nullptr);
  if (!grid) return fail(kNoKnot, grid.error().message);
  const KnotFields asked = fields_;
  takeCorrections(fields_, grid->fields);
  for (const auto& [parameter, text] : line_.values)
    if (asked.text(parameter) != fields_.text(parameter))
      note(std::string(parameterSpec(parameter).field) + "=" + text + " corrected to " +
           fields_.text(parameter) + " for this shape");
  return kDone;
}

int FileMaker::trace() {
  const auto traced = traceKnot(*knot_, fields_);
  return traced ? kDone : fail(kNoKnot, traced.error().message);
}

int FileMaker::writeOne(const OutputJob& job, const std::string& name) {
  auto sink = FileSink::create(name);
  if (!sink) return fail(kBadOutput, sink.error().message);
  const Status made = makeOutput(*outputFormat(name, fields_), job, **sink);
  if (const int status = keep(std::move(*sink)); status != kDone) return status;
  if (made) return kDone;
  return fail(made.error().ofKnot ? kNoKnot : kBadOutput, name + ": " + made.error().message);
}

int FileMaker::writeFrames(const OutputJob& job, const std::string& pattern) {
  const auto names = parseFrameNames(pattern);
  if (!names) return fail(kWrongUsage, names.error().message);
  const FrameMaker frames(job, names->most());
  if (frames.stride() > 1)
    note(pattern + ": " + std::to_string(frames.count()) + " frames, one for every " +
         std::to_string(frames.stride()) + " steps");
  const PictureFormat format = extensionOf(pattern) == "bmp" ? PictureFormat::bmp : PictureFormat::png;
  for (int number = 1; number <= frames.count(); ++number) {
    const std::string name = names->name(number);
    job.progress(static_cast<double>(number - 1) / frames.count());
    auto sink = FileSink::create(name);
    if (!sink) return fail(kBadOutput, sink.error().message);
    const auto bytes = frames.make(number, format);
    if (!bytes) return fail(kBadOutput, name + ": " + bytes.error().message);
    (*sink)->write(*bytes);
    if (const int status = keep(std::move(*sink)); status != kDone) return status;
  }
  return kDone;
}

/// The file is complete under its temporary name; it gets its own when all are. The error tells why bytes
/// were refused, which their writer does not know.
int FileMaker::keep(std::unique_ptr<FileSink> sink) {
  if (const Status closed = sink->close(); !closed) return fail(kBadOutput, closed.error().message);
  sinks_.push_back(std::move(sink));
  return kDone;
}

void FileMaker::noteIgnoredWidth() {
  std::string ignoring;
  for (const ExportFormat& format : exportFormats()) {
    const auto isOutput = [&](const std::string& name) { return outputFormat(name, fields_) == &format; };
    if (!format.takesMillimetres && std::ranges::any_of(line_.outputs, isOutput))
      ignoring += (ignoring.empty() ? "" : ", ") + std::string(format.extension);
  }
  if (line_.millimetres && !ignoring.empty()) note("--mm changes nothing in: " + ignoring);
}

int FileMaker::write() {
  noteIgnoredWidth();
  const StrandColours colours = strandColours(fields_.boxes);
  OutputJob job{platform_, *knot_, fields_, colours};
  job.width = line_.width;
  job.millimetres = line_.millimetres;
  job.transparent = line_.transparent;
  job.solidView = line_.solidView;
  job.animate = line_.animate;
  for (std::size_t i = 0; i < line_.outputs.size(); ++i) {
    const std::string& name = line_.outputs[i];
    job.progress = [&, i](double part) {
      progress_.reached(name, (static_cast<double>(i) + part) / static_cast<double>(line_.outputs.size()));
    };
    job.progress(0);
    const bool frames = line_.animate && extensionOf(name) != "svg";
    if (const int status = frames ? writeFrames(job, name) : writeOne(job, name); status != kDone)
      return status;
  }
  for (const auto& sink : sinks_)
    if (const Status done = sink->commit(); !done) return fail(kBadOutput, done.error().message);
  return kDone;
}

int FileMaker::run() {
  if (line_.shape) fields_.shape = *line_.shape;
  if (!line_.knotFile.empty())
    if (const int status = readFile(); status != kDone) return status;
  takeChecks();
  if (line_.random) drawRandom();
  if (line_.preset) applyPreset(fields_, *line_.preset);
  takeValues();
  if (const int status = build(); status != kDone) return status;
  if (const int status = trace(); status != kDone) return status;
  return write();
}

}  // namespace

int makeFiles(Platform& platform, const CommandLine& line, std::ostream& errors) {
  try {
    return FileMaker(platform, line, errors).run();
  } catch (const std::bad_alloc&) {
    errors << "lorivan: there is not enough memory for these outputs\n";
    return kBadOutput;
  }
}

}  // namespace lorivan
