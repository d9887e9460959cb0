// Whether a model can be made: the verdict in millimetres, as text, with what stands against it.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "design/knot_model.h"
#include "design/materials.h"
#include "design/solid_model.h"

namespace lorivan {

struct ModelCheck {
  Verdict verdict;                    // of the tubes, or of the strands that were fused
  double scale = 1;                   // the file's units for each model unit
  std::optional<double> millimetres;  // width of the finished thing; none: lengths are the model's own units
  bool solid = false;                 // fused to a body
  bool closed = false;                // the mesh as a file would hold it
  int pieces = 0;
  double volume = 0;  // cubic units of the file
};

/// Looks at the model, or the body, that a file made with these options would hold.
Result<ModelCheck> checkModel(const Knot& knot, const KnotFields& fields, const OutputOptions& options);

/// Why it would not come out of a printer or a mould as one good piece; empty when it would. Walls and gaps
/// are judged where the size is known.
std::vector<std::string> faultsOf(const ModelCheck& check, const Material& material);

/// What each line is called, in English; the context tells translators where the words stand.
inline constexpr std::string_view kCheckContext = "check";
inline constexpr std::string_view kCheckNames[] = {"strands", "pieces", "closed", "wall",  "clearance",
                                                   "overlap", "volume", "weight", "fault", "verdict"};
/// What people want to know: names and texts. A name is empty where the one before it goes on. Weights of one
/// material, or of all when null.
using CheckLines = std::vector<std::pair<std::string_view, std::string>>;
CheckLines checkLines(const ModelCheck& check, const Material* material);

/// The same in two columns of letters of one width, LF at the lines' ends.
std::string checkText(const ModelCheck& check, const Material* material);

}  // namespace lorivan
