// Deflating and inflating, by zlib.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/sink.h"

namespace lorivan {

enum class DeflateForm {
  raw,   // as in ZIP entries
  zlib,  // with head and check sum, as in PNG
};

/// 1 is the fastest and still makes a tenth of a mesh's text, 9 the smallest.
inline constexpr int kFastDeflate = 1, kSmallDeflate = 9;

/// Deflates what is written to it, and keeps the result in memory.
class DeflateSink final : public Sink {
 public:
  explicit DeflateSink(DeflateForm form, int level);
  ~DeflateSink() override;
  DeflateSink(const DeflateSink&) = delete;
  DeflateSink& operator=(const DeflateSink&) = delete;

  bool write(std::string_view more) override;
  /// Ends the stream; false when memory ran out on the way. Nothing can be written afterwards.
  bool finish();

  const std::string& bytes() const { return bytes_; }
  std::uint32_t crc() const { return crc_; }          // of what was written
  std::uint64_t rawSize() const { return rawSize_; }  // of what was written

 private:
  struct Stream;
  bool run(bool last);

  std::unique_ptr<Stream> stream_;
  std::string bytes_;
  std::uint32_t crc_ = 0;
  std::uint64_t rawSize_ = 0;
  bool ok_ = false;
};

/// Inflates a raw stream and hands it on in blocks. False when the stream is damaged, ends early or late, or
/// when `take` refuses a block.
bool inflateRaw(std::string_view bytes, const std::function<bool(std::string_view)>& take);

}  // namespace lorivan
