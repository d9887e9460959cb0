// Entry point of lorivan.exe, which has no console.
#include "platform/win32/entry.h"
#include "platform/win32/windows_api.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) { return lorivan::win32::runWithOwnArguments(false); }
