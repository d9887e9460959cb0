// What a picture of bands must show at every pixel, from nothing but distances to the centre lines and the
// heights where they cross: an independent measure for pictures that are painted from outlines.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "strands/band_crossings.h"
#include "strands/band_loop.h"

namespace lorivan {

/// Where two bands lie over one another, or the edge of one over the other, the crossing within that area
/// says which of them is above. In an area without a crossing they lie side by side: each has what is nearer
/// to its own middle, with an edge between. An area with two crossings that disagree is one where the bands
/// have no room, and so is a place where each of three bands lies over another one: no picture of them is
/// right.
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
        passes_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)),
        firstPair_(passes_.size() + 1) {
    for (std::size_t l = 0; l < loops.size(); ++l) walk(static_cast<int>(l));
    for (auto& here : passes_) joinClosing(here);
    pairUp();
    for (std::size_t i = 0; i < crossings_.size(); ++i) noteCrossing(static_cast<int>(i));
  }

  /// What lies at a pixel's middle. Within `margin` pixels of a border that can be seen it is unclear.
  Shows at(int x, int y, double margin, int& slot) const {
    const std::vector<Pass> kept = passesAt(x, y, margin);
    const Pass* top = nullptr;
    bool isNear = false, isMiddle = false;
    for (const Pass& pass : kept) {
      bool above = true;
      for (const Pass& o : kept) {
        if (&o == &pass) continue;
        const Order order = verdict(x, y, pass, o);
        if (std::min(pass.distance, o.distance) > band_ + margin) continue;  // black on black
        if (matters(pass, o) && order == Order::none) return Shows::together;
        isNear |= !matters(pass, o) && order == Order::none;
        const double ahead = o.distance - pass.distance - (outer_ - band_);
        isNear |= order == Order::beside && std::fabs(ahead) < 2 * margin;
        isMiddle |= order == Order::beside && std::fabs(o.distance - pass.distance) < outer_ - band_;
        above &= order == Order::above || (order == Order::beside && ahead > 0);
      }
      if (above) top = &pass;
    }
    if (kept.empty()) return Shows::background;
    if (isNear) return Shows::unclear;
    if (top == nullptr) return isMiddle ? Shows::edge : Shows::together;
    if (std::fabs(top->distance - band_) < margin || std::fabs(top->distance - outer_) < margin)
      return Shows::unclear;
    slot = loops_[top->loop].slot();
    return top->distance < band_ ? Shows::band : Shows::edge;
  }

  /// How much of a pixel is band, 0 to 1; where another band covers one, all of it or nothing.
  double share(int x, int y) const {
    const auto covered = [](double inside) { return std::clamp(inside + 0.5, 0.0, 1.0); };
    const std::vector<Pass> kept = passesAt(x, y, 1);
    double sum = 0;
    for (const Pass& pass : kept) {
      double seen = covered(band_ - pass.distance);
      for (const Pass& o : kept) {
        const Order order = &o == &pass ? Order::none : verdict(x, y, pass, o);
        if (order == Order::below && o.distance < outer_) seen = 0;
        if (order == Order::beside)
          seen = std::min(seen, covered((o.distance - pass.distance - outer_ + band_) / 2));
      }
      sum += seen;
    }
    return std::min(sum, 1.0);
  }

 private:
  enum class Order { none, above, below, beside };
  /// One band that comes near a pixel, from place `first` to `last`.
  struct Pass {
    int loop;
    double place, first, last, distance;
  };
  /// Two bands over one pixel. Pairs of neighbouring pixels with the same two bands are one area.
  struct Pair {
    Pass a, b;
    std::uint32_t parent;
    std::vector<int> crossings;  // of the area, at its root
  };

  /// The bands that reach over a pixel.
  std::vector<Pass> passesAt(int x, int y, double margin) const {
    std::vector<Pass> here, kept;
    for (const Pass& pass : passes_[index(x, y)])
      if (pass.distance < outer_ + margin) here.push_back(pass);
    if (here.size() < 2) return here;
    // Of the legs of a bend only the nearest one counts, but not where a band goes over one, under the other.
    const auto isBetween = [&](const Pass& p, const Pass& a, const Pass& b) {
      const Order toA = verdict(x, y, p, a), toB = verdict(x, y, p, b);
      return toA != Order::none && toB != Order::none && toA != toB;
    };
    const auto beneath = [&](const Pass& pass) {
      return std::ranges::any_of(here, [&](const Pass& o) {
        return o.distance < pass.distance && isOneBend(o, pass, 12 * outer_) &&
               verdict(x, y, o, pass) == Order::none &&
               std::ranges::none_of(here, [&](const Pass& p) { return isBetween(p, o, pass); });
      });
    };
    for (const Pass& pass : here)
      if (!beneath(pass)) kept.push_back(pass);
    return kept;
  }

  std::size_t index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
  }
  bool matters(const Pass& p, const Pass& q) const {
    return std::min(p.distance, q.distance) <= band_ && std::max(p.distance, q.distance) <= outer_;
  }
  double lap(const Pass& p) const { return loops_[p.loop].size(); }

  void walk(int number) {
    const BandLoop& loop = loops_[number];
    for (int i = 0; i < loop.size(); ++i) {
      const int parts = 1 + static_cast<int>(lengthOf(loop.point(i + 1) - loop.point(i)));
      for (int k = 0; k < parts; ++k)
        stamp(number, i + static_cast<double>(k) / parts, i + static_cast<double>(k + 1) / parts);
    }
  }

  /// A chord of about a pixel.
  void stamp(int number, double from, double to) {
    const double reach = outer_ + 2;
    const Vec p = loops_[number].spot(from).at, way = loops_[number].spot(to).at - p;
    const double inverse = 1 / std::max(dot(way, way), 1e-12);
    const auto limit = [](double v, int most) {
      return std::clamp(static_cast<int>(std::floor(v)), 0, most);
    };
    const Vec q = p + way;
    const auto [left, right] = std::minmax(p.x, q.x);
    const auto [top, bottom] = std::minmax(p.y, q.y);
    for (int y = limit(top - reach, height_ - 1); y <= limit(bottom + reach, height_ - 1); ++y)
      for (int x = limit(left - reach, width_ - 1); x <= limit(right + reach, width_ - 1); ++x) {
        const Vec off{x - p.x, y - p.y};
        const double t = std::clamp(dot(off, way) * inverse, 0.0, 1.0);
        const Vec away = off - way * t;
        if (const double square = dot(away, away); square <= reach * reach)
          note(passes_[index(x, y)], number, from + (to - from) * t, std::sqrt(square));
      }
  }

  static void note(std::vector<Pass>& passes, int number, double place, double distance) {
    if (passes.empty() || passes.back().loop != number || place - passes.back().last > 1.01) {
      passes.push_back({number, place, place, place, distance});
      return;
    }
    Pass& pass = passes.back();
    pass.last = place;
    if (distance >= pass.distance) return;
    pass.distance = distance;
    pass.place = place;
  }

  /// A band that passes across its loop's beginning is one.
  void joinClosing(std::vector<Pass>& here) const {
    for (std::size_t i = 0; i < here.size(); ++i)
      for (std::size_t k = i + 1; k < here.size(); ++k) {
        Pass &begin = here[i], end = here[k];
        if (begin.loop != end.loop || begin.first + lap(begin) - end.last > 1.01) continue;
        begin.first = end.first - lap(begin);
        if (end.distance < begin.distance) {
          begin.distance = end.distance;
          begin.place = end.place;
        }
        here.erase(here.begin() + static_cast<std::ptrdiff_t>(k--));
      }
  }

  void pairUp() {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x) {
        const std::size_t at = index(x, y);
        const std::vector<Pass>& here = passes_[at];
        firstPair_[at] = static_cast<std::uint32_t>(pairs_.size());
        for (std::size_t i = 0; i < here.size(); ++i)
          for (std::size_t k = i + 1; k < here.size(); ++k) {
            if (!matters(here[i], here[k])) continue;
            const auto number = static_cast<std::uint32_t>(pairs_.size());
            pairs_.push_back({here[i], here[k], number, {}});
            if (x > 0) link(number, at - 1);
            if (y > 0) link(number, at - static_cast<std::size_t>(width_));
          }
      }
    firstPair_.back() = static_cast<std::uint32_t>(pairs_.size());
  }

  bool goOn(const Pass& p, const Pass& q) const {
    if (p.loop != q.loop) return false;
    for (const double shift : {0.0, lap(p), -lap(p)})
      if (p.first <= q.last + shift && q.first + shift <= p.last) return true;
    return false;
  }

  void link(std::uint32_t number, std::size_t pixel) {
    const Pair& one = pairs_[number];
    const std::uint32_t end = std::min(firstPair_[pixel + 1], number);
    for (std::uint32_t i = firstPair_[pixel]; i < end; ++i) {
      const Pair& o = pairs_[i];
      if ((goOn(one.a, o.a) && goOn(one.b, o.b)) || (goOn(one.a, o.b) && goOn(one.b, o.a)))
        pairs_[root(number)].parent = root(i);
    }
  }

  std::uint32_t root(std::uint32_t i) const {
    while (pairs_[i].parent != i) i = pairs_[i].parent;
    return i;
  }

  /// Places from a pass to a place on its loop.
  double away(const Pass& p, double place) const {
    double least = HUGE_VAL;
    for (const double shift : {0.0, lap(p), -lap(p)})
      least = std::min(least, std::max({p.first - place - shift, place + shift - p.last, 0.0}));
    return least;
  }
  double misfit(const BandCrossing& c, const Pass& under, const Pass& over) const {
    if (c.under != under.loop || c.over != over.loop) return HUGE_VAL;
    return away(under, c.underAt) + away(over, c.overAt);
  }

  void noteCrossing(int number) {
    const BandCrossing& c = crossings_[number];
    const Vec p = loops_[c.under].spot(c.underAt).at;
    const int x = static_cast<int>(std::lround(p.x)), y = static_cast<int>(std::lround(p.y));
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    const std::size_t at = index(x, y);
    for (std::uint32_t i = firstPair_[at]; i < firstPair_[at + 1]; ++i)
      if (std::min(misfit(c, pairs_[i].a, pairs_[i].b), misfit(c, pairs_[i].b, pairs_[i].a)) == 0)
        pairs_[root(i)].crossings.push_back(number);
  }

  /// How two bands over a pixel lie to one another, by the crossings in their common area.
  Order verdict(int x, int y, const Pass& p, const Pass& q) const {
    const std::size_t at = index(x, y);
    Order order = Order::none;
    for (std::uint32_t i = firstPair_[at]; i < firstPair_[at + 1]; ++i) {
      const Pair& pair = pairs_[i];
      const auto is = [](const Pass& a, const Pass& b) { return a.loop == b.loop && a.place == b.place; };
      if (!(is(pair.a, p) && is(pair.b, q)) && !(is(pair.a, q) && is(pair.b, p))) continue;
      for (const int number : pairs_[root(i)].crossings) {
        const BandCrossing& c = crossings_[number];
        const Order says = misfit(c, p, q) < misfit(c, q, p) ? Order::below : Order::above;
        if (order != Order::none && order != says) return Order::none;
        order = says;
      }
      const bool lieBeside = pairs_[root(i)].crossings.empty() && matters(p, q);
      if (lieBeside && !isOneBend(p, q, 4 * (band_ + outer_))) return Order::beside;
    }
    return order;
  }

  /// Whether two passes are the legs of one tight bend, with less than `most` of the line between them.
  bool isOneBend(const Pass& a, const Pass& b, double most) const {
    if (a.loop != b.loop) return false;
    const BandLoop& loop = loops_[a.loop];
    double from = std::min(a.place, b.place), to = std::max(a.place, b.place);
    if (to - from > loop.size() / 2.0) std::swap(from, to), to += loop.size();
    double way = 0;
    for (int i = static_cast<int>(from); i < to; ++i) way += lengthOf(loop.point(i + 1) - loop.point(i));
    return way < most;
  }

  const std::vector<BandLoop>& loops_;
  int width_, height_;
  double band_, outer_;
  std::vector<BandCrossing> crossings_;
  std::vector<std::vector<Pass>> passes_;
  std::vector<std::uint32_t> firstPair_;  // of each pixel
  std::vector<Pair> pairs_;
};

/// The smallest distance between two crossings that follow one another on a strand, pixels of the view.
inline double smallestRoom(const std::vector<BandLoop>& loops) {
  std::vector<std::vector<double>> ways(loops.size());
  for (const BandCrossing& c : findBandCrossings(loops)) {
    ways[c.under].push_back(c.underAt);
    ways[c.over].push_back(c.overAt);
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
