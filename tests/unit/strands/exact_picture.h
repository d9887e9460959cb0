// What a picture of bands must show at every pixel, from nothing but distances to the centre lines and the
// heights there: an independent measure for pictures that are painted from outlines.
#pragma once

#include <algorithm>
#include <vector>

#include "strands/band_crossings.h"
#include "strands/band_loop.h"

namespace lorivan {

class ExactPicture {
 public:
  enum class Shows { background, edge, band, unclear, together };

  ExactPicture(const std::vector<BandLoop>& loops, const GridView& view, double band, double outer)
      : loops_(loops),
        width_(view.width),
        height_(view.height()),
        band_(band / 2),
        outer_(outer / 2),
        crossings_(findBandCrossings(loops)),
        passes_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {
    for (std::size_t l = 0; l < loops.size(); ++l) walk(static_cast<int>(l));
  }

  /// What lies at a pixel's middle. Within `margin` pixels of any border it is unclear; where bands with
  /// their edges run over one another without crossing there, they are together.
  Shows at(int x, int y, double margin, int& slot) const {
    const Pass* top = nullptr;
    const std::vector<Pass>& here = passes_[index(x, y)];
    for (const Pass& pass : here) {
      if (std::fabs(pass.distance - band_) < margin || std::fabs(pass.distance - outer_) < margin)
        return Shows::unclear;
      if (pass.distance > outer_) continue;
      if (top != nullptr && !doCross(*top, pass)) {
        if (!isOneBend(*top, pass)) return Shows::together;
        if (pass.distance < top->distance) top = &pass;
        continue;
      }
      if (top == nullptr || heightOf(pass) > heightOf(*top)) top = &pass;
    }
    if (top == nullptr) return Shows::background;
    slot = loops_[static_cast<std::size_t>(top->loop)].slot();
    return top->distance < band_ ? Shows::band : Shows::edge;
  }

 private:
  /// One band that comes near a pixel.
  struct Pass {
    int loop;
    double place, first, last, distance;
  };

  std::size_t index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
  }
  double heightOf(const Pass& p) const { return loops_[static_cast<std::size_t>(p.loop)].height(p.place); }

  void walk(int number) {
    const BandLoop& loop = loops_[static_cast<std::size_t>(number)];
    for (int i = 0; i < loop.size(); ++i) {
      const int parts = 1 + static_cast<int>(lengthOf(loop.point(i + 1) - loop.point(i)) * 3);
      for (int k = 0; k < parts; ++k) stamp(number, i + static_cast<double>(k) / parts);
    }
  }

  void stamp(int number, double place) {
    const double reach = outer_ + 2;
    const Vec p = loops_[static_cast<std::size_t>(number)].spot(place).at;
    const auto limit = [](double v, int most) {
      return std::clamp(static_cast<int>(std::floor(v)), 0, most);
    };
    for (int y = limit(p.y - reach, height_ - 1); y <= limit(p.y + reach, height_ - 1); ++y)
      for (int x = limit(p.x - reach, width_ - 1); x <= limit(p.x + reach, width_ - 1); ++x) {
        const double distance = lengthOf({x - p.x, y - p.y});
        if (distance <= reach) note(passes_[index(x, y)], number, place, distance);
      }
  }

  void note(std::vector<Pass>& passes, int number, double place, double distance) const {
    const double lap = loops_[static_cast<std::size_t>(number)].size();
    for (Pass& pass : passes) {
      const bool goesOn = place - pass.last < 1.01, closes = lap - (place - pass.first) < 1.01;
      if (pass.loop != number || !(goesOn || closes)) continue;
      if (goesOn) pass.last = place;
      if (distance < pass.distance) {
        pass.distance = distance;
        pass.place = place;
      }
      return;
    }
    passes.push_back({number, place, place, place, distance});
  }

  /// Whether two passes are the legs of one tight bend.
  bool isOneBend(const Pass& a, const Pass& b) const {
    if (a.loop != b.loop) return false;
    const BandLoop& loop = loops_[static_cast<std::size_t>(a.loop)];
    double from = std::min(a.place, b.place), to = std::max(a.place, b.place);
    if (to - from > loop.size() / 2.0) std::swap(from, to), to += loop.size();
    double way = 0;
    for (int i = static_cast<int>(from); i < to; ++i) way += lengthOf(loop.point(i + 1) - loop.point(i));
    return way < 12 * outer_;
  }

  bool doCross(const Pass& a, const Pass& b) const {
    const auto near = [&](int loop, double one, double two) {
      const BandLoop& line = loops_[static_cast<std::size_t>(loop)];
      const double apart = std::fabs(one - two), chord = lengthOf(line.spot(two).along);
      return std::min(apart, line.size() - apart) * chord < 6 * outer_ &&
             lengthOf(line.spot(one).at - line.spot(two).at) < 3 * outer_;
    };
    return std::ranges::any_of(crossings_, [&](const BandCrossing& c) {
      const auto matches = [&](const Pass& u, const Pass& o) {
        return c.under == u.loop && c.over == o.loop && near(u.loop, c.underAt, u.place) &&
               near(o.loop, c.overAt, o.place);
      };
      return matches(a, b) || matches(b, a);
    });
  }

  const std::vector<BandLoop>& loops_;
  int width_, height_;
  double band_, outer_;
  std::vector<BandCrossing> crossings_;
  std::vector<std::vector<Pass>> passes_;
};

/// The smallest distance between two crossings that follow one another on a strand, pixels of the view.
inline double smallestRoom(const std::vector<BandLoop>& loops) {
  std::vector<std::vector<double>> ways(loops.size());
  for (const BandCrossing& c : findBandCrossings(loops)) {
    ways[static_cast<std::size_t>(c.under)].push_back(c.underAt);
    ways[static_cast<std::size_t>(c.over)].push_back(c.overAt);
  }
  double room = 1e300;
  for (std::size_t l = 0; l < loops.size(); ++l) {
    std::ranges::sort(ways[l]);
    for (std::size_t i = 0; i < ways[l].size(); ++i) {
      const Vec a = loops[l].spot(ways[l][i]).at, b = loops[l].spot(ways[l][(i + 1) % ways[l].size()]).at;
      if (lengthOf(a - b) > 1e-3) room = std::min(room, lengthOf(a - b));
    }
  }
  return room;
}

}  // namespace lorivan
