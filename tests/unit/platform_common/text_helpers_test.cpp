#include "platform/common/text_helpers.h"

#include <gtest/gtest.h>

namespace lorivan {
namespace {

TEST(Captions, MnemonicsAreTakenOut) {
  for (const auto& [caption, plain, letter] : {std::tuple{"&New Grid", "New Grid", 'N'},
                                               {"Save && close", "Save & close", '\0'},
                                               {"A && &b", "A & b", 'B'},
                                               {"Create &3D", "Create 3D", '3'},
                                               {"end&", "end&", '\0'}})
    EXPECT_TRUE(withoutMnemonic(caption) == plain && mnemonicOf(caption) == letter) << caption;
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
  for (const auto& [path, parts] : {std::pair{"/home/a b/*.qzd", "/home/a b|"},
                                    {"/x/k.qzd", "/x|k.qzd"},
                                    {"/k.qzd", "/|k.qzd"},
                                    {"C:\\k.qzd", "C:\\|k.qzd"},
                                    {"*.qzd", "|"}})
    EXPECT_EQ(splitInitialName(path).folder + '|' + splitInitialName(path).name, parts);
}

}  // namespace
}  // namespace lorivan
