// The layout at the sizes that matter, with the program's own form.
#include "platform/common/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "window/form_table.h"

namespace lorivan {
namespace {

const std::span<const ControlSpec> kForm = formTable();

LayoutRect rectOf(const FormLayout& layout, std::string_view name) {
  const auto row = std::ranges::find(kForm, name, &ControlSpec::name);
  return layout.controls.at(static_cast<std::size_t>(row - kForm.begin()));
}

bool overlap(const LayoutRect& a, const LayoutRect& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

bool contains(const LayoutRect& outer, const LayoutRect& inner) {
  return inner.left >= outer.left && inner.top >= outer.top &&
         inner.left + inner.width <= outer.left + outer.width &&
         inner.top + inner.height <= outer.top + outer.height;
}

/// Controls that may lie over each other: the large pictures, a group with what it holds, and the offset of
/// some shapes with the wrapping of others.
bool mayOverlap(const ControlSpec& a, const ControlSpec& b) {
  const bool bothLarge =
      a.kind == ControlKind::picture && a.group.empty() && b.kind == a.kind && b.group.empty();
  const auto isOffset = [](const ControlSpec& c) { return c.name == "lblXF" || c.name == "vtCrossOffset"; };
  const bool inTurn = (a.name == "chkWrap" && isOffset(b)) || (b.name == "chkWrap" && isOffset(a));
  return bothLarge || inTurn || a.group == b.name || b.group == a.name;
}

void expectTidy(int width, int height, const LayoutMetrics& metrics) {
  SCOPED_TRACE(testing::Message() << width << " x " << height << " at " << metrics.scale);
  const FormLayout layout = computeLayout(kForm, width, height, metrics);
  ASSERT_EQ(layout.controls.size(), kForm.size());
  for (std::size_t i = 0; i < kForm.size(); ++i) {
    EXPECT_FALSE(layout.controls[i].isEmpty()) << kForm[i].name;
    EXPECT_TRUE(contains({0, 0, width, height}, layout.controls[i])) << kForm[i].name;
    const bool inGroup = !kForm[i].group.empty();
    EXPECT_TRUE(!inGroup || contains(rectOf(layout, kForm[i].group), layout.controls[i])) << kForm[i].name;
    for (std::size_t k = 0; k < i; ++k)
      EXPECT_TRUE(mayOverlap(kForm[i], kForm[k]) || !overlap(layout.controls[i], layout.controls[k]))
          << kForm[i].name << " and " << kForm[k].name;
  }
  EXPECT_EQ(layout.picture.width * 4, layout.picture.height * 5);
  const LayoutRect nav = rectOf(layout, "picNav");
  EXPECT_EQ(nav.width, nav.height);
  EXPECT_GE(rectOf(layout, "vtXNo").height, metrics.lineHeight + 4);
}

TEST(Layout, IsTidyFromTheSmallestSizeToLargeScreens) {
  for (const LayoutMetrics metrics : {LayoutMetrics{13, 1, 6}, {15, 1, 8}, {19, 1.25, 9}, {29, 2, 14}}) {
    const LayoutSize least = minimumClient(kForm, metrics);
    expectTidy(least.width, least.height, metrics);
    expectTidy(least.width + 301, least.height + 7, metrics);
    expectTidy(least.width + 13, least.height + 500, metrics);
    expectTidy(2560, 1370, metrics);
  }
}

TEST(Layout, StaysTidyWithThePanelsGrownInALargeWindow) {
  const LayoutMetrics base{15, 1, 8};
  const LayoutSize reference = referenceClient(kForm, base);
  double before = 1;
  for (const double times : {1.0, 1.2, 1.7, 3.0, 4.0, 5.0}) {
    const int width = static_cast<int>(reference.width * times);
    const int height = static_cast<int>(reference.height * times);
    const double factor = panelFactor(kForm, width, height, base);
    EXPECT_EQ(factor > before, times > 1.2 && times < 5)
        << times;  // none at the reference size, held at the end
    EXPECT_EQ(panelFactor(kForm, 4 * width, reference.height, base), 1) << times;
    expectTidy(width, height, {static_cast<int>(15 * factor), factor, 8 * factor});
    before = factor;
  }
  EXPECT_EQ(before, 3);
  EXPECT_NEAR(panelFactor(kForm, 2560, 1370, base), 2, 0.2);
}

TEST(Layout, ShrinksTheFontWhereTheWindowIsSmall) {
  const LayoutMetrics base{.lineHeight = 15, .scale = 1, .digitWidth = 8, .least = 11.0 / 13};
  const LayoutSize least = minimumClient(kForm, {13, base.least, 8 * base.least}),
                   usual = minimumClient(kForm, base);
  EXPECT_LT(least.width, usual.width);
  EXPECT_LE(least.height, 600 - 80);  // title bar, menu bar and status line
  for (int step = 0; step <= 10; ++step) {
    const int width = least.width + (usual.width - least.width) * step / 10;
    const int height = least.height + (usual.height - least.height) * step / 10;
    const double font = std::floor(13 * panelFactor(kForm, width, height, base)), factor = font / 13;
    EXPECT_GE(font, 11);
    expectTidy(width, height, {static_cast<int>(std::ceil(15 * factor)), factor, 8 * factor});
  }
  EXPECT_EQ(panelFactor(kForm, 1, 1, base), base.least);
  EXPECT_NEAR(panelFactor(kForm, minimumClient(kForm, {14, 0.9, 0.9 * 8}).width, 2000, base), 0.9, 0.011)
      << "and no further than it has to";
}

TEST(Layout, ShowsTheReferencePictureOnAnSvgaScreen) {
  const LayoutMetrics metrics{13, 1, 6.3};
  const LayoutSize size = referenceClient(kForm, metrics);
  EXPECT_LE(size.width, 800);
  EXPECT_LE(size.height, 600 - 75);  // title bar, menu bar and status line
  EXPECT_EQ(computeLayout(kForm, size.width, size.height, metrics).picture.width, kReferenceWidth);
  EXPECT_LE(minimumClient(kForm, {13, 11.0 / 12, 7}).width, 800 - 8) << "with wide letters, in a frame";
}

}  // namespace
}  // namespace lorivan
