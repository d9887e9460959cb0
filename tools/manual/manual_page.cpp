#include <algorithm>
#include <cctype>

#include "cli/command_line.h"
#include "design/presets.h"
#include "design/version.h"
#include "tools/manual/texts.h"

namespace lorivan {
namespace {

/// Nothing in it is taken for a request, nor a hyphen for one that a line may break at or a dash.
std::string escaped(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    if ((c == '.' || c == '\'') && (safe.empty() || safe.back() == '\n')) safe += "\\&";
    if (c == '-')
      safe += "\\-";
    else if (c == '\\')
      safe += "\\e";
    else
      safe += c;
  }
  return safe;
}

std::string bold(std::string_view text) { return "\\fB" + escaped(text) + "\\fR"; }

bool isPlaceholder(std::string_view word) {
  return word.front() == '[' || std::isupper(static_cast<unsigned char>(word.front())) != 0;
}

/// "N|most": what is to be replaced is set in italics, what is typed as it is in bold.
std::string valueText(std::string_view value) {
  std::string out;
  while (!value.empty()) {
    const std::string_view word = value.substr(0, value.find('|'));
    if (!out.empty()) out += '|';
    out += isPlaceholder(word) ? "\\fI" + escaped(word) + "\\fR" : bold(word);
    value.remove_prefix(std::min(word.size() + 1, value.size()));
  }
  return out;
}

std::string entry(const std::string& tag, std::string_view text) {
  return ".TP\n" + tag + '\n' + escaped(text) + '\n';
}

std::string optionEntries() {
  std::string out;
  for (const OptionUsage& option : optionUsages()) {
    std::string tag = bold(option.name);
    if (!option.value.empty()) tag.append(1, ' ').append(valueText(option.value));
    out += entry(tag, std::string(option.about) + '.');
  }
  return out;
}

std::string named(std::string_view caption, std::string_view about) {
  return std::string(caption).append(": ").append(about) + '.';
}

std::string fieldEntries() {
  std::string out;
  for (const ParamSpec& spec : parameterTable())
    out += entry(bold(spec.field) + " (" + escaped(spec.min) + " to " + escaped(spec.max) + "; " +
                     escaped(correctedText(*findParameter(spec.field), std::string(spec.firstRun))) + ')',
                 named(spec.caption, spec.about));
  for (const CheckSpec& spec : checkTable())
    out += entry(bold(spec.field) + " (0 or 1; " + (spec.firstRun ? "1" : "0") + ')',
                 named(spec.caption, spec.about));
  return out;
}

std::string shapeEntries() {
  std::string out;
  for (const ShapeSpec& spec : shapeTable().first(kShapeCount - 1))
    out += entry(bold(spec.name), std::string(spec.about) + '.');
  return out;
}

std::string presetEntries() {
  std::string out;
  for (const Preset& preset : presetTable()) out += entry(bold(preset.name), std::string(preset.about) + '.');
  return out;
}

/// Each line of the list is an extension and what it holds.
std::string formatEntries() {
  std::string out, list = formatList();
  for (std::size_t at = 0, end; (end = list.find('\n', at)) != std::string::npos; at = end + 1) {
    const std::string line = list.substr(at, end - at);
    const std::size_t gap = line.find(' ');
    out += entry(bold(line.substr(0, gap)), line.substr(line.find_first_not_of(' ', gap)) + '.');
  }
  return out;
}

std::string statusEntries() {
  std::string out;
  for (const StatusUsage& usage : statusUsages())
    out += entry(bold(std::to_string(usage.status)), std::string(usage.about) + '.');
  return out;
}

constexpr std::string_view kExamples = R"(.PP
A random knot to look at and to cut, 120 mm wide:
.PP
.EX
lorivan \-\-random 7 \-\-fit \-\-mm 120 \-o knot.png \-o knot.svg
.EE
.PP
The same knot as a body for a printer, from the drawing, which holds it:
.PP
.EX
lorivan knot.svg \-\-mm 80 \-\-solid \-\-flat \-o knot.3mf
.EE
.PP
A sheet of one shape at many settings:
.PP
.EX
lorivan \-\-shape Hexagonal \-\-sweep vtSwish=5..20:5 \-\-sweep vtXNo=2..6 \-\-fit \-\-sheet \-o sheet.png
.EE
)";

}  // namespace

std::string manualPage() {
  std::string page =
      ".\\\" Written by lorivan_package_texts from the program's tables; do not edit.\n"
      ".TH LORIVAN 1 \"" LORIVAN_DATE "\" \"Lorivan " +
      std::string(kVersion) +
      "\" \"User Commands\"\n"
      ".SH NAME\nlorivan \\- design interlaced knots\n"
      ".SH SYNOPSIS\n.B lorivan\n.RI [ KNOT ]\n.br\n.B lorivan\n"
      ".RI [ KNOT \"] [\" OPTIONS ]\n.B \\-o\n.IR FILE \" [\\fB\\-o\\fR \" FILE ]...\n.br\n"
      ".B lorivan\n.RI [ KNOT \"] [\" OPTIONS ]\n.B \\-\\-check\n"
      ".SH DESCRIPTION\n.B lorivan\n"
      "designs Celtic-style interlaced knots: bands that run over and under each other without end. From a "
      "shape\n"
      "and a few numbers it finds the strands, draws them with their crossings, turns them into a model, and "
      "writes\n"
      "files for cutters, printers and drawing programs.\n.PP\n"
      "Without\n.B \\-o\nor\n.B \\-\\-check\nit opens a window; with one of them it needs no display, reads "
      "none of the\n"
      "window's settings, and the same line gives the same bytes.\n.PP\n.I KNOT\nis a knot file (.qzd), or a "
      "file "
      "that was made from a knot and still holds it (" +
      formatsWithSource() +
      ").\nIt may also be a shape of your own (.qzc), a drawing (.svg, .dxf) or a picture (.png, .jpg, "
      ".bmp)\n"
      "without a knot in it: with\n.B \\-o\nits outline is filled by an AutoGrid.\n";
  page += ".SH OPTIONS\n" + optionEntries();
  page +=
      ".SH FIELDS\nWhat\n.B \\-\\-set\nand\n.B \\-\\-sweep\ntake, with limits and first value. A value "
      "outside its "
      "limits is corrected, and a note says so.\n" +
      fieldEntries();
  page +=
      ".SH SHAPES\n" + shapeEntries() + ".SH STYLES\n" + presetEntries() + ".SH FORMATS\n" + formatEntries();
  page += ".SH EXIT STATUS\n" + statusEntries();
  page +=
      ".SH FILES\nThe window keeps its settings in\n.I $XDG_CONFIG_HOME/Lorivan/settings.ini\n"
      "(by default below\n.IR ~/.config ),\nthe knot shown last and copies of unsaved work in\n"
      ".I $XDG_DATA_HOME/Lorivan\n(by default below\n.IR ~/.local/share ).\n";
  return page + ".SH EXAMPLES\n" + std::string(kExamples);
}

}  // namespace lorivan
