// The user's list of folders in which a command prompt looks for programs.
#pragma once

#include <string>
#include <string_view>

#include "base/result.h"

namespace lorivan::win32 {

inline constexpr const wchar_t* kUserEnvironment = L"Environment";  // below HKEY_CURRENT_USER

/// The list with this folder behind all others, or as it was when it has it already. Everything else stays,
/// to the letter, so that withoutFolder() gives back what there was.
std::wstring withFolder(const std::wstring& list, const std::wstring& folder);
std::wstring withoutFolder(const std::wstring& list, const std::wstring& folder);

/// Adds the folder to the user's own list, or takes it away, and tells running programs of it. A list of any
/// length stays whole; one that is left empty is removed.
Status changeSearchPath(const std::wstring& folder, bool add, const wchar_t* key = kUserEnvironment);

}  // namespace lorivan::win32
