// Plays files back through the fuzzers' entry functions, without libFuzzer:
//   fuzz_replay FOLDER...                         each folder has one of files for each fuzzer
//   fuzz_replay --alter COUNT SEED FUZZER FOLDER  so many random alterations of one fuzzer's files
// Ends where something does not hold. The file named last is the one; of alterations it is left behind as
// "altered".
#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
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

/// Changes some bytes, or moves, doubles, swaps or drops a run of them.
void alter(Content& content, std::mt19937_64& random) {
  const auto below = [&](std::size_t n) {
    return static_cast<std::size_t>(random() % std::max<std::size_t>(n, 1));
  };
  for (std::size_t times = 1 + below(6); times > 0 && !content.empty(); --times) {
    const auto at = static_cast<std::ptrdiff_t>(below(content.size()));
    const auto run = static_cast<std::ptrdiff_t>(
        std::min(content.size() - static_cast<std::size_t>(at), std::size_t{1} << below(6)));
    const Content part(content.begin() + at, content.begin() + at + run);
    const auto to = static_cast<std::ptrdiff_t>(below(content.size()));
    const std::size_t how = below(7);
    if (how < 3) content[at] = static_cast<std::uint8_t>(random());
    if (how == 3) content[at] ^= static_cast<std::uint8_t>(1U << below(8));
    if (how == 4) content.erase(content.begin() + at, content.begin() + at + run);
    if (how == 5) content.insert(content.begin() + to, part.begin(), part.end());
    if (how == 6) std::copy_n(part.begin(), std::min(run, std::ssize(content) - to), content.begin() + to);
  }
}

Content altered;  // what is being played

void keepAltered(int) {
  std::ofstream("altered", std::ios::binary)
      .write(reinterpret_cast<const char*>(altered.data()), std::ssize(altered));
}

int alterations(long count, std::uint64_t seed, std::string_view name, const std::filesystem::path& folder) {
  const auto entry = std::ranges::find(kEntries, name, &Entry::name);
  const auto files = filesIn(folder / name);
  if (entry == kEntries.end() || files.empty()) return 0;
  std::mt19937_64 random(seed);
  std::vector<Content> contents;
  for (const auto& file : files) contents.push_back(contentOf(file));
  std::signal(SIGABRT, keepAltered);
  for (long i = 0; i < count; ++i) {
    altered = contents[random() % contents.size()];
    alter(altered, random);
    entry->run(altered);
  }
  return static_cast<int>(count);
}

}  // namespace
}  // namespace lorivan::fuzz

int main(int count, char** words) {
  using namespace lorivan::fuzz;
  const std::vector<std::string> arguments(words + 1, words + count);
  int files = 0;
  if (arguments.size() == 5 && arguments[0] == "--alter")
    files = alterations(std::stol(arguments[1]), std::stoull(arguments[2]), arguments[3], arguments[4]);
  else
    for (const std::string& folder : arguments) files += replay(folder);
  std::cerr << files << " files\n";
  return files > 0 ? 0 : 1;
}
