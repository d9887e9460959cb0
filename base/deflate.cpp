#include "base/deflate.h"

#include <zlib.h>

#include <algorithm>
#include <array>

#include "base/checksum.h"

namespace lorivan {
namespace {

constexpr int kWindowBits = 15;
constexpr int kMemory = 9;
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;  // zlib counts in 32 bits
constexpr std::size_t kBlock = std::size_t{1} << 16;

Bytef* readOnlyInput(std::string_view bytes) {
  return reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));  // zlib only reads it
}

}  // namespace

struct DeflateSink::Stream {
  z_stream z{};
  std::array<char, kBlock> block;
};

DeflateSink::DeflateSink(DeflateForm form, int level) : stream_(std::make_unique<Stream>()) {
  const int bits = form == DeflateForm::raw ? -kWindowBits : kWindowBits;
  ok_ = deflateInit2(&stream_->z, level, Z_DEFLATED, bits, kMemory, Z_DEFAULT_STRATEGY) == Z_OK;
}

DeflateSink::~DeflateSink() { deflateEnd(&stream_->z); }

bool DeflateSink::run(bool last) {
  z_stream& z = stream_->z;
  int result = Z_OK;
  do {
    z.next_out = reinterpret_cast<Bytef*>(stream_->block.data());
    z.avail_out = kBlock;
    result = deflate(&z, last ? Z_FINISH : Z_NO_FLUSH);
    if (result == Z_STREAM_ERROR) return false;
    bytes_.append(stream_->block.data(), kBlock - z.avail_out);
  } while (z.avail_out == 0);
  return !last || result == Z_STREAM_END;
}

bool DeflateSink::write(std::string_view more) {
  crc_ = lorivan::crc32(more, crc_);
  rawSize_ += more.size();
  while (ok_ && !more.empty()) {
    const std::string_view part = more.substr(0, kMostAtOnce);
    stream_->z.next_in = readOnlyInput(part);
    stream_->z.avail_in = static_cast<uInt>(part.size());
    ok_ = run(false);
    more.remove_prefix(part.size());
  }
  return ok_;
}

bool DeflateSink::finish() {
  ok_ = ok_ && run(true);
  return ok_;
}

bool inflateRaw(std::string_view bytes, const std::function<bool(std::string_view)>& take) {
  z_stream z{};
  if (bytes.size() > kMostAtOnce || inflateInit2(&z, -kWindowBits) != Z_OK) return false;
  std::array<char, kBlock> block;
  z.next_in = readOnlyInput(bytes);
  z.avail_in = static_cast<uInt>(bytes.size());
  int result = Z_OK;
  bool taken = true;
  while (result == Z_OK && taken) {
    z.next_out = reinterpret_cast<Bytef*>(block.data());
    z.avail_out = kBlock;
    result = inflate(&z, Z_NO_FLUSH);
    if (result == Z_OK || result == Z_STREAM_END) taken = take({block.data(), kBlock - z.avail_out});
  }
  const bool whole = taken && result == Z_STREAM_END && z.avail_in == 0;
  inflateEnd(&z);
  return whole;
}

}  // namespace lorivan
