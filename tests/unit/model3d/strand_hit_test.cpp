// Which strand is seen at a place of the 3-D picture, against pictures of every strand alone.
#include "model3d/strand_hit.h"

#include "unit/model3d/knots.h"

namespace lorivan {
namespace {

TEST(StrandHit, FindsWhatBothPicturesShow) {
  StrandStore store;
  addStrand(store, 1, trefoil());
  addStrand(store, 7, roundStrand(12, 60, true));
  const TubeModel model = built(store, {.ringPercent = 40});
  constexpr int kAcross = 300, kDown = 240;
  const ViewState view = viewAt(25, 340, 15);
  const Lens lens{1.6F, {0.05F, -0.1F}};
  std::vector<std::uint32_t> pixels(std::size_t{kAcross} * kDown);
  for (const bool smooth : {true, false})
    for (const int slot : {1, 7}) {
      PictureLook look{.background = 0x00FF00, .smooth = smooth};
      look.alone = slot;
      ModelPicture().render(model, {}, view, lens, look, {pixels.data(), kAcross, kDown, kAcross});
      int white = 0, wrong = 0;
      for (int y = 0; y < kDown; y += 3)
        for (int x = 0; x < kAcross; x += 3) {
          const std::uint32_t argb = pixels[y * kAcross + x];
          const int other = slot == 1 ? 7 : 1;
          const int shown = argb == 0xFFFFFFFF ? slot : argb == 0xFF000000 ? other : 0;
          const bool mixed = shown == 0 && argb != 0xFF00FF00;
          white += shown == slot;
          wrong += !mixed && strandAt(model, view, lens, kAcross, kDown, x, y) != shown;
        }
      EXPECT_GT(white, 300) << smooth << slot;
      EXPECT_LE(wrong, white / 100) << smooth << slot;
    }
}

}  // namespace
}  // namespace lorivan
