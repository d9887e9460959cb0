// The knot on paper.
#pragma once

#include "design/outputs.h"
#include "platform/print_page.h"

namespace lorivan {

/// Whether a sheet on its side has more room for what the job prints.
bool printsLandscape(const OutputJob& job);

struct PrintedSize {
  double width = 0, height = 0;  // of the drawn knot or the 3-D picture, millimetres
  bool whole = true;             // the page holds all of it
};

/// Draws the knot in the middle of the page: as large as the options say in millimetres, else as large as
/// there is room for. Bands are lines and shapes on bare paper,
/// without the grid; with solidView it is the 3-D picture.
Result<PrintedSize> printKnot(const OutputJob& job, PrintPage& page);

}  // namespace lorivan
