// The 3-D model of a knot, and what the file writers are told beside it.
#pragma once

#include "design/knot.h"
#include "export/formats.h"
#include "model3d/model_picture.h"
#include "model3d/rotator.h"
#include "model3d/tube_builder.h"
#include "platform/platform.h"

namespace lorivan {

TubeSettings tubeSettings(const KnotFields& fields);

LightSettings lightSettings(const KnotFields& fields);

/// How the fields want a picture of the model to look.
PictureLook pictureLook(const KnotFields& fields);

/// The view that the three angle fields ask for.
ViewState viewState(const KnotFields& fields);

/// The colour of each strand's tube.
SlotColours tubeColours(const KnotFields& fields, const StrandColours& colours);

/// Builds the tubes of a traced knot. `sides` above 0 takes the place of the field's.
Status buildModel(const Knot& knot, const KnotFields& fields, const StrandColours& colours, int sides,
                  TubeModel& model);

/// A model that is built when it is first asked for, and again when another number of sides is.
class KnotModel {
 public:
  /// Builds it now, whatever it held. The error is the program's message for too many polygons; the model is
  /// then as before.
  Status build(const Knot& knot, const KnotFields& fields, const StrandColours& colours, int sides = 0);
  /// What was built last; empty before that.
  const TubeModel& built() const { return model_; }
  /// The error is the program's message for too many polygons.
  Result<const TubeModel*> get(const Knot& knot, const KnotFields& fields, const StrandColours& colours,
                               int sides);

 private:
  TubeModel model_;
  bool built_ = false;
  int sides_ = 0;
};

struct ModelFileOptions {
  std::optional<double> millimetres;
  std::string_view source;  // see ExportScene
  std::function<void(double)> progress;
  bool cornerOrigin = false;            // flat lines begin at the knot's lower left corner
  bool shared = false, binary = false;  // these as in ExportScene
  std::optional<Relief> relief = {};
  std::string_view title = {}, thumbnail = {}, materialFile = {};
  const TriangleMesh* solid = nullptr;  // written for the tubes by formats that take it
  std::string_view remark = {};         // about the body
};

/// Writes a format whose kind is model.
Status writeModelFile(const ExportFormat& format, Platform& platform, const Knot& knot,
                      const KnotFields& fields, const TubeModel& model, const ModelFileOptions& options,
                      Sink& sink);

}  // namespace lorivan
