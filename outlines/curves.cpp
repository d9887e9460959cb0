#include "outlines/curves.h"

#include <algorithm>
#include <cmath>

namespace lorivan {
namespace {

constexpr double kArcStep = 0.7853981633974483;  // an eighth of a turn: off by 4e-6 of the radius
constexpr double kRounding = 1e-9;
constexpr int kMostArcTurns = 8;
constexpr int kMostPieces = 256;

Spot thirdWay(Spot a, Spot b) { return a + (1.0 / 3) * (b - a); }

Spot onCubic(const Spot* p, double t) {
  const double s = 1 - t;
  return (s * s * s) * p[0] + (3 * s * s * t) * p[1] + (3 * s * t * t) * p[2] + (t * t * t) * p[3];
}

}  // namespace

Affine Affine::after(const Affine& inner) const {
  return {a * inner.a + c * inner.b, b * inner.a + d * inner.b,     a * inner.c + c * inner.d,
          b * inner.c + d * inner.d, a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f};
}

void ChainPen::add(Spot c1, Spot c2, Spot p) {
  if (chain_.points.empty()) chain_.points.push_back(transform_(at_));
  at_ = p;
  drawing_now_ = true;
  if (++segments_ > kMostSegments) return;
  for (const Spot s : {c1, c2, p}) chain_.points.push_back(transform_(s));
}

void ChainPen::moveTo(Spot p) {
  finish();
  start_ = at_ = p;
  drawing_now_ = true;
}

void ChainPen::lineTo(Spot p) { add(thirdWay(at_, p), thirdWay(p, at_), p); }

void ChainPen::cubicTo(Spot c1, Spot c2, Spot p) { add(c1, c2, p); }

void ChainPen::arc(Spot centre, Spot u, Spot v, double from, double sweep) {
  const auto on = [&](double angle) { return centre + std::cos(angle) * u + std::sin(angle) * v; };
  const auto along = [&](double angle) { return std::cos(angle) * v - std::sin(angle) * u; };
  if (!drawing_now_) moveTo(on(from));
  const int pieces =
      static_cast<int>(std::ceil(std::min(std::fabs(sweep) / kArcStep, 8.0 * kMostArcTurns) - 1e-6));
  const double step = pieces > 0 ? sweep / pieces : 0;
  const double reach = 4.0 / 3 * std::tan(step / 4);
  for (int k = 0; k < pieces; ++k) {
    const double begin = from + k * step, end = begin + step;
    add(on(begin) + reach * along(begin), on(end) - reach * along(end), on(end));
  }
}

void ChainPen::close() {
  const Spot start = start_;
  finish(true);
  start_ = at_ = start;
  drawing_now_ = true;
}

void ChainPen::finish(bool closed) {
  if (!chain_.points.empty()) {
    if (closed && distance(at_, start_) > kRounding * (length(start_) + distance(at_, start_)))
      lineTo(start_);
    if (closed) chain_.points.back() = chain_.points.front();
    chain_.closed = closed;
    drawing_.chains.push_back(std::move(chain_));
  }
  chain_ = {};
  drawing_now_ = false;
}

std::vector<Spot> flattened(const CurveChain& chain, double tolerance) {
  std::vector<Spot> points;
  if (chain.points.empty()) return points;
  points.push_back(chain.points.front());
  for (std::size_t i = 0; i + 3 < chain.points.size(); i += 3) {
    const Spot* p = &chain.points[i];
    // A chord of a curve with the second derivative d keeps within d/8 of it, for a parameter from 0 to 1.
    const double bend = 6 * std::max(length(p[0] - 2 * p[1] + p[2]), length(p[1] - 2 * p[2] + p[3]));
    const double wanted = std::ceil(std::sqrt(bend / (8 * tolerance)) - 1e-3);
    const int pieces = static_cast<int>(std::clamp(wanted, 1.0, 1.0 * kMostPieces));
    for (int k = 1; k < pieces; ++k) points.push_back(onCubic(p, static_cast<double>(k) / pieces));
    points.push_back(p[3]);
  }
  return points;
}

}  // namespace lorivan
