// A folder for the files of one test. No other test has it, whatever runs at the same time.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "base/sink.h"

namespace lorivan {

/// Removed with everything in it.
struct Folder {
  Folder() {
    std::random_device random;
    do {
      path = std::filesystem::temp_directory_path() / ("lorivan-test-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path));
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  /// Takes and gives UTF-8.
  std::string file(const std::string& name) const {
    const auto full = (path / std::u8string(name.begin(), name.end())).u8string();
    return {full.begin(), full.end()};
  }
  std::string write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path / name, std::ios::binary) << bytes;
    return file(name);
  }
  static std::string contents(const std::string& file) {
    const auto bytes = readFile(file, 100'000'000);
    return bytes ? *bytes : std::string();
  }
  std::filesystem::path path;
};

}  // namespace lorivan
