#include "design/solid_model.h"

#include <algorithm>
#include <cmath>

#include "base/texts.h"
#include "design/knot_model.h"
#include "export/mesh.h"
#include "model3d/rings.h"

namespace lorivan {
namespace {

constexpr const char* kTooThick =
    "the strands would be thicker than the knot has room for: less --tube or more --mm";
constexpr double kRingsPerRadius = 4;  // so that no bend shows corners
constexpr int kMostPoints = 50, kFewestSides = 3;

Status setRadius(TubeModel& model, double radius) {
  model.radius = static_cast<float>(radius);
  if (const Status swept = sweepTube(model); !swept) return swept;
  joinRings(model);
  return {};
}

/// Samples for each control point that bring the rings near enough to each other.
int finePoints(const TubeModel& coarse, int points, double radius) {
  const CentreLines lines(coarse);
  double length = 0;
  for (std::size_t i = 0; i < lines.strandCount(); ++i) length += lines.length(i);
  const double rings = static_cast<double>(coarse.centres.size());
  const double wanted = std::ceil(points * length * kRingsPerRadius / (radius * std::max(rings, 1.0)));
  const double most = std::floor(kMostQuads * static_cast<double>(points) / (kFewestSides * rings));
  return static_cast<int>(std::clamp(std::min(wanted, most), static_cast<double>(points), 1.0 * kMostPoints));
}

/// Radius and scale with which the body has the width and its strands the thickness that are asked for.
Status sizeBody(MadeBody& made, const OutputOptions& options) {
  TubeModel& lines = made.lines;
  SolidShape one = made.shape;
  one.plate = options.base ? 1 : 0;
  const BodyWidth width = bodyWidth(lines, one);
  const double margins = (width.total - width.centres) / static_cast<double>(lines.radius);  // in radii
  if (options.tube) {
    made.scale = *options.tube / (2.0 * lines.radius);
    if (options.millimetres) {
      made.scale = (*options.millimetres - margins * *options.tube / 2) / width.centres;
      if (!(made.scale > 0)) return wrongUsage(kTooThick);
      lines.radius = static_cast<float>(*options.tube / 2 / made.scale);
    }
  } else if (options.millimetres) {
    made.scale = *options.millimetres / width.total;
  }
  if (options.tube || options.millimetres)
    made.millimetres = made.scale * (width.centres + margins * static_cast<double>(lines.radius));
  made.shape.fillet = static_cast<float>(options.fillet.value_or(0) / made.scale);
  made.shape.plate = static_cast<float>(options.base.value_or(0) / made.scale);
  return {};
}

}  // namespace

double widthOf(const std::vector<Vec3>& places) {
  if (places.empty()) return 0;
  const auto [low, high] = std::ranges::minmax(places, {}, &Vec3::x);
  return static_cast<double>(high.x) - static_cast<double>(low.x);
}

std::optional<double> wantedModelWidth(const OutputOptions& options, const TubeModel& model) {
  if (!options.height) return options.millimetres;
  const ModelBox box = modelBox(model);
  return *wantedScale(options, box.x.size(), box.y.size()) * box.x.size();
}

Result<std::optional<double>> sizeTubes(TubeModel& model, const OutputOptions& options) {
  if (!options.tube || model.centres.empty()) return wantedModelWidth(options, model);
  if (!options.millimetres)
    return std::optional<double>(*options.tube / (2.0 * model.radius) * widthOf(model.vertices));
  // The width grows with the radius, along a line apart from which corner is outermost.
  for (int round = 0; round < 4; ++round) {
    const double radius = model.radius, width = widthOf(model.vertices);
    const double own = (width - widthOf(model.centres)) / radius;
    const double room = 2 * *options.millimetres - *options.tube * own;
    if (!(room > 0)) return wrongUsage(kTooThick);
    if (const Status swept = setRadius(model, *options.tube * widthOf(model.centres) / room); !swept)
      return swept.error();
  }
  return options.millimetres;
}

Result<MadeBody> planBody(const Knot& knot, const KnotFields& fields, const OutputOptions& options) {
  if ((options.flat || options.base) && fields.number(Param::RingPerc) > 0)
    return wrongUsage(
        "a knot that is bent into a ring has no underside: --flat and --base need vtRingPerc=0");
  MadeBody made;
  TubeSettings& settings = made.settings = tubeSettings(fields);
  settings.polySides = kFewestSides;
  const SlotColours colours = tubeColours(fields, strandColours(fields.boxes));
  if (const Status built = buildTube(knot.strands, settings, colours, made.lines); !built)
    return built.error();
  if (made.lines.centres.empty())
    return impossibleKnot("the knot has no strands that a model could be made of");
  made.shape.cells = options.cells;
  made.shape.flat = options.flat;
  if (const Status sized = sizeBody(made, options); !sized) return sized.error();
  const float radius = made.lines.radius;
  const int coarse = settings.polyPoints;
  settings.polyPoints = finePoints(made.lines, coarse, static_cast<double>(radius));
  if (settings.polyPoints == coarse) return made;
  if (const Status built = buildTube(knot.strands, settings, colours, made.lines); !built)
    return built.error();
  made.lines.radius = radius;
  if (const Status sized = sizeBody(made, options); !sized) return sized.error();
  return made;
}

Result<MadeBody> makeBody(const Knot& knot, const KnotFields& fields, const OutputOptions& options) {
  auto made = planBody(knot, fields, options);
  if (!made) return made;
  auto body = fuse(made->lines, made->shape);
  if (!body) return body.error();
  made->body = std::move(*body);
  made->contacts =
      contactsOf(made->lines, ringCrossings(knot.strands, made->settings), crossingWindow(made->settings),
                 TubeForm::round, made->shape.bridged(made->lines.radius));
  return made;
}

Verdict inspectModel(const Knot& knot, const KnotFields& fields, const TubeModel& model) {
  const TubeSettings settings = tubeSettings(fields);
  return inspect(model, ringCrossings(knot.strands, settings), crossingWindow(settings), TubeForm::polygons);
}

std::string piecesText(int pieces, const Contacts& contacts) {
  return trn("{n} piece, touching at {1} of {2} crossings",
             "{n} separate pieces, touching at {1} of {2} crossings: they will move", pieces,
             contacts.touching, contacts.crossings);
}

}  // namespace lorivan
