// Outlines from files of other programs, as custom shapes.
#pragma once

#include <string>
#include <string_view>

#include "outlines/fit_outline.h"
#include "platform/platform.h"

namespace lorivan {

inline constexpr std::string_view kDrawingExtensions = "svg dxf", kPictureExtensions = "bmp png jpg jpeg";
/// Pictures are loaded no larger than this.
inline constexpr PictureSize kLargestLoaded{2000, 1600};

/// By the name's extension alone.
bool isDrawing(std::string_view path);
bool isPicture(std::string_view path);
/// Whether the file is a drawing or a picture that does not carry a knot, see holdsKnot.
bool isOutlineFile(const std::string& path);

/// The lines of a drawing or the shape of a picture, as large as they go into the frame in which points may
/// lie. The error has no file name; it may begin with "line 7: ".
Result<FittedOutline> readOutlineFile(Platform& platform, const std::string& path);

/// The notes in one text, "; " before each.
std::string notesOf(const FittedOutline& fitted);

}  // namespace lorivan
