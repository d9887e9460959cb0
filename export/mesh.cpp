#include "export/mesh.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <numeric>

#include "base/digits.h"
#include "base/numbers.h"
#include "model3d/rings.h"

namespace lorivan {
namespace {

constexpr int kMoveRounds = 8;
constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr float kFarthest =
    2'000'001;  // more than kMostCoordinate, and in thousandths less than 32 bits hold

void widen(ModelSpan& span, float value) {
  if (!std::isfinite(value)) return;
  span.low = span.empty ? value : std::min<double>(span.low, value);
  span.high = span.empty ? value : std::max<double>(span.high, value);
  span.empty = false;
}

double furthest(const ModelSpan& span) { return std::max(std::fabs(span.low), std::fabs(span.high)); }

/// Eight bits or more for each of so many hashes, of which each sets two that lie close together.
class BitTable {
 public:
  explicit BitTable(std::size_t count) : words_(std::bit_ceil(count / 8 + 1)) {}
  bool has(std::uint64_t hash) const { return (~words_[at(hash)] & bitsOf(hash)) == 0; }
  /// False when it was there.
  bool add(std::uint64_t hash) {
    std::uint64_t& word = words_[at(hash)];
    const std::uint64_t before = word;
    word |= bitsOf(hash);
    return word != before;
  }

 private:
  std::size_t at(std::uint64_t hash) const { return hash >> 12 & (words_.size() - 1); }
  static std::uint64_t bitsOf(std::uint64_t hash) {
    return std::uint64_t{1} << (hash & 63) | std::uint64_t{1} << (hash >> 6 & 63);
  }

  std::vector<std::uint64_t> words_;
};

/// One side of a triangle, running from one place to another.
struct Edge {
  std::uint64_t places = 0;  // both ends' same_ entries
  std::uint32_t from = 0, to = 0;
};

}  // namespace

MeshPoint meshPoint(const Vec3& at, double scale) {
  const auto number = [scale](float x) {
    return static_cast<std::int32_t>(toThousandths(static_cast<float>(static_cast<double>(x) * scale)));
  };
  return {number(at.x), number(at.y), number(at.z)};
}

std::vector<MeshPoint> meshPoints(std::span<const Vec3> places, double scale) {
  // As meshPoint() does it, in loops that take several numbers at once.
  constexpr std::size_t kBlock = 64;
  std::array<float, 3 * kBlock> number{};
  std::array<std::int32_t, 3 * kBlock> thousandths{};
  static_assert(sizeof(Vec3) * kBlock == sizeof number);
  std::vector<MeshPoint> points;
  points.reserve(places.size());
  for (std::size_t first = 0; first < places.size(); first += kBlock) {
    const std::size_t count = std::min(kBlock, places.size() - first);
    std::memcpy(number.data(), &places[first], count * sizeof(Vec3));
    for (std::size_t i = 0; i < number.size(); ++i) {
      const auto scaled = static_cast<float>(static_cast<double>(number[i]) * scale);
      // What is no number, or too far away, becomes 0: selected by bits, as a branch would part the loop.
      const auto bits = std::bit_cast<std::int32_t>(scaled);
      const std::int32_t keep = (bits & 0x7FFFFFFF) <= std::bit_cast<std::int32_t>(kFarthest) ? -1 : 0;
      const auto known = std::bit_cast<float>(bits & keep);
      const auto whole = static_cast<std::int32_t>(known);
      const double rest = static_cast<double>(known) - whole;
      thousandths[i] = whole * 1000 + static_cast<std::int32_t>(rest * 1000.0);
    }
    const auto made = std::bit_cast<std::array<MeshPoint, kBlock>>(thousandths);
    points.insert(points.end(), made.begin(), made.begin() + static_cast<std::ptrdiff_t>(count));
  }
  return points;
}

ModelBox modelBox(const TubeModel& model) {
  ModelBox box;
  for (const Vec3& v : model.vertices) {
    widen(box.x, v.x);
    widen(box.y, v.y);
    widen(box.z, v.z);
  }
  return box;
}

Result<double> modelScale(const TubeModel& model, std::optional<double> millimetres) {
  const auto [x, y, z] = modelBox(model);
  double scale = 1;
  if (millimetres) {
    if (!isWidth(*millimetres)) return wrongUsage(kWidthOutOfRange);
    if (!(x.high > x.low)) return impossibleKnot("a model without strands has no width to scale");
    scale = *millimetres / x.size();
  }
  const double reach = std::max({furthest(x), furthest(y), furthest(z)}) * scale;
  if (!(reach <= kMostCoordinate)) return unwritable("the model is too large for the file");
  return scale;
}

TubeMesh::TubeMesh(const TubeModel& model, double scale)
    : sides_(static_cast<std::uint32_t>(model.sides)),
      points_(meshPoints(model.vertices, scale)),
      centres_(meshPoints(model.centres, scale)) {
  for (const TubeStrand& strand : model.strands) addStrand(model, strand, scale);
  findShared();
  cutFaces();
  for (int round = 0; round < kMoveRounds && anyShared_; ++round) {
    const std::vector<std::uint32_t> moved = pointsToMove();
    if (moved.empty()) break;
    for (const std::uint32_t point : moved) movePoint(point, round);
    findShared();
    cutFaces();
  }
}

void TubeMesh::addStrand(const TubeModel& model, const TubeStrand& strand, double scale) {
  if (strand.ringCount < 3) return;
  std::vector<int> repaired;
  const std::vector<RingFrame> frames = ringFrames(model, strand, repaired);
  for (const int ring : repaired)
    for (int side = 0; side < model.sides; ++side)
      points_[static_cast<std::size_t>(strand.firstRing + ring) * sides_ + static_cast<std::size_t>(side)] =
          meshPoint(onRing(model, strand.firstRing + ring, frames[ring], side), scale);
  strands_.push_back({strand.slot, strand.factors, rings_.size(), frames.size()});
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const RingFrame& next = frames[i + 1 < frames.size() ? i + 1 : 0];
    const auto ring = static_cast<std::uint32_t>(strand.firstRing) + static_cast<std::uint32_t>(i);
    rings_.push_back({ring * sides_, nearestSide(frames[i], next, model.sides, model.radius)});
  }
}

/// Most points have a place of their own: a table of bits, which stays in the processor's cache, leaves few
/// that must be compared.
void TubeMesh::findShared() {
  anyShared_ = false;
  same_.clear();
  shared_.clear();
  const auto count = static_cast<std::uint32_t>(points_.size());
  constexpr std::size_t kUsuallySuspect = 8;  // one point of so many
  BitTable seen(count), again(count / kUsuallySuspect);
  for (const MeshPoint& p : points_) {
    const std::uint64_t hash = hashOf(p);
    if (!seen.add(hash)) again.add(hash);
  }
  std::vector<std::uint32_t> suspects;
  for (std::uint32_t i = 0; i < count; ++i)
    if (again.has(hashOf(points_[i]))) suspects.push_back(i);
  comparePlaces(suspects);
}

/// The points in their order; an open hash table of their places.
void TubeMesh::comparePlaces(const std::vector<std::uint32_t>& suspects) {
  const std::size_t size = std::bit_ceil(suspects.size() * 2 + 1);
  std::vector<std::uint32_t> table(size, kNone);
  for (const std::uint32_t i : suspects) {
    std::size_t at = hashOf(points_[i]) & (size - 1);
    while (table[at] != kNone && !(points_[table[at]] == points_[i])) at = (at + 1) & (size - 1);
    if (table[at] == kNone)
      table[at] = i;
    else
      markShared(i, table[at]);
  }
}

void TubeMesh::markShared(std::uint32_t point, std::uint32_t first) {
  if (!anyShared_) {
    same_.resize(points_.size());
    std::iota(same_.begin(), same_.end(), 0U);
    shared_.resize(points_.size(), 0);
    anyShared_ = true;
  }
  same_[point] = first;
  shared_[point] = shared_[first] = 1;
}

Cut TubeMesh::cutOf(const std::array<std::uint32_t, 4>& corner) const {
  const std::uint32_t a = same_[corner[0]], b = same_[corner[1]], c = same_[corner[2]], d = same_[corner[3]];
  if (a == c || b == d) return Cut::gone;  // folded together or a line
  if (a == b) return c == d ? Cut::gone : Cut::withoutB;
  if (c == d) return Cut::withoutD;
  if (b == c) return a == d ? Cut::gone : Cut::withoutC;
  if (d == a) return Cut::withoutA;
  return diagonalOf(corner);
}

/// Of a quad whose corners have places of their own.
Cut TubeMesh::diagonalOf(const std::array<std::uint32_t, 4>& corner) const {
  const MeshPoint &a = points_[corner[0]], &b = points_[corner[1]], &c = points_[corner[2]],
                  &d = points_[corner[3]];
  const bool flatAC = isFlat(a, b, c) || isFlat(a, c, d);
  return flatAC && !isFlat(b, c, d) && !isFlat(b, d, a) ? Cut::alongBD : Cut::alongAC;
}

void TubeMesh::cutFaces() {
  cuts_.resize(rings_.size() * sides_);
  for (const Strand& strand : strands_)
    for (std::size_t ring = 0; ring < strand.ringCount; ++ring) {
      Cut* cut = &cuts_[(strand.firstRing + ring) * sides_];
      eachFace(strand, ring,
               [&](const Face& face) { *cut++ = anyShared_ ? cutOf(face.corner) : diagonalOf(face.corner); });
    }
}

/// Points of triangle sides that run the same way between the same two places as another triangle's: three
/// or more faces would meet there, and a reader could not tell which two belong together.
std::vector<std::uint32_t> TubeMesh::pointsToMove() const {
  std::vector<Edge> edges;
  const auto addEdge = [&](std::uint32_t from, std::uint32_t to) {
    if (shared_[from] != 0 || shared_[to] != 0)
      edges.push_back({static_cast<std::uint64_t>(same_[from]) << 32 | same_[to], from, to});
  };
  const auto addFace = [&](const Face& face) {
    int shared = 0;
    for (const std::uint32_t corner : face.corner) shared += shared_[corner];
    if (shared == 0) return;
    const auto corners = polygonCorners(face.cut);
    for (std::size_t i = 2; i < corners.size(); ++i) {
      const std::uint32_t a = face.corner[corners[0]], b = face.corner[corners[i - 1]],
                          c = face.corner[corners[i]];
      addEdge(a, b);
      addEdge(b, c);
      addEdge(c, a);
    }
  };
  for (const Strand& strand : strands_)
    for (std::size_t ring = 0; ring < strand.ringCount; ++ring) eachFace(strand, ring, addFace);
  std::stable_sort(edges.begin(), edges.end(),
                   [](const Edge& one, const Edge& two) { return one.places < two.places; });
  std::vector<std::uint32_t> points;
  for (std::size_t i = 1, first = 0; i < edges.size(); ++i) {
    if (edges[i].places != edges[first].places)
      first = i;
    else
      points.push_back(edges[i].from != edges[first].from ? edges[i].from : edges[i].to);
  }
  std::sort(points.begin(), points.end());
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points;
}

/// Away from its ring's centre, along another axis and further in later rounds.
void TubeMesh::movePoint(std::uint32_t point, int round) {
  const MeshPoint centre = centres_[point / sides_];
  MeshPoint& p = points_[point];
  const auto step = [round](std::int32_t at, std::int32_t middle) {
    return at < middle ? -1 - round / 3 : 1 + round / 3;
  };
  if (round % 3 == 0) p.x += step(p.x, centre.x);
  if (round % 3 == 1) p.y += step(p.y, centre.y);
  if (round % 3 == 2) p.z += step(p.z, centre.z);
}

Result<TubeMesh> sceneMesh(const ExportScene& scene, std::optional<double> standard) {
  if (scene.model.QuadCount > kMostQuads) return refused(kTooManyPolygonsExport);
  const Result<double> scale = modelScale(scene.model, scene.millimetres ? scene.millimetres : standard);
  if (!scale) return scale.error();
  TubeMesh mesh(scene.model, *scale);
  if (mesh.empty() && scene.model.QuadCount > 0)
    return unwritable("the model is too small for the file's three decimals");
  return mesh;
}

bool TubeMesh::empty() const {
  return std::ranges::all_of(cuts_, [](Cut cut) { return cut == Cut::gone; });
}

std::size_t TubeMesh::triangleCount() const {
  std::size_t count = 0;
  for (const Cut cut : cuts_) count += cut == Cut::gone ? 0 : polygonCorners(cut).size() - 2;
  return count;
}

std::size_t TubeMesh::cornerCount() const {
  std::size_t count = 0;
  for (const Cut cut : cuts_) count += polygonCorners(cut).size();
  return count;
}

}  // namespace lorivan
