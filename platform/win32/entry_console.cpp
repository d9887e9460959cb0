// Entry point of lorivan.com, for a command prompt: a prompt prefers .com to .exe, waits for it and shows
// what it prints.
#include "platform/win32/entry.h"
#include "platform/win32/windows_api.h"

int wmain() {
  const UINT former = GetConsoleOutputCP();
  SetConsoleOutputCP(CP_UTF8);
  const int status = lorivan::win32::runWithOwnArguments(true);
  if (former != 0) SetConsoleOutputCP(former);
  return status;
}
