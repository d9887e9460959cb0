// The user's search path: nothing of it may be lost.
#include "platform/win32/search_path.h"

#include <gtest/gtest.h>

#include "platform/win32/windows_api.h"

namespace lorivan::win32 {
namespace {

constexpr const wchar_t* kKey = L"Software\\Lorivan search path test";
const std::wstring kFolder = L"C:\\Users\\J\x00F6rg M\\Lorivan";

TEST(SearchPath, GivesBackWhatThereWas) {
  for (const std::wstring list : {L"", L"C:\\a", L"C:\\a;", L"%TMP%\\x;;\"C:\\b;c\";D:\\", L";"}) {
    const std::wstring longer = withFolder(list, kFolder);
    EXPECT_EQ(longer.compare(0, list.size(), list), 0);
    EXPECT_EQ(withFolder(longer, kFolder), longer) << "once only";
    EXPECT_TRUE(withoutFolder(longer, kFolder) == list);
    EXPECT_TRUE(withoutFolder(list, kFolder) == list);
  }
  EXPECT_TRUE(withoutFolder(L"a;\"c:\\users\\J\x00D6RG m\\lorivan\\\";b", kFolder) == L"a;b")
      << "as the system compares";
  EXPECT_TRUE(withoutFolder(kFolder + L" 2;" + kFolder, kFolder) == kFolder + L" 2");
  EXPECT_TRUE(withoutFolder(withFolder(L"a", L"C:\\x;y"), L"C:\\x;y") == L"a") << "a separator in the name";
}

TEST(SearchPath, LongListsStayWhole) {
  const auto stored = [](DWORD& type) {
    std::wstring text(40000, L'?');
    auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const LSTATUS code =
        RegGetValueW(HKEY_CURRENT_USER, kKey, L"Path", RRF_RT_ANY | RRF_NOEXPAND, &type, text.data(), &bytes);
    return code == ERROR_SUCCESS ? std::wstring(text.c_str()) : L"none";
  };
  RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
  DWORD type = 0;
  ASSERT_TRUE(changeSearchPath(kFolder, true, kKey));
  EXPECT_TRUE(stored(type) == kFolder && type == REG_EXPAND_SZ);
  ASSERT_TRUE(changeSearchPath(kFolder, false, kKey));
  EXPECT_TRUE(stored(type) == L"none");
  std::wstring list;
  while (list.size() < 30000) list += L"%SystemDrive%\\folder " + std::to_wstring(list.size()) + L';';
  const auto bytes =
      static_cast<DWORD>(list.size() * sizeof(wchar_t));  // without a zero, as some programs write it
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"Path", REG_SZ, list.c_str(), bytes), ERROR_SUCCESS);
  ASSERT_TRUE(changeSearchPath(kFolder, true, kKey));
  EXPECT_TRUE(stored(type) == list + kFolder + L';' && type == REG_SZ);
  ASSERT_TRUE(changeSearchPath(kFolder, false, kKey));
  EXPECT_TRUE(stored(type) == list);
  RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
}

}  // namespace
}  // namespace lorivan::win32
