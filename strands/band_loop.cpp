#include "strands/band_loop.h"

#include <algorithm>

namespace lorivan {
namespace {

constexpr double kSame = 1e-4;        // pixels; nearer samples are one
constexpr int kSteps = 12;            // towards a nearest point, at most
constexpr double kLongestMove = 1.5;  // samples, of such a step

constexpr double kMostAhead = 3;        // times the way to a sample, that the derivative there is long
constexpr std::size_t kWidestStep = 4;  // samples from one that is kept to the next one
constexpr double kLongestStep = 7.3;    // pixels; not whole, so that even grids do not hit it
constexpr std::size_t kFewestKept = 8;  // of a loop
constexpr double kMostAlong = 0.2;      // of a sample's way that a curve may be ahead, or behind
constexpr double kMostTurn = 0.5;       // tangent of the turn from one that is kept to the next one

}  // namespace

BandLoop::BandLoop(const KnotCurve& curve, int slot, const GridView& view, double stray)
    : slot_(slot), turns_(curve.turns[slot]), lap_(curve.lap(slot) * acrossScale(view)) {
  thread_local std::vector<Node> all;
  thread_local std::vector<double> heights;
  const auto at = static_cast<std::size_t>(slot);
  const auto most = static_cast<std::size_t>(curve.last[at] - curve.first[at] + 1);
  all.resize(most);
  heights.resize(most);
  const GridView own = view;  // which nothing below can change
  const auto isSame = [](Vec a, Vec b) { return dot(b - a, b - a) <= kSame * kSame; };
  std::size_t count = 0;
  for (int i = curve.first[at]; i <= curve.last[at]; ++i) {
    const auto sample = static_cast<std::size_t>(i);
    const SamplePlace place = samplePlace(curve, sample, own);
    const Vec p{place.x, place.y};
    if (count > 0 && isSame(p, all[count - 1].at)) continue;
    all[count].at = p;
    all[count].sample = static_cast<int>(count);
    heights[count++] = curve.Z[sample];
  }
  all.resize(count);
  const Vec lap{lap_, 0};
  while (all.size() > 1 && isSame(all.front().at + lap, all.back().at)) all.pop_back();
  if (all.size() < 3) return;
  for (std::size_t i = 1; i + 1 < all.size(); ++i) all[i].along = (all[i + 1].at - all[i - 1].at) * 0.5;
  all.front().along = (all[1].at - (all.back().at - lap)) * 0.5;
  all.back().along = (all.front().at + lap - all[all.size() - 2].at) * 0.5;
  calmCusps(all, lap);
  const auto line = std::make_shared<Line>();
  line->heights.assign(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(all.size()));
  line->heights.push_back(heights.front());
  keep(all, stray, line->nodes);
  size_ = static_cast<int>(line->nodes.size());
  nodes_ = line->nodes.data();
  line_ = line;
}

/// Where samples suddenly come together a cubic would overshoot, and turn back for a little way: its
/// derivatives are at most three times as long as the way between its ends (F. N. Fritsch and R. E. Carlson,
/// SIAM Journal on Numerical Analysis 17, 1980).
void BandLoop::calmCusps(std::span<Node> all, Vec lap) {
  Vec before = all.front().at - (all.back().at - lap);
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Vec after = (i + 1 < all.size() ? all[i + 1].at : all.front().at + lap) - all[i].at;
    const double most = kMostAhead * kMostAhead * std::min(dot(before, before), dot(after, after));
    if (const double fast = dot(all[i].along, all[i].along); fast > most)
      all[i].along = all[i].along * std::sqrt(most / fast);
    before = after;
  }
}

/// Whether the cubic from one sample to one further on passes those between.
bool BandLoop::passesBetween(std::span<const Node> all, std::size_t from, std::size_t step, Vec lap,
                             double stray) {
  const bool isLast = from + step == all.size();
  const Node &a = all[from], &b = isLast ? all.front() : all[from + step];
  if (std::fabs(cross(a.along, b.along)) > kMostTurn * dot(a.along, b.along)) return false;
  const auto n = static_cast<double>(step);
  const Vec way = (isLast ? b.at + lap : b.at) - a.at;
  if (dot(way, way) > kLongestStep * kLongestStep) return false;
  const Vec out = a.along * n, in = b.along * n;
  const Vec square = way * 3 - out * 2 - in, cube = out + in - way * 2;
  for (std::size_t k = 1; k < step; ++k) {
    const double t = static_cast<double>(k) / n;
    const Node& between = all[from + k];
    const Vec off = a.at + (out + (square + cube * t) * t) * t - between.at;
    const double fast = dot(between.along, between.along), aside = cross(off, between.along);
    if (aside * aside > stray * stray * fast || dot(off, off) > kMostAlong * kMostAlong * fast) return false;
  }
  return true;
}

/// The most samples from one that is kept to the next one.
std::size_t BandLoop::stepFrom(std::span<const Node> all, std::size_t from, double stray) const {
  if (stray <= 0 || all.size() < kWidestStep * kFewestKept) return 1;
  std::size_t step = std::min(kWidestStep, all.size() - from);
  while (step > 1 && !passesBetween(all, from, step, {lap_, 0}, stray)) --step;
  return step;
}

void BandLoop::keep(std::span<const Node> all, double stray, std::vector<Node>& kept) const {
  kept.reserve(stray > 0 ? all.size() / 2 : all.size());
  for (std::size_t from = 0, step = 1; from < all.size(); from += step) {
    step = stepFrom(all, from, stray);
    Node node = all[from];
    node.direction = unit(node.along);
    node.step = static_cast<double>(step);
    kept.push_back(node);
  }
}

void BandLoop::appendAll(std::vector<PointF>& chain) const {
  const auto toPoint = [](Vec v) { return PointF{static_cast<float>(v.x), static_cast<float>(v.y)}; };
  chain.reserve(chain.size() + 3 * static_cast<std::size_t>(size_) + 1);
  chain.push_back(toPoint(point(0)));
  for (int i = 0; i < size_; ++i) {
    const Vec end = point(i + 1);
    chain.push_back(toPoint(point(i) + tangent(i) * (1.0 / 3)));
    chain.push_back(toPoint(end - tangentTo(i + 1) * (1.0 / 3)));
    chain.push_back(toPoint(end));
  }
}

void BandLoop::appendPart(double from, double to, std::vector<PointF>& chain) const {
  const auto toPoint = [](Vec v) { return PointF{static_cast<float>(v.x), static_cast<float>(v.y)}; };
  chain.push_back(toPoint(spot(from).at));
  for (double place = from; place < to;) {
    const double end = std::min(std::floor(place) + 1, to), third = (end - place) / 3;
    const Spot a = spot(place), b = spot(end);
    const Vec in = end < to || end == std::floor(end) ? tangentTo(static_cast<int>(end)) : b.along;
    chain.push_back(toPoint(a.at + a.along * third));
    chain.push_back(toPoint(b.at - in * third));
    chain.push_back(toPoint(b.at));
    place = end;
  }
}

std::vector<BandLoop::Stretch> BandLoop::upperStretches() const {
  std::vector<Stretch> stretches;
  if (size_ == 0) return stretches;
  const std::span<const double> heights(line_->heights.data(), line_->heights.size() - 1);
  const auto isUnder = [](double height) { return height < 0; };
  const auto count = static_cast<double>(heights.size());
  for (auto at = heights.begin();;) {
    const auto begin = std::find_if_not(at, heights.end(), isUnder);
    if (begin == heights.end()) break;
    at = std::find_if(begin, heights.end(), isUnder);
    stretches.push_back(
        {static_cast<double>(begin - heights.begin()), static_cast<double>(at - heights.begin()) - 1});
  }
  // One across the lap's end is one.
  if (stretches.size() > 1 && stretches.front().from == 0 && stretches.back().to == count - 1) {
    stretches.back().to = count + stretches.front().to;
    stretches.erase(stretches.begin());
  }
  return stretches;
}

double BandLoop::placeOf(double sample) const {
  const auto count = static_cast<double>(line_->heights.size() - 1);
  const double laps = std::floor(sample / count), within = sample - laps * count;
  const std::span<const Node> nodes(nodes_, static_cast<std::size_t>(size_));
  const auto next = std::ranges::upper_bound(nodes, within, {}, [](const Node& node) { return node.sample; });
  const Node& node = *(next - 1);
  return laps * size_ + static_cast<double>(next - 1 - nodes.begin()) + (within - node.sample) / node.step;
}

std::optional<double> BandLoop::sameLine(const BandLoop& other) const {
  if (line_ != other.line_) return std::nullopt;
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
  const double low = std::floor(place);
  const Node& node = nodes_[wrap(static_cast<int>(low))];
  const double sample = node.sample + (place - low) * node.step, first = std::floor(sample),
               t = sample - first;
  const double* at = &line_->heights[static_cast<std::size_t>(first)];
  return t > 0 ? at[0] * (1 - t) + at[1] * t : at[0];
}

double BandLoop::nearest(Vec from, double guess) const {
  double before = 0, most = kLongestMove;
  for (int step = 0; step < kSteps; ++step) {
    const Spot s = spot(guess);
    const Vec away = s.at - from;
    const double speed = dot(s.along, s.along);
    if (!(speed > 0)) break;
    // Newton's step; where the curve bends round `from` it would run away, and goes plainly downhill.
    const double steep = std::max(speed + dot(away, s.bend), speed * 0.3);
    double move = -dot(away, s.along) / steep;
    // At a corner the steps would swing to and fro.
    if (move * before < 0) most = std::fabs(before) / 2;
    move = std::clamp(move, -most, most);
    guess += before = move;
    if (std::fabs(move) < 1e-5) break;
  }
  return guess;
}

std::vector<BandLoop> bandLoops(const KnotCurve& curve, const GridView& view, double stray) {
  std::vector<BandLoop> loops;
  for (int slot = 1; slot < kStrandSlots; ++slot) {
    if (!curve.used(slot)) continue;
    BandLoop loop(curve, slot, view, stray);
    if (loop.size() > 0) loops.push_back(std::move(loop));
  }
  return loops;
}

}  // namespace lorivan
