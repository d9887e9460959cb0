#include "export/relief.h"

#include <cmath>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr double kThousandths = 1000;
constexpr std::array<float, 3> kGrey = {0.7F, 0.7F, 0.7F};

class ReliefBuilder {
 public:
  ReliefBuilder(const HeightMap& map, double width, std::int32_t base)
      : map_(map), width_(width), base_(base) {
    part_.name = "Relief";
    part_.factors = kGrey;
  }

  MeshPart build() {
    addTop();
    addRim();
    for (std::size_t i = 0; i < rim_.size(); ++i) {
      const std::size_t next = i + 1 < rim_.size() ? i + 1 : 0;
      const auto below = static_cast<std::uint32_t>(firstBelow_ + i);
      const auto nextBelow = static_cast<std::uint32_t>(firstBelow_ + next);
      part_.faces.push_back({rim_[i], below, nextBelow, rim_[next]});
      part_.faces.push_back({centre_, nextBelow, below, kNoCorner});
    }
    return std::move(part_);
  }

 private:
  std::uint32_t number(int column, int row) const {
    return static_cast<std::uint32_t>(row) * static_cast<std::uint32_t>(map_.columns) +
           static_cast<std::uint32_t>(column);
  }

  void addTop() {
    for (int row = 0; row < map_.rows; ++row)
      for (int column = 0; column < map_.columns; ++column)
        part_.points.push_back({toInt32(column * width_ / (map_.columns - 1)),
                                toInt32((map_.rows - 1 - row) * map_.depth * width_ / (map_.rows - 1)),
                                base_ + toInt32(map_.at(column, row) * width_)});
    for (int row = 0; row + 1 < map_.rows; ++row)
      for (int column = 0; column + 1 < map_.columns; ++column) addCell(column, row);
  }

  /// Cut along the diagonal whose ends differ less in height: edges of strands are then less jagged.
  void addCell(int column, int row) {
    const std::uint32_t a = number(column, row + 1), b = number(column + 1, row + 1),
                        c = number(column + 1, row), d = number(column, row);
    const auto height = [this](std::uint32_t i) { return part_.points[i].z; };
    if (std::abs(height(a) - height(c)) <= std::abs(height(b) - height(d)))
      part_.faces.push_back({a, b, c, d});
    else
      part_.faces.push_back({b, c, d, a});
  }

  /// The top's border, counter-clockwise seen from above, the same points on the ground, and the bottom's
  /// middle, which the bottom's triangles meet in.
  void addRim() {
    const int lastColumn = map_.columns - 1, lastRow = map_.rows - 1;
    for (int column = 0; column < lastColumn; ++column) rim_.push_back(number(column, lastRow));
    for (int row = lastRow; row > 0; --row) rim_.push_back(number(lastColumn, row));
    for (int column = lastColumn; column > 0; --column) rim_.push_back(number(column, 0));
    for (int row = 0; row < lastRow; ++row) rim_.push_back(number(0, row));
    firstBelow_ = part_.points.size();
    for (const std::uint32_t i : rim_) part_.points.push_back({part_.points[i].x, part_.points[i].y, 0});
    centre_ = static_cast<std::uint32_t>(part_.points.size());
    const MeshPoint corner = part_.points[number(lastColumn, 0)];
    part_.points.push_back({corner.x / 2, corner.y / 2, 0});
  }

  const HeightMap& map_;
  double width_;
  std::int32_t base_;
  MeshPart part_;
  std::vector<std::uint32_t> rim_;
  std::size_t firstBelow_ = 0;
  std::uint32_t centre_ = 0;
};

}  // namespace

MeshPart reliefMesh(const HeightMap& map, double width, std::int32_t base) {
  return ReliefBuilder(map, width, base).build();
}

Result<MeshPart> reliefPart(const ExportScene& scene) {
  const double millimetres = scene.millimetres.value_or(kStandardMillimetres);
  if (!isWidth(millimetres) || !isWidth(scene.relief->base)) return wrongUsage(kWidthOutOfRange);
  const GridSize size = heightMapSize(scene.model, scene.relief->columns, SamplesAt::edges);
  if (static_cast<double>(size.columns - 1) * static_cast<double>(size.rows - 1) > kMostQuads)
    return refused("the relief would have more than 999999 polygons; make it less fine");
  const double width = millimetres * kThousandths;
  const auto map = heightMapOf(scene.model, size.columns, SamplesAt::edges);
  if (!map) return map.error();
  if (width / (map->columns - 1) < 2 || map->depth * width / (map->rows - 1) < 2)
    return unwritable("the relief is too small for the file's three decimals; make it less fine");
  if (std::max(map->depth, map->top) * millimetres + scene.relief->base > kMostCoordinate)
    return unwritable("the model is too large for the file");
  return reliefMesh(*map, width, toInt32(scene.relief->base * kThousandths));
}

}  // namespace lorivan
