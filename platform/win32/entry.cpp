#include "platform/win32/entry.h"

#include <algorithm>

#include "platform/entry.h"
#include "platform/win32/dialogs.h"
#include "platform/win32/handles.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/search_path.h"
#include "platform/win32/text.h"

namespace lorivan::win32 {
namespace {

struct FreeLocalMemory {
  void operator()(wchar_t** memory) const { LocalFree(static_cast<HLOCAL>(memory)); }
};

std::vector<std::string> ownArguments() {
  int count = 0;
  const Owned<wchar_t**, FreeLocalMemory> words(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 1; words && i < count; ++i) arguments.push_back(narrow(words.get()[i]));
  return arguments;
}

/// Behind the program's own name, without the blanks around it.
std::string typedArguments() {
  const std::wstring_view all = PathGetArgsW(GetCommandLineW());
  const auto begin = std::min(all.find_first_not_of(L" \t"), all.size());
  return narrow(all.substr(begin, all.find_last_not_of(L" \t") + 1 - begin));
}

void showFault(const std::string& fault) { showMessage(nullptr, fault, "", MessageIcon::critical); }

/// Whether the error output leads anywhere; a program without a console has one when its caller gave it one.
bool errorsAreRead() { return GetFileType(GetStdHandle(STD_ERROR_HANDLE)) != FILE_TYPE_UNKNOWN; }

/// What the installer asks for: "--search-path add" and "--search-path remove".
bool isSearchPathStep(const std::vector<std::string>& arguments) {
  return arguments.size() == 2 && arguments[0] == "--search-path" &&
         (arguments[1] == "add" || arguments[1] == "remove");
}

int takeSearchPathStep(const PlatformWin32& platform, bool add) {
  constexpr int kDone = 0, kFailed = 5;
  return changeSearchPath(widen(platform.programFolder()), add) ? kDone : kFailed;
}

}  // namespace

int runWithOwnArguments(bool hasConsole) {
  PlatformWin32 platform;
  ProgramStart start{ownArguments()};
  if (isSearchPathStep(start.arguments)) return takeSearchPathStep(platform, start.arguments[1] == "add");
  if (!hasConsole) start.typed = typedArguments();
  if (!hasConsole && !errorsAreRead()) start.showFault = showFault;
  return runProgram(platform, start);
}

}  // namespace lorivan::win32
