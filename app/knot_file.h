// Knot configuration files (.qzd): the cell size and shape, eight fields, and every line of the graph.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/knot_fields.h"

namespace lorivan {

inline constexpr std::string_view kKnotFileProblem = "Sorry, there was a problem with that file";
inline constexpr std::size_t kLargestKnotFile = 4'000'000;

/// The fields of the file's second line, in its order.
inline constexpr std::array<Param, 8> kKnotFileFields = {Param::Scale,       Param::XNo,   Param::YNo,
                                                         Param::StartColour, Param::Width, Param::Swish,
                                                         Param::Smooth,      Param::Edge};

/// What was read of a file, up to its end or its first fault. Lines are whole or absent.
struct KnotFile {
  std::optional<std::int16_t> CellSize;
  std::optional<Shape> shape;
  std::array<std::optional<std::string>, kKnotFileFields.size()> fields;  // texts as they stand in the file
  std::vector<GridLine> lines;
  std::optional<Error> fault;  // "line 7: ..."
};

/// Reads a file's text. Line ends may be CR LF or LF. Nothing is trusted: counts, 16-bit ranges and whole
/// numbers are checked, and what follows the first fault is not read.
KnotFile parseKnotFile(std::string_view text);

/// Replaces the graph's lines, collects its points and clears NoGrid.
Status takeLines(KnotGraph& graph, const KnotFile& file);

/// The text of a file for this knot, CR LF line ends.
std::string writeKnotFile(const KnotFields& fields, const KnotGraph& graph);

}  // namespace lorivan
