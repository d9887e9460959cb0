// What is special in the Windows services: where settings stand, and texts that are no proper Unicode.
#include <gtest/gtest.h>

#include "platform/win32/services.h"
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

TEST(UserFolderTest, StandsInTheUsersLocalData) {
  wchar_t before[MAX_PATH] = {}, scraps[MAX_PATH] = {};
  GetEnvironmentVariableW(L"LOCALAPPDATA", before, MAX_PATH);
  GetTempPathW(MAX_PATH, scraps);
  const std::wstring data = std::wstring(scraps) + L"Lorivan d\xE4ta";
  CreateDirectoryW(data.c_str(), nullptr);
  SetEnvironmentVariableW(L"LOCALAPPDATA", data.c_str());
  EXPECT_EQ(makeUserFolder("Lorivan test"), narrow(data + L"\\Lorivan test"));
  EXPECT_EQ(GetFileAttributesW((data + L"\\Lorivan test").c_str()), DWORD{FILE_ATTRIBUTE_DIRECTORY});
  SetEnvironmentVariableW(L"LOCALAPPDATA", L"Q:\\nowhere");
  EXPECT_EQ(makeUserFolder("Lorivan test"), "");
  SetEnvironmentVariableW(L"LOCALAPPDATA", before);
}

TEST(TextTest, UnpairedAndBrokenPiecesBecomeTheReplacementCharacter) {
  EXPECT_EQ(narrow(widen("k\xC3\xB6\xF0\x9F\xAA\xA2")), "k\xC3\xB6\xF0\x9F\xAA\xA2");
  EXPECT_EQ(widen("a\xFF"), L"a\xFFFD");
  EXPECT_EQ(narrow(std::wstring(1, L'\xD83E')), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace lorivan::win32
