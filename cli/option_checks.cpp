#include "cli/option_checks.h"

#include "base/sink.h"
#include "custom/shape_file.h"
#include "design/frame_files.h"

namespace lorivan {
namespace {

/// A size is asked for in one way.
Status checkSizes(const CommandLine& line) {
  if (line.inner && !line.output.height) return wrongUsage("--inner needs --height, the height of the ring");
  if (!line.inner && !line.frame) return {};
  if (line.inner && line.frame) return wrongUsage("--inner and --frame do not go together");
  if (line.output.millimetres) return wrongUsage("--mm does not go with --inner or --frame, which set it");
  if (line.frame && line.output.height) return wrongUsage("--frame has a height of its own");
  return {};
}

/// Which options for machines go together.
Status checkCuts(const CommandLine& line) {
  const OutputOptions& wanted = line.output;
  if (wanted.outline && wanted.lines)
    return wrongUsage("--outline and --lines are two drawings; an outline file has the centre lines, too");
  if (wanted.kerf && !wanted.outline) return wrongUsage("--kerf moves outlines and needs --outline");
  if (wanted.arcs && !wanted.outline && !wanted.lines) return wrongUsage("--arcs needs --outline or --lines");
  if (wanted.animate && (wanted.outline || wanted.lines))
    return wrongUsage("--animate does not go with --outline and --lines");
  return {};
}

/// What only --check asks for.
Status checkJudge(const CommandLine& line) {
  if (line.material != nullptr && line.kind != CommandKind::check)
    return wrongUsage("--material is what --check judges by");
  return {};
}

Status checkBody(const CommandLine& line) {
  const OutputOptions& made = line.output;
  if (made.relief && made.solid) return wrongUsage("--relief and --solid do not go together");
  if (made.base && !made.relief && !made.solid) return wrongUsage("--base needs --relief or --solid");
  if (!made.solid && (made.flat || made.fillet || made.cells != OutputOptions().cells))
    return wrongUsage("--flat, --fillet and --cells shape the body that --solid makes");
  if (line.inner && (made.tube || line.fitRadius))
    return wrongUsage("--inner finds the strands' thickness; --tube and --fit-radius do not go with it");
  if (made.height && !line.inner && (made.solid || made.tube || line.fitRadius))
    return wrongUsage("--solid, --tube and --fit-radius need the width, --mm, and not --height");
  return {};
}

/// Each knot's files have names of their own, and sheets are pictures.
Status checkMany(const CommandLine& line) {
  std::size_t knots = line.lastSeed ? *line.lastSeed - *line.seed + 1 : 1;
  for (const Sweep& sweep : line.sweeps) knots *= sweep.values.size();
  if (knots > kMostKnots) return tooManyKnots();
  const std::size_t places = line.sweeps.size() + (line.seedsVary() ? 1 : 0);
  for (const std::string& output : line.outputs) {
    const auto name = parseNumberedName(output);
    if (!name) return name.error();
    if (line.sheet && name->places() == 0) {
      const std::string extension = extensionOf(output);
      if (extension != "png" && extension != "bmp" && extension != "svg")
        return wrongUsage("--sheet makes png, bmp and svg files, not \"" + output + "\"");
    } else if (name->places() != places) {
      return wrongUsage("\"" + output + "\" needs " + std::to_string(places) +
                        " of %d, for what its knots differ in" +
                        (line.sheet || name->places() > 0 ? "" : "; --sheet puts them all into one picture"));
    }
  }
  return {};
}

Status checkAnimation(const CommandLine& line) {
  if (line.output.solidView) return wrongUsage("--animate draws the 2-D knot and does not go with --view 3d");
  if (line.output.relief) return wrongUsage("--animate and --relief do not go together");
  for (const std::string& name : line.outputs) {
    const std::string extension = extensionOf(name);
    if (extension == "svg") continue;
    if (extension != "png" && extension != "bmp")
      return wrongUsage("--animate makes svg, png and bmp files, not \"" + name + "\"");
    if (line.manyKnots()) return wrongUsage("--animate makes svg files of many knots, not \"" + name + "\"");
    if (const auto names = parseFrameNames(name); !names) return names.error();
  }
  return {};
}

}  // namespace

Error tooManyKnots() { return wrongUsage("one run makes at most 100000 knots"); }

Status checkOptions(const CommandLine& line) {
  if (line.shape && !line.knotFile.empty())
    return wrongUsage("a knot file brings its own shape; --shape does not go with it");
  if (line.random && extensionOf(line.knotFile) == kShapeFileExtension)
    return wrongUsage("a shape file brings its own shape; --random does not go with it");
  if (const Status checked = checkCuts(line); !checked) return checked;
  if (const Status checked = checkBody(line); !checked) return checked;
  if (const Status checked = checkJudge(line); !checked) return checked;
  if (const Status sizes = checkSizes(line); !sizes) return sizes;
  if (const Status many = line.manyKnots() ? checkMany(line) : Status(); !many) return many;
  return line.output.animate ? checkAnimation(line) : Status();
}

}  // namespace lorivan
