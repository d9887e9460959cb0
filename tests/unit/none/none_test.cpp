// Picture files of the back end without a window.
#include <gtest/gtest.h>

#include <filesystem>

#include "base/sink.h"
#include "platform/none/none_platform.h"
#include "platform/none/picture_files.h"

namespace lorivan {
namespace {

TEST(Pictures, AreWrittenAndReadBack) {
  NonePlatform platform;
  RecordingSurface s(3, 2);
  s.clear(0x0000FF);
  s.segment({1, 1}, {1, 1}, {1, 0x00FF00, false});
  const Result<std::string> bmp = platform.encodePicture(s, PictureFormat::bmp);
  ASSERT_TRUE(bmp);
  const auto read = decodeBmp(*bmp);
  ASSERT_TRUE(read);
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 3; ++x) EXPECT_EQ((*read)->pixel({x, y}), s.pixel({x, y}));
  EXPECT_FALSE(decodeBmp(std::string_view(*bmp).substr(0, bmp->size() - 1)));

  const Result<std::string> png = platform.encodePicture(s, PictureFormat::png);
  ASSERT_TRUE(png);
  EXPECT_EQ(png->size(), 8U + 25 + 12 + (2 + 5 + 26 + 4) + 12);
  EXPECT_EQ(png->substr(png->size() - 4), "\xAE\x42\x60\x82");  // check sum of the empty end chunk

  const std::string path = (std::filesystem::temp_directory_path() / "lorivan_none_test.bmp").string();
  ASSERT_TRUE(writeFile(path, *bmp));
  const auto fitted = platform.loadPicture(path, 60, 60);
  std::filesystem::remove(path);
  ASSERT_TRUE(fitted);
  EXPECT_EQ((*fitted)->pixel({30, 5}), 0xFFFFFFU);
  EXPECT_EQ((*fitted)->pixel({5, 15}), 0x0000FFU);
  EXPECT_EQ((*fitted)->pixel({30, 40}), 0x00FF00U);
}

}  // namespace
}  // namespace lorivan
