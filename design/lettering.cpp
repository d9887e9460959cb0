#include "design/lettering.h"

#include <algorithm>
#include <array>
#include <vector>

namespace lorivan {
namespace {

constexpr double kCapitals = 6;       // height of capitals in units of the table
constexpr double kGap = 2.2;          // between two letters
constexpr double kBlank = 3;          // a blank's own width
constexpr double kStroke = 0.85;      // width of the pen
constexpr double kDot = 0.05;         // length of a stroke of one point
constexpr int kFirstCharacter = '!';  // the table's first

// Strokes of each character, apart by blanks. A point is a digit for x, from the left, and a letter for y:
// "c" is the base line, "g" the height of small letters, "i" of capitals, "a" how far tails go down. "~"
// begins a smooth stroke, "@" a smooth and closed one.
constexpr std::string_view kUnknown = "0c 4c 4i 0i 0c";
// clang-format off
constexpr auto kCharacters = std::to_array<std::string_view>({
    "", "", "", "", "0c4i @1i2h1g0h @3e4d3c2d", "", "", "~2i0g0e2c", "~0i2g2e0c", "", "1e5e 3g3c", "1c0b",
    "0e3e", "0c", "0c3i",                                                                     // ! to /
    "@2i4g4e2c0e0g", "0g2i2c", "~0g1i3i4g3e0c 0c4c", "~0h2i4g2f ~2f4e4d2c0d", "3c3i0e4e",
    "4i1i0f ~0f2g4e2c0d", "~3i1h0e @2g4e2c0e", "0i4i1c", "@2i4g2f0g @2f4d2c0d", "@2i4g2e0g ~4g3d1c",
    "0c 0g", "", "", "0d3d 0f3f", "", "", "",                                                 // 0 to @
    "0c2i4c 1e3e", "0c0i2i ~2i4h4g2f 0f2f ~2f4e4d2c 2c0c", "~4h2i0g0e2c4d", "0c0i2i ~2i4g4e2c 2c0c",
    "4i0i0c4c 0f3f", "4i0i0c 0f3f", "~4h2i0g0e2c4d 4d4f2f", "0i0c 4i4c 0f4f", "0i0c", "~3i3e2c0d",
    "0i0c 4i0e 1f4c", "0i0c3c", "0c0i2e4i4c", "0c0i4c4i", "@2i3i5g5e3c2c0e0g", "0c0i2i ~2i4h4g2f 2f0f",
    "@2i3i5g5e3c2c0e0g 3e5c", "0c0i2i ~2i4h4g2f 2f0f 2f4c", "~4h2i0g2f4e2c0d", "0i4i 2i2c",
    "~0i0e2c4e4i", "0i2c4i", "0i1c3g5c6i", "0i4c 0c4i", "0i2f4i 2f2c", "0i4i0c4c",            // A to Z
    "", "", "", "", "", "",
    "@2g4e2c0e 4g4c", "0i0c @2g4e2c0e", "~4f2g0e2c4d", "4i4c @2g4e2c0e", "0e4e ~4e2g0e2c4d",
    "~3i1h1e 1e1c 0g3g", "@2g4e2c0e 4g4c ~4c2a0b", "0i0c ~0e2g4e 4e4c", "0g0c 0i", "2g2c ~2c1a0a 2i",
    "0i0c 3g0e 1e3c", "0i0c", "0g0c ~0e2g3e 3e3c ~3e5g6e 6e6c", "0g0c ~0e2g4e 4e4c", "@2g4e2c0e",
    "0g0a @2g4e2c0e", "4g4a @2g4e2c0e", "0g0c ~0e2g3g", "~3g1g0f1e2e3d2c0c", "1i1d ~1d2c3c 0g3g",
    "0g0e ~0e2c4e 4g4c", "0g2c4g", "0g1c3g5c6g", "0g3c 0c3g", "0g2c 4g1a", "0g3g0c3c",        // a to z
});
// clang-format on

struct Letter {
  std::string_view text, strokes;
};

// What the window's languages have beside these.
constexpr auto kFurther = std::to_array<Letter>({{"…", "0c 2c 4c"},
                                                 {"ä", "@2g4e2c0e 4g4c 1i 3i"},
                                                 {"ö", "@2g4e2c0e 1i 3i"},
                                                 {"ü", "0g0e ~0e2c4e 4g4c 1i 3i"},
                                                 {"ß", "0c0h ~0h1i3h2g1f ~1f3f4d3c1c"},
                                                 {"Ä", "0c2i4c 1e3e 1k 3k"},
                                                 {"Ö", "@2i3i5g5e3c2c0e0g 1k 4k"},
                                                 {"Ü", "~0i0e2c4e4i 1k 3k"}});

/// The character that a UTF-8 text begins with, which is taken off.
std::string_view takeCharacter(std::string_view& text) {
  const auto goesOn = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
  std::size_t size = 1;
  while (size < text.size() && goesOn(text[size])) ++size;
  const std::string_view character = text.substr(0, size);
  text.remove_prefix(size);
  return character;
}

std::string_view strokesOf(std::string_view character) {
  if (character == " ") return {};
  const auto further = std::ranges::find(kFurther, character, &Letter::text);
  if (further != kFurther.end()) return further->strokes;
  const int place = static_cast<unsigned char>(character.front()) - kFirstCharacter;
  if (character.size() > 1 || place < 0 || place >= static_cast<int>(kCharacters.size())) return kUnknown;
  const std::string_view strokes = kCharacters[place];
  return strokes.empty() ? kUnknown : strokes;
}

double widthOf(std::string_view character) {
  if (character == " ") return kBlank;
  double width = 0;
  for (const char c : strokesOf(character))
    if (c >= '0' && c <= '9') width = std::max(width, static_cast<double>(c - '0'));
  return width;
}

/// One stroke as Bezier segments.
class Stroke {
 public:
  Stroke(std::string_view text, PointF origin, float unit)
      : smooth_(text.front() == '~' || text.front() == '@'), closed_(text.front() == '@') {
    for (std::size_t i = smooth_ ? 1 : 0; i + 1 < text.size(); i += 2)
      points_.push_back({origin.x + unit * static_cast<float>(text[i] - '0'),
                         origin.y - unit * static_cast<float>(text[i + 1] - 'c')});
    if (points_.size() == 1)
      points_.push_back({points_[0].x + unit * static_cast<float>(kDot), points_[0].y});
  }

  std::vector<PointF> bezier() const {
    std::vector<PointF> out = {points_[0]};
    const int pieces = static_cast<int>(points_.size()) - (closed_ ? 0 : 1);
    for (int i = 0; i < pieces; ++i) {
      out.push_back(beside(i, 1));
      out.push_back(beside(i + 1, -1));
      out.push_back(at(i + 1));
    }
    return out;
  }

 private:
  PointF at(int i) const {
    const int count = static_cast<int>(points_.size());
    return points_[closed_ ? (i + count) % count : std::clamp(i, 0, count - 1)];
  }
  /// The control point before or behind a point: a sixth of the way between its neighbours.
  PointF beside(int i, int side) const {
    const PointF here = at(i), before = at(i - 1), next = at(i + 1);
    const float part = smooth_ ? static_cast<float>(side) / 6 : 0;
    return {here.x + (next.x - before.x) * part, here.y + (next.y - before.y) * part};
  }

  bool smooth_, closed_;
  std::vector<PointF> points_;
};

}  // namespace

double letteringWidth(std::string_view text) {
  double width = 0;
  while (!text.empty()) width += widthOf(takeCharacter(text)) + kGap;
  return std::max(0.0, width - kGap) / kCapitals;
}

std::string shortenedTo(std::string_view text, double width) {
  if (letteringWidth(text) <= width) return std::string(text);
  std::string kept;
  while (!text.empty()) {
    const std::string longer = kept + std::string(takeCharacter(text));
    if (letteringWidth(longer + "…") > width) break;
    kept = longer;
  }
  while (kept.ends_with(' ')) kept.pop_back();
  return kept + "…";
}

void drawLettering(Surface& surface, std::string_view text, PointF baseline, double capitalHeight,
                   Colour colour) {
  const auto unit = static_cast<float>(capitalHeight / kCapitals);
  while (!text.empty()) {
    const std::string_view character = takeCharacter(text);
    std::string_view strokes = strokesOf(character);
    while (!strokes.empty()) {
      const std::size_t end = std::min(strokes.find(' '), strokes.size());
      const std::vector<PointF> bezier = Stroke(strokes.substr(0, end), baseline, unit).bezier();
      surface.wideCurve({bezier, unit * static_cast<float>(kStroke), colour, CapStyle::round});
      strokes.remove_prefix(std::min(end + 1, strokes.size()));
    }
    baseline.x += unit * static_cast<float>(widthOf(character) + kGap);
  }
}

}  // namespace lorivan
