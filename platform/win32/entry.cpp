#include "platform/win32/entry.h"

#include "platform/entry.h"
#include "platform/win32/dialogs.h"
#include "platform/win32/handles.h"
#include "platform/win32/platform_win32.h"
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

}  // namespace

int runWithOwnArguments(bool hasConsole) {
  PlatformWin32 platform;
  if (const Status ready = platform.canOpenWindow(); !ready && !hasConsole)
    showMessage(nullptr, ready.error().message, "", MessageIcon::critical);
  return runProgram(platform, ownArguments());
}

}  // namespace lorivan::win32
