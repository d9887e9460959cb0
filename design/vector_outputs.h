// Output files of lines and curves: the picture, the outlines of its bands, or their centre lines.
#pragma once

#include <string>

#include "design/outputs.h"
#include "strands/drawn_box.h"

namespace lorivan {

/// Width of a picture where nothing else is asked for: its reference pixels, 96 to an inch.
inline constexpr double kReferenceMillimetres = kReferenceWidth * 25.4 / 96;

/// Width of the whole picture that gives the drawn knot, which fills `box`, the size asked for; `standard`
/// when none was.
Result<double> pictureMillimetres(const OutputOptions& options, const GridView& view, const PictureBox& box,
                                  double standard);

/// Millimetres that a pixel of the 500-pixel picture becomes in drawings; nothing where no size is wanted.
std::optional<double> millimetresPerPixel(const Document& document, const Knot& knot,
                                          const OutputOptions& options);

/// Length of a strand's centre line in the finished thing; nothing where no size is asked for.
std::optional<double> strandMillimetres(const Document& document, const Knot& knot,
                                        const OutputOptions& options, int slot);

Result<std::string> makeSvg(const OutputJob& job);
Result<std::string> makePdf(const OutputJob& job);

/// The flat DXF of outlines or centre lines.
Status makeCutDxf(const OutputJob& job, Sink& sink);

/// Whether files of the format can hold such lines.
bool canBeCut(const ExportFormat& format);

/// Whether the options ask for lines that a machine follows instead of the format's usual content.
inline bool asksForCut(const OutputOptions& options) { return options.outline || options.lines; }

}  // namespace lorivan
