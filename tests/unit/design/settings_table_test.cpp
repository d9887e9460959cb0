// Saved settings keep their keys: what an older version saved is found again.
#include "design/settings_table.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace lorivan {
namespace {

struct NameOf {
  std::string operator()(ColourBoxNumber b) const { return "box" + std::to_string(b.box); }
  std::string operator()(WindowState s) const { return "window" + std::to_string(static_cast<int>(s)); }
  std::string operator()(Param p) const { return std::string(parameterSpec(p).field); }
  std::string operator()(Check c) const { return std::string(checkSpec(c).field); }
  std::string operator()(RecentFile f) const { return "recent" + std::to_string(f.place); }
};

// key=value at a first start:owner; places of WindowState in its order.
constexpr const char* kRows =
    "0txtCol=8388608:box0 1txtCol=32768:box1 2txtCol=8421376:box2 3txtCol=128:box3 4txtCol=8388736:box4 "
    "5txtCol=32896:box5 6txtCol=12632256:box6 7txtCol=8421504:box7 8txtCol=16711680:box8 "
    "9txtCol=65280:box9 10txtCol=16776960:box10 11txtCol=255:box11 12txtCol=16711935:box12 "
    "13txtCol=65535:box13 14txtCol=16777215:box14 LastX=0:window0 LastY=0:window1 txtXNo=2:vtXNo "
    "txtyNo=2:vtYNo lsttype=0:window2 txtStartColour=12:vtStartColour txtWidth=7:vtWidth txtEdge=4:vtEdge "
    "txtScale=30:vtScale txtSwish=10:vtSwish txtAnimate=9:vtAnimate txtSmooth=0:vtSmooth txtSkew=1:vtSkew "
    "txtCrossOffset=0:vtCrossOffset txtPolySides=5:vtPolySides txtPolyPoints=4:vtPolyPoints "
    "txtPolyRadius=5:vtPolyRadius txtPolySmooth=4:vtPolySmooth txtPolyZF=2:vtPolyZF "
    "txtRingPerc=0:vtRingPerc txtpicKnotBackColour=15:vtPicKnotBackColour chkShowGrid=1:chkShowGrid "
    "chkShowCrossings=1:chkShowCrossings chkDXF2D=0:chkDXF2D chkFullyCrossed=0:chkFullyCrossed "
    "txtGridSize=20:vtGridSize chkShapeT=1:chkShapeT chkHeightMap=0:chkHeightMap chkAnimate=0:chkAnimate "
    "chkLoop=0:chkLoop chkConstantShape=0:chkConstantShape GridOn=False:window3 SnapOn=False:window4 "
    "LastFolder=:window5 3DSave=1:window6 DrawAtOnce=True:window7 LastWidth=0:window8 "
    "LastHeight=0:window9 Maximised=False:window10 chkClassic=0:chkClassic ";

TEST(SettingTable, KeysFirstValuesAndOwnersStayWhatTheyAre) {
  std::istringstream rows(kRows);
  std::vector<std::string> wanted{std::istream_iterator<std::string>(rows), {}}, made;
  for (int place = 0; place < kRecentFiles; ++place)
    wanted.push_back("Recent" + std::to_string(place) + "=:recent" + std::to_string(place));
  for (const SettingRow& row : settingTable())
    made.push_back(std::string(row.key) + '=' + std::string(row.fallback) + ':' +
                   std::visit(NameOf(), row.owner));
  ASSERT_EQ(made.size(), wanted.size());
  for (std::size_t i = 0; i < made.size(); ++i) EXPECT_EQ(made[i], wanted[i]);
}

}  // namespace
}  // namespace lorivan
