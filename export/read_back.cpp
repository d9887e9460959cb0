#include "export/read_back.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <span>
#include <unordered_map>

#include "base/bytes.h"
#include "base/numbers.h"
#include "export/line_reader.h"

namespace lorivan {
namespace {

/// Spreads any number over 64 bits.
std::uint64_t spread(std::uint64_t x) {
  x = (x ^ x >> 32) * 0xD6E8FEB86659FD93U;
  x = (x ^ x >> 32) * 0xD6E8FEB86659FD93U;
  return x ^ x >> 32;
}

/// A sum over all edges that there and back cancel in, and nothing else does but by chance.
std::uint64_t edge(std::uint64_t from, std::uint64_t to) {
  return from * (to << 31 | to >> 33) - to * (from << 31 | from >> 33);
}

std::uint64_t cornerOf(const MeshPoint& p) {
  const auto xy =
      static_cast<std::uint64_t>(static_cast<std::uint32_t>(p.x)) << 32 | static_cast<std::uint32_t>(p.y);
  return spread(xy) + static_cast<std::uint32_t>(p.z);
}

class BinaryStlReader final : public MeshReader {
 public:
  bool take(std::string_view bytes) override {
    while (!bytes.empty()) {
      if (begun_ && kept_.empty() && bytes.size() >= kTriangle) {
        triangle(bytes.data());
        bytes.remove_prefix(kTriangle);
        continue;
      }
      const std::string_view part = bytes.substr(0, (begun_ ? kTriangle : kHead) - kept_.size());
      kept_ += part;
      bytes.remove_prefix(part.size());
      takeKept();
    }
    return true;
  }

  FileFacts finish() override {
    FileFacts& facts = gatherer_.facts;
    if (!begun_ || !kept_.empty() || count_ != facts.triangles) facts.damaged = true;
    if (facts.triangles > 0) facts.box = {thousandths(low_), thousandths(high_)};
    return facts;
  }

 private:
  static constexpr std::size_t kHead = 84, kTriangle = 50;
  using Place = std::array<float, 3>;

  static MeshPoint thousandths(const Place& p) {
    const auto rounded = [](float x) { return toInt32(static_cast<double>(x) * 1000); };
    return {rounded(p[0]), rounded(p[1]), rounded(p[2])};
  }

  void takeKept() {
    if (kept_.size() < (begun_ ? kTriangle : kHead)) return;
    if (begun_) triangle(kept_.data());
    if (!begun_) {
      count_ = little32(kept_.data() + 80);
      gatherer_.facts.damaged = kept_.starts_with("solid");
    }
    begun_ = true;
    kept_.clear();
  }

  void triangle(const char* at) {
    std::array<std::uint64_t, 3> corners{};
    for (std::size_t i = 0; i < 3; ++i) {
      MeshPoint bits;  // what is the same for the same corner
      std::int32_t* const axes[] = {&bits.x, &bits.y, &bits.z};
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::uint32_t number = little32(at + 12 + 12 * i + 4 * axis);
        const auto x = std::bit_cast<float>(number);
        *axes[axis] = static_cast<std::int32_t>(number);
        if (!std::isfinite(x)) gatherer_.facts.damaged = true;
        low_[axis] = std::min(low_[axis], x);
        high_[axis] = std::max(high_[axis], x);
      }
      corners[i] = hashOf(bits);
    }
    gatherer_.hashedTriangle(corners[0], corners[1], corners[2]);
    if (little16(at + 48) != 0) gatherer_.facts.damaged = true;
  }

  static constexpr float kFar = std::numeric_limits<float>::max();

  FactsGatherer gatherer_;
  Place low_{kFar, kFar, kFar}, high_{-kFar, -kFar, -kFar};
  std::string kept_;
  std::size_t count_ = 0;
  bool begun_ = false;
};

class TextStlReader final : public MeshReader {
 public:
  bool take(std::string_view bytes) override {
    lines_.take(bytes, [this](std::string_view line) { takeLine(line); });
    return true;
  }
  FileFacts finish() override {
    if (!lines_.atEnd() || !ended_) gatherer_.facts.damaged = true;
    return gatherer_.facts;
  }

 private:
  void takeLine(std::string_view line) {
    MeshPoint p;
    if (line.starts_with("    vertex ")) {
      line.remove_prefix(11);
      if (!takePoint(line, p) || corner_ > 2) gatherer_.facts.damaged = true;
      gatherer_.point(p);
      corners_[corner_++ % 3] = cornerOf(p);
    } else if (line.starts_with("endfacet")) {
      if (corner_ != 3) gatherer_.facts.damaged = true;
      gatherer_.triangle(corners_[0], corners_[1], corners_[2]);
      corner_ = 0;
    }
    ended_ = line.starts_with("endsolid");
  }

  LineReader lines_;
  FactsGatherer gatherer_;
  std::array<std::uint64_t, 3> corners_{};
  std::size_t corner_ = 0;
  bool ended_ = false;
};

class ObjReader final : public MeshReader {
 public:
  bool take(std::string_view bytes) override {
    lines_.take(bytes, [this](std::string_view line) { takeLine(line); });
    return true;
  }
  FileFacts finish() override {
    if (!lines_.atEnd()) gatherer_.facts.damaged = true;
    return gatherer_.facts;
  }

 private:
  void takeLine(std::string_view line) {
    FileFacts& facts = gatherer_.facts;
    const bool vertex = line.starts_with("v ");
    if (!vertex && !line.starts_with("f ")) return;
    line.remove_prefix(2);
    if (vertex) {
      MeshPoint p;
      if (!takePoint(line, p)) facts.damaged = true;
      gatherer_.sharedPoint(p);
      return;
    }
    std::array<std::uint64_t, 4> corner{};
    std::size_t count = 0;
    for (std::uint32_t index = 0; count < 4 && takeIndex(line, index); ++count) {
      if (index == 0 || index > facts.points) facts.damaged = true;
      corner[count] = index;
    }
    if (count < 3) facts.damaged = true;
    gatherer_.triangle(corner[0], corner[1], corner[2]);
    if (count == 4) gatherer_.triangle(corner[0], corner[2], corner[3]);
  }

  LineReader lines_;
  FactsGatherer gatherer_;
};

bool isNear(std::int32_t one, std::int32_t two) {
  return std::abs(static_cast<double>(one) - two) <= 1 + std::abs(static_cast<double>(one)) * 1e-6;
}
bool isNear(const MeshPoint& one, const MeshPoint& two) {
  return isNear(one.x, two.x) && isNear(one.y, two.y) && isNear(one.z, two.z);
}

}  // namespace

void FactsGatherer::point(const MeshPoint& p) {
  MeshBox& box = facts.box;
  if (!any_) box = {p, p};
  any_ = true;
  box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y), std::min(box.low.z, p.z)};
  box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y), std::max(box.high.z, p.z)};
}

void FactsGatherer::sharedPoint(const MeshPoint& p) {
  point(p);
  ++facts.points;
  facts.places += spread(cornerOf(p));
}

void FactsGatherer::triangle(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
  hashedTriangle(spread(a + 1), spread(b + 1), spread(c + 1));
}

void FactsGatherer::hashedTriangle(std::uint64_t a, std::uint64_t b, std::uint64_t c) {
  ++facts.triangles;
  facts.open += edge(a, b) + edge(b, c) + edge(c, a);
  if (a == b || b == c || c == a) facts.damaged = true;
}

FileFacts factsOf(const std::vector<MeshPart>& parts,
                  const std::function<MeshPoint(const MeshPoint&)>& asWritten) {
  FactsGatherer gatherer;
  for (const MeshPart& part : parts) {
    for (const MeshPoint& p : part.points) gatherer.sharedPoint(asWritten ? asWritten(p) : p);
    for (const PartFace& face : part.faces) gatherer.facts.triangles += face[3] == kNoCorner ? 1 : 2;
  }
  return gatherer.facts;
}

FileFacts factsOf(const TubeMesh& mesh) {
  FactsGatherer gatherer;
  for (const TubeMesh::Strand& strand : mesh.strands()) {
    if (!mesh.anyShared()) {
      const std::span points(mesh.points().data() + mesh.firstPoint(strand), mesh.pointCount(strand));
      for (const MeshPoint& p : points) gatherer.point(p);
      gatherer.facts.triangles += 2 * points.size();
      continue;
    }
    for (std::size_t ring = 0; ring < strand.ringCount; ++ring)
      mesh.eachFace(strand, ring, [&](const TubeMesh::Face& face) {
        const auto corners = polygonCorners(face.cut);
        if (corners.empty()) return;
        gatherer.facts.triangles += corners.size() - 2;
        for (const std::uint8_t corner : corners) gatherer.point(mesh.points()[face.corner[corner]]);
      });
  }
  return gatherer.facts;
}

std::unique_ptr<MeshReader> binaryStlReader() { return std::make_unique<BinaryStlReader>(); }
std::unique_ptr<MeshReader> textStlReader() { return std::make_unique<TextStlReader>(); }
std::unique_ptr<MeshReader> objReader() { return std::make_unique<ObjReader>(); }

Status checkWritten(Sink& sink, std::unique_ptr<MeshReader> reader,
                    const std::function<FileFacts()>& expected) {
  if (!sink.canReadBack()) return {};
  const FileFacts wanted = expected();
  const bool read = sink.readBack([&](std::string_view block) { return reader->take(block); });
  const FileFacts found = reader->finish();
  const bool same = read && !found.damaged && found.triangles == wanted.triangles &&
                    found.points == wanted.points && found.places == wanted.places && found.open == 0 &&
                    isNear(found.box.low, wanted.box.low) && isNear(found.box.high, wanted.box.high);
  if (same) return {};
  return unwritable("the file was read back and is not what was written; it was not put in place");
}

}  // namespace lorivan
