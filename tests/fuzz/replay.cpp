// Plays files back through the fuzzers' entry functions: fuzz_replay FOLDER, which has a folder of files for
// each of them. Ends where something does not hold; the file named last is the one.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "fuzz.h"

namespace lorivan::fuzz {
namespace {

struct Entry {
  const char* name;
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

int replay(const Entry& entry, const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  if (std::filesystem::is_directory(folder))
    for (const auto& file : std::filesystem::directory_iterator(folder)) files.push_back(file.path());
  std::ranges::sort(files);
  for (const auto& file : files) {
    std::cerr << file.string() << std::endl;
    std::ifstream in(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    entry.run({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  }
  return static_cast<int>(files.size());
}

}  // namespace
}  // namespace lorivan::fuzz

int main(int count, char** arguments) {
  using namespace lorivan::fuzz;
  int files = 0;
  for (int i = 1; i < count; ++i)
    for (const Entry& entry : kEntries)
      files += replay(entry, std::filesystem::path(arguments[i]) / entry.name);
  std::cerr << files << " files\n";
  return files > 0 ? 0 : 1;
}
