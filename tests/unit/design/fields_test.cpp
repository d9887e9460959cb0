// Random fields, and what of the fields becomes the view, the light and the tube.
#include <gtest/gtest.h>

#include <array>

#include "base/numbers.h"
#include "design/knot_fields.h"
#include "design/knot_model.h"
#include "design/random_knot.h"

namespace lorivan {
namespace {

TEST(KnotModel, EveryFieldGoesToItsOwnPlace) {
  KnotFields fields = firstRunFields();
  const std::pair<Param, const char*> texts[] = {{Param::Theta, "30"},      {Param::Phi, "45"},
                                                 {Param::Psi, "270"},       {Param::Ka, "0.125"},
                                                 {Param::Kd, "0.25"},       {Param::Ks, "0.5"},
                                                 {Param::NFact, "7"},       {Param::KDist, "-900"},
                                                 {Param::PolySides, "9"},   {Param::PolyPoints, "6"},
                                                 {Param::PolyRadius, "3"},  {Param::PolySmooth, "4"},
                                                 {Param::PolyZF, "1.5"},    {Param::RingPerc, "75"},
                                                 {Param::Edge, "6"},        {Param::PicKnotBackColour, "3"},
                                                 {Param::StartColour, "-4"}};
  for (const auto& [p, text] : texts) fields.text(p) = text;
  fields.check(Check::ShowGrid) = false;
  const KnotStyle style = knotStyle(fields, {});
  EXPECT_EQ((std::array{style.width, style.edge}), (std::array{7.F, 6.F}));
  const PictureOptions flat = pictureOptions(fields);
  EXPECT_TRUE(!flat.showGrid && flat.grid.showCrossings && flat.background == QBColor(3) &&
              flat.grid.KindColour[0] == flat.background);
  EXPECT_EQ(tubeColours(fields, {})[20], QBColor(4)) << "one colour for all strands";
  const ViewState view = viewState(fields);
  EXPECT_NEAR(view.ViewTheta, kPi / 3, 1e-6);
  EXPECT_NEAR(view.ViewPhi, kPi / 4, 1e-6);
  EXPECT_NEAR(view.ViewPsi, -1.5 * kPi, 1e-6);
  const LightSettings l = lightSettings(fields);
  EXPECT_EQ((std::array{l.Ka, l.Kd, l.Ks, l.NFact, l.KDist}), (std::array{0.125F, 0.25F, 0.5F, 7.F, -900.F}));
  const TubeSettings t = tubeSettings(fields);
  EXPECT_EQ((std::array{t.polySides, t.polyPoints, t.polySmooth}), (std::array{9, 6, 4}));
  EXPECT_EQ((std::array{t.polyRadius, t.polyZF, t.ringPercent}), (std::array{3.F, 1.5F, 75.F}));
}

TEST(RandomKnot, DrawsInOrderAndWithinRange) {
  const struct {
    double draw;
    Shape shape, kept;
    bool constant;
    int draws;
    const char* texts;  // X, scale, swish, width, edge, colour
  } cases[] = {
      {0.0, Shape::Star, Shape::SquareSquare, false, 10, "2 20 5 2 2 1 "},
      {0.999, Shape::Star, Shape::RegularHexagonal, false, 10, "11 49 19 7 2 15 "},
      {0.5, Shape::Custom, Shape::SquareSquare, true, 9, "7 35 12 5 2 8 "},
      {0.999, Shape::Circular, Shape::Circular, true, 9, "11 49 11 7 2 15 "},
  };
  for (const auto& c : cases) {
    KnotFields fields = firstRunFields();
    fields.shape = c.shape;
    int taken = 0;
    drawRandomFields(fields, c.constant, [&] { return ++taken, c.draw; });
    EXPECT_TRUE(fields.shape == c.kept && taken == c.draws) << c.draw;
    std::string texts;
    for (const Param p :
         {Param::XNo, Param::Scale, Param::Swish, Param::Width, Param::Edge, Param::StartColour})
      texts += fields.text(p) + ' ';
    EXPECT_EQ(texts, c.texts);
  }
}

}  // namespace
}  // namespace lorivan
