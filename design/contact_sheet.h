// Many knots in one picture: small pictures in rows, each with a caption under it.
#pragma once

#include <string>

#include "design/outputs.h"

namespace lorivan {

/// Where the small pictures lie.
struct SheetLayout {
  int columns = 1, rows = 1;
  int pictureWidth = 0, pictureHeight = 0;
  int caption = 0;            // height of the strip under each picture
  int margin = 0;             // round the sheet and between its cells
  int left = 0, top = 0;      // of the first picture
  int width = 0, height = 0;  // of the whole

  PointI corner(int place) const;
  /// The place whose cell holds this point, or -1. Places behind the last picture count, too.
  int placeAt(int x, int y) const;
};

inline constexpr int kSheetPictureWidth = 240;  // pixels, where no width of the sheet is asked for

/// The number of columns that fills the sheet best and makes it about as wide as sheets of paper are.
int sheetColumns(int count);

/// A sheet that is `width` wide, and as high as its rows need. Nothing is smaller than a pixel.
SheetLayout sheetLayout(int count, int columns, int width);

/// The cells in the middle of a picture of this size, as large as there is room for.
SheetLayout sheetLayoutWithin(int count, int columns, int width, int height);

/// Draws one knot into its place: the picture as it is, without the grid, enlarged until the knot fills it.
/// Surfaces with pixels hold the 3-D view where that is asked for.
Status drawOnSheet(Surface& sheet, const SheetLayout& layout, int place, const OutputJob& job);

/// Black on light grounds, white on dark ones.
Colour inkOn(Colour ground);

/// The line under a picture. `ground`: the sheet's own colour, which the text stands out from.
void drawSheetCaption(Surface& sheet, const SheetLayout& layout, int place, const std::string& caption,
                      Colour ground);

}  // namespace lorivan
