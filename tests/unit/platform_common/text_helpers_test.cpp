#include "platform/common/text_helpers.h"

#include <gtest/gtest.h>

namespace lorivan {
namespace {

TEST(Captions, MnemonicsAreTakenOut) {
  struct Case {
    const char *caption, *plain;
    char letter;
  };
  for (const Case c :
       {Case{"&New Grid", "New Grid", 'N'}, Case{"Save && close", "Save & close", 0},
        Case{"A && &b", "A & b", 'B'}, Case{"Create &3D", "Create 3D", '3'}, Case{"end&", "end&", 0}}) {
    EXPECT_EQ(withoutMnemonic(c.caption), c.plain);
    EXPECT_EQ(mnemonicOf(c.caption), c.letter) << c.caption;
  }
}

TEST(Shortcuts, AreReadInAnyCaseAndPrintedInOne) {
  for (const auto& [text, shown] :
       {std::pair("ctrl+s", "Ctrl+S"), {"Shift+Alt+f12", "Alt+Shift+F12"}, {"F1", "F1"}, {"del", "Del"}}) {
    const auto shortcut = parseShortcut(text);
    ASSERT_TRUE(shortcut) << text;
    EXPECT_EQ(shortcutText(*shortcut), shown);
  }
  for (const char* const bad : {"", "Ctrl+", "Ctrl", "F13", "F0", "S+Ctrl", "Ctrl+SS", "+"})
    EXPECT_FALSE(parseShortcut(bad)) << bad;
}

TEST(FileNames, FiltersAndInitialNames) {
  EXPECT_EQ(filePatterns("bmp png  jpg", ";"), "*.bmp;*.png;*.jpg");
  EXPECT_EQ(filterText("Pictures", "bmp png"), "Pictures (*.bmp *.png)");
  struct Case {
    const char *path, *folder, *name;
  };
  for (const Case c : {Case{"/home/a b/*.qzd", "/home/a b", ""}, Case{"/x/k.qzd", "/x", "k.qzd"},
                       Case{"/k.qzd", "/", "k.qzd"}, Case{"C:\\k.qzd", "C:\\", "k.qzd"},
                       Case{"*.qzd", "", ""}, Case{"", "", ""}}) {
    const InitialName split = splitInitialName(c.path);
    EXPECT_EQ(split.folder, c.folder) << c.path;
    EXPECT_EQ(split.name, c.name) << c.path;
  }
}

}  // namespace
}  // namespace lorivan
