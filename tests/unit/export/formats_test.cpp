// The table of formats and what is computed from it.
#include "export/formats.h"

#include <gtest/gtest.h>

#include <set>

namespace lorivan {
namespace {

TEST(Formats, EveryRowIsReachableAndListedOnce) {
  std::set<std::string_view> identifiers;
  for (const ExportFormat& format : exportFormats()) {
    EXPECT_TRUE(identifiers.insert(format.identifier).second) << format.identifier;
    EXPECT_EQ(format.write != nullptr, format.kind == FormatKind::model) << format.identifier;
    const DxfKind dxf = format.identifier == "dxf2d" ? DxfKind::flat : DxfKind::faces;
    EXPECT_EQ(findFormat(format.extension, dxf), &format);
  }
  const std::string list = formatList();
  EXPECT_EQ(list.find("dxf  "), list.rfind("dxf  "));
  EXPECT_EQ(findFormat("", DxfKind::faces), nullptr);
  EXPECT_NE(findFormat("dxf", DxfKind::faces)->write, findFormat("DXF", DxfKind::flat)->write);
  const char* saved[] = {"", "pov", "wrl", "obj", "dxf", "stl", "gmv", "xyz", ""};
  for (int number = 0; number < 9; ++number) {
    const ExportFormat* format = findSavedFormat(number, DxfKind::faces);
    EXPECT_EQ(format != nullptr ? format->extension : "", saved[number]);
  }
}

}  // namespace
}  // namespace lorivan
