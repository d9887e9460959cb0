// Models as things to be made: strands of a thickness in millimetres, and the body that they are fused to.
#pragma once

#include "design/knot.h"
#include "design/output_options.h"
#include "model3d/solid_body.h"
#include "model3d/verdict.h"

namespace lorivan {

/// From the least x to the greatest; 0 of nothing.
double widthOf(const std::vector<Vec3>& places);

/// The width that gives a model the size asked for, if any is.
std::optional<double> wantedModelWidth(const OutputOptions& options, const TubeModel& model);

/// Gives the model's tubes the thickness that is asked for, and tells the width in millimetres that its file
/// then has; none where no length is asked for. The error is one of usage: strands as thick as the knot.
Result<std::optional<double>> sizeTubes(TubeModel& model, const OutputOptions& options);

/// A body with what it was made from. Lengths are model units; `scale` makes them the file's.
struct MadeBody {
  TubeModel lines;  // finely sampled; its sides do not count
  TubeSettings settings;
  SolidShape shape;
  double scale = 1;
  std::optional<double> millimetres;  // width of the file
  SolidBody body;
  Contacts contacts;  // of the tubes before they were fused
};

/// The model's fine centre lines, with tubes of the thickness asked for, and its shape as a body; no body
/// yet.
Result<MadeBody> planBody(const Knot& knot, const KnotFields& fields, const OutputOptions& options);

/// The body itself. Fails as fuse() and planBody() do, and for a knot without strands.
Result<MadeBody> makeBody(const Knot& knot, const KnotFields& fields, const OutputOptions& options);

/// The verdict on the tubes of a model that was built from these fields.
Verdict inspectModel(const Knot& knot, const KnotFields& fields, const TubeModel& model);

/// "4 separate pieces, touching at 0 of 72 crossings: they will move"
std::string piecesText(int pieces, const Contacts& contacts);

}  // namespace lorivan
