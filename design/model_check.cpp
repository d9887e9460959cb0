#include "design/model_check.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/numbers.h"
#include "base/texts.h"
#include "export/read_back.h"
#include "model3d/vec3_math.h"

namespace lorivan {
namespace {

/// Three digits that count, at least; no exponent.
std::string rounded(double value) {
  const double size = std::fabs(value);
  const double step = size >= 100 ? 1 : size >= 10 ? 0.1 : size >= 1 ? 0.01 : 0.001;
  return shortestText(static_cast<float>(std::round(value / step) * step));
}

/// Writes a check's lengths and places in its unit.
class Words {
 public:
  explicit Words(const ModelCheck& check) : scale_(check.scale), unit_(check.millimetres ? " mm" : "") {}

  std::string bare(double modelUnits) const { return rounded(modelUnits * scale_); }
  std::string length(double modelUnits) const { return bare(modelUnits) + std::string(unit_); }
  std::string place(const Vec3& at) const { return bare(at.x) + ", " + bare(at.y) + ", " + bare(at.z); }
  std::string found(const FoundLength& what) const {
    return tr("{1} at {2}", length(what.value), place(what.at));
  }

 private:
  double scale_;
  std::string_view unit_;
};

std::string lengthsText(const Verdict& verdict, const Words& words) {
  constexpr std::size_t kMostNamed = 12;
  const double all = std::accumulate(verdict.lengths.begin(), verdict.lengths.end(), 0.0);
  const std::size_t count = verdict.lengths.size();
  if (count < 2) return tr("{1}, {2} long", count, words.length(all));
  std::string text;
  for (std::size_t i = 0; i < std::min(count, kMostNamed); ++i)
    text += (i == 0 ? "" : ", ") + words.bare(verdict.lengths[i]);
  if (count > kMostNamed) text += " ...";
  return tr("{1}, {2} long together: {3}", count, words.length(all), text);
}

std::string weightText(const ModelCheck& check, const Material& material) {
  const std::string name = translated(kMaterialContext, material.name);
  const std::string grams = rounded(check.volume / 1000 * material.density);
  if (material.shrinkage <= 0) return tr("{1} {2} g", name, grams);
  return tr("{1} {2} g, cast from a pattern {3} mm wide (shrinks by {4} %)", name, grams,
            rounded(*check.millimetres / (1 - material.shrinkage / 100)), rounded(material.shrinkage));
}

void addWeights(CheckLines& lines, const ModelCheck& check, const Material* material) {
  if (!check.millimetres) return;
  if (material != nullptr) {
    lines.emplace_back("weight", weightText(check, *material));
    return;
  }
  for (const Material& each : kMaterials)
    lines.emplace_back(&each == kMaterials.data() ? "weight" : "", weightText(check, each));
}

void addFolds(CheckLines& lines, const ModelCheck& check, const Words& words) {
  const Verdict& verdict = check.verdict;
  if (check.solid) return;
  std::string what = verdict.overlap.found
                         ? tr("tubes run into each other by up to {1}", words.found(verdict.overlap))
                         : tr("none");
  if (verdict.folds > 0) {
    const std::string place = words.place(verdict.foldAt);
    what =
        verdict.overlap.found
            ? tr("{1}; {2} sides turn inwards in tight bends, first at {3}", what, verdict.folds, place)
            : tr("{1}; but {2} sides turn inwards in tight bends, first at {3}", what, verdict.folds, place);
  }
  if (verdict.overlap.found || verdict.folds > 0)
    what = tr("{1}; fusing the strands to one body heals it", what);
  lines.emplace_back("overlap", what);
}

Result<ModelCheck> checkBody(const Knot& knot, const KnotFields& fields, const OutputOptions& options) {
  auto made = makeBody(knot, fields, options);
  if (!made) return made.error();
  ModelCheck check;
  check.solid = true;
  check.scale = made->scale;
  check.millimetres = made->millimetres;
  check.verdict = inspect(made->lines, ringCrossings(knot.strands, made->settings),
                          crossingWindow(made->settings), TubeForm::round);
  check.verdict.pieces = made->body.pieces;
  check.verdict.touching = made->contacts.touching;
  if (options.flat && !options.base) {
    const auto lowest = std::ranges::min_element(made->lines.centres, {}, &Vec3::z);
    check.verdict.wall = {true, (1.0 + kCutShare) * made->lines.radius, *lowest};
  }
  if (options.base && made->shape.plate < check.verdict.wall.value)
    check.verdict.wall = {true, static_cast<double>(made->shape.plate), {0, 0, made->lines.curveMinimum.z}};
  ExportScene scene{made->lines, knot.curve};
  scene.solid = &made->body.mesh;
  scene.millimetres = made->millimetres;
  const auto parts = sceneParts(scene, {});
  if (!parts) return parts.error();
  check.closed = factsOf(*parts).open == 0;
  check.volume = made->body.volume * std::pow(check.scale, 3);
  return check;
}

Result<ModelCheck> checkTubes(const Knot& knot, const KnotFields& fields, const OutputOptions& options) {
  TubeModel model;
  if (const Status built = buildModel(knot, fields, strandColours(fields.boxes), 0, model); !built)
    return built.error();
  if (model.QuadCount == 0) return impossibleKnot("the knot has no strands that a model could be made of");
  const auto millimetres = sizeTubes(model, options);
  if (!millimetres) return millimetres.error();
  const auto scale = modelScale(model, *millimetres);
  if (!scale) return scale.error();
  ModelCheck check;
  check.scale = *scale;
  check.millimetres = *millimetres;
  check.verdict = inspectModel(knot, fields, model);
  check.closed = factsOf(TubeMesh(model, *scale)).open == 0;
  check.volume = check.verdict.volume * std::pow(check.scale, 3);
  return check;
}

}  // namespace

Result<ModelCheck> checkModel(const Knot& knot, const KnotFields& fields, const OutputOptions& options) {
  auto check = options.solid ? checkBody(knot, fields, options) : checkTubes(knot, fields, options);
  if (check) check->pieces = check->verdict.pieces;
  return check;
}

std::vector<std::string> faultsOf(const ModelCheck& check, const Material& material) {
  std::vector<std::string> faults;
  const Verdict& verdict = check.verdict;
  if (!check.closed) faults.push_back(tr("the mesh is not closed"));
  if (check.pieces > 1)
    faults.push_back(
        tr("it comes out as {1} loose pieces: a lower Depth, a larger Radius or Fit radius lets strands meet",
           check.pieces));
  if (!check.millimetres) return faults;
  const std::string name = translated(kMaterialContext, material.name);
  if (verdict.wall.found && verdict.wall.value * check.scale < material.thinnest)
    faults.push_back(
        tr("its thinnest wall is less than the {1} mm that {2} needs", rounded(material.thinnest), name));
  const double gap = verdict.clearance.value * check.scale;
  if (verdict.clearance.found && gap > 0 && gap < material.narrowest)
    faults.push_back(tr("gaps of less than {1} mm close in {2}", rounded(material.narrowest), name));
  return faults;
}

CheckLines checkLines(const ModelCheck& check, const Material* material) {
  const Words words(check);
  const Verdict& verdict = check.verdict;
  CheckLines lines;
  lines.emplace_back("strands", lengthsText(verdict, words));
  lines.emplace_back("pieces", piecesText(check.pieces, {check.pieces, verdict.crossings, verdict.touching}));
  lines.emplace_back("closed", check.closed ? tr("yes") : tr("no"));
  lines.emplace_back("wall", verdict.wall.found ? words.found(verdict.wall) : tr("none"));
  lines.emplace_back("clearance", !verdict.clearance.found ? tr("no strands near each other")
                                  : verdict.clearance.value > 0
                                      ? words.found(verdict.clearance)
                                      : tr("none: strands meet at {1}", words.place(verdict.clearance.at)));
  addFolds(lines, check, words);
  lines.emplace_back("volume", check.millimetres ? tr("{1} cm3", rounded(check.volume / 1000))
                                                 : tr("{1} cubic units", rounded(check.volume)));
  addWeights(lines, check, material);
  const auto faults = faultsOf(check, material != nullptr ? *material : kMaterials.front());
  for (const std::string& fault : faults) lines.emplace_back("fault", fault);
  lines.emplace_back("verdict",
                     faults.empty() ? tr("it can be made as one piece") : tr("it would not come out well"));
  return lines;
}

std::string checkText(const ModelCheck& check, const Material* material) {
  constexpr std::size_t kColumn = 12;
  std::string text;
  for (const auto& [name, what] : checkLines(check, material))
    text.append(name).append(kColumn - name.size(), ' ').append(what).append("\n");
  return text;
}

}  // namespace lorivan
