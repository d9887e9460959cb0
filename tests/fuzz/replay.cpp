// Plays files back through the fuzzers' entry functions, without libFuzzer:
//   fuzz_replay FOLDER...   each folder has one of files for each fuzzer
// Ends where something does not hold. The file named last is the one.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz.h"

namespace lorivan::fuzz {
namespace {

using Content = std::vector<std::uint8_t>;

struct Entry {
  std::string_view name;
  void (*run)(Bytes);
};

constexpr auto kEntries = std::to_array<Entry>({{"knot_text", knotText},
                                                {"shape_text", shapeText},
                                                {"source", source},
                                                {"svg_outline", svgOutline},
                                                {"dxf_outline", dxfOutline},
                                                {"picture", picture},
                                                {"shape_grid", shapeGrid},
                                                {"graph", graph},
                                                {"command_line", commandLine},
                                                {"settings", settings}});

std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  if (std::filesystem::is_directory(folder))
    for (const auto& file : std::filesystem::directory_iterator(folder)) files.push_back(file.path());
  std::ranges::sort(files);
  return files;
}

Content contentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), {}};
  return {bytes.begin(), bytes.end()};
}

int replay(const std::filesystem::path& folder) {
  int files = 0;
  for (const Entry& entry : kEntries)
    for (const auto& file : filesIn(folder / entry.name)) {
      std::cerr << file.string() << std::endl;
      entry.run(contentOf(file));
      ++files;
    }
  return files;
}

}  // namespace
}  // namespace lorivan::fuzz

int main(int count, char** words) {
  using namespace lorivan::fuzz;
  const std::vector<std::string> arguments(words + 1, words + count);
  int files = 0;
  for (const std::string& folder : arguments) files += replay(folder);
  std::cerr << files << " files\n";
  return files > 0 ? 0 : 1;
}
