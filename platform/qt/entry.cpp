// The program's entry point on Linux and macOS.
#include "platform/entry.h"

#include "base/memory_reserve.h"
#include "platform/qt/file_settings.h"
#include "platform/qt/platform_qt.h"

int main(int count, char** values) {
  lorivan::reserveMemory();  // making the platform may need it
  lorivan::PlatformQt platform(lorivan::userSettingsPath());
  return lorivan::runProgram(platform, {std::vector<std::string>(values + (count > 0), values + count)});
}
