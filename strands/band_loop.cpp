#include "strands/band_loop.h"

#include <algorithm>

namespace lorivan {
namespace {

constexpr double kSame = 1e-4;  // pixels; nearer samples are one
constexpr int kSteps = 6;       // towards a nearest point; each one at least halves what is left

}  // namespace

BandLoop::BandLoop(const KnotCurve& curve, int slot, const GridView& view)
    : slot_(slot),
      turns_(curve.turns[static_cast<std::size_t>(slot)]),
      lap_(curve.lap(slot) * acrossScale(view)) {
  std::vector<Node> nodes;
  const auto at = static_cast<std::size_t>(slot);
  nodes.reserve(static_cast<std::size_t>(curve.last[at] - curve.first[at] + 1));
  for (int i = curve.first[at]; i <= curve.last[at]; ++i) {
    const auto sample = static_cast<std::size_t>(i);
    const SamplePlace place = samplePlace(curve, sample, view);
    const Vec p{place.x, place.y};
    if (nodes.empty() || lengthOf(p - nodes.back().at) > kSame) nodes.push_back({p, {}, {}, curve.Z[sample]});
  }
  const auto meetsFirst = [&] {
    return lengthOf(nodes.back().at - nodes.front().at - Vec{lap_, 0}) <= kSame;
  };
  while (nodes.size() > 1 && meetsFirst()) nodes.pop_back();
  if (nodes.size() < 3) return;
  size_ = static_cast<int>(nodes.size());
  nodes_ = std::make_shared<Node[]>(nodes.size());
  std::ranges::copy(nodes, nodes_.get());
  for (int i = 0; i < size_; ++i) {
    Node& node = nodes_[wrap(i)];
    node.along = (point(i + 1) - point(i - 1)) * 0.5;
    node.direction = unit(node.along);
  }
}

std::optional<double> BandLoop::sameLine(const BandLoop& other) const {
  if (nodes_ != other.nodes_) return std::nullopt;
  const double apart = other.left_ - left_;
  if (isRing()) return std::fabs(apart) < kSame ? std::optional(0.0) : std::nullopt;
  const double laps = std::round(apart / lap_);
  if (std::fabs(apart - laps * lap_) > kSame) return std::nullopt;
  return laps * size_;
}

double BandLoop::wrapped(double place) const {
  const double n = size();
  if (place >= 0 && place < n) return place;
  place = std::fmod(place, n);
  if (place < 0) place += n;
  return place < n ? place : 0;
}

double BandLoop::height(double place) const {
  const double low = std::floor(place), t = place - low;
  return nodes_[wrap(static_cast<int>(low))].height * (1 - t) +
         nodes_[wrap(static_cast<int>(low) + 1)].height * t;
}

double BandLoop::nearest(Vec from, double guess) const {
  for (int step = 0; step < kSteps; ++step) {
    const Spot s = spot(guess);
    const Vec away = s.at - from;
    const double speed = dot(s.along, s.along);
    if (!(speed > 0)) break;
    // Newton's step; where the curve bends round `from` it would run away, and goes plainly downhill.
    const double steep = std::max(speed + dot(away, s.bend), speed * 0.3);
    const double move = std::clamp(-dot(away, s.along) / steep, -1.5, 1.5);
    guess += move;
    if (std::fabs(move) < 1e-5) break;
  }
  return guess;
}

std::vector<BandLoop> bandLoops(const KnotCurve& curve, const GridView& view) {
  std::vector<BandLoop> loops;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    BandLoop loop(curve, slot, view);
    if (loop.size() > 0) loops.push_back(std::move(loop));
  }
  return loops;
}

}  // namespace lorivan
