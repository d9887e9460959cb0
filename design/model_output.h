// What is made of a knot's 3-D model: its files, its height map, and its picture.
#pragma once

#include "design/outputs.h"

namespace lorivan {

/// The options of every picture of the job.
PictureOptions optionsOf(const OutputJob& job);

/// Draws the 3-D view, or with `heights` the height map of that view.
Status drawSolid(const OutputJob& job, Surface& surface, bool transparent, bool heights);

/// Whether files of the format can hold the model's heights: a height map, or a relief on a plate.
bool canBeRelief(const ExportFormat& format);

/// A format whose kind is model.
Status makeModel(const ExportFormat& format, const OutputJob& job, Sink& sink);

/// A 16-bit PNG that other programs carve from. Its levels have a true depth, which the file and a note tell.
Result<std::string> makeReliefPicture(const OutputJob& job);

}  // namespace lorivan
