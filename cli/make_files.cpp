#include "cli/make_files.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <new>
#include <optional>

#include "base/numbers.h"
#include "base/sink.h"
#include "cli/progress_line.h"
#include "custom/shape_file.h"
#include "design/edits.h"
#include "design/fit.h"
#include "design/fit_radius.h"
#include "design/frame_files.h"
#include "design/knot.h"
#include "design/model_check.h"
#include "design/outputs.h"
#include "design/random_knot.h"
#include "design/source.h"

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
  int check(std::ostream& report);

 private:
  int fail(const Error& error, const std::string& where = "");
  void note(const std::string& message);
  int readFile();
  int readShape();
  void drawRandom();
  void takeValues();
  /// A shape file gets an AutoGrid. An outline in a knot file does not: that file has its grid.
  bool ownShape() const { return extensionOf(line_.knotFile) == kShapeFileExtension; }
  bool mustBuild() const;
  int build();
  int writeOne(const OutputJob& job, const std::string& name);
  int writeFile(const std::string& name, const std::function<Status(Sink&)>& make);
  int writeFrames(const OutputJob& job, const std::string& pattern);
  int keep(std::unique_ptr<FileSink> sink);
  void noteIgnored(const char* option, const std::function<bool(const ExportFormat&)>& ignores);
  void noteIgnoredOptions();
  int makeDocument();
  int setStrands();
  void fit();
  void fitTheBands();
  void noteEmptyOutline(const AutoGridReport& report);
  int write();

  Platform& platform_;
  const CommandLine& line_;
  std::ostream& errors_;
  ProgressLine progress_;
  Document document_;
  Rnd random_;
  std::unique_ptr<Knot> knot_ = std::make_unique<Knot>();
  std::vector<std::unique_ptr<FileSink>> sinks_;
};

int FileMaker::fail(const Error& error, const std::string& where) {
  std::string oneLine = where + error.message;
  std::erase(oneLine, '\r');
  std::replace(oneLine.begin(), oneLine.end(), '\n', ' ');
  progress_.clear();
  errors_ << "lorivan: " << oneLine << '\n';
  return exitStatusOf(error.kind);
}

void FileMaker::note(const std::string& message) {
  if (line_.quiet) return;
  progress_.clear();
  errors_ << "lorivan: " << message << '\n';
}

int FileMaker::readFile() {
  if (ownShape()) return readShape();
  auto read = readKnotFile(line_.knotFile);
  if (!read)
    return fail(read.error(), line_.knotFile + (read.error().message.starts_with("line ") ? ", " : ": "));
  for (const std::string& correction : read->corrections) note(line_.knotFile + ", line 2: " + correction);
  if (read->document.lines->empty())
    return fail(unreadable("line 3: the knot has no lines"), line_.knotFile + ", ");
  document_ = std::move(read->document);
  return kDone;
}

int FileMaker::readShape() {
  const auto bytes = lorivan::readFile(line_.knotFile, kLargestKnotFile);
  if (!bytes) return fail(bytes.error(), line_.knotFile + ": ");
  auto shape = readShapeText(*bytes);
  if (!shape) return fail(shape.error(), line_.knotFile + ", ");
  document_ = withOutline(document_, std::move(*shape));
  document_.fields.shape = Shape::Custom;
  return kDone;
}

/// Draws the fields of a random knot; its grid is built when all fields are known.
void FileMaker::drawRandom() {
  const std::uint64_t seed = line_.seed.value_or(platform_.clock().seed() % 1'000'000'000);
  random_ = seededRandom(seed);
  if (!line_.seed) note("--random " + std::to_string(seed));
  const bool constantShape =
      line_.shape.has_value() || !line_.knotFile.empty() || document_.fields.check(Check::ConstantShape);
  drawRandomFields(document_.fields, constantShape, random_);
}

void FileMaker::takeValues() {
  for (const auto& [parameter, text] : line_.values) {
    document_ = withField(document_, parameter, text);
    const std::string& shown = document_.fields.text(parameter);
    if (parseNumber(shown) != parseNumber(text))
      note(std::string(parameterSpec(parameter).field) + "=" + text + " corrected to " + shown);
  }
}

/// A knot file keeps its own lines unless a field is set that lines are made from. The stretch only draws
/// them taller or flatter.
bool FileMaker::mustBuild() const {
  if (line_.knotFile.empty() || line_.random) return true;
  return std::any_of(line_.values.begin(), line_.values.end(),
                     [](const auto& value) { return makesGrid(value.first) && value.first != Param::Skew; });
}

int FileMaker::build() {
  if (!ownShape() && !mustBuild()) return kDone;
  if (!ownShape() && document_.fields.shape == Shape::Custom)
    return fail(wrongUsage(line_.knotFile + " holds a custom grid, which no field can build again"));
  AutoGridReport report;
  auto made = ownShape() ? autoGrid(document_, &report) : newGrid(document_, random_ ? &random_ : nullptr);
  if (!made) return fail(made.error());
  if (report.filled < kFilled) noteEmptyOutline(report);
  for (const auto& [parameter, text] : line_.values)
    if (made->fields.text(parameter) != document_.fields.text(parameter))
      note(std::string(parameterSpec(parameter).field) + "=" + text + " corrected to " +
           made->fields.text(parameter) + " for this shape");
  document_ = std::move(*made);
  return kDone;
}

int FileMaker::setStrands() {
  auto changed = withStrands(document_, line_.strands, {});
  if (!changed) return fail(changed.error());
  document_ = std::move(*changed);
  return kDone;
}

void FileMaker::noteEmptyOutline(const AutoGridReport& report) {
  const auto share = [](const AutoGridReport& r) {
    return std::to_string(static_cast<int>(std::lround(100 * (1 - r.filled)))) + " %";
  };
  AutoGridReport better;
  const auto filling = fillingAutoGrid(document_, &better);
  const bool helps = filling && better.filled > report.filled + 0.005;
  note(share(report) + " of the outline stayed empty" +
       (helps ? "; vtGridSize=" + filling->fields.text(Param::GridSize) + " leaves " + share(better) : ""));
}

/// Widths that were asked for stay.
void FileMaker::fit() {
  document_ = withFitPicture(document_, true);
  fitTheBands();
}

void FileMaker::fitTheBands() {
  const bool typed = std::ranges::any_of(line_.values, [](const auto& value) {
    return value.first == Param::Width || value.first == Param::Edge;
  });
  if (!typed) document_ = fitBands(document_, line_.preset ? sharesOfStyle(*line_.preset) : BandShares{});
}

int FileMaker::writeOne(const OutputJob& job, const std::string& name) {
  const ExportFormat& format = *outputFormat(name, document_.fields);
  const int status = writeFile(name, [&](Sink& sink) { return makeOutput(format, job, sink); });
  const std::string materials = materialsBeside(format, job.options, name);
  if (status != kDone || materials.empty()) return status;
  return writeFile(materials, [&](Sink& sink) { return makeMaterials(job, sink); });
}

int FileMaker::writeFile(const std::string& name, const std::function<Status(Sink&)>& make) {
  auto sink = FileSink::create(name);
  if (!sink) return fail(sink.error());
  const Status made = make(**sink);
  if (const int status = keep(std::move(*sink)); status != kDone) return status;
  return made ? kDone : fail(made.error(), name + ": ");
}

int FileMaker::writeFrames(const OutputJob& job, const std::string& pattern) {
  const auto names = parseFrameNames(pattern);
  if (!names) return fail(names.error());
  const FrameMaker frames(job, names->most());
  if (frames.stride() > 1)
    note(pattern + ": " + std::to_string(frames.count()) + " frames, one for every " +
         std::to_string(frames.stride()) + " steps");
  const PictureFormat format = extensionOf(pattern) == "bmp" ? PictureFormat::bmp : PictureFormat::png;
  for (int number = 1; number <= frames.count(); ++number) {
    const std::string name = names->name(number);
    job.progress(static_cast<double>(number - 1) / frames.count());
    auto sink = FileSink::create(name);
    if (!sink) return fail(sink.error());
    const auto bytes = frames.make(number, format);
    if (!bytes) return fail(bytes.error(), name + ": ");
    (*sink)->write(*bytes);
    if (const int status = keep(std::move(*sink)); status != kDone) return status;
  }
  return kDone;
}

/// The file is complete under its temporary name; it gets its own when all are. The error tells why bytes
/// were refused, which their writer does not know.
int FileMaker::keep(std::unique_ptr<FileSink> sink) {
  if (const Status closed = sink->close(); !closed) return fail(closed.error());
  sinks_.push_back(std::move(sink));
  return kDone;
}

void FileMaker::noteIgnored(const char* option, const std::function<bool(const ExportFormat&)>& ignores) {
  std::string ignoring;
  for (const ExportFormat& format : exportFormats()) {
    const auto isOutput = [&](const std::string& name) {
      return outputFormat(name, document_.fields) == &format;
    };
    if (ignores(format) && std::ranges::any_of(line_.outputs, isOutput))
      ignoring += (ignoring.empty() ? "" : ", ") + std::string(format.extension);
  }
  if (!ignoring.empty()) note(std::string(option) + " changes nothing in: " + ignoring);
}

void FileMaker::noteIgnoredOptions() {
  const OutputOptions& asked = line_.output;
  if (asked.millimetres)
    noteIgnored("--mm", [&](const ExportFormat& format) {
      const bool heights = asked.relief && format.identifier == "png";
      return format.width == WidthOf::nothing && !heights;
    });
  if (asked.tube)
    noteIgnored("--tube", [](const ExportFormat& format) { return format.width != WidthOf::model; });
  if (asked.solid) noteIgnored("--solid", [](const ExportFormat& format) { return !format.takesSolid; });
}

int FileMaker::write() {
  noteIgnoredOptions();
  const StrandColours colours = strandColours(document_.fields.boxes);
  OutputJob job{platform_, document_, *knot_, colours};
  job.options = line_.output;
  for (std::size_t i = 0; i < line_.outputs.size(); ++i) {
    const std::string& name = line_.outputs[i];
    job.progress = [&, i](double part) {
      progress_.reached(name, (static_cast<double>(i) + part) / static_cast<double>(line_.outputs.size()));
    };
    job.progress(0);
    job.fileName = name;
    job.note = [&](const std::string& message) { note(name + ": " + message); };
    const bool frames = line_.output.animate && extensionOf(name) != "svg";
    if (const int status = frames ? writeFrames(job, name) : writeOne(job, name); status != kDone)
      return status;
  }
  for (const auto& sink : sinks_)
    if (const Status done = sink->commit(); !done) return fail(done.error());
  return kDone;
}

int FileMaker::makeDocument() {
  if (line_.shape) document_.fields.shape = *line_.shape;
  if (!line_.knotFile.empty())
    if (const int status = readFile(); status != kDone) return status;
  for (const auto& [box, on] : line_.checks) document_ = withCheck(document_, box, on);
  if (line_.random) drawRandom();
  if (line_.preset) document_ = withStyle(document_, *line_.preset);
  // A style brings widths of its own; a box that was asked for stays checked.
  for (const auto& [box, on] : line_.checks) document_ = withCheck(document_, box, on);
  takeValues();
  if (const int status = build(); status != kDone) return status;
  if (line_.setStrands)
    if (const int status = setStrands(); status != kDone) return status;
  if (ownShape()) fitTheBands();
  if (line_.fit) fit();
  if (const Status made = makeKnot(document_, *knot_); !made) return fail(made.error());
  if (!line_.fitRadius) return kDone;
  auto fitted = withFittedRadius(document_, *knot_, *line_.fitRadius, line_.output.millimetres);
  if (!fitted) return fail(fitted.error());
  document_ = std::move(*fitted);
  note("vtPolyRadius=" + document_.fields.text(Param::PolyRadius));
  return kDone;
}

int FileMaker::run() {
  const int status = makeDocument();
  return status == kDone ? write() : status;
}

int FileMaker::check(std::ostream& report) {
  if (const int status = makeDocument(); status != kDone) return status;
  const auto checked = checkModel(*knot_, document_.fields, line_.output);
  if (!checked) return fail(checked.error());
  report << checkText(*checked, line_.material) << std::flush;
  if (!report) return kBadOutput;
  const Material& material = line_.material != nullptr ? *line_.material : kMaterials.front();
  return faultsOf(*checked, material).empty() ? kDone : kNoKnot;
}

/// Memory may not suffice for what was asked for.
template <class Work>
int withinMemory(std::ostream& errors, Work&& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    errors << "lorivan: there is not enough memory for this\n";
    return kBadOutput;
  }
}

}  // namespace

int makeFiles(Platform& platform, const CommandLine& line, std::ostream& errors) {
  return withinMemory(errors, [&] { return FileMaker(platform, line, errors).run(); });
}

int checkKnot(Platform& platform, const CommandLine& line, std::ostream& report, std::ostream& errors) {
  return withinMemory(errors, [&] { return FileMaker(platform, line, errors).check(report); });
}

}  // namespace lorivan
