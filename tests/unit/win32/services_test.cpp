// What is special in the Windows services: where settings stand, and texts that are no proper Unicode.
#include <gtest/gtest.h>

#include "platform/win32/settings.h"
#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

namespace lorivan::win32 {
namespace {

TEST(RegistrySettingsTest, SettingsStandWherePerUserTextsStand) {
  constexpr const wchar_t* section = L"Software\\Lorivan test\\Settings";
  RegistrySettings settings("Lorivan test");
  settings.write("Settings", "lsttype", "9");
  wchar_t text[16] = {};
  DWORD bytes = sizeof text;
  ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, section, L"lsttype", RRF_RT_REG_SZ, nullptr, text, &bytes),
            ERROR_SUCCESS);
  EXPECT_STREQ(text, L"9");
  const DWORD number = 5;
  RegSetKeyValueW(HKEY_CURRENT_USER, section, L"lsttype", REG_DWORD, &number, sizeof number);
  EXPECT_EQ(settings.read("Settings", "lsttype", "0"), "0") << "a number is no text";
}

TEST(TextTest, UnpairedAndBrokenPiecesBecomeTheReplacementCharacter) {
  EXPECT_EQ(narrow(widen("k\xC3\xB6\xF0\x9F\xAA\xA2")), "k\xC3\xB6\xF0\x9F\xAA\xA2");
  EXPECT_EQ(widen("a\xFF"), L"a\xFFFD");
  EXPECT_EQ(narrow(std::wstring(1, L'\xD83E')), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace lorivan::win32
