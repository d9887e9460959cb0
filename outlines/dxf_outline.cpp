#include "outlines/dxf_outline.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr double kMostUnits = 1e9;
constexpr std::size_t kMostVertices = 100'000;
constexpr int kHighestDegree = 12;
constexpr int kPiecesOfSpan = 12;            // of a spline between two knots
constexpr int kMostInserts = 16;             // nested
constexpr std::size_t kMostKept = 500'000;   // entities of a file
constexpr std::size_t kMostDrawn = 500'000;  // entities drawn, those of blocks each time
constexpr Affine kUpwards{1, 0, 0, -1, 0, 0};

/// A code with its value, and the line that the value stands in.
struct DxfPair {
  int code = 0;
  std::string_view value;
  int line = 0;
};

class DxfPairs {
 public:
  explicit DxfPairs(std::string_view text) : text_(text) {}

  /// Nothing at the end of the text.
  Result<std::optional<DxfPair>> next() {
    const auto code = line();
    if (!code || (trimmed(*code).empty() && at_ >= text_.size())) return std::optional<DxfPair>();
    const auto number = parseInteger(*code, -32768, 32767);
    if (!number) return unreadable("line {1}: {2} is no group code", line_, quoted(*code));
    const auto value = line();
    if (!value) return unreadable("line {1}: the file ends before a value", line_);
    return std::optional<DxfPair>({static_cast<int>(*number), trimmed(*value), line_});
  }

  int lineNumber() const { return line_; }
  /// Not so where the text was cut off, perhaps inside a number.
  bool lastLineEnds() const { return text_.ends_with('\n'); }

 private:
  std::optional<std::string_view> line() {
    if (at_ >= text_.size()) return {};
    const std::size_t end = std::min(text_.find('\n', at_), text_.size());
    std::string_view found = text_.substr(at_, end - at_);
    if (found.ends_with('\r')) found.remove_suffix(1);
    at_ = end + 1;
    ++line_;
    return found;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int line_ = 0;
};

struct DxfVertex {
  Spot at;
  double bulge = 0;  // tangent of a quarter of the angle of the arc to the next vertex
};

/// An entity's values: the last one of each code, and the lists that some codes make.
struct Entity {
  std::string kind, name;  // name: of blocks, without regard to case
  int line = 0;
  std::map<int, double> values;
  std::vector<DxfVertex> vertices;  // 10, 20, 42
  std::vector<Spot> fitPoints;      // 11, 21
  std::vector<double> knots, weights;

  double value(int code, double otherwise = 0) const {
    const auto found = values.find(code);
    return found == values.end() ? otherwise : found->second;
  }
  bool flag(int code, int bit) const { return (static_cast<long long>(value(code)) & bit) != 0; }
  /// Flat entities may be seen from behind.
  bool fromBehind() const { return value(230, 1) < 0; }
};

/// Codes of coordinates, sizes, angles and flags.
bool isKept(int code) { return (code >= 10 && code < 80) || code == 230; }

/// Takes a value into the entity; false where there are too many of them.
bool take(Entity& entity, int code, double value) {
  const bool lists = entity.kind == "LWPOLYLINE" || entity.kind == "SPLINE";
  entity.values[code] = value;
  if (lists && code == 10) entity.vertices.push_back({{value, 0}, 0});
  if (lists && code == 20 && !entity.vertices.empty()) entity.vertices.back().at.y = value;
  if (lists && code == 42 && !entity.vertices.empty()) entity.vertices.back().bulge = value;
  if (entity.kind != "SPLINE") return entity.vertices.size() <= kMostVertices;
  if (code == 11) entity.fitPoints.push_back({value, 0});
  if (code == 21 && !entity.fitPoints.empty()) entity.fitPoints.back().y = value;
  if (code == 40) entity.knots.push_back(value);
  if (code == 41) entity.weights.push_back(value);
  return std::max({entity.vertices.size(), entity.fitPoints.size(), entity.knots.size(),
                   entity.weights.size()}) <= kMostVertices;
}

/// A rational B-spline, evaluated by de Boor's recursion.
class Spline {
 public:
  static std::optional<Spline> of(const Entity& e) {
    Spline s;
    const double degree = e.value(71);
    if (!(degree >= 1 && degree <= kHighestDegree)) return {};
    s.degree_ = static_cast<std::size_t>(degree);
    const std::size_t count = e.vertices.size();
    if (count <= s.degree_ || e.knots.size() != count + s.degree_ + 1) return {};
    if (!std::ranges::is_sorted(e.knots)) return {};
    for (std::size_t i = 0; i < count; ++i) {
      const double weight = e.weights.size() == count ? e.weights[i] : 1;
      if (!(weight > 0)) return {};
      s.points_.push_back({weight * e.vertices[i].at, weight});
    }
    s.knots_ = e.knots;
    return s;
  }

  std::vector<Spot> samples() const {
    std::vector<Spot> all;
    for (std::size_t span = degree_; span + degree_ + 1 < knots_.size(); ++span) {
      if (!(knots_[span] < knots_[span + 1])) continue;
      for (int k = all.empty() ? 0 : 1; k <= kPiecesOfSpan; ++k)
        all.push_back(at(span, 1.0 * k / kPiecesOfSpan));
    }
    return all;
  }

 private:
  struct Weighted {
    Spot sum;
    double weight = 1;
  };

  /// `part`, 0 to 1, of the way between the knots of the span.
  Spot at(std::size_t span, double part) const {
    const double t = knots_[span] + part * (knots_[span + 1] - knots_[span]);
    std::vector<Weighted> d(points_.begin() + static_cast<std::ptrdiff_t>(span - degree_),
                            points_.begin() + static_cast<std::ptrdiff_t>(span + 1));
    for (std::size_t r = 1; r <= degree_; ++r)
      for (std::size_t j = degree_; j >= r; --j) {
        const double low = knots_[span - degree_ + j], high = knots_[span + 1 + j - r];
        const double share = high > low ? (t - low) / (high - low) : 0;
        d[j] = {(1 - share) * d[j - 1].sum + share * d[j].sum,
                (1 - share) * d[j - 1].weight + share * d[j].weight};
      }
    return (1 / d[degree_].weight) * d[degree_].sum;
  }

  std::size_t degree_ = 3;
  std::vector<double> knots_;
  std::vector<Weighted> points_;
};

/// Entities that are inserted together, about a point of theirs.
struct Block {
  Spot base;
  std::vector<Entity> entities;
};

class DxfReader {
 public:
  explicit DxfReader(std::string_view text) : pairs_(text), pen_(drawing_) {}

  Result<Drawing> run() {
    for (;;) {
      auto pair = pairs_.next();
      if (!pair) return pair.error();
      if (!*pair) break;
      if (const Status taken = takePair(**pair); !taken) return taken.error();
      if (kept_ > kMostKept) return at((*pair)->line, tr("the drawing has too many entities"));
    }
    if (inEntities_ && entity_.kind != "EOF" && !pairs_.lastLineEnds())
      return at(pairs_.lineNumber(), tr("the file ends in the middle of it"));
    endEntity();
    endSection();
    if (!sections_) return unreadable("line 1: it is no DXF drawing");
    if (const Status drawn = draw(entities_, kUpwards, 0); !drawn) return drawn.error();
    notePassedOver();
    if (cutShort_) drawing_.notes.push_back(tr("a polyline in it has no end: points of it may be missing"));
    return std::move(drawing_);
  }

 private:
  static Error at(int line, const std::string& reason) { return unreadable("line {1}: {2}", line, reason); }

  void notePassedOver() {
    constexpr std::size_t kMostNamed = 12;
    int others = 0;
    for (const auto& [kind, count] : passedOver_)
      if (drawing_.notes.size() < kMostNamed)
        drawing_.notes.push_back(tr("{1} of kind {2} left out", count, kind));
      else
        others += count;
    if (others > 0) drawing_.notes.push_back(tr("{1} of other kinds left out", others));
  }

  Status takePair(const DxfPair& pair) {
    if (pair.code == 0) {
      endEntity();
      if (pair.value == "ENDSEC") endSection();
      entity_ = Entity{std::string(pair.value), {}, pair.line, {}, {}, {}, {}, {}};
      sections_ |= pair.value == "SECTION";
      return {};
    }
    if (pair.code == 2) entity_.name = lowerCase(pair.value);
    if (entity_.kind == "SECTION") inEntities_ = entity_.name == "entities" || entity_.name == "blocks";
    if (!inEntities_ || !isKept(pair.code)) return {};
    const auto value = parseNumber(pair.value);
    if (!value || !(std::fabs(*value) <= kMostUnits))
      return at(pair.line, tr("{1} is not a number in range", quoted(pair.value)));
    if (!take(entity_, pair.code, *value)) return at(pair.line, tr("an entity has too many points"));
    return {};
  }

  void endEntity() {
    Entity e = std::exchange(entity_, {});
    if (!inEntities_ || e.kind.empty() || e.kind == "SECTION") return;
    if (e.kind == "VERTEX") {
      // The frame of a smoothed polyline is not part of it.
      if (polyline_ && !e.flag(70, 16) && polyline_->vertices.size() < kMostVertices)
        polyline_->vertices.push_back({{e.value(10), e.value(20)}, e.value(42)});
      return;
    }
    if (polyline_) keep(*std::exchange(polyline_, std::nullopt));
    if (e.kind == "POLYLINE")
      polyline_ = std::move(e);
    else if (e.kind == "BLOCK")
      block_ = &(blocks_[e.name] = {{e.value(10), e.value(20)}, {}});
    else if (e.kind == "ENDBLK")
      block_ = nullptr;
    else if (e.kind != "SEQEND")
      keep(std::move(e));
  }

  void endSection() {
    cutShort_ |= polyline_.has_value();
    if (polyline_) keep(*std::exchange(polyline_, std::nullopt));
    block_ = nullptr;
    inEntities_ = false;
  }

  /// Unless it lies on paper space or is invisible.
  void keep(Entity e) {
    if (e.value(67) != 0 || e.value(60) != 0) return;
    (block_ == nullptr ? entities_ : block_->entities).push_back(std::move(e));
    ++kept_;
  }

  Status draw(const std::vector<Entity>& entities, const Affine& place, int inserts) {
    for (const Entity& e : entities) {
      if (++visits_ > kMostDrawn) return at(e.line, tr("the drawing inserts too many blocks"));
      const bool flat = e.kind != "LINE" && e.kind != "SPLINE" && e.kind != "ELLIPSE";
      const Affine own = flat && e.fromBehind() ? place.after({-1, 0, 0, 1, 0, 0}) : place;
      if (e.kind == "INSERT") {
        if (const Status drawn = insert(e, own, inserts); !drawn) return drawn;
        continue;
      }
      pen_.setTransform(own);
      if (!drawn(e)) {
        ++passedOver_[e.kind.substr(0, 20)];
        if (inserts > 0) visits_ += e.vertices.size();  // which were looked at for nothing
      }
      if (pen_.tooMany()) return at(e.line, tr("the drawing has too many curves"));
    }
    return {};
  }

  /// In rows and columns, which are turned with the block but not scaled.
  Status insert(const Entity& e, const Affine& place, int inserts) {
    const auto found = blocks_.find(e.name);
    if (found == blocks_.end() || inserts >= kMostInserts) {
      ++passedOver_[e.kind];
      return {};
    }
    const Block& block = found->second;
    const double angle = e.value(50) * kPi / 180, c = std::cos(angle), s = std::sin(angle);
    const Affine turned = place.after({c, s, -s, c, e.value(10), e.value(20)});
    const double across = e.value(41, 1), up = e.value(42, 1);
    for (int row = 0; row < std::max(1.0, e.value(71)); ++row)
      for (int column = 0; column < std::max(1.0, e.value(70)); ++column) {
        if (++visits_ > kMostDrawn) return at(e.line, tr("the drawing inserts too many blocks"));
        const Affine scaled{across,
                            0,
                            0,
                            up,
                            column * e.value(44) - across * block.base.x,
                            row * e.value(45) - up * block.base.y};
        if (const Status drawn = draw(block.entities, turned.after(scaled), inserts + 1); !drawn)
          return drawn;
      }
    return {};
  }

  /// False when this kind is not known, or its values make no sense.
  bool drawn(const Entity& e) {
    const Spot centre{e.value(10), e.value(20)};
    if (e.kind == "LINE") {
      pen_.moveTo(centre);
      pen_.lineTo({e.value(11), e.value(21)});
      pen_.finish();
      return true;
    }
    if (e.kind == "LWPOLYLINE" || e.kind == "POLYLINE") return drawPolyline(e);
    if (e.kind == "CIRCLE" || e.kind == "ARC") return drawCircle(e, centre, std::fabs(e.value(40)));
    if (e.kind == "ELLIPSE") return drawEllipse(e, centre);
    return e.kind == "SPLINE" && drawSpline(e);
  }

  bool drawPolyline(const Entity& e) {
    if (e.flag(70, 16) || e.flag(70, 64) || e.vertices.empty()) return false;  // a mesh
    const bool closed = e.flag(70, 1);
    pen_.moveTo(e.vertices.front().at);
    for (std::size_t i = 0; i + (closed ? 0 : 1) < e.vertices.size(); ++i)
      drawBulge(e.vertices[i].bulge, e.vertices[(i + 1) % e.vertices.size()].at);
    pen_.finish(closed);
    return true;
  }

  /// A bulge above 0 is an arc that runs counter-clockwise, y up.
  void drawBulge(double bulge, Spot to) {
    const Spot from = pen_.at(), chord = to - from;
    if (std::fabs(bulge) < 1e-9 || length(chord) == 0) return pen_.lineTo(to);
    const double sweep = 4 * std::atan(bulge);
    // From the middle of the chord to the centre, in chords to the left.
    const double away = (1 - bulge * bulge) / (4 * bulge);
    const Spot centre = 0.5 * (from + to) + away * Spot{-chord.y, chord.x};
    const double radius = distance(centre, from), begin = std::atan2(from.y - centre.y, from.x - centre.x);
    pen_.arc(centre, {radius, 0}, {0, radius}, begin, sweep);
  }

  bool drawCircle(const Entity& e, Spot centre, double radius) {
    const bool whole = e.kind == "CIRCLE";
    const double from = whole ? 0 : e.value(50) * kPi / 180;
    double sweep = whole ? kTwoPi : std::fmod(e.value(51) * kPi / 180 - from, kTwoPi);
    if (sweep <= 0) sweep += kTwoPi;
    pen_.arc(centre, {radius, 0}, {0, radius}, from, sweep);
    pen_.finish(whole);
    return radius > 0;
  }

  bool drawEllipse(const Entity& e, Spot centre) {
    const Spot major{e.value(11), e.value(21)};
    const Spot minor = (e.value(40, 1) * (e.fromBehind() ? -1 : 1)) * Spot{-major.y, major.x};
    const double from = e.value(41, 0);
    double sweep = std::fmod(e.value(42, kTwoPi) - from, kTwoPi);
    if (sweep <= 1e-6) sweep += kTwoPi;
    pen_.arc(centre, major, minor, from, sweep);
    pen_.finish(sweep > kTwoPi - 1e-6);
    return length(major) > 0;
  }

  bool drawSpline(const Entity& e) {
    const auto spline = Spline::of(e);
    const std::vector<Spot> way = spline ? spline->samples() : e.fitPoints;
    if (way.size() < 2) return false;
    pen_.moveTo(way.front());
    for (std::size_t i = 1; i < way.size(); ++i) spline ? pen_.lineTo(way[i]) : drawThrough(way, i);
    pen_.finish(e.flag(70, 1));
    return true;
  }

  /// A smooth curve to a point that has only to be passed: it runs there as from the point before to the
  /// next.
  void drawThrough(const std::vector<Spot>& way, std::size_t i) {
    const Spot from = way[i - 1], to = way[i];
    const Spot leaves = to - (i >= 2 ? way[i - 2] : from),
               arrives = (i + 1 < way.size() ? way[i + 1] : to) - from;
    pen_.cubicTo(from + (1.0 / 6) * leaves, to - (1.0 / 6) * arrives, to);
  }

  DxfPairs pairs_;
  Drawing drawing_;
  ChainPen pen_;
  Entity entity_;
  std::optional<Entity> polyline_;  // that waits for its vertices
  std::vector<Entity> entities_;
  std::map<std::string, Block> blocks_;
  Block* block_ = nullptr;  // that is read
  std::map<std::string, int> passedOver_;
  std::size_t kept_ = 0, visits_ = 0;
  bool sections_ = false, inEntities_ = false, cutShort_ = false;
};

}  // namespace

Result<Drawing> readDxfOutline(std::string_view text) {
  if (text.substr(0, 64).find('\0') != std::string_view::npos)
    return unreadable("it is a binary DXF; save it as a text (ASCII) DXF");
  return DxfReader(withoutMark(text)).run();
}

}  // namespace lorivan
