#include "design/knot_model.h"

#include <cmath>
#include <cstdlib>

#include "base/sink.h"

namespace lorivan {
namespace {

constexpr std::size_t kLargestTemplate = 1'000'000;

/// Outer width of a drawn band in grid units.
double bandWidth(const Knot& knot, const KnotFields& fields) {
  const KnotStyle style = knotStyle(fields, {});
  const GridView view = viewOf(knot, fields, style, kReferenceWidth, true);
  return style.outerWidth() * 2 * kHalfView * view.zoom / kReferenceWidth;
}

}  // namespace

TubeSettings tubeSettings(const KnotFields& fields) {
  TubeSettings settings;
  settings.polySides = fields.whole(Param::PolySides);
  settings.polyPoints = fields.whole(Param::PolyPoints);
  settings.polyRadius = fields.number(Param::PolyRadius);
  settings.polySmooth = fields.whole(Param::PolySmooth);
  settings.polyZF = fields.number(Param::PolyZF);
  settings.ringPercent = fields.number(Param::RingPerc);
  return settings;
}

LightSettings lightSettings(const KnotFields& fields) {
  LightSettings light;
  light.Ka = fields.number(Param::Ka);
  light.Kd = fields.number(Param::Kd);
  light.Ks = fields.number(Param::Ks);
  light.NFact = fields.number(Param::NFact);
  light.KDist = fields.number(Param::KDist);
  return light;
}

PictureLook pictureLook(const KnotFields& fields) {
  PictureLook look;
  look.background = pictureOptions(fields).background;
  look.smooth = fields.check(Check::Smooth);
  look.heightMap = fields.check(Check::HeightMap);
  return look;
}

ViewState viewState(const KnotFields& fields) {
  ViewState view;
  setTheta(view, fields.number(Param::Theta));
  setPhi(view, fields.number(Param::Phi));
  setPsi(view, fields.number(Param::Psi));
  return view;
}

SlotColours tubeColours(const KnotFields& fields, const StrandColours& colours) {
  SlotColours slots = colours.display;
  const int start = fields.whole(Param::StartColour);
  if (start < 0) slots.fill(QBColor(-start));
  return slots;
}

Status buildModel(const Knot& knot, const KnotFields& fields, const StrandColours& colours, int sides,
                  TubeModel& model) {
  TubeSettings settings = tubeSettings(fields);
  if (sides > 0) settings.polySides = sides;
  return buildTube(knot.strands, settings, tubeColours(fields, colours), model);
}

Status KnotModel::build(const Knot& knot, const KnotFields& fields, const StrandColours& colours, int sides) {
  built_ = false;
  if (Status status = buildModel(knot, fields, colours, sides, model_); !status) return status;
  built_ = true;
  sides_ = sides;
  return {};
}

Result<const TubeModel*> KnotModel::get(const Knot& knot, const KnotFields& fields,
                                        const StrandColours& colours, int sides) {
  if (!built_ || sides_ != sides)
    if (const Status status = build(knot, fields, colours, sides); !status) return status.error();
  return &model_;
}

Status writeModelFile(const ExportFormat& format, Platform& platform, const Knot& knot,
                      const KnotFields& fields, const TubeModel& model, const ModelFileOptions& options,
                      Sink& sink) {
  const auto pattern =
      readRegularFile(platform.programFolder() + "/" + std::string(kPovTemplateName), kLargestTemplate);
  ExportScene scene{model, knot.curve};
  scene.startColour = fields.whole(Param::StartColour);
  scene.background = BColor(fields.boxes, fields.whole(Param::PicKnotBackColour));
  if (model.minimumCoordinate < 0) scene.viewDistance = -model.minimumCoordinate / 40.0;
  scene.bandWidth = bandWidth(knot, fields);
  scene.fullyCrossed = fields.check(Check::FullyCrossed);
  scene.millimetres = options.millimetres;
  scene.source = options.source;
  scene.shared = options.shared;
  scene.binary = options.binary;
  scene.relief = options.relief;
  scene.title = options.title;
  scene.thumbnail = options.thumbnail;
  scene.materialFile = options.materialFile;
  scene.progress = options.progress;
  scene.solid = options.solid;
  scene.remark = options.remark;
  scene.cornerOrigin = options.cornerOrigin;
  if (pattern) scene.povTemplate = *pattern;
  return format.write(scene, sink);
}

}  // namespace lorivan
