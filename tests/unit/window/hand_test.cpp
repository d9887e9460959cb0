// The hand on the flat picture: strokes, symmetry, strands, the lens and the keyboard.
#include <algorithm>

#include "base/numbers.h"
#include "design/edits.h"
#include "design/kept_walls.h"
#include "knot_maker.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

class HandTest : public MainWindowTest {
 protected:
  HandTest() { stored("DrawAtOnce") = "True"; }
  void startGrid(const char* x, const char* y) { start(), enter(Param::XNo, x), enter(Param::YNo, y); }
  GridView view() {
    return bench().flat.lens.through(viewOf(bench().knot(), document().fields,
                                            knotStyle(document().fields, {}), w->surface(kGrid).width(),
                                            true));
  }
  PointI middle(int j) { return view().pixel(line(j).MidX, line(j).MidY); }
  int lineAt(int x, int y) { return FindLine(bench().knot().graph, float(x), float(y)); }
  void wheel(PointI at, int steps) {
    w->userMouse(kGrid, {.action = MouseAction::wheel, .x = at.x, .y = at.y, .steps = steps});
  }
  bool key(Key key, bool shift = false) { return w->userPresses({key, shift, false, false, true}); }
  std::string undoName() { return bench().session.history().undoName(); }
  bool symmetric() {
    for (int j = 0; j < lines(); ++j)
      for (const int image : bench().symmetry.imagesOf(j))
        if (line(image).Kind != line(j).Kind) return false;
    return true;
  }
};

TEST_F(HandTest, AStrokeIsOneStepOfWallsWithTheirImages) {
  startGrid("4", "4");
  pick("mnuSymmetryLeftRight");
  const int first = lineAt(-30, 15), second = lineAt(-30, -15), image = lineAt(30, 15);
  ASSERT_TRUE(first >= 0 && second >= 0 && image >= 0);
  const Document before = document();
  drag(kGrid, {middle(first).x, middle(first).y - 12}, {middle(second).x, middle(second).y + 12});
  for (const int wall : {first, second, image}) EXPECT_EQ(line(wall).Kind, kWall);
  EXPECT_TRUE(wallCount(document()) == 4 && undoName() == "Walls" && statusStarts("4 walls; "));
  drag(kGrid, {middle(image).x, middle(image).y - 12}, {middle(image).x, middle(image).y + 12}, 2);
  EXPECT_TRUE(wallCount(document()) == 2 && undoName() == "Ordinary lines");
  undo();
  EXPECT_EQ(wallCount(document()), 4);
  undo();
  EXPECT_EQ(document(), before);
  const PointI at = middle(first);
  drag(kGrid, at, {at.x + 2, at.y});
  EXPECT_TRUE(line(first).Kind == kWall && line(image).Kind == kWall && undoName() == "Wall")
      << "a hand that trembles clicks";
  choose(Shape::Triangle);
  EXPECT_TRUE(statusStarts("2 walls dropped, Ctrl+Z brings them back; ")) << w->status();
  EXPECT_TRUE(bench().symmetry.inForce() == kLeftRight || !bench().symmetry.allows(kLeftRight));
}

TEST_F(HandTest, HoveringTellsAndMarksAndLeavesNoTrace) {
  startGrid("4", "4");
  pick("mnuSymmetryBoth");
  const auto before = pixels();
  const std::string told = w->status();
  const PointI at = middle(lineAt(-30, 15));
  w->userMouse(kGrid, {MouseAction::move, 0, at.x, at.y});
  EXPECT_EQ(w->status(), "Crossing; a click changes 4 lines, a drag sets walls");
  EXPECT_NE(pixels(), before);
  pick("mnuEditCopy");
  EXPECT_TRUE(copied(before)) << "marks are no part of it";
  EXPECT_NE(pixels(), before) << "and stay on the screen";
  w->userMouse(kGrid, {MouseAction::leave, 0, at.x, at.y});
  EXPECT_EQ(pixels(), before);
  bench().status(told);
  wheel(at, 3);
  pick("mnuEditCopy");
  EXPECT_TRUE(copied(before)) << "the whole picture";
}

TEST_F(HandTest, LinesAreFoundAtEveryZoom) {
  startGrid("5", "4");
  const Document before = document();
  for (const int steps : {4, 9, -30, 2}) {
    const PointI at = middle(lineAt(15, 15));
    wheel(at, steps);
    EXPECT_TRUE(std::abs(middle(lineAt(15, 15)).x - at.x) <= 4 &&
                std::abs(middle(lineAt(15, 15)).y - at.y) <= 4)
        << "what is under the pointer stays there";
    w->userClicksAt(kGrid, 1, at.x, at.y);
    EXPECT_EQ(line(lineAt(15, 15)).Kind, kWall) << steps;
    w->userClicksAt(kGrid, 2, at.x, at.y);
    EXPECT_EQ(document(), before);
  }
  const PointI at = middle(0);
  drag(kGrid, {100, 100}, {130, 90}, 3);
  EXPECT_TRUE(middle(0).x == at.x + 30 && middle(0).y == at.y - 10) << middle(0).x - at.x;
  EXPECT_TRUE(w->userPresses({Key::plus}) && w->userPresses({Key::minus}));
  EXPECT_EQ(document(), before);
  pick("mnuFileRandom");
  EXPECT_TRUE(bench().flat.lens.isWhole()) << "another knot is shown whole";
}

TEST_F(HandTest, AStrandIsMarkedAndRecoloured) {
  start();
  const auto before = pixels();
  // Beside the middle of the picture, where the grid has a point and no line's midpoint.
  const KnotCurve& curve = bench().knot().curve;
  int slot = 12, sample = 0;
  PointI at{};
  for (sample = curve.first[12]; sample <= curve.last[12]; ++sample) {
    const SamplePlace place = samplePlace(curve, std::size_t(sample), view());
    at = {toInt32(place.x), toInt32(place.y)};
    if (curve.Z[std::size_t(sample)] >= 0 && bench().flat.lineAt(bench().knot(), at.x, at.y) < 0) break;
  }
  ASSERT_LE(sample, curve.last[12]);
  w->userClicksAt(kGrid, 1, at.x, at.y);
  EXPECT_EQ(bench().flat.markedStrand(), slot);
  EXPECT_TRUE(statusStarts("Strand 1 of 3: ") && w->status().find(" passes ") != std::string::npos)
      << w->status();
  EXPECT_NE(pixels(), before);
  platform.dialogs.answerColour(0x123456);
  w->userMouse(kGrid, {MouseAction::press, 1, at.x, at.y});
  w->userMouse(kGrid, {MouseAction::doubleClick, 1, at.x, at.y});
  EXPECT_EQ(document().fields.boxes[11], 0x123456U) << "colour 12";
  EXPECT_EQ(wallCount(document()), 0);
  EXPECT_TRUE(key(Key::escape) && bench().flat.markedStrand() == 0 && !key(Key::escape));
}

TEST_F(HandTest, TheKeyboardSetsWalls) {
  start();
  pick("mnuSymmetryBoth");
  pick("mnuEditLines");
  const int first = bench().hand.walk.line();
  ASSERT_GE(first, 0);
  EXPECT_TRUE(key(Key::right) && bench().hand.walk.line() != first);
  EXPECT_TRUE(key(Key::left) && bench().hand.walk.line() == first);
  EXPECT_TRUE(key(Key::space) && line(first).Kind == kWall && symmetric());
  EXPECT_EQ(wronglyPassed(bench().knot().graph), 0);
  EXPECT_TRUE(key(Key::space, true) && line(first).Kind == kOrdinary);
  EXPECT_FALSE(w->userPresses({Key::space})) << "a button that has the focus keeps its keys";
  click("cmd3DView");
  EXPECT_FALSE(key(Key::space)) << "not in the 3-D view";
}

TEST_F(HandTest, StrandsAreJoinedAndTheImpossibleIsTold) {
  startGrid("4", "4");
  pick("mnuSymmetryHalfTurn");
  pick("mnuStrands3");
  EXPECT_TRUE(symmetric() && undoName() == "3 strands" && statusStarts("3 strands, ")) << w->status();
  pick("mnuShapeView");
  pick("mnuStrands1");
  EXPECT_TRUE(bench().picture() == Picture::flat && statusStarts("1 strand, ")) << w->status();
  undo(2);
  const Document before = document();
  for (const char* wrong : {"0", "40", "two"}) {
    pickInput("mnuStrandsOther", wrong);
    EXPECT_EQ(w->status(), "A knot has 1 to 39 strands");
  }
  pick("mnuViewVariations");
  pickInput("mnuStrandsOther", "39");
  EXPECT_TRUE(bench().picture() == Picture::flat && document() == before &&
              w->status().find("39") != std::string::npos)
      << w->status();
}

}  // namespace
}  // namespace lorivan
