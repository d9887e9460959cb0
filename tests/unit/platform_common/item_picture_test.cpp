// Pictures of list items in another size and colour.
#include "platform/common/item_picture.h"

#include <gtest/gtest.h>

namespace lorivan {
namespace {

TEST(ItemPictures, KeepTheirInkInEverySizeAndColour) {
  ItemPicture picture{10, 8, {}};
  double ink = 0;
  for (int i = 0; i < 80; ++i) {
    picture.cover.push_back(static_cast<std::uint8_t>(i * 37 % 256));
    ink += picture.cover.back();
  }
  for (const auto& [width, height] : {std::pair{10, 8}, {5, 4}, {7, 3}, {1, 1}, {25, 19}}) {
    const auto pixels = tintedPicture(picture, width, height, 0x0080FF);
    ASSERT_EQ(pixels.size(), static_cast<std::size_t>(width * height));
    double sum = 0;
    for (const std::uint32_t pixel : pixels) {
      const std::uint32_t alpha = pixel >> 24;
      sum += alpha;
      EXPECT_TRUE((pixel >> 16 & 0xFF) == alpha && (pixel & 0xFF) == 0 && (pixel >> 8 & 0xFF) <= alpha);
    }
    EXPECT_NEAR(sum / (width * height), ink / 80, 0.6) << width;
  }
  EXPECT_EQ(tintedPicture(picture, 10, 8, 0)[3], std::uint32_t{picture.cover[3]} << 24) << "the same size";
  picture.cover.pop_back();
  EXPECT_TRUE(tintedPicture(picture, 5, 4, 0).empty());
}

}  // namespace
}  // namespace lorivan
