// ZIP archives, written front to back: no dates, so the same entries give the same bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/deflate.h"

namespace lorivan {

class ZipWriter {
 public:
  explicit ZipWriter(Sink& sink) : sink_(sink) {}

  /// Adds an entry as it is, or what a finished raw deflate stream holds.
  void addStored(std::string_view name, std::string_view bytes);
  void addDeflated(std::string_view name, const DeflateSink& deflated);

  /// Writes the directory. False when the sink refused something, or the archive passed 4 gigabytes.
  bool finish();

 private:
  struct Entry {
    std::string name;
    bool deflated = false;
    std::uint32_t crc = 0, packedSize = 0, rawSize = 0, offset = 0;
  };
  void add(Entry entry, std::string_view packed, std::uint64_t rawSize);
  void write(std::string_view bytes);

  Sink& sink_;
  std::vector<Entry> entries_;
  std::uint64_t written_ = 0;
  bool ok_ = true;
};

struct ZipEntry {
  std::string name;
  std::string_view packed;
  bool deflated = false;
  std::uint32_t crc = 0, rawSize = 0;
};

/// The entries that the directory of an archive of ours names, in its order; none when the archive is not
/// whole.
std::vector<ZipEntry> zipEntries(std::string_view archive);

}  // namespace lorivan
