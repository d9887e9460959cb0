// Output files of lines and curves: the picture, the outlines of its bands, or their centre lines.
#pragma once

#include <string>

#include "design/outputs.h"

namespace lorivan {

/// Width of a picture where nothing else is asked for: its reference pixels, 96 to an inch.
inline constexpr double kReferenceMillimetres = kReferenceWidth * 25.4 / 96;

/// Width of the whole picture that gives the drawn knot the width asked for; `standard` when none was.
Result<double> pictureMillimetres(const OutputJob& job, const KnotStyle& style, const GridView& view,
                                  double standard);

/// The file's title.
std::string outputTitle(const OutputJob& job);

Result<std::string> makeSvg(const OutputJob& job);
Result<std::string> makePdf(const OutputJob& job);

/// The flat DXF of outlines or centre lines.
Status makeCutDxf(const OutputJob& job, Sink& sink);

/// Whether files of the format can hold such lines.
bool canBeCut(const ExportFormat& format);

/// Whether the options ask for lines that a machine follows instead of the format's usual content.
inline bool asksForCut(const OutputOptions& options) { return options.outline || options.lines; }

}  // namespace lorivan
