// The program from its arguments to its exit status.
#include <iostream>

#include "app/command_line.h"
#include "app/make_files.h"
#include "platform/entry.h"

namespace lorivan {

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
  std::cerr << "lorivan: no output named; make a knot with: lorivan --shape Hexagonal -o knot.svg\n";
  return kNoDisplay;
}

}  // namespace lorivan
