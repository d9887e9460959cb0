#include "platform/win32/search_path.h"

#include <algorithm>
#include <vector>

#include "platform/win32/checked.h"
#include "platform/win32/handles.h"

namespace lorivan::win32 {
namespace {

constexpr const wchar_t* kValue = L"Path";

struct Entry {
  std::size_t begin = 0, end = 0;  // in the list, without the separators
};

/// A separator inside quotes is part of a name.
std::vector<Entry> entriesOf(const std::wstring& list) {
  std::vector<Entry> entries(1);
  bool quoted = false;
  for (std::size_t at = 0; at < list.size(); ++at) {
    if (list[at] == L'"') quoted = !quoted;
    if (list[at] != L';' || quoted) continue;
    entries.back().end = at;
    entries.push_back({at + 1, at + 1});
  }
  entries.back().end = list.size();
  return entries;
}

/// Without quotes and a separator at the end.
std::wstring bare(std::wstring folder) {
  std::erase(folder, L'"');
  while (folder.size() > 3 && (folder.back() == L'\\' || folder.back() == L'/')) folder.pop_back();
  return folder;
}

bool sameFolder(const std::wstring& one, const std::wstring& other) {
  return CompareStringOrdinal(bare(one).c_str(), -1, bare(other).c_str(), -1, TRUE) == CSTR_EQUAL;
}

bool hasFolder(const std::wstring& list, const std::wstring& folder) {
  return std::ranges::any_of(entriesOf(list), [&](const Entry& entry) {
    return sameFolder(list.substr(entry.begin, entry.end - entry.begin), folder);
  });
}

struct Value {
  DWORD type = REG_EXPAND_SZ;
  std::wstring text;
};

/// As it is stored, with its variables; empty when there is none.
Status readValue(HKEY key, Value& value) {
  DWORD bytes = 0;
  LSTATUS code = RegQueryValueExW(key, kValue, nullptr, &value.type, nullptr, &bytes);
  if (code == ERROR_FILE_NOT_FOUND) {
    value = {};
    return {};
  }
  if (code == ERROR_SUCCESS && value.type != REG_SZ && value.type != REG_EXPAND_SZ) code = ERROR_INVALID_DATA;
  if (code == ERROR_SUCCESS) {
    value.text.resize(bytes / sizeof(wchar_t));
    bytes = static_cast<DWORD>(value.text.size() * sizeof(wchar_t));
    code = RegQueryValueExW(key, kValue, nullptr, &value.type, reinterpret_cast<BYTE*>(value.text.data()),
                            &bytes);
  }
  while (!value.text.empty() && value.text.back() == L'\0') value.text.pop_back();
  return checkedCode(code, "RegQueryValueEx");
}

Status writeValue(HKEY key, const Value& value) {
  if (value.text.empty()) return checkedCode(RegDeleteValueW(key, kValue), "RegDeleteValue");
  const auto bytes = static_cast<DWORD>((value.text.size() + 1) * sizeof(wchar_t));
  return checkedCode(
      RegSetValueExW(key, kValue, 0, value.type, reinterpret_cast<const BYTE*>(value.text.c_str()), bytes),
      "RegSetValueEx");
}

}  // namespace

std::wstring withFolder(const std::wstring& list, const std::wstring& folder) {
  if (hasFolder(list, folder)) return list;
  const std::wstring entry = folder.find(L';') == std::wstring::npos ? folder : L'"' + folder + L'"';
  if (list.empty()) return entry;
  return list.back() == L';' ? list + entry + L';' : list + L';' + entry;
}

std::wstring withoutFolder(const std::wstring& list, const std::wstring& folder) {
  std::wstring left = list;
  const std::vector<Entry> entries = entriesOf(list);
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    if (!sameFolder(list.substr(entry->begin, entry->end - entry->begin), folder)) continue;
    const bool isLast = entry->end >= left.size();
    const std::size_t begin = isLast && entry->begin > 0 ? entry->begin - 1 : entry->begin;
    left.erase(begin, entry->end + (isLast ? 0 : 1) - begin);
  }
  return left;
}

Status changeSearchPath(const std::wstring& folder, bool add, const wchar_t* key) {
  OwnedRegistryKey environment;
  if (const Status opened =
          checkedCode(RegCreateKeyExW(HKEY_CURRENT_USER, key, 0, nullptr, 0, KEY_QUERY_VALUE | KEY_SET_VALUE,
                                      nullptr, environment.receive(), nullptr),
                      "RegCreateKeyEx");
      !opened)
    return opened;
  Value value;
  if (const Status read = readValue(environment.get(), value); !read) return read;
  std::wstring changed = add ? withFolder(value.text, folder) : withoutFolder(value.text, folder);
  if (changed == value.text) return {};
  value.text = std::move(changed);
  if (const Status written = writeValue(environment.get(), value); !written) return written;
  constexpr UINT kPatience = 1000;  // milliseconds for each window that does not answer
  SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(kUserEnvironment),
                      SMTO_ABORTIFHUNG, kPatience, nullptr);
  return {};
}

}  // namespace lorivan::win32
