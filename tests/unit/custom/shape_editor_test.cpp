// Drawing with the mouse: what each gesture does, and that no gesture breaks the tables.
#include "gestures.h"

namespace lorivan {
namespace {

ShapeEdit click(Editor& editor, Spot at) { return drag(editor, at, at); }

int liveLines(const CustomShape& shape) {
  int count = 0;
  for (int line = 1; line <= shape.ShapeLineCount; ++line) count += shape.lineIsLive(line) ? 1 : 0;
  return count;
}

TEST(ShapeEditor, GesturesMakeMoveJoinAndDelete) {
  Editor editor;
  const CustomShape& shape = editor.shape();
  EXPECT_FALSE(click(editor, {200, 200}).outlineChanged) << "a click on nothing";
  EXPECT_EQ(shape.ShapePointCount, 0);

  EXPECT_TRUE(drag(editor, {60, 60}, {100, 100}).outlineChanged);  // point 1, alone
  drag(editor, {103, 97}, {200, 100});                             // point 2 and line 1
  EXPECT_EQ(shape.ShapePointCount, 2);
  EXPECT_EQ(liveLines(shape), 1);
  drag(editor, {200, 100}, {200, 200});  // point 3 and line 2
  drag(editor, {200, 200}, {100, 100});  // line 3 closes the triangle
  EXPECT_EQ(shape.lineBetween(1, 3), 3);
  drag(editor, {100, 100}, {200, 200});  // away again, drawn the other way round
  EXPECT_EQ(liveLines(shape), 2);
  drag(editor, {100, 100}, {200, 200});
  EXPECT_EQ(shape.lineBetween(1, 3), 4) << "it comes back in a new slot";

  gesture(editor, kRightButton, 0, {203, 203}, {250, 220});
  EXPECT_TRUE(shape.ShapeX[3] == 250 && shape.ShapeY[3] == 220);
  click(editor, {100, 100});
  EXPECT_TRUE(shape.ShapeX[1] == -1 && shape.ShapeLineEnds[0][1] == -1);
  EXPECT_EQ(liveLines(shape), 1) << "the lines of a deleted point go with it";
  drag(editor, {400, 60}, {100, 100});
  EXPECT_EQ(shape.ShapePointCount, 4) << "a freed slot is not used again";
  EXPECT_FALSE(drag(editor, {94, 100}, {106, 100}).outlineChanged) << "from a point to itself";

  const auto withCtrl = [&](int button, Spot from, Spot to) {
    return gesture(editor, button, Editor::kCtrlKey, from, to);
  };
  const auto fill = withCtrl(kLeftButton, {300, 150}, {302, 150});
  EXPECT_TRUE(fill.fill && fill.fill->x == 302 && !fill.outlineChanged);
  EXPECT_FALSE(withCtrl(kRightButton, {300, 150}, {300, 150}).fill);
  EXPECT_FALSE(withCtrl(kLeftButton, {300, 150}, {320, 150}).fill) << "a drag";
  const auto deleted = withCtrl(kLeftButton, {101, 99}, {101, 99});
  EXPECT_TRUE(!deleted.fill && deleted.outlineChanged) << "a point is there";
  CustomShape close;
  for (const float x : {100.F, 106.F}) close.addPoint(x, 100);
  editor.replaceShape(close);
  gesture(editor, kLeftButton, Editor::kShiftKey, {107, 104}, {106, 101});
  EXPECT_TRUE(!shape.pointIsLive(1) && shape.pointIsLive(2)) << "the first near the mouse, level or not";
  editor.undo();
  EXPECT_TRUE(shape == close);
}

TEST(ShapeEditor, SnapClampAndConstraint) {
  struct Case {
    int divisions;  // 0: no snapping
    int shift;
    Spot from, to, lands;
  };
  const Case cases[] = {
      {0, 0, {300, 300}, {10, 399}, {45, 340}},
      {0, 0, {300, 300}, {490, 3}, {440, 45}},
      {0, 0, {60, 60}, {-20, -7}, {45, 45}},
      {10, 0, {300, 300}, {57, 57}, {50, 45}},  // steps of 50 and 40
      {10, 0, {300, 300}, {176, 139}, {200, 120}},
      {0, Editor::kShiftKey, {100, 100}, {200, 150}, {200, 100}},
      {0, Editor::kShiftKey, {100, 100}, {150, 150}, {150, 100}},
      {0, Editor::kShiftKey | Editor::kAltKey, {100, 100}, {120, 200}, {100, 200}},
      {0, Editor::kShiftKey | Editor::kCtrlKey, {100, 100}, {120, 200}, {120, 200}},
  };
  for (const Case& c : cases) {
    Editor editor;
    editor.setSnap(c.divisions > 0);
    editor.setDivisions(c.divisions);
    gesture(editor, kLeftButton, c.shift, c.from, c.to);
    ASSERT_EQ(editor.shape().ShapePointCount, 1);
    EXPECT_EQ(std::pair(editor.shape().ShapeX[1], editor.shape().ShapeY[1]),
              (std::pair(static_cast<float>(c.lands.x), static_cast<float>(c.lands.y))));
  }
}

TEST(ShapeEditor, ClicksAndTargetsAreWhereTheMouseIs) {
  for (const bool snap : {false, true}) {
    SCOPED_TRACE(snap);
    Editor editor;
    editor.setSnap(snap);
    editor.setDivisions(10);
    CustomShape shape;
    shape.addPoint(20, 390);  // both outside the margins, as shapes made from a grid may have them
    shape.addPoint(480, 20);
    editor.replaceShape(shape);
    drag(editor, {22, 388}, {478, 23});
    EXPECT_EQ(editor.shape().lineBetween(1, 2), 1);
    drag(editor, {300, 300}, {203, 163});  // lands at 203, 163, or snapped at 200, 160
    drag(editor, {22, 388}, {snap ? 215.0 : 206.0, 163});
    EXPECT_EQ(editor.shape().lineBetween(1, 3), 2) << "the point that lies where a new one would come to lie";
    click(editor, {22, 392});
    EXPECT_FALSE(editor.shape().pointIsLive(1));
  }
  Editor level;
  for (const Spot at : {Spot{100, 100}, Spot{300, 130}}) drag(level, {200, 300}, at);
  const auto withShift = [&](Spot from, Spot to) {
    gesture(level, kLeftButton, Editor::kShiftKey, from, to);
  };
  withShift({100, 100}, {300, 129});
  EXPECT_EQ(level.shape().lineBetween(1, 2), 1) << "the point under the mouse, though it is not level";
  withShift({100, 100}, {106, 105});
  EXPECT_TRUE(level.shape().pointIsLive(1)) << "a drag of eight units is no click";
}

TEST(ShapeEditor, TablesRefuseWhatTheyCannotHold) {
  CustomShape full;
  const int a = full.addPoint(100, 100), b = full.addPoint(200, 100);
  for (int k = 0; k < kMostShapeLines; ++k) full.deleteLine(full.addLine(a, b));
  Editor editor;
  editor.replaceShape(full);
  for (const Spot to : {Spot{200, 100}, Spot{300, 300}}) {
    const ShapeEdit edit = drag(editor, {100, 100}, to);
    EXPECT_FALSE(edit.refusal.empty() || edit.outlineChanged);
  }
  EXPECT_EQ(editor.shape().ShapePointCount, 2);
  EXPECT_EQ(editor.shape().ShapeLineCount, kMostShapeLines);
}

}  // namespace
}  // namespace lorivan
