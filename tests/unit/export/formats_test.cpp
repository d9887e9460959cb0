// The table of formats and what is computed from it.
#include "export/formats.h"

#include <gtest/gtest.h>

#include <set>

namespace lorivan {
namespace {

TEST(Formats, DialogsGetTheirLabelsAndExtensions) {
  struct Row {
    int saveNumber;
    DxfKind dxf;
    const char* option;
    const char* extension;
    const char* label;
  };
  for (const Row& row : {Row{1, DxfKind::faces, "optPOV", "pov", "POV-Ray"},
                         Row{2, DxfKind::flat, "optVRML", "wrl", "(VRML) WRL"},
                         Row{3, DxfKind::faces, "optOBJ", "obj", "(Wavefront) OBJ"},
                         Row{4, DxfKind::faces, "optDXF", "dxf", "(Autocad) DXF"},
                         Row{4, DxfKind::flat, "optDXF", "dxf", "(Autocad) DXF"},
                         Row{5, DxfKind::faces, "optSTL", "stl", "(StereoLithography) STL"},
                         Row{6, DxfKind::faces, "optGemVision", "gmv", "(GemVision) gmv"},
                         Row{7, DxfKind::faces, "optXYZ", "xyz", "(XYZ) XYZ"}}) {
    const ExportFormat* format = findSavedFormat(row.saveNumber, row.dxf);
    ASSERT_NE(format, nullptr) << row.option;
    EXPECT_EQ(format->option, row.option);
    EXPECT_EQ(format->extension, row.extension);
    EXPECT_EQ(format->label, row.label);
    EXPECT_EQ(format, findFormat(row.extension, row.dxf));
  }
  EXPECT_EQ(findSavedFormat(0, DxfKind::faces), nullptr);
  EXPECT_EQ(findSavedFormat(8, DxfKind::faces), nullptr);
  EXPECT_NE(findFormat("dxf", DxfKind::faces)->write, findFormat("DXF", DxfKind::flat)->write);
}

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
}

}  // namespace
}  // namespace lorivan
