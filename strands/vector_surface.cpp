#include "strands/vector_surface.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "strands/curve_fit.h"

namespace lorivan {

VectorSurface::VectorSurface(const VectorPage& page)
    : width_(page.width),
      height_(page.height),
      pageWidth_(page.width),
      pageHeight_(page.height),
      scale_(page.millimetres / page.width) {
  if (page.box) {
    left_ = page.box->left;
    top_ = page.box->top;
    pageWidth_ = page.box->right - left_;
    pageHeight_ = page.box->bottom - top_;
  }
  decimals_ = pageWidth() < 20 ? 6 : 3;
}

std::vector<PointF> VectorSurface::fewerNodes(const WideCurve& curve) {
  constexpr double kShare = 0.004;
  constexpr int kParts = 4;
  const auto& chain = curve.bezier;
  std::vector<LinePoint> points;
  for (std::size_t i = 0; i + 3 < chain.size(); i += 3)
    for (int part = points.empty() ? 0 : 1; part <= kParts; ++part) {
      const auto p = [&](std::size_t k) { return Vec{chain[i + k].x, chain[i + k].y}; };
      const double t = static_cast<double>(part) / kParts, s = 1 - t;
      points.push_back(
          {p(0) * (s * s * s) + p(1) * (3 * s * s * t) + p(2) * (3 * s * t * t) + p(3) * (t * t * t),
           unit((p(1) - p(0)) * (s * s) + (p(2) - p(1)) * (2 * s * t) + (p(3) - p(2)) * (t * t))});
    }
  std::vector<PointF> fitted{chain.front()};
  fitCurve(points, curve.width * kShare, fitted);
  fitted.back() = chain.back();
  return fitted.size() < chain.size() ? fitted : std::vector<PointF>(chain.begin(), chain.end());
}

std::string VectorSurface::labelOf(std::string_view name) {
  std::string label(name);
  for (char& c : label)
    if (c == '-') c = ' ';
  if (!label.empty() && label[0] >= 'a' && label[0] <= 'z')
    label[0] = static_cast<char>(label[0] - 'a' + 'A');
  return label;
}

namespace {

/// Writes `value` with so many decimals where it is clear how it rounds, which is nearly always; null where
/// it is not. The same characters as std::to_chars gives, in a quarter of its time.
char* putClearDecimal(char* at, double value, int decimals) {
  constexpr std::array kPowers = {1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
  constexpr double kMost = 1e12, kDoubt = 1e-3;  // doubles up to there are exact to a tenth of the doubt
  if (decimals < 0 || decimals >= static_cast<int>(kPowers.size())) return nullptr;
  const double scaled = std::fabs(value) * kPowers[static_cast<std::size_t>(decimals)];
  if (!(scaled < kMost)) return nullptr;
  auto whole = static_cast<std::uint64_t>(scaled);
  const double rest = scaled - static_cast<double>(whole);
  if (std::fabs(rest - 0.5) < kDoubt) return nullptr;
  if (rest > 0.5) ++whole;
  if (std::signbit(value)) *at++ = '-';
  std::array<char, 24> digits{};
  const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), whole).ptr;
  const auto count = static_cast<int>(end - digits.data());
  const int before = std::max(0, count - decimals);  // digits before the point
  if (before == 0) *at++ = '0';
  at = std::copy_n(digits.data(), before, at);
  if (decimals == 0) return at;
  *at++ = '.';
  at = std::fill_n(at, std::max(0, decimals - count), '0');
  return std::copy_n(digits.data() + before, count - before, at);
}

}  // namespace

void appendDecimal(std::string& out, double value, int decimals) {
  std::array<char, 64> text{};
  char* end = putClearDecimal(text.data(), value, decimals);
  if (end == nullptr)
    end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals).ptr;
  if (decimals > 0) {
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
  }
  const std::string_view digits(text.data(), static_cast<std::size_t>(end - text.data()));
  out += digits == "-0" ? "0" : digits;
}

}  // namespace lorivan
