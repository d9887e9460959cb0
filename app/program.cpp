// The program from its arguments to its exit status.
#include <iostream>

#include "app/command_line.h"
#include "app/main_window.h"
#include "app/make_files.h"
#include "platform/entry.h"

namespace lorivan {

namespace {

int openWindow(Platform& platform, const CommandLine& line) {
  MainWindow window(platform, {line.knotFile, line.stepDisplay, {}});
  Status opened = platform.canOpenWindow();
  if (opened) opened = window.open();
  if (!opened) {
    std::cerr << "lorivan: no window can be opened: " << opened.error().message
              << "\nWithout one, make a knot with: lorivan --shape Hexagonal -o knot.svg\n";
    return kNoDisplay;
  }
  window.run();
  return kDone;
}

}  // namespace

int runProgram(Platform& platform, const std::vector<std::string>& arguments) {
  const auto line = parseCommandLine(arguments);
  if (!line) {
    std::cerr << "lorivan: " << line.error().message << "\nlorivan --help tells more.\n";
    return kWrongUsage;
  }
  switch (line->kind) {
    case CommandKind::help:
      std::cout << usageText();
      return kDone;
    case CommandKind::version:
      std::cout << "Lorivan " << kVersion << '\n';
      return kDone;
    case CommandKind::list:
      std::cout << listText(line->listed);
      return kDone;
    case CommandKind::makeFiles:
      return makeFiles(platform, *line, std::cerr);
    case CommandKind::window:
      break;
  }
  return openWindow(platform, *line);
}

}  // namespace lorivan
