#include "cli/make_files.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <sstream>

#include "base/numbers.h"
#include "base/sink.h"
#include "cli/in_order.h"
#include "cli/knot_maker.h"
#include "cli/sheet_files.h"
#include "design/fit.h"
#include "design/fit_radius.h"
#include "design/frame_files.h"
#include "design/knot.h"
#include "design/model_check.h"
#include "design/model_output.h"
#include "design/outputs.h"
#include "design/vector_outputs.h"

namespace lorivan {
namespace {

/// The files of one knot, which take their names together. Files that were not committed vanish with it.
/// Every step returns an exit status, and has told what is wrong unless that is kDone.
class KnotFiles {
 public:
  explicit KnotFiles(Report& report) : report_(report) {}

  int write(const OutputJob& job, const std::string& name) {
    const bool frames = job.options.animate && extensionOf(name) != "svg";
    return frames ? writeFrames(job, name) : writeOne(job, name);
  }
  int write(const std::string& bytes, const std::string& name);
  int commit();
  /// The files for another one to commit.
  std::vector<std::unique_ptr<FileSink>> release() { return std::move(sinks_); }

 private:
  int writeOne(const OutputJob& job, const std::string& name);
  int writeFile(const std::string& name, const std::function<Status(Sink&)>& make);
  int writeFrames(const OutputJob& job, const std::string& pattern);
  int keep(std::unique_ptr<FileSink> sink);

  Report& report_;
  std::vector<std::unique_ptr<FileSink>> sinks_;
};

int KnotFiles::write(const std::string& bytes, const std::string& name) {
  auto sink = FileSink::create(name);
  if (!sink) return report_.fail(sink.error());
  (*sink)->write(bytes);
  return keep(std::move(*sink));
}

int KnotFiles::writeOne(const OutputJob& job, const std::string& name) {
  const ExportFormat& format = *outputFormat(name, job.document.fields, job.options);
  const int status = writeFile(name, [&](Sink& sink) { return makeOutput(format, job, sink); });
  const std::string materials = materialsBeside(format, job.options, name);
  if (status != kDone || materials.empty()) return status;
  return writeFile(materials, [&](Sink& sink) { return makeMaterials(job, sink); });
}

int KnotFiles::writeFile(const std::string& name, const std::function<Status(Sink&)>& make) {
  auto sink = FileSink::create(name);
  if (!sink) return report_.fail(sink.error());
  const Status made = make(**sink);
  if (const int status = keep(std::move(*sink)); status != kDone) return status;
  return made ? kDone : report_.fail(made.error(), name + ": ");
}

int KnotFiles::writeFrames(const OutputJob& job, const std::string& pattern) {
  const auto names = parseFrameNames(pattern);
  if (!names) return report_.fail(names.error());
  const FrameMaker frames(job, names->most());
  if (frames.stride() > 1)
    report_.note(pattern + ": " + std::to_string(frames.count()) + " frames, one for every " +
                 std::to_string(frames.stride()) + " steps");
  const PictureFormat format = extensionOf(pattern) == "bmp" ? PictureFormat::bmp : PictureFormat::png;
  for (int number = 1; number <= frames.count(); ++number) {
    const std::string name = names->name(number);
    job.progress(static_cast<double>(number - 1) / frames.count());
    const auto bytes = frames.make(number, format);
    if (!bytes) return report_.fail(bytes.error(), name + ": ");
    if (const int status = write(*bytes, name); status != kDone) return status;
  }
  return kDone;
}

/// The file is complete under its temporary name; it gets its own when all are. The error tells why bytes
/// were refused, which their writer does not know.
int KnotFiles::keep(std::unique_ptr<FileSink> sink) {
  if (const Status closed = sink->close(); !closed) return report_.fail(closed.error());
  sinks_.push_back(std::move(sink));
  return kDone;
}

int KnotFiles::commit() {
  const Status done = FileSink::commitAll(sinks_);
  return done ? kDone : report_.fail(done.error());
}

/// A knot that was made on another thread, and what is to be told of it.
struct MadeKnot {
  int status = kDone;
  std::vector<std::unique_ptr<FileSink>> files;  // complete, still without their names
  std::string told;
};

/// One run: a knot or many, and their files.
class FileMaker {
 public:
  FileMaker(Platform& platform, const CommandLine& line, std::ostream& errors)
      : platform_(platform),
        line_(line),
        report_(platform, errors, line.quiet),
        maker_(platform, line, report_) {}

  int run();
  int check(std::ostream& report);

 private:
  using Progress = std::function<void(const std::string& name, double part)>;

  std::uint64_t firstSeed();
  int makeKnotOf(const Member& member, KnotMaker& maker, Report& report, Knot& knot, Document& document,
                 OutputOptions& options) const;
  int makeAll(const Batch& batch, SheetFiles& sheets);
  int makeAllAtOnce(const Batch& batch);
  MadeKnot makeApart(const Member& member) const;
  int makeFilesOf(const Member& member, OutputJob& job, KnotFiles& files, Report& report,
                  const Progress& progress) const;
  int makeOne(const Member& member, SheetFiles& sheets, double part);
  int writeSheets(SheetFiles& sheets);
  void noteOverlap(const OutputJob& job, Report& report) const;
  void noteIgnored(const KnotFields& fields, const OutputOption& option);
  void noteIgnoredOptions();

  Platform& platform_;
  const CommandLine& line_;
  Report report_;
  KnotMaker maker_;
  std::unique_ptr<Knot> knot_ = std::make_unique<Knot>();
  std::vector<NumberedName> names_;  // of the files that each knot has
  std::size_t done_ = 0;             // knots of this run
};

/// Without a seed that was asked for, the one that was drawn is told.
std::uint64_t FileMaker::firstSeed() {
  if (line_.seed || !line_.random) return line_.seed.value_or(0);
  const std::uint64_t seed = platform_.clock().seed() % 1'000'000'000;
  report_.note("--random " + std::to_string(seed));
  return seed;
}

/// Names the outputs' formats that an option changes nothing in.
void FileMaker::noteIgnored(const KnotFields& fields, const OutputOption& option) {
  std::string ignoring;
  bool heeded = false;
  for (const ExportFormat& format : exportFormats()) {
    const auto isOutput = [&](const std::string& name) {
      return outputFormat(name, fields, line_.output) == &format;
    };
    if (std::ranges::none_of(line_.outputs, isOutput)) continue;
    if (option.heeds(format, line_))
      heeded = true;
    else
      ignoring += (ignoring.empty() ? "" : ", ") + std::string(format.extension);
  }
  if (!ignoring.empty() && (option.toldForEach || !heeded))
    report_.note(std::string(option.name) + " changes nothing in: " + ignoring);
}

/// Once, whatever the number of knots; their seeds and values do not change it.
void FileMaker::noteIgnoredOptions() {
  KnotFields fields = maker_.base().fields;
  for (const auto& [box, on] : line_.checks) fields.check(box) = on;
  for (const OutputOption& option : line_.outputOptions) noteIgnored(fields, option);
}

std::string_view roomAdvice(MoreRoom room) {
  switch (room) {
    case MoreRoom::fewerCells:
      return ": fewer cells make room";
    case MoreRoom::smallerWidth:
      return ": a smaller vtWidth without --fit makes room";
    case MoreRoom::fitBands:
      return ": --fit makes room";
    case MoreRoom::otherCurves:
      return ": another vtSwish or vtSmooth may make room";
  }
  return {};
}

/// As the window's status line says it; in millimetres of the drawing where its size is asked for. Of many
/// knots nobody wants to read it.
void FileMaker::noteOverlap(const OutputJob& job, Report& report) const {
  const bool silent = line_.manyKnots() || job.options.lines;  // centre lines need no room
  const double overlap = silent ? 0 : bandOverlap(job.document, job.knot);
  if (overlap <= 0) return;
  const auto scale = millimetresPerPixel(job.document, job.knot, job.options);
  report.note("the bands run together by " +
              (scale ? roundedUp(overlap * *scale, 100) + " mm" : roundedUp(overlap, 10) + " pixels") +
              std::string(roomAdvice(moreRoom(job.document, job.knot))));
}

/// Document, knot and options of one member.
int FileMaker::makeKnotOf(const Member& member, KnotMaker& maker, Report& report, Knot& knot,
                          Document& document, OutputOptions& options) const {
  report.about(member.caption);
  options = line_.output;
  if (const int status = maker.make(member, document, options); status != kDone) return status;
  if (const Status made = makeKnot(document, knot); !made) return report.fail(made.error());
  if (const std::string lost = lostStrands(knot); !lost.empty()) report.note(lost);
  if (!line_.fitRadius) return kDone;
  auto fitted = withFittedRadius(document, knot, *line_.fitRadius, options.millimetres);
  if (!fitted) return report.fail(fitted.error());
  document = std::move(*fitted);
  report.note("vtPolyRadius=" + document.fields.text(Param::PolyRadius));
  return kDone;
}

int FileMaker::makeFilesOf(const Member& member, OutputJob& job, KnotFiles& files, Report& report,
                           const Progress& progress) const {
  for (std::size_t i = 0; i < names_.size(); ++i) {
    const std::string name = line_.manyKnots() ? names_[i].name(member.numbers) : names_[i].between[0];
    job.progress = [&, i](double share) {
      progress(name, (static_cast<double>(i) + share) / static_cast<double>(names_.size()));
    };
    job.progress(0);
    // What nobody reads needs no looking for: that takes longer than writing a large mesh.
    if (!line_.quiet) job.note = [&](const std::string& text) { report.note(name + ": " + text); };
    job.fileName = name;
    if (const int status = files.write(job, name); status != kDone) return status;
  }
  return kDone;
}

int FileMaker::makeOne(const Member& member, SheetFiles& sheets, double part) {
  Document document;
  OutputOptions options;
  if (const int status = makeKnotOf(member, maker_, report_, *knot_, document, options); status != kDone)
    return status;
  const StrandColours colours = strandColours(document.fields.boxes);
  OutputJob job{platform_, document, *knot_, colours};
  job.options = options;
  noteOverlap(job, report_);
  KnotFiles files(report_);
  const Progress progress = [&](const std::string& name, double share) {
    report_.reached(name, (static_cast<double>(done_) + share) * part);
  };
  if (const int status = makeFilesOf(member, job, files, report_, progress); status != kDone) return status;
  if (const Status drawn = sheets.draw(static_cast<int>(done_), job); !drawn)
    return report_.fail(drawn.error());
  return files.commit();
}

/// Touches nothing that other knots need: the files have no names yet, and what is told waits.
MadeKnot FileMaker::makeApart(const Member& member) const {
  MadeKnot made;
  std::ostringstream told;
  Report report(told, line_.quiet);
  KnotMaker maker(maker_, report);
  const auto knot = std::make_unique<Knot>();
  Document document;
  OutputOptions options;
  made.status = makeKnotOf(member, maker, report, *knot, document, options);
  if (made.status == kDone) {
    const StrandColours colours = strandColours(document.fields.boxes);
    OutputJob job{platform_, document, *knot, colours};
    job.options = options;
    KnotFiles files(report);
    made.status = makeFilesOf(member, job, files, report, [](const std::string&, double) {});
    made.files = files.release();
  }
  made.told = std::move(told).str();
  return made;
}

/// Many knots on all processors, with the files, names and words that they would have one by one.
int FileMaker::makeAllAtOnce(const Batch& batch) {
  int worst = kDone;
  const auto make = [&](std::size_t number) { return makeApart(batch.member(number)); };
  makeInOrder(batch.count(), make, [&](std::size_t number, MadeKnot made) {
    const Member member = batch.member(number);
    report_.told(made.told);
    report_.about(member.caption);
    int status = made.status;
    if (status == kDone)
      if (const Status done = FileSink::commitAll(made.files); !done) status = report_.fail(done.error());
    if (status != kDone) worst = status == kBadOutput ? kBadOutput : kNoKnot;
    report_.reached(names_.back().name(member.numbers),
                    static_cast<double>(number + 1) / static_cast<double>(batch.count()));
    return status != kBadOutput;
  });
  report_.about({});
  return worst;
}

/// A knot that cannot be made is told and the rest goes on; what cannot be written ends the run.
int FileMaker::makeAll(const Batch& batch, SheetFiles& sheets) {
  if (line_.manyKnots() && sheets.empty()) return makeAllAtOnce(batch);
  int worst = kDone;
  const double part = 1.0 / static_cast<double>(batch.count());
  for (done_ = 0; done_ < batch.count(); ++done_) {
    const Member member = batch.member(done_);
    sheets.setCaption(static_cast<int>(done_), member.caption);
    if (names_.empty()) report_.reached(sheets.name(0), static_cast<double>(done_) * part);
    const int status = makeOne(member, sheets, part);
    if (status == kBadOutput || !line_.manyKnots()) return status;
    if (status != kDone) worst = kNoKnot;
  }
  report_.about({});
  return worst;
}

int FileMaker::writeSheets(SheetFiles& sheets) {
  KnotFiles files(report_);
  for (std::size_t i = 0; sheets.drawn() && i < sheets.size(); ++i) {
    const auto bytes = sheets.finish(i);
    if (!bytes) return report_.fail(bytes.error(), sheets.name(i) + ": ");
    if (const int status = files.write(*bytes, sheets.name(i)); status != kDone) return status;
  }
  return files.commit();
}

int FileMaker::run() {
  if (const int status = maker_.read(); status != kDone) return status;
  const Batch batch(line_, firstSeed());
  noteIgnoredOptions();
  SheetFiles sheets(platform_, line_.output, static_cast<int>(batch.count()), batch.columns());
  for (const std::string& name : line_.outputs) {
    auto places = line_.manyKnots() ? parseNumberedName(name) : NumberedName{{name}, {}};
    if (!places) return report_.fail(places.error());
    if (line_.sheet && places->places() == 0)
      sheets.add(name);
    else
      names_.push_back(std::move(*places));
  }
  const int made = makeAll(batch, sheets);
  if (made == kBadOutput || sheets.empty()) return made;
  const int written = writeSheets(sheets);
  return written != kDone ? written : made;
}

int FileMaker::check(std::ostream& report) {
  if (const int status = maker_.read(); status != kDone) return status;
  Document document;
  OutputOptions options;
  const Batch batch(line_, firstSeed());
  if (const int status = makeKnotOf(batch.member(0), maker_, report_, *knot_, document, options);
      status != kDone)
    return status;
  const auto checked = checkModel(*knot_, document.fields, options);
  if (!checked) return report_.fail(checked.error());
  report << checkText(*checked, line_.material) << std::flush;
  if (!report) return kBadOutput;
  const Material& material = line_.material != nullptr ? *line_.material : kMaterials.front();
  return faultsOf(*checked, material).empty() ? kDone : kNoKnot;
}

}  // namespace

int makeFiles(Platform& platform, const CommandLine& line, std::ostream& errors) {
  return FileMaker(platform, line, errors).run();
}

int checkKnot(Platform& platform, const CommandLine& line, std::ostream& report, std::ostream& errors) {
  return FileMaker(platform, line, errors).check(report);
}

}  // namespace lorivan
