// What a file writer is given: the finished knot as plain data.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "base/colour.h"
#include "model3d/triangle_mesh.h"
#include "model3d/tube_model.h"
#include "strands/knot_curve.h"

namespace lorivan {

inline constexpr std::string_view kTooManyPolygonsExport =
    "Use less Sides or less points\r\nSorry, too many polygons";

/// Name of the POV-Ray template, beside the program.
inline constexpr std::string_view kPovTemplateName = "povinit.txt";

/// VRML and OBJ repeat a polygon's corners, so their files reach the size that readers cope with earlier than
/// the others do.
inline constexpr int kMostVrmlVertices = 3'999'000;
inline constexpr int kMostObjVertices = 3'999'000;

/// The widths that a thing can be asked to have.
inline constexpr double kLeastMillimetres = 0.01;
inline constexpr double kMostMillimetres = 100'000;
inline constexpr const char* kWidthOutOfRange = "a width must be more than 0 and at most 100000 millimetres";
constexpr bool isWidth(double millimetres) { return millimetres > 0 && millimetres <= kMostMillimetres; }

/// How far from the origin files have places, in their units: three decimals then fit into 32 bits.
inline constexpr double kMostCoordinate = 2'000'000;

/// The width that 3MF, GLB and reliefs have when none is asked for.
inline constexpr double kStandardMillimetres = 100;

/// The model's heights on a plate, in place of its tubes.
struct Relief {
  int columns = 0;  // samples across
  double base = 0;  // thickness of the plate, millimetres
};

/// The tube model and the flat curves of one knot, with what the formats want to know beside them. The
/// references must outlive the writing. The curves' own unit is the grid's; the model's is the model's.
struct ExportScene {
  const TubeModel& model;  // with four sides for GemVision
  const KnotCurve& curve;  // 2-D DXF alone reads it

  int startColour = 0;           // negative: every strand takes colour |startColour|, else its own number
  Colour background = 0xFFFFFF;  // VRML, POV-Ray
  double viewDistance = 20;      // from the eye to the knot's middle, model units; POV-Ray
  double bandWidth = 0;          // outer width of a drawn band, grid units; 2-D DXF leaves gaps of this width
  bool cornerOrigin = false;     // 2-D DXF: the drawn knot's lower left corner lies at 0, 0
  bool fullyCrossed = false;     // 2-D DXF: whole strands, without gaps at the under-crossings
  std::optional<double> millimetres = {};  // width in the file, for the formats that take one
  const TriangleMesh* solid = nullptr;     // the fused body, which formats that take one write for the tubes
  std::string_view remark = {};            // about the body, for formats with a place for it; ASCII, one line
  std::optional<std::string_view> povTemplate = {};  // text of povinit.txt, when there is one
  /// The knot itself as text without white space that needs no escaping (see design/source.h), for the
  /// formats that carry it; empty: none.
  std::string_view source = {};
  bool shared = false;                        // OBJ: every corner once, with materials
  bool binary = false;                        // STL
  std::optional<Relief> relief = {};          // STL and 3MF
  std::string_view title = {};                // 3MF and GLB
  std::string_view thumbnail = {};            // a PNG file; 3MF
  std::string_view materialFile = {};         // name of the file that writeMaterials fills; shared OBJ
  std::function<void(double)> progress = {};  // told the part done, 0 to 1, now and then; may be empty

  /// Colour number (1 to 40) of a strand slot.
  int colourNumber(int slot) const { return startColour < 0 ? -startColour : slot; }
};

}  // namespace lorivan
