// Everything that can be done to a knot: functions from one document to another. None of them draws, asks or
// writes; an error leaves the caller with the document it had.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/random.h"
#include "custom/autogrid.h"
#include "design/document.h"
#include "graph/line_symmetry.h"

namespace lorivan {

/// Whether the field is one that grids are made from.
bool makesGrid(Param p);
/// Whether bands have more or less room when the field changes: their cells, or their way through them.
bool changesRoom(Param p);

/// A field gets a text, corrected as the field corrects it; nothing else follows, but that bands whose width
/// or edge is given no longer fit by themselves. All other steps here that change the bands' room fit them
/// again.
Document withField(const Document& document, Param p, const std::string& text);

/// The same, and the grid is built anew where the field makes grids. Walls stay with their cells, see
/// withKindsOf(). A custom shape keeps its lines.
Result<Document> changeField(const Document& document, Param p, const std::string& text);

/// "Width 9": the name of such a step, for the document that it led to.
std::string fieldStep(const Document& document, Param p);

/// chkFitBands has the bands fitted when it is checked. chkWrap builds the grid anew where the shape can be
/// wrapped; walls stay with their lines, and vtRingPerc is 100 as long as it is wrapped.
Document withCheck(const Document& document, Check c, bool on);
/// "Height map on"
std::string checkStep(Check c, bool on);

/// Strand colour box 0 to 14.
Document withColour(const Document& document, int box, Colour colour);

/// Bands and colours of a style; `style` is a place in presetTable().
Document withStyle(const Document& document, int style);

/// The same, and the bands fit the grid as wide as the style wants them. "Classic" brings its own widths.
Document withFittedStyle(const Document& document, int style);

/// Whether the knot fills the picture, whatever its scale.
Document withFitPicture(const Document& document, bool on);

/// Selects a shape and builds its grid; "(Custom)" keeps the lines that are there.
Result<Document> chooseShape(const Document& document, Shape shape);

/// Builds the grid of the fields, which then show what it was really built with. The scale starts from what
/// the user asked for. With `random`, line kinds are varied by draws from it. A custom shape keeps its
/// lines.
Result<Document> newGrid(const Document& document, const Rnd* random = nullptr);

/// Draws shape and style fields at random and builds their grid. chkConstantShape keeps the shape.
Result<Document> randomKnot(const Document& document, const Rnd& random);

/// Steps the kind of a line 1, 2, 3, 0 and round again; three steps on are one back. A line that is not there
/// stays so. Its images get the same kind.
Document stepLine(const Document& document, int line, int step, const Symmetry& symmetry = {});

/// The lines, and those that are their images, get a kind.
Document withKind(const Document& document, const std::vector<int>& lines, std::int16_t kind,
                  const Symmetry& symmetry);

/// Walls are set and removed until the knot has this number of strands; none: as many as possible. See
/// planStrands.
Result<Document> withStrands(const Document& document, std::optional<int> strands, const Symmetry& symmetry);

/// The document with another custom shape, which is ahead of the grid from now on.
Document withOutline(const Document& document, CustomShape shape);

/// An empty custom shape is chosen.
Document blankShape(const Document& document);

/// The points and lines of the grid become the custom shape, which is chosen.
Result<Document> outlineFromGrid(const Document& document);

/// The shape's lines become the grid. Those that are where the old grid has a line keep its kind.
Result<Document> lineGrid(const Document& document);

/// Lays a grid inside the shape, as vtGridSize, chkShapeT and the stretch say; `within`, in shape units:
/// inside its region at that place alone.
Result<Document> autoGrid(const Document& document, AutoGridReport* report = nullptr,
                          std::optional<Spot> within = {});

/// The largest vtGridSize, not above the field's, whose AutoGrid is not too complicated; none where the shape
/// has another fault.
std::optional<int> largestAutoGrid(const Document& document, std::optional<Spot> within = {});

/// What helps where autoGrid failed by this error; empty where nothing is known.
std::string autoGridHint(const Document& document, const Error& error, std::optional<Spot> within = {});

/// An outline that is filled to this share has no gap that anyone would see.
inline constexpr double kFilled = 0.92;

/// The same with the smallest vtGridSize from the field's on that fills the shape; where none does, with the
/// one that fills it best; where the field's is too complicated, with the largest that is not.
Result<Document> fillingAutoGrid(const Document& document, AutoGridReport* report = nullptr);

}  // namespace lorivan
