// Writes the texts of the packages that come from the program's own tables:
//   lorivan_package_texts [--check] FOLDER
// --check writes nothing and fails when one is out of date.
#include <iostream>
#include <vector>

#include "base/sink.h"
#include "tools/manual/texts.h"

namespace lorivan {
namespace {

constexpr std::size_t kLongest = 1'000'000;

Status bring(const std::string& file, const std::string& text, bool checkOnly) {
  if (const auto old = readFile(file, kLongest); old && *old == text) return {};
  return checkOnly ? unwritable(file + " is out of date") : writeFile(file, text);
}

int run(const std::string& folder, bool checkOnly) {
  const auto completed = completion();
  if (!completed) {
    std::cerr << completed.error().message << '\n';
    return 1;
  }
  const std::pair<std::string, std::string> texts[] = {
      {"lorivan.1", manualPage()}, {"lorivan.bash", *completed}, {"lorivan-mime.xml", fileTypes()}};
  int faults = 0;
  for (const auto& [name, text] : texts)
    if (const Status done = bring(folder + '/' + name, text, checkOnly); !done) {
      std::cerr << done.error().message << '\n';
      ++faults;
    }
  if (checkOnly && faults > 0) std::cerr << "run lorivan_package_texts " << folder << '\n';
  return faults == 0 ? 0 : 1;
}

}  // namespace
}  // namespace lorivan

int main(int count, char** arguments) {
  const std::vector<std::string_view> words(arguments + 1, arguments + count);
  const bool check = !words.empty() && words.front() == "--check";
  if (words.size() != (check ? 2u : 1u)) {
    std::cerr << "lorivan_package_texts [--check] FOLDER\n";
    return 2;
  }
  return lorivan::run(std::string(words.back()), check);
}
