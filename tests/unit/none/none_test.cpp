// The back end without a window: pixels, picture files, dialogs and the played user.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <stdexcept>

#include "base/sink.h"
#include "platform/none/none_platform.h"
#include "platform/none/picture_files.h"

namespace lorivan {
namespace {

TEST(RecordingSurface, DrawsRealPixelsAndClips) {
  RecordingSurface s(40, 30);
  s.clear(0x00C0FF);
  s.segment({2, 3}, {2'000'000, 3}, {1, 0x0000FF, false});
  s.segment({0, 10}, {39, 10}, {4, 0x112233, false});
  s.fillPolygon(std::array<PointI, 4>{{{5, 15}, {15, 15}, {15, 25}, {5, 25}}}, 0x00FF00);
  s.dot({30, 20}, 7, 0xFF0000);
  const std::pair<PointI, Colour> expected[] = {
      {{2, 3}, 0x0000FF},   {{39, 3}, 0x0000FF},  {{1, 3}, 0x00C0FF},   {{20, 9}, 0x112233},
      {{20, 11}, 0x112233}, {{20, 13}, 0x00C0FF}, {{10, 20}, 0x00FF00}, {{16, 20}, 0x00C0FF},
      {{30, 23}, 0xFF0000}, {{30, 24}, 0x00C0FF}, {{-1, 99}, 0x00C0FF}};
  for (const auto& [at, colour] : expected) EXPECT_EQ(s.pixel(at), colour) << at.x << ',' << at.y;
  EXPECT_EQ(s.count(DrawKind::segment), 2);
  s.clear(0xFFFFFF);
  EXPECT_EQ(s.calls().size(), 1U);
  EXPECT_EQ(s.inked(), 0);
}

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

constexpr std::array<ControlSpec, 6> kControls = {{{"fraAll", ControlKind::group, "All", "", "", {}},
                                                   {"vtA", ControlKind::number, "", "", "fraAll", {}},
                                                   {"optA", ControlKind::radio, "", "", "fraAll", {}},
                                                   {"optB", ControlKind::radio, "", "", "fraAll", {}},
                                                   {"lstA", ControlKind::list, "", "", "", {}},
                                                   {"cmdA", ControlKind::button, "&A", "", "", {}}}};

struct WindowTest : ::testing::Test {
  NonePlatform platform;
  std::vector<std::string> log;
  std::unique_ptr<Window> owner;
  NoneWindow* w = nullptr;

  void SetUp() override {
    WindowEvents events;
    events.confirmed = [this](ControlId id) { log.push_back("confirmed " + std::to_string(id)); };
    events.clicked = [this](ControlId id) { log.push_back("clicked " + std::to_string(id)); };
    events.changed = [this](ControlId id) { log.push_back("changed " + std::to_string(id)); };
    events.started = [this] { log.push_back("started"); };
    events.closeQuery = [this] { return w->confirm("Close?", ""); };
    auto made = platform.createWindow({kControls, {}, "Test"}, events);
    ASSERT_TRUE(made);
    owner = std::move(*made);
    w = platform.window();
  }
};

TEST_F(WindowTest, RefusesWhatNobodyCanDo) {
  w->setEnabled(5, false);
  EXPECT_THROW(w->userClicks(5), std::logic_error);
  w->setVisible(0, false);
  EXPECT_THROW(w->userTypes(1, "5"), std::logic_error);
  w->setItems(4, {"a", "b"});
  EXPECT_THROW(w->userChooses(4, 2), std::logic_error);
  EXPECT_THROW(w->userCloses(), std::logic_error);
  platform.dialogs.answerMessage();
  EXPECT_THROW(w->userCloses(), std::logic_error);
}

}  // namespace
}  // namespace lorivan
