#include "platform/none/picture_files.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"
#include "base/checksum.h"
#include "platform/platform.h"

namespace lorivan {
namespace {

void appendLittle(std::string& out, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i) & 0xFF);
}

void appendChunk(std::string& out, std::string_view type, std::string_view data) {
  const std::string body = std::string(type).append(data);
  appendBig32(out, static_cast<std::uint32_t>(data.size()));
  out += body;
  appendBig32(out, crc32(body));
}

/// A zlib stream of stored blocks.
std::string storedStream(std::string_view data) {
  constexpr std::size_t kBlock = 65535;
  std::string out("\x78\x01", 2);
  std::size_t at = 0;
  do {
    const std::size_t size = std::min(kBlock, data.size() - at);
    out += static_cast<char>(at + size == data.size() ? 1 : 0);
    appendLittle(out, static_cast<std::uint32_t>(size), 2);
    appendLittle(out, ~static_cast<std::uint32_t>(size), 2);
    out.append(data.substr(at, size));
    at += size;
  } while (at < data.size());
  appendBig32(out, adler32(data));
  return out;
}

std::uint32_t littleAt(std::string_view bytes, std::size_t at, int count) {
  std::uint32_t value = 0;
  for (int i = count - 1; i >= 0; --i)
    value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
  return value;
}

}  // namespace

std::string encodePng(const std::uint32_t* pixels, int width, int height, int stride) {
  std::string rows;
  rows.reserve(static_cast<std::size_t>(height) * (static_cast<std::size_t>(width) * 4 + 1));
  for (int y = 0; y < height; ++y) {
    rows += '\0';  // no filter
    for (int x = 0; x < width; ++x) {
      const std::uint32_t p = pixels[static_cast<std::ptrdiff_t>(y) * stride + x];
      for (const int shift : {16, 8, 0, 24}) rows += static_cast<char>(p >> shift & 0xFF);
    }
  }
  std::string header;
  appendBig32(header, static_cast<std::uint32_t>(width));
  appendBig32(header, static_cast<std::uint32_t>(height));
  header.append("\x08\x06\x00\x00\x00", 5);  // 8 bits, red green blue alpha
  std::string out("\x89PNG\r\n\x1A\n", 8);
  appendChunk(out, "IHDR", header);
  appendChunk(out, "IDAT", storedStream(rows));
  appendChunk(out, "IEND", {});
  return out;
}

std::string encodeBmp(const std::uint32_t* pixels, int width, int height, int stride) {
  const std::size_t row = (static_cast<std::size_t>(width) * 3 + 3) / 4 * 4;
  const auto size = static_cast<std::uint32_t>(row * static_cast<std::size_t>(height));
  std::string out = "BM";
  for (const std::uint32_t v :
       {54 + size, 0U, 54U, 40U, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height),
        24U << 16 | 1U, 0U, size, 3780U, 3780U, 0U, 0U})
    appendLittle(out, v, 4);
  for (int y = height - 1; y >= 0; --y) {
    const std::size_t start = out.size();
    for (int x = 0; x < width; ++x)
      appendLittle(out, pixels[static_cast<std::ptrdiff_t>(y) * stride + x] & 0xFFFFFF, 3);
    out.resize(start + row, '\0');
  }
  return out;
}

Result<std::unique_ptr<RecordingSurface>> decodeBmp(std::string_view bytes) {
  const Error broken = unreadable("it is not a bitmap that can be read");
  if (bytes.size() < 54 || bytes.substr(0, 2) != "BM") return broken;
  const auto width = static_cast<std::int32_t>(littleAt(bytes, 18, 4));
  const auto height = static_cast<std::int32_t>(littleAt(bytes, 22, 4));
  const std::uint32_t start = littleAt(bytes, 10, 4), bits = littleAt(bytes, 28, 2);
  if (const Status size = checkPictureSize(width, height); !size) return unreadable(size.error().message);
  if ((bits != 24 && bits != 32) || littleAt(bytes, 30, 4) != 0) return broken;
  const std::size_t step = bits / 8, row = (static_cast<std::size_t>(width) * step + 3) / 4 * 4;
  if (start > bytes.size() || bytes.size() - start < row * static_cast<std::size_t>(height)) return broken;
  auto surface = std::make_unique<RecordingSurface>(width, height);
  const PixelBlock block = surface->lendPixels();
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const std::size_t at =
          start + row * static_cast<std::size_t>(height - 1 - y) + step * static_cast<std::size_t>(x);
      block.pixels[static_cast<std::ptrdiff_t>(y) * block.stride + x] = 0xFF000000 | littleAt(bytes, at, 3);
    }
  return surface;
}

}  // namespace lorivan
