// What of the fields becomes the view, the light and the tube of the 3-D model.
#include "design/knot_model.h"

#include <gtest/gtest.h>

#include <array>

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
  EXPECT_FALSE(pictureOptions(fields).classic);
  fields.check(Check::Classic) = true;
  const PictureOptions flat = pictureOptions(fields);
  EXPECT_TRUE(flat.classic && !flat.showGrid && flat.grid.showCrossings && flat.background == QBColor(3) &&
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

}  // namespace
}  // namespace lorivan
