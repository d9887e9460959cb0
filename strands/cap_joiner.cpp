#include "strands/cap_joiner.h"

#include <cmath>
#include <optional>

namespace lorivan {
namespace {

constexpr double kSamePlace = 1e-3;  // units

bool isSame(PointF a, PointF b) { return std::hypot(a.x - b.x, a.y - b.y) < kSamePlace; }

/// A segment of a contour, by the number of its first point.
struct Cap {
  std::size_t shape, at;
};

class CapJoiner {
 public:
  explicit CapJoiner(std::vector<std::vector<BandContour>>& shapes) : shapes_(shapes) {}

  /// Two pieces that end at one line, from both sides, become one without that line.
  void run() {
    for (std::size_t shape = 0; shape < shapes_.size(); ++shape)
      for (std::size_t at = 0; shapes_[shape].size() == 1 && at + 3 < shapes_[shape][0].size();)
        if (const auto other = findOther({shape, at}); !other)
          at += 3;
        else {
          join({shape, at}, *other);
          at = 0;
        }
    std::erase_if(shapes_, [](const std::vector<BandContour>& shape) { return shape.empty(); });
  }

 private:
  std::optional<Cap> findOther(Cap cap) const {
    const BandContour& contour = shapes_[cap.shape][0];
    const PointF from = contour[cap.at], to = contour[cap.at + 3];
    if (isSame(from, to)) return {};
    for (std::size_t shape = cap.shape; shape < shapes_.size(); ++shape) {
      if (shapes_[shape].size() != 1) continue;
      const BandContour& other = shapes_[shape][0];
      for (std::size_t at = shape == cap.shape ? cap.at + 3 : 0; at + 3 < other.size(); at += 3)
        if (isSame(other[at], to) && isSame(other[at + 3], from)) return Cap{shape, at};
    }
    return {};
  }

  /// The contour from the end of one segment on to the beginning of another one, further on or the same.
  static BandContour between(const BandContour& contour, std::size_t after, std::size_t before) {
    BandContour part{contour[after + 3 < contour.size() ? after + 3 : 0]};
    const std::size_t last = contour.size() - 1;
    for (std::size_t i = (after + 3) % last; i != before % last; i = (i + 3) % last)
      part.insert(part.end(), contour.begin() + static_cast<std::ptrdiff_t>(i + 1),
                  contour.begin() + static_cast<std::ptrdiff_t>(i + 4));
    return part;
  }

  static BandContour closed(BandContour contour) {
    contour.back() = contour.front();
    return contour;
  }

  void join(Cap one, Cap two) {
    std::vector<BandContour>& first = shapes_[one.shape];
    if (one.shape == two.shape) {
      std::vector<BandContour> ring;
      for (BandContour part : {between(first[0], one.at, two.at), between(first[0], two.at, one.at)})
        if (part.size() > 3) ring.push_back(closed(std::move(part)));
      first = std::move(ring);
      return;
    }
    BandContour way = between(first[0], one.at, one.at);
    const BandContour back = between(shapes_[two.shape][0], two.at, two.at);
    way.insert(way.end(), back.begin() + 1, back.end());
    first = {closed(std::move(way))};
    shapes_[two.shape].clear();
  }

  std::vector<std::vector<BandContour>>& shapes_;
};

}  // namespace

void joinCaps(std::vector<std::vector<BandContour>>& shapes) { CapJoiner(shapes).run(); }

}  // namespace lorivan
