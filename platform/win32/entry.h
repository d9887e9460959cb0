// What both Windows programs share: the window program and the one for a command prompt.
#pragma once

namespace lorivan::win32 {

/// Runs the program with the process's own command line; returns its exit status. Without a console, a fault
/// that no window can tell of gets a message box.
int runWithOwnArguments(bool hasConsole);

}  // namespace lorivan::win32
