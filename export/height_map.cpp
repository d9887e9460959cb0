#include "export/height_map.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "export/mesh_part.h"

namespace lorivan {
namespace {

/// The mesh's own steps are then finer than 16 bits can tell.
constexpr double kFineWidth = 20'000;
constexpr double kTouch = 1e-7;  // samples this near to a triangle, in steps, are on it

/// A corner in steps of the grid, with its height.
struct Corner {
  double column, row, height;
};

struct Outline {
  double left = 0, right = 0, low = 0, high = 0;
  double width() const { return right - left; }
};

Outline outlineOf(const TubeModel& model) {
  Outline box;
  bool first = true;
  for (const Vec3& v : model.vertices) {
    const auto x = static_cast<double>(v.x), y = static_cast<double>(v.y);
    if (first) box = {x, x, y, y};
    first = false;
    box = {std::min(box.left, x), std::max(box.right, x), std::min(box.low, y), std::max(box.high, y)};
  }
  return box;
}

class Raster {
 public:
  explicit Raster(HeightMap& map) : map_(map) {}

  void triangle(std::array<Corner, 3> c) {
    std::sort(c.begin(), c.end(), [](const Corner& a, const Corner& b) { return a.row < b.row; });
    const double du1 = c[1].column - c[0].column, dv1 = c[1].row - c[0].row, dz1 = c[1].height - c[0].height;
    const double du2 = c[2].column - c[0].column, dv2 = c[2].row - c[0].row, dz2 = c[2].height - c[0].height;
    const double area = du1 * dv2 - du2 * dv1;
    if (area == 0) return;  // seen from its edge; its neighbours hold what is seen of it
    const double perColumn = (dz1 * dv2 - dz2 * dv1) / area, perRow = (du1 * dz2 - du2 * dz1) / area;
    const auto [least, most] = std::minmax({c[0].height, c[1].height, c[2].height});
    const int last = std::min(map_.rows - 1, static_cast<int>(std::floor(c[2].row + kTouch)));
    for (int row = std::max(0, static_cast<int>(std::ceil(c[0].row - kTouch))); row <= last; ++row) {
      const auto [from, to] = spanOf(c, row);
      float* out = &map_.heights[static_cast<std::size_t>(row) * static_cast<std::size_t>(map_.columns)];
      const double start = c[0].height + (row - c[0].row) * perRow - c[0].column * perColumn;
      for (int column = from; column <= to; ++column)
        out[column] =
            std::max(out[column], static_cast<float>(std::clamp(start + column * perColumn, least, most)));
    }
  }

 private:
  static double crossing(const Corner& a, const Corner& b, int row) {
    return a.column + std::clamp((row - a.row) / (b.row - a.row), 0.0, 1.0) * (b.column - a.column);
  }

  /// The columns of a row inside the triangle, whose corners are in the order of their rows.
  std::pair<int, int> spanOf(const std::array<Corner, 3>& c, int row) const {
    double left = crossing(c[0], c[2], row), right = left;
    const auto add = [&](double column) {
      left = std::min(left, column);
      right = std::max(right, column);
    };
    const auto addEdge = [&](const Corner& a, const Corner& b) {
      if (row < a.row - kTouch || row > b.row + kTouch) return;
      if (b.row > a.row) return add(crossing(a, b, row));
      add(a.column);
      add(b.column);
    };
    addEdge(c[0], c[1]);
    addEdge(c[1], c[2]);
    return {std::max(0, static_cast<int>(std::ceil(left - kTouch))),
            std::min(map_.columns - 1, static_cast<int>(std::floor(right + kTouch)))};
  }

  HeightMap& map_;
};

}  // namespace

GridSize heightMapSize(const TubeModel& model, int columns, SamplesAt samples) {
  const Outline box = outlineOf(model);
  const int between = samples == SamplesAt::edges ? 1 : 0;
  columns = std::max(columns, 2);
  if (!(box.width() > 0)) return {columns, 2};
  const double rows = (box.high - box.low) / box.width() * (columns - between) + between;
  return {columns, std::max(2LL, std::llround(std::min(rows, 1e15)))};
}

Result<HeightMap> heightMapOf(const TubeModel& model, int columns, SamplesAt samples) {
  const auto scale = modelScale(model, kFineWidth);
  if (!scale) return scale.error();
  const GridSize size = heightMapSize(model, columns, samples);
  std::vector<MeshPart> parts = strandParts(TubeMesh(model, *scale));
  if (parts.empty()) return impossibleKnot("a model without strands has no heights");
  standUpright(parts);
  const MeshBox box = boxOf(parts);
  const double width = box.high.x - box.low.x, depth = box.high.y - box.low.y;
  HeightMap map{
      size.columns, static_cast<int>(size.rows), depth / width, (box.high.z - box.low.z) / width, {}};
  map.heights.assign(static_cast<std::size_t>(map.columns) * static_cast<std::size_t>(map.rows), 0);
  const double inset = samples == SamplesAt::edges ? 0 : 0.5, ends = 1 - 2 * inset;
  const auto corner = [&](const MeshPoint& p) {
    return Corner{(p.x - box.low.x) / width * (map.columns - ends) - inset,
                  (box.high.y - p.y) / depth * (map.rows - ends) - inset, (p.z - box.low.z) / width};
  };
  Raster raster(map);
  for (const MeshPart& part : parts)
    eachTriangle(part, [&](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
      raster.triangle({corner(part.points[a]), corner(part.points[b]), corner(part.points[c])});
    });
  return map;
}

}  // namespace lorivan
