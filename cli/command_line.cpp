#include "cli/command_line.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/sink.h"
#include "cli/lists.h"
#include "cli/option_checks.h"
#include "design/model_output.h"
#include "design/outputs.h"
#include "design/presets.h"
#include "design/vector_outputs.h"
#include "design/version.h"
#include "export/formats.h"
#include "strands/tracing.h"

namespace lorivan {
namespace {

class Parser;
using Heeds = bool (*)(const ExportFormat& format, const CommandLine& line);

/// One row says all about an option: how it is read, and its lines in the usage text.
struct Option {
  std::string_view name;
  std::string_view value;                                  // what follows it, as the usage text names it
  std::string about;                                       // empty: not in the usage text
  Status (Parser::*take)() = nullptr;                      // null: one of the two below
  bool OutputOptions::*flag = nullptr;                     // set by being named
  std::optional<double> OutputOptions::*length = nullptr;  // takes millimetres
  Heeds heeds = nullptr;                                   // null: every output follows
  bool toldForEach = false;                                // see OutputOption
  bool mayBeNone = false;                                  // a length of 0 is right, too
};
const std::vector<Option>& options();

bool hasSize(const ExportFormat& format, const CommandLine& line) {
  return format.width != WidthOf::nothing || (line.output.relief && format.identifier == "png");
}

bool hasHeight(const ExportFormat& format, const CommandLine& line) {
  return line.inner || hasSize(format, line);
}

bool hasPixels(const ExportFormat& format, const CommandLine& line) {
  return format.kind == FormatKind::picture || (line.output.relief && canBeRelief(format)) ||
         (line.sheet && format.identifier == "svg");
}

bool showsViews(const ExportFormat& format, const CommandLine&) { return format.kind == FormatKind::picture; }

bool isCut(const ExportFormat& format, const CommandLine&) { return canBeCut(format); }

bool isTubes(const ExportFormat& format, const CommandLine&) { return format.width == WidthOf::model; }

bool isSolid(const ExportFormat& format, const CommandLine&) { return format.takesSolid; }

bool isOfModel(const ExportFormat& format, const CommandLine& line) {
  return (format.kind == FormatKind::model && !isFlatDxf(format)) || line.output.relief ||
         (format.kind == FormatKind::picture && line.output.solidView);
}

bool hasPlate(const ExportFormat& format, const CommandLine& line) {
  return line.output.solid ? format.takesSolid : canBeRelief(format) && format.kind == FormatKind::model;
}

/// Walks over the arguments; options may take the next one as their value.
class Parser {
 public:
  explicit Parser(const std::vector<std::string>& arguments) : arguments_(arguments) {}

  Result<CommandLine> run();

 private:
  friend const std::vector<Option>& options();

  Status value(std::string& out) {
    const std::string& option = arguments_[at_];
    if (at_ + 1 >= arguments_.size()) return wrongUsage(option + " needs a value");
    out = arguments_[++at_];
    return {};
  }

  Status takeShape();
  Status takePreset();
  Status takeSet();
  Status takeRandom();
  Status takeSweep();
  Status takeView();
  Status takeWidth();
  Status takeCells();
  Status takeFitRadius();
  Status takeMaterial();
  Status takeCheck() { return kind(CommandKind::check); }
  Status takeOrigin();
  Status takeStrands();
  Status takeFrame();
  Status takeInner() { return takeLength(line_.inner); }
  Status takeFit() { return flag(line_.fit); }
  Status takeSheet() { return flag(line_.sheet); }
  Status takeQuiet() { return flag(line_.quiet); }
  Status takeStep() { return flag(line_.stepDisplay); }
  Status takeOutput();
  Status takeList();
  Status takeHelp() { return kind(CommandKind::help); }
  Status takeVersion() { return kind(CommandKind::version); }
  Status takeFile(const std::string& name);
  Status takeLength(std::optional<double>& length, bool mayBeNone = false);
  Status take(const Option& option);

  static Status flag(bool& on) {
    on = true;
    return {};
  }
  Status kind(CommandKind wanted) {
    line_.kind = wanted;
    return {};
  }

  const std::vector<std::string>& arguments_;
  std::size_t at_ = 0;
  CommandLine line_;
};

const std::vector<Option>& options() {
  static const std::vector<Option> all = {
      {"-o", "FILE", "the format is the extension: " + formatExtensions(), &Parser::takeOutput},
      {"--shape", "NAME", "a standard shape, by its name or its number", &Parser::takeShape},
      {"--preset", "NAME", "a style, by its name or its number: bands and colours that go together",
       &Parser::takePreset},
      {"--set", "FIELD=VALUE", "a parameter (vtXNo=6) or a check box (chkMirror=1); may be repeated",
       &Parser::takeSet},
      {"--random", "[SEED]",
       "a random knot; the same seed gives the same knot; 1..200 makes one for each seed, with -o "
       "'knot-%d.svg'",
       &Parser::takeRandom},
      {"--sweep", "FIELD=A..B",
       "a knot for each value of a parameter from A to B (A..B:STEP), with a % in the names of the files; "
       "two of them make a knot for each pair",
       &Parser::takeSweep},
      {"--sheet", "",
       "outputs without a % hold all the knots in one picture (png, bmp, svg); on its own: twelve random "
       "knots",
       &Parser::takeSheet},
      {"--strands", "N|most", "set and remove walls until the knot has so many strands",
       &Parser::takeStrands},
      {"--view", "2d|3d", "which picture png and bmp hold (2d)", &Parser::takeView, nullptr, nullptr,
       showsViews},
      {"--width", "PIXELS", "width of png and bmp pictures (1000), samples across a relief (500)",
       &Parser::takeWidth, nullptr, nullptr, hasPixels},
      {"--mm", "WIDTH",
       "finished width in millimetres: of the drawn knot, bands included, in " +
           formatsWithWidth(WidthOf::drawing) + " (the same size in all of them), of the model in " +
           formatsWithWidth(WidthOf::model) + "; 3mf, glb and reliefs are 100 mm wide without it",
       nullptr, nullptr, &OutputOptions::millimetres, hasSize, true},
      {"--height", "HEIGHT",
       "finished height in millimetres, in the same formats; with --mm as large as both allow", nullptr,
       nullptr, &OutputOptions::height, hasHeight, true},
      {"--outline", "",
       "svg, pdf and dxf hold closed outlines of what can be seen of the coloured bands, for cutters; a "
       "hidden layer holds their centre lines",
       nullptr, &OutputOptions::outline, nullptr, isCut, true},
      {"--kerf", "WIDTH", "width of a cut in millimetres: outlines lie half of it further out", nullptr,
       nullptr, &OutputOptions::kerf, isCut, false, true},
      {"--lines", "",
       "svg, pdf and dxf hold every centre line once; they stop where a strand passes under another, or run "
       "through with --set chkFullyCrossed=1",
       nullptr, &OutputOptions::lines, nullptr, isCut, true},
      {"--arcs", "", "arcs instead of short lines in the dxf of --outline and --lines", nullptr,
       &OutputOptions::arcs, nullptr,
       [](const ExportFormat& format, const CommandLine&) { return isFlatDxf(format); }, true},
      {"--origin", "corner",
       "svg, pdf and flat dxf begin at the knot's lower left corner, and the page ends where the knot does",
       &Parser::takeOrigin, nullptr, nullptr, isCut, true},
      {"--frame", "WxH",
       "cells, scale and stretch such that the drawn knot is W by H millimetres, bands included; with "
       "--outline what is cut out",
       &Parser::takeFrame},
      {"--inner", "DIAMETER",
       "cells, stretch and tubes such that the model is a ring with this diameter inside, in millimetres, "
       "and "
       "as high as --height says; a bracelet where vtRingPerc is below 100",
       &Parser::takeInner},
      {"--tube", "MM",
       "thickness of the strands in " + formatsWithWidth(WidthOf::model) +
           ", in millimetres; with --mm both hold",
       nullptr, nullptr, &OutputOptions::tube, isTubes, true},
      {"--solid", "", "fuse the strands to one closed body where they touch, in " + formatsWithSolid(),
       nullptr, &OutputOptions::solid, nullptr, isSolid, true},
      {"--fillet", "MM", "round the body's corners between strands by this radius", nullptr, nullptr,
       &OutputOptions::fillet, isSolid},
      {"--flat", "", "cut the body's underside flat, a quarter of a strand deep, to lie on a printer's bed",
       nullptr, &OutputOptions::flat, nullptr, isSolid},
      {"--cells", "N", "how fine the body is: cells for each radius of a strand, 2 to 32 (8)",
       &Parser::takeCells, nullptr, nullptr, isSolid},
      {"--fit-radius", "GAP",
       "the radius that leaves this gap between strands, in millimetres with --mm; 0: they meet at every "
       "crossing",
       &Parser::takeFitRadius, nullptr, nullptr, isOfModel},
      {"--check", "",
       "write nothing, but say what the model's maker must know: pieces, walls, gaps, volume; status 4 when "
       "it "
       "would not come out well",
       &Parser::takeCheck},
      {"--material", "NAME", "what --check judges by: " + materialNames(), &Parser::takeMaterial},
      {"--fit", "", "bands as wide as the grid has room for, and the knot as large as the picture",
       &Parser::takeFit},
      {"--transparent", "", "leave the background out of svg, pdf and png", nullptr,
       &OutputOptions::transparent, nullptr,
       [](const ExportFormat& format, const CommandLine&) { return canBeTransparent(format); }},
      {"--animate", "",
       "the knot draws itself: -o knot.svg plays in a browser, at the speed of vtAnimate and again and again "
       "with --set chkLoop=1; -o 'frame-%03d.png' writes numbered frames",
       nullptr, &OutputOptions::animate},
      {"--weld", "",
       "obj shares the corners of its polygons and has its materials in a file beside it (.mtl); for "
       "printers "
       "3mf and stl are better",
       nullptr, &OutputOptions::weld, nullptr,
       [](const ExportFormat& format, const CommandLine& line) {
         return !materialsBeside(format, line.output, "x").empty();
       }},
      {"--binary", "", "stl in its binary form, a third of the size", nullptr, &OutputOptions::binary,
       nullptr, [](const ExportFormat& format, const CommandLine&) { return hasBinaryForm(format); }},
      {"--relief", "",
       "png becomes a 16-bit height map of the model's true depth, stl and 3mf a closed relief on a plate",
       nullptr, &OutputOptions::relief, nullptr,
       [](const ExportFormat& format, const CommandLine&) { return canBeRelief(format); }, true},
      {"--base", "MM", "thickness of a relief's plate (2), or of one that is put under the body", nullptr,
       nullptr, &OutputOptions::base, hasPlate},
      {"--quiet", "", "no notes on the error output", &Parser::takeQuiet},
      {"--step", "", "", &Parser::takeStep},
      {"--list", "WHAT", "print the parameters, shapes, presets or formats", &Parser::takeList},
      {"--help", "", "print this", &Parser::takeHelp},
      {"-h", "", "", &Parser::takeHelp},
      {"--version", "", "print the version", &Parser::takeVersion},
  };
  return all;
}

Status Parser::takeShape() {
  std::string name;
  if (const Status got = value(name); !got) return got;
  const auto index = parseInteger(name, 0, kShapeCount - 2);
  for (int i = 0; i < kShapeCount - 1; ++i)
    if (index == i || lowerCase(shapeTable()[i].name) == lowerCase(name)) {
      line_.shape = static_cast<Shape>(i);
      return {};
    }
  return wrongUsage("there is no shape \"" + name + "\"; --list shapes names them all");
}

Status Parser::takePreset() {
  std::string name;
  if (const Status got = value(name); !got) return got;
  line_.preset = findPreset(name);
  if (line_.preset) return {};
  return wrongUsage("there is no style \"" + name + "\"; --list presets names them all");
}

Status Parser::takeSet() {
  std::string pair;
  if (const Status got = value(pair); !got) return got;
  const auto equals = pair.find('=');
  if (equals == std::string::npos) return wrongUsage("--set takes FIELD=VALUE, not \"" + pair + "\"");
  const std::string field = pair.substr(0, equals), text = pair.substr(equals + 1);
  if (const auto parameter = findParameter(field)) {
    line_.values.emplace_back(*parameter, text);
    return {};
  }
  const auto box = findCheck(field);
  if (!box) return wrongUsage("there is no field \"" + field + "\"; --list parameters names them all");
  if (text != "0" && text != "1")
    return wrongUsage(field + " is a check box and takes 0 or 1, not \"" + text + "\"");
  line_.checks.emplace_back(*box, text == "1");
  return {};
}

std::string seedLimit(const std::string& text) {
  return "--random takes a seed up to 9223372036854775807 or a range like 1..200, not \"" + text + "\"";
}

/// The seed may be left out: only what begins with a digit, or is a range, is taken as one.
Status Parser::takeRandom() {
  line_.random = true;
  line_.lastSeed.reset();
  if (at_ + 1 >= arguments_.size()) return {};
  const std::string& text = arguments_[at_ + 1];
  const auto dots = text.find("..");
  const auto first = parseInteger(text.substr(0, dots), 0, INT64_MAX);
  if (!first && text.find_first_not_of("0123456789.") != std::string::npos) return {};
  ++at_;
  if (!first) return wrongUsage(seedLimit(text));
  line_.seed = static_cast<std::uint64_t>(*first);
  if (dots == std::string::npos) return {};
  const auto last = parseInteger(text.substr(dots + 2), *first, INT64_MAX);
  if (!last) return wrongUsage(seedLimit(text));
  if (*last - *first >= kMostKnots) return tooManyKnots();
  line_.lastSeed = static_cast<std::uint64_t>(*last);
  return {};
}

/// The values from A to B in steps, with what single precision can tell of them; none when a text is no
/// number, lies outside the field's range, or there are too many.
std::vector<std::string> sweptValues(Param field, const std::string& range) {
  const auto dots = range.find("..");
  const auto colon = range.find(':', dots == std::string::npos ? 0 : dots);
  const std::string step =
      colon == std::string::npos ? std::string(parameterSpec(field).step) : range.substr(colon + 1);
  if (dots == std::string::npos) return {};
  const auto from = parseNumber(range.substr(0, dots)), by = parseNumber(step),
             to = parseNumber(range.substr(dots + 2, std::min(colon, range.size()) - dots - 2));
  if (!from || !to || !by || *by <= 0) return {};
  const double count = std::floor(std::abs(*to - *from) / *by + 1e-6) + 1;
  if (count > kMostKnots) return {};
  std::vector<std::string> values;
  for (int i = 0; i < static_cast<int>(count); ++i) {
    const double value = *from + (*to < *from ? -1 : 1) * *by * i;
    values.push_back(shortestText(static_cast<float>(value)));
    if (parseNumber(correctedText(field, values.back())) != parseNumber(values.back())) return {};
  }
  return values;
}

Status Parser::takeSweep() {
  std::string text;
  if (const Status got = value(text); !got) return got;
  const auto equals = text.find('=');
  const auto field = findParameter(text.substr(0, equals));
  if (equals == std::string::npos || !field)
    return wrongUsage("--sweep takes FIELD=FROM..TO with a parameter's name, not \"" + text + "\"");
  Sweep sweep{*field, sweptValues(*field, text.substr(equals + 1))};
  const ParamSpec& spec = parameterSpec(*field);
  if (sweep.values.empty())
    return wrongUsage("--sweep " + std::string(spec.field) + " takes two numbers from " +
                      std::string(spec.min) + " to " + std::string(spec.max) +
                      " and a step, like 5..20:5, not \"" + text.substr(equals + 1) + "\"");
  if (line_.sweeps.size() == 2) return wrongUsage("--sweep can be given twice, not more often");
  if (!line_.sweeps.empty() && line_.sweeps[0].field == *field)
    return wrongUsage(std::string(spec.field) + " is swept already");
  line_.sweeps.push_back(std::move(sweep));
  return {};
}

Status Parser::takeView() {
  std::string view;
  if (const Status got = value(view); !got) return got;
  if (view != "2d" && view != "3d") return wrongUsage("--view takes 2d or 3d, not \"" + view + "\"");
  line_.output.solidView = view == "3d";
  return {};
}

Status Parser::takeWidth() {
  std::string text;
  if (const Status got = value(text); !got) return got;
  const auto width = parseInteger(text, 1, INT32_MAX);
  if (!width) return wrongUsage("--width takes a whole number of pixels from 1 up, not \"" + text + "\"");
  line_.output.width = static_cast<int>(*width);
  return {};
}

Status Parser::takeCells() {
  std::string text;
  if (const Status got = value(text); !got) return got;
  const auto cells = parseInteger(text, 2, 32);
  if (!cells) return wrongUsage("--cells takes a number from 2 to 32, not \"" + text + "\"");
  line_.output.cells = static_cast<int>(*cells);
  return {};
}

Status Parser::takeFitRadius() {
  std::string text;
  if (const Status got = value(text); !got) return got;
  const auto gap = parseNumber(text);
  if (!gap || *gap < 0 || *gap > kMostMillimetres)
    return wrongUsage("--fit-radius takes a gap from 0 to 100000, not \"" + text + "\"");
  line_.fitRadius = *gap;
  return {};
}

Status Parser::takeMaterial() {
  std::string name;
  if (const Status got = value(name); !got) return got;
  line_.material = findMaterial(name);
  if (line_.material != nullptr) return {};
  return wrongUsage("there is no material \"" + name + "\"; it may be " + materialNames());
}

Status Parser::takeOrigin() {
  std::string place;
  if (const Status got = value(place); !got) return got;
  if (place != "corner") return wrongUsage("--origin takes corner, not \"" + place + "\"");
  return flag(line_.output.cornerOrigin);
}

Status Parser::takeStrands() {
  std::string text;
  if (const Status got = value(text); !got) return got;
  line_.setStrands = true;
  line_.strands.reset();
  if (text == "most") return {};
  const auto strands = parseInteger(text, 1, kMostStrands);
  if (!strands)
    return wrongUsage("--strands takes 1 to " + std::to_string(kMostStrands) + " or \"most\", not \"" + text +
                      "\"");
  line_.strands = static_cast<int>(*strands);
  return {};
}

Status Parser::takeFrame() {
  std::string text;
  if (const Status got = value(text); !got) return got;
  const auto lengths = parseLengths(text);
  if (!lengths) return lengths.error();
  line_.frame = *lengths;
  return {};
}

Status Parser::takeLength(std::optional<double>& length, bool mayBeNone) {
  const std::string option = arguments_[at_];
  std::string text;
  if (const Status got = value(text); !got) return got;
  const auto read = parseNumber(text);
  const bool isNone = mayBeNone && read && *read == 0;
  if (!read || (*read < kLeastMillimetres && !isNone) || *read > kMostMillimetres)
    return wrongUsage(option + " takes a length from 0.01 to 100000 millimetres" +
                      (mayBeNone ? ", or 0 for none" : "") + ", not \"" + text + "\"");
  length = *read;
  return {};
}

Status Parser::takeOutput() {
  std::string name;
  if (const Status got = value(name); !got) return got;
  if (findFormat(extensionOf(name), DxfKind::faces) == nullptr)
    return wrongUsage("\"" + name + "\" has no known format; --list formats names them all");
  line_.outputs.push_back(name);
  return {};
}

Status Parser::takeList() {
  if (const Status got = value(line_.listed); !got) return got;
  if (std::ranges::find(kLists, line_.listed) == kLists.end())
    return wrongUsage("--list takes parameters, shapes, presets or formats, not \"" + line_.listed + "\"");
  return kind(CommandKind::list);
}

Status Parser::takeFile(const std::string& name) {
  if (name.size() > 1 && name.front() == '-') return wrongUsage("there is no option " + name);
  if (!line_.knotFile.empty()) return wrongUsage("one knot file at a time, not also \"" + name + "\"");
  if (name.empty()) return wrongUsage("the knot file's name is empty");
  line_.knotFile = name;
  return {};
}

Status Parser::take(const Option& option) {
  const auto isThis = [&](const OutputOption& given) { return given.name == option.name; };
  if (option.heeds != nullptr && std::ranges::none_of(line_.outputOptions, isThis))
    line_.outputOptions.push_back({option.name, option.heeds, option.toldForEach});
  if (option.flag != nullptr) return flag(line_.output.*option.flag);
  if (option.length != nullptr) return takeLength(line_.output.*option.length, option.mayBeNone);
  return (this->*option.take)();
}

Result<CommandLine> Parser::run() {
  for (; at_ < arguments_.size(); ++at_) {
    const std::string& word = arguments_[at_];
    const Option* found = nullptr;
    for (const Option& option : options())
      if (option.name == word) found = &option;
    const Status taken = found != nullptr ? take(*found) : takeFile(word);
    if (!taken) return taken.error();
  }
  if (line_.kind == CommandKind::check) {
    if (!line_.outputs.empty()) return wrongUsage("--check writes nothing and does not go with -o");
    if (line_.manyKnots() || line_.sheet) return wrongUsage("--check looks at one knot at a time");
    if (const Status checked = checkOptions(line_); !checked) return checked.error();
    return line_;
  }
  if (line_.kind != CommandKind::window) return line_;
  if (line_.sheet && line_.seedsVary()) line_.random = true;
  if (!line_.outputs.empty()) {
    line_.kind = CommandKind::makeFiles;
    if (const Status checked = checkOptions(line_); !checked) return checked.error();
    return line_;
  }
  const bool optionsOnly = line_.shape || line_.preset || line_.random || !line_.values.empty() ||
                           !line_.checks.empty() || line_.fit || line_.setStrands || line_.sheet ||
                           line_.frame || line_.inner || !line_.sweeps.empty() || line_.fitRadius ||
                           line_.material != nullptr || line_.output != OutputOptions{};
  if (optionsOnly) return wrongUsage("these options need an output file, -o FILE, or --check");
  return line_;
}

constexpr std::array<StatusUsage, 6> kStatuses = {{
    {kDone, "done"},
    {kWrongUsage, "wrong usage"},
    {kBadInput, "an input that cannot be read"},
    {kNoKnot, "a knot that cannot be made or a model that --check finds fault with"},
    {kBadOutput, "an output that cannot be written"},
    {kNoDisplay, "no display for the window"},
}};

/// A text in lines that begin, but for the first, in this column.
std::string inLines(std::string line, std::string_view about, std::size_t column) {
  constexpr std::size_t kLineLength = 100;
  std::string out;
  for (std::size_t at = 0; at < about.size();) {
    const std::size_t end = std::min(about.find(' ', at), about.size());
    if (line.size() + end - at >= kLineLength) {
      out += line + '\n';
      line.assign(column, ' ');
    }
    line.append(!line.empty() && line.back() != ' ' ? " " : "").append(about, at, end - at);
    at = end + 1;
  }
  return out + line + '\n';
}

/// The option's lines of the usage text.
std::string usageOf(const Option& option) {
  constexpr std::size_t kColumn = 23;
  std::string line = "  ";
  appendColumn(line, std::string(option.name) + (option.value.empty() ? "" : " ") + std::string(option.value),
               kColumn - 2);
  return inLines(line, option.about, kColumn);
}

std::string statusLines() {
  std::string all;
  for (const StatusUsage& usage : kStatuses)
    all.append(all.empty() ? "Exit status: " : ", ")
        .append(std::to_string(usage.status) + ' ')
        .append(usage.about);
  return inLines("", all + '.', 0);
}

}  // namespace

ExitStatus exitStatusOf(ErrorKind kind) {
  switch (kind) {
    case ErrorKind::usage:
      return kWrongUsage;
    case ErrorKind::input:
      return kBadInput;
    case ErrorKind::knot:
    case ErrorKind::limit:
      return kNoKnot;
    case ErrorKind::output:
      break;
  }
  return kBadOutput;
}

Result<CommandLine> parseCommandLine(const std::vector<std::string>& arguments) {
  return Parser(arguments).run();
}

std::string usageText() {
  std::string out =
      "lorivan [KNOT]                     open the window, with this knot if one is named\n"
      "lorivan [KNOT] [OPTIONS] -o FILE [-o FILE]...\n"
      "                                   write files, without a window or a display\n"
      "lorivan [KNOT] [OPTIONS] --check   say whether the model can be made\n"
      "KNOT is a knot file (.qzd), or a file that was made from a knot and still holds it (" +
      formatsWithSource() +
      ").\nIt may also be a shape of your own (.qzc), a drawing (.svg, .dxf) or a picture (.png, .jpg, "
      ".bmp)\n"
      "without a knot in it: with -o its outline gets an AutoGrid by vtGridSize and chkShapeT.\n\n";
  for (const Option& option : options())
    if (!option.about.empty()) out += usageOf(option);
  return out + '\n' + statusLines();
}

std::vector<OptionUsage> optionUsages() {
  std::vector<OptionUsage> all;
  for (const Option& option : options())
    if (!option.about.empty()) all.push_back({option.name, option.value, option.about});
  return all;
}

std::span<const StatusUsage> statusUsages() { return kStatuses; }

}  // namespace lorivan
