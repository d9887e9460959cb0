// The sheet of variations as its user meets it.
#include "design/edits.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

class VariationsTest : public MainWindowTest {
 protected:
  bool shown() { return bench().picture() == Picture::variations; }
  void key(Key k) { EXPECT_TRUE(w->userPresses({k})); }
};

TEST_F(VariationsTest, AlongTheFieldThatHasTheFocus) {
  startDrawn();
  const Document before = document();
  w->userFocuses(fieldControl(Param::Swish));
  pick("mnuViewVariations");
  ASSERT_TRUE(shown());
  EXPECT_EQ(bench().variations.count(), 12U);
  EXPECT_EQ(bench().variations.marked().document, before);
  key(Key::down);
  key(Key::right);
  const std::string caption = bench().variations.marked().caption;
  w->userPressesEnter();
  EXPECT_FALSE(shown());
  EXPECT_EQ(caption, "Swish " + text(Param::Swish));
  EXPECT_NE(text(Param::Swish), "10");
  EXPECT_TRUE(drawn());
  undo();
  EXPECT_EQ(document(), before);
}

TEST_F(VariationsTest, RandomOnesAreAdoptedByAClickAndLeftByEscape) {
  startDrawn();
  const Document before = document();
  pick("mnuViewVariations");
  const int fills = count(DrawKind::fillPath);
  w->userResizes(800);
  EXPECT_TRUE(shown() && count(DrawKind::fillPath) == fills) << "the sheet stays when the window grows";
  key(Key::escape);
  EXPECT_FALSE(shown());
  EXPECT_EQ(document(), before);
  EXPECT_EQ(w->status(), "3 strands, 12 crossings");
  pick("mnuViewVariations");
  w->userClicksAt(kGrid, 1, 2, 2);
  EXPECT_TRUE(shown()) << "the margin is no knot";
  w->userClicksAt(kGrid, 1, w->surface(kGrid).width() * 3 / 8, w->surface(kGrid).height() / 2);
  EXPECT_FALSE(shown());
  EXPECT_NE(document(), before);
  pick("mnuViewVariations");
  click("cmdNewGrid");
  EXPECT_FALSE(shown()) << "another step leaves the sheet";
}

TEST_F(VariationsTest, AlongTwoFieldsAndSavedAsOnePicture) {
  startDrawn();
  pickInput("mnuViewVariationsOf", "vtSwish, width");
  ASSERT_TRUE(shown());
  EXPECT_EQ(bench().variations.count(), 12U);
  const Folder folder;
  const std::string svg = saved("mnuFileSaveBMP", folder.file("sheet.svg"));
  EXPECT_GT(std::count(svg.begin(), svg.end(), '\n'), 12 * 10);
  click("cmd2DView");
  EXPECT_FALSE(shown());
  pickInput("mnuViewVariationsOf", "Sides");
  EXPECT_FALSE(shown());
  for (const char* const two : {"1st colour , Width", "Width 1st Colour", "1st Col width"}) {
    pickInput("mnuViewVariationsOf", two);
    EXPECT_TRUE(shown()) << two << ": " << w->status();
    key(Key::escape);
  }
}

TEST(Variations, HoldDifferentKnotsOfTheirOwnValues) {
  const Document document = *newGrid(Document());
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    if (!variesPicture(p)) continue;
    const auto all = variationsAlong(document, p);
    EXPECT_GE(all.size(), 5U) << parameterSpec(p).field;
    EXPECT_LE(all.size(), 12U);
    for (std::size_t j = 1; j < all.size(); ++j)
      EXPECT_LT(all[j - 1].document.fields.number(p), all[j].document.fields.number(p));
    EXPECT_NE(std::ranges::find(all, document, &Variation::document), all.end()) << parameterSpec(p).field;
  }
}

}  // namespace
}  // namespace lorivan
