// The program from its arguments to its exit status.
#include <cstdlib>
#include <iostream>
#include <new>

#include "base/memory_reserve.h"
#include "base/system_files.h"
#include "cli/command_line.h"
#include "cli/lists.h"
#include "cli/make_files.h"
#include "cli/unquoted_file.h"
#include "design/version.h"
#include "platform/entry.h"
#include "window/main_window.h"
#include "window/preferences.h"

namespace lorivan {

namespace {

/// What was asked for on the standard output; a status when it could not be written there.
int print(const std::string& text) {
  std::cout << text << std::flush;
  return std::cout ? kDone : kBadOutput;
}

/// Where somebody sees it.
void tell(const ProgramStart& start, const std::string& fault) {
  std::cerr << "lorivan: " << fault << std::endl;
  if (start.showFault) start.showFault(fault);
}

int openWindow(Platform& platform, const ProgramStart& start, const CommandLine& line) {
  MainWindow window(platform, {line.knotFile, line.stepDisplay, {}, isFirstStart(platform.settings())});
  Status opened = platform.canOpenWindow();
  if (opened) opened = window.open();
  if (!opened) {
    tell(start, "no window can be opened: " + opened.error().message +
                    "\nWithout one, make a knot with: lorivan --shape Hexagonal -o knot.svg");
    return kNoDisplay;
  }
  if (const Status kept = window.run(); !kept) {
    tell(start, kept.error().message);
    if (kept.error().kind == ErrorKind::limit) return kBadOutput;
  }
  return kDone;
}

int run(Platform& platform, const ProgramStart& start) {
  const auto line = parseTyped(start.arguments, start.typed);
  if (!line) {
    tell(start, line.error().message + "\nlorivan --help tells more.");
    return exitStatusOf(line.error().kind);
  }
  switch (line->kind) {
    case CommandKind::help:
      return print(usageText());
    case CommandKind::version:
      return print("Lorivan " + std::string(kVersion) + "\n");
    case CommandKind::list:
      return print(listText(line->listed));
    case CommandKind::makeFiles:
      return makeFiles(platform, *line, std::cerr);
    case CommandKind::check:
      return checkKnot(platform, *line, std::cout, std::cerr);
    case CommandKind::window:
      break;
  }
  return openWindow(platform, start, *line);
}

}  // namespace

int runProgram(Platform& platform, const ProgramStart& start) {
  removeScrapsAtEnd();
  reserveMemory();
  try {
    return run(platform, start);
  } catch (const std::bad_alloc&) {
    std::cerr << "lorivan: " << kOutOfMemory << std::endl;
    // Libraries that were stopped half-way need not end in order.
    std::_Exit(kStatusWithoutMemory);
  }
}

}  // namespace lorivan
