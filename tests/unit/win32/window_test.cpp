// A thousand windows leave no object of the system behind.
#include <gtest/gtest.h>

#include <array>

#include "gui_objects.h"
#include "platform/win32/platform_win32.h"
#include "window/commands.h"

namespace lorivan::win32 {
namespace {

TEST(WindowTest, AThousandWindowsLeaveNothingBehind) {
  // Only what holds objects of its own: Wine takes half a millisecond for each control, and 40 for a window.
  constexpr std::array<ControlSpec, 3> form = {{
      {"vtWidth", ControlKind::number, "7", "tip", "", {0, 0, 4, 1}},
      {"txtCol", ControlKind::colourBox, "", "", "", {4, 0, 4, 1}},
      {"picGrid", ControlKind::picture, "", "", "", {0, 0, 1, 1}},
  }};
  PlatformWin32 platform("Lorivan test");
  const WindowEvents events;
  const auto once = [&](int i) {
    auto window = platform.createWindow({form, commandTable().first(8), "many"}, events);
    ASSERT_TRUE(window);
    if (i % 20 == 0) (*window)->show();  // takes Wine ten milliseconds
    (*window)->setColours(0, static_cast<Colour>(i), 0xFFFFFF);
    (*window)->setColours(1, static_cast<Colour>(i), 0);
    (*window)->surface(2).segment({0, 0}, {50, 50}, {4, 0xFF});
    (*window)->processEvents();
    if (i % 2 == 0) (*window)->close();
  };
  once(0);
  once(1);
  const ObjectCounts before = countGuiObjects();
  for (int i = 0; i < 1000; ++i) once(i);
  EXPECT_EQ(countGuiObjects().windows, before.windows);
  EXPECT_EQ(countGuiObjects().graphics, before.graphics);
  const auto kept = platform.createWindow({form, commandTable().first(8), "one"}, events);
  EXPECT_GT(countGuiObjects().windows, before.windows + 3) << "the count sees a window";
  EXPECT_GT(countGuiObjects().graphics, before.graphics);
}

}  // namespace
}  // namespace lorivan::win32
