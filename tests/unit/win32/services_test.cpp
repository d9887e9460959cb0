// Settings, clipboard, clock and folder of the Windows back end.
#include <gtest/gtest.h>

#include <cstring>

#include "platform/win32/handles.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/text.h"

namespace lorivan::win32 {
namespace {

constexpr const char* kApplication = "Lorivan test";
constexpr const wchar_t* kKey = L"Software\\Lorivan test";

class ServicesTest : public testing::Test {
 protected:
  ~ServicesTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }
  PlatformWin32 platform_{kApplication};
};

TEST_F(ServicesTest, SettingsComeBackAsText) {
  const std::string text =
      "gr\xC3\xB6\xC3\x9F"
      "er \xF0\x9F\xAA\xA2";
  const std::string longText(3000, 'x');
  {
    RegistrySettings settings(kApplication);
    settings.write("Settings", "txtyNo", "7");
    settings.write("Settings", "LastFolder", text);
    settings.write("Global", "long", longText);
    settings.write("Settings", "empty", "");
    EXPECT_TRUE(settings.flush());
  }
  const RegistrySettings settings(kApplication);
  EXPECT_EQ(settings.read("Settings", "txtyNo", "2"), "7");
  EXPECT_EQ(settings.read("Settings", "LastFolder", ""), text);
  EXPECT_EQ(settings.read("Global", "long", ""), longText);
  EXPECT_EQ(settings.read("Settings", "empty", "fallback"), "");
  EXPECT_EQ(settings.read("Settings", "txtXNo", "2"), "2");
  EXPECT_EQ(settings.read("Nowhere", "txtyNo", "2"), "2");
}

TEST_F(ServicesTest, SettingsStandWherePerUserTextsStand) {
  platform_.settings().write("Settings", "lsttype", "9");
  wchar_t text[16] = {};
  DWORD bytes = sizeof text;
  const std::wstring section = std::wstring(kKey) + L"\\Settings";
  ASSERT_EQ(
      RegGetValueW(HKEY_CURRENT_USER, section.c_str(), L"lsttype", RRF_RT_REG_SZ, nullptr, text, &bytes),
      ERROR_SUCCESS);
  EXPECT_STREQ(text, L"9");
  const DWORD number = 5;
  RegSetKeyValueW(HKEY_CURRENT_USER, section.c_str(), L"lsttype", REG_DWORD, &number, sizeof number);
  EXPECT_EQ(platform_.settings().read("Settings", "lsttype", "0"), "0") << "a number is no text";
}

TEST_F(ServicesTest, ClipboardTakesAPictureAndIsCleared) {
  const auto picture = platform_.createSurface(6, 4);
  ASSERT_TRUE(picture);
  (*picture)->clear(0x112233);
  ASSERT_TRUE(platform_.clipboard().putPicture(**picture));
  ASSERT_TRUE(OpenClipboard(nullptr));
  const HANDLE memory = GetClipboardData(CF_DIB);
  ASSERT_NE(memory, nullptr);
  BITMAPINFOHEADER header{};
  std::memcpy(&header, GlobalLock(memory), sizeof header);
  GlobalUnlock(memory);
  const HANDLE bitmap = GetClipboardData(CF_BITMAP);  // made from it by the system
  BITMAP facts{};
  GetObjectW(bitmap, sizeof facts, &facts);
  CloseClipboard();
  EXPECT_EQ(header.biWidth, 6);
  EXPECT_EQ(header.biHeight, 4);
  EXPECT_EQ(facts.bmWidth, 6);
  platform_.clipboard().clear();
  EXPECT_FALSE(IsClipboardFormatAvailable(CF_DIB));
}

TEST_F(ServicesTest, ClockRunsForwards) {
  Clock& clock = platform_.clock();
  const std::int64_t start = clock.milliseconds();
  clock.sleep(20);
  EXPECT_GE(clock.milliseconds() - start, 15);
  EXPECT_GE(clock.secondsOfDay(), 0);
  EXPECT_LT(clock.secondsOfDay(), 86400);
  EXPECT_NE(clock.seed(), clock.seed());
}

TEST_F(ServicesTest, FolderIsTheProgramsOwnAndAMissingPageIsTold) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::string folder = platform_.programFolder();
  EXPECT_EQ(narrow(path).substr(0, folder.size()), folder);
  EXPECT_EQ(narrow(path).find('\\', folder.size() + 1), std::string::npos);
  const Status opened = platform_.help().open("help/no such page.html#topic");
  ASSERT_FALSE(opened);
  EXPECT_NE(opened.error().message.find("no such page.html"), std::string::npos);
}

TEST(TextTest, UnpairedAndBrokenPiecesBecomeTheReplacementCharacter) {
  EXPECT_EQ(narrow(widen("k\xC3\xB6\xF0\x9F\xAA\xA2")), "k\xC3\xB6\xF0\x9F\xAA\xA2");
  EXPECT_EQ(widen("a\xFF"), L"a\xFFFD");
  EXPECT_EQ(narrow(std::wstring(1, L'\xD83E')), "\xEF\xBF\xBD");
  EXPECT_EQ(widen(""), L"");
}

}  // namespace
}  // namespace lorivan::win32
