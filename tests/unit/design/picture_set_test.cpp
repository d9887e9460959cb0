// Every knot of the standard grids up to 8 x 8 at every smoothness, with fitted bands and with bands of some
// widths of which the program does not say that they run together, and random knots: their pictures and
// outlines are compared with what the distances to the centre lines say.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "design/edits.h"
#include "design/fit.h"
#include "design/knot.h"
#include "grids.h"
#include "platform/none/recording_surface.h"
#include "strands/cut_room.h"
#include "tries.h"
#include "unit/strands/exact_picture.h"

namespace lorivan {
namespace {

constexpr int kUsualStep = 251 * kOneTryOf;  // pictures from one that is looked at to the next
// Looked at in any case: a spiral of which two stretches nearly meet in a corner beside a crossing, and a
// knot with tiny folds.
constexpr int kNearlyMet = 9880, kTinyFolds = 233;
constexpr int kRandomKnots = 300;
// And: a strand that bends tightly soon before it crosses itself, a corner on one side of the crossing beside
// it, and samples that come together in a cusp.
constexpr std::array kOthers{10126, 10488, 30922};
constexpr int kUsualRandomStep = 50 * kOneTryOf;
constexpr std::array kParts{0.0, 0.4, 0.6, 0.8};  // of the widest bands that have room; 0: fitted
constexpr double kBandPixels = 12;                // a picture is as large as it takes for bands of this width
constexpr double kMostOff = 0.005;                // of the painted area
constexpr int kNarrowest = 4;                     // reference pixels: less is no band with an edge

struct Counts {
  int tried = 0, together = 0, narrow = 0, knots = 0, wrong = 0, unclear = 0;
  int notApart = 0, open = 0, notPositive = 0, area = 0;

  Counts& operator+=(const Counts& more) {
    for (const auto count :
         {&Counts::tried, &Counts::together, &Counts::narrow, &Counts::knots, &Counts::wrong,
          &Counts::unclear, &Counts::notApart, &Counts::open, &Counts::notPositive, &Counts::area})
      this->*count += more.*count;
    return *this;
  }
};

std::ostream& operator<<(std::ostream& out, const Counts& counts) {
  return out << "wrong: " << counts.wrong << " pixels in " << counts.knots << "; outlines not apart "
             << counts.notApart << ", open " << counts.open << ", not positive " << counts.notPositive
             << ", of another area " << counts.area << "; with places that have no one picture "
             << counts.unclear;
}

/// A picture's measure, and its outlines'.
class Measure {
 public:
  /// Distances are taken on so many lines and columns for each one of the picture.
  Measure(const Document& document, const Knot& knot, int times)
      : knot_(knot),
        style_(knotStyle(document.fields, strandColours(document.fields.boxes))),
        times_(times),
        width_(std::clamp(static_cast<int>(kReferenceWidth * kBandPixels / style_.outerWidth()), 480, 900)),
        picture_(viewOf(knot, document.fields, style_, width_, true)),
        view_(viewOf(knot, document.fields, style_, width_ * times, true)),
        band_(style_.innerWidth() * view_.pixelFactor()),
        outer_(style_.outerWidth() * view_.pixelFactor()),
        loops_(bandLoops(knot.curve, view_)),
        exact_(loops_, view_, band_, outer_) {}

  void add(Counts& counts) const {
    ++counts.tried;
    const double shapes = addOutlines(counts);
    RecordingSurface surface(picture_.width, picture_.height());
    const PictureOptions options{.background = kGround, .showGrid = false, .grid = {}};
    drawKnotPicture(surface, knot_.graph, knot_.curve, style_, picture_, options);
    double painted = 0, bands = 0;
    int wrong = 0;
    bool isUnclear = false;
    const int lines = std::min(view_.height(), surface.height() * times_);
    for (int y = 0; y < lines; ++y)
      for (int x = 0; x < view_.width; ++x) {
        const bool isPixel = x % times_ == 0 && y % times_ == 0;
        const PointI pixel{x / times_, y / times_};
        int slot = 0;
        const auto shows = exact_.at(x, y, kMargin * times_, slot);
        if (shows == ExactPicture::Shows::background) {
          wrong += isPixel && surface.pixel(pixel) != kGround;
          continue;
        }
        bands += exact_.share(x, y);
        isUnclear |= shows == ExactPicture::Shows::together;
        const bool isBorder = shows != ExactPicture::Shows::band && shows != ExactPicture::Shows::edge;
        painted += isBorder ? exact_.at(x, y, 0, slot) != ExactPicture::Shows::background : 1;
        const Colour band = shows == ExactPicture::Shows::band ? style_.bandColour(slot) : 0;
        wrong += isPixel && !isBorder && surface.pixel(pixel) != band;
      }
    counts.knots += wrong > 0;
    counts.wrong += wrong;
    counts.unclear += isUnclear;
    counts.area += std::fabs(shapes - bands) > kMostOff * painted;
  }

 private:
  static constexpr Colour kGround = 0x123456;
  static constexpr double kMargin = 0.9;  // pixels from a border, within which one may have either colour

  /// The area of all outlines.
  double addOutlines(Counts& counts) const {
    const OutlineOptions options{.band = band_, .outer = outer_};
    std::vector<BandContour> contours;
    double sum = 0;
    bool isOpen = false, isPositive = true;
    for (const StrandOutline& strand : bandOutlines(knot_.curve, view_, options).strands)
      for (const BandStretch& stretch : strand.stretches) {
        double area = 0;
        for (const BandContour& contour : stretch.contours) {
          contours.push_back(contour);
          area += contourArea(contour);
          isOpen |= contour.size() % 3 != 1 || contour.front().x != contour.back().x ||
                    contour.front().y != contour.back().y;
        }
        isPositive &= area > 0;
        sum += area;
      }
    counts.open += isOpen;
    counts.notPositive += !isPositive;
    counts.notApart += !lieApart(contours, (outer_ - band_) / 4);
    return sum;
  }

  const Knot& knot_;
  KnotStyle style_;
  int times_, width_;
  GridView picture_, view_;
  double band_, outer_;
  std::vector<BandLoop> loops_;
  ExactPicture exact_;
};

/// Bands that meet in a neck narrower than a pixel, and small areas, are measured more finely before they
/// count.
Counts measured(const Document& document, const Knot& knot) {
  Counts counts;
  Measure(document, knot, 1).add(counts);
  if (counts.wrong == 0 && counts.area == 0) return counts;
  Counts finer;
  Measure(document, knot, 3).add(finer);
  finer.notApart = std::max(finer.notApart, counts.notApart);
  return finer;
}

Document withOuter(const Document& document, int outer) {
  const auto tenths = [](int value) { return std::to_string(value / 10) + '.' + std::to_string(value % 10); };
  return withField(withField(document, Param::Width, tenths(5 * outer)), Param::Edge,
                   tenths(std::max(outer * 17 / 10, 5)));
}

/// The widest bands, in whole pixels, that are not said to run together.
int widestOuter(const Document& document, const Knot& knot) {
  const auto distance = leastCrossingDistance(knot);
  int low = 0, high = distance ? static_cast<int>(*distance * 1.5) + 2 : 1;
  while (high - low > 1) {
    const int middle = (low + high) / 2;
    (bandOverlap(withOuter(document, middle), knot) > 0 ? high : low) = middle;
  }
  return low;
}

void compare(const Document& document, const Knot& knot, const std::string& name, Counts& counts) {
  if (bandOverlap(document, knot) > 0) return void(++counts.together);
  const Counts one = measured(document, knot);
  counts += one;
  EXPECT_EQ(one.wrong + one.notApart + one.notPositive + one.area, 0)
      << one << "; " << name << ": " << shapeTable()[static_cast<std::size_t>(document.fields.shape)].name
      << ' ' << document.fields.text(Param::XNo) << " x " << document.fields.text(Param::YNo) << ", order "
      << document.fields.text(Param::Smooth);
}

void addPicture(const Document& grid, double part, Counts& counts) {
  const auto knot = knotOf(grid);
  const int widest = part > 0 ? widestOuter(grid, *knot) : kNarrowest;
  if (widest < kNarrowest) return void(++counts.narrow);
  const Document document =
      part > 0 ? withOuter(grid, static_cast<int>(std::floor(widest * part))) : fitBands(grid);
  compare(document, *knot, "part " + std::to_string(part), counts);
}

/// From one that is looked at to the next; all of them where the environment asks for it.
int stepOf(int usual) {
  const char* const asked = std::getenv("LORIVAN_PICTURES");
  return asked == nullptr ? usual : std::max(1, std::atoi(asked));
}

void tell(const Counts& counts, int step) {
  EXPECT_EQ(counts.open, 0);
  if (std::getenv("LORIVAN_PICTURES") == nullptr) return;
  std::cout << counts.tried << " pictures, each " << step << ". of them; left out: " << counts.together
            << " that are said to run together, " << counts.narrow << " too narrow\n"
            << counts << '\n';
}

TEST(PictureSet, NoBlemishWhereBandsHaveRoom) {
  const int step = stepOf(kUsualStep);
  Counts counts;
  int number = 0;
  for (int s = 0; s < kShapeCount - 1; ++s)
    for (int cells = 0; cells < 64; ++cells) {
      const int columns = 1 + cells % 8, rows = 1 + cells / 8;
      const Document grid = gridOf(static_cast<Shape>(s), columns, rows);
      if (grid.fields.whole(Param::XNo) != columns || grid.fields.whole(Param::YNo) != rows) continue;
      for (int order = 2; order <= 6; ++order)
        for (const double part : kParts)
          if (number++ % step == kNearlyMet % step)
            addPicture(withField(grid, Param::Smooth, std::to_string(order)), part, counts);
    }
  EXPECT_GT(counts.tried, 10000 / step / 2);
  tell(counts, step);
}

/// What a press of Random gives: walls, and bands that fit.
TEST(PictureSet, NoBlemishInFittedRandomKnots) {
  const int step = stepOf(kUsualRandomStep);
  Counts counts;
  std::vector<int> seeds(kOthers.begin(), kOthers.end());
  for (int seed = 1 + (kTinyFolds - 1) % step; seed <= kRandomKnots; seed += step) seeds.push_back(seed);
  for (const int seed : seeds) {
    const auto drawn = randomKnot(Document(), seededRandom(static_cast<std::uint64_t>(seed)));
    ASSERT_TRUE(drawn);
    const Document document = fitBands(*drawn);
    compare(document, *knotOf(document), "random " + std::to_string(seed), counts);
  }
  EXPECT_GT(counts.tried, kRandomKnots / step / 2);
  tell(counts, step);
}

}  // namespace
}  // namespace lorivan
