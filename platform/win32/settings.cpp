#include "platform/win32/settings.h"

#include <utility>

#include "platform/win32/checked.h"
#include "platform/win32/handles.h"
#include "platform/win32/text.h"

namespace lorivan::win32 {
namespace {

constexpr std::wstring_view kArea = L"Software\\";

}  // namespace

RegistrySettings::RegistrySettings(std::string_view application)
    : root_(std::wstring(kArea) + widen(application)) {}

std::wstring RegistrySettings::pathOf(std::string_view section) const {
  return root_ + L'\\' + widen(section);
}

std::string RegistrySettings::read(std::string_view section, std::string_view key,
                                   std::string_view fallback) const {
  const std::wstring path = pathOf(section), name = widen(key);
  std::wstring text;
  DWORD bytes = 256 * sizeof(wchar_t);
  for (LSTATUS code = ERROR_MORE_DATA; code == ERROR_MORE_DATA;) {
    text.resize(bytes / sizeof(wchar_t) + 1);
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    code = RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(),
                        &bytes);
    if (code != ERROR_SUCCESS && code != ERROR_MORE_DATA) return std::string(fallback);
  }
  return narrow(text.c_str());
}

void RegistrySettings::write(std::string_view section, std::string_view key, std::string_view value) {
  OwnedRegistryKey folder;
  Status done = checkedCode(RegCreateKeyExW(HKEY_CURRENT_USER, pathOf(section).c_str(), 0, nullptr, 0,
                                            KEY_SET_VALUE, nullptr, folder.receive(), nullptr),
                            "RegCreateKeyEx");
  const std::wstring text = widen(value);
  if (done)
    done = checkedCode(RegSetValueExW(folder.get(), widen(key).c_str(), 0, REG_SZ,
                                      reinterpret_cast<const BYTE*>(text.c_str()),
                                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
                       "RegSetValueEx");
  if (!done && fault_) fault_ = done;
}

Status RegistrySettings::flush() { return std::exchange(fault_, Status()); }

}  // namespace lorivan::win32
