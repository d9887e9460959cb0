// Chunks as in PNG (ISO/IEC 15948), clauses 5 and 11.
#include "export/grey_png.h"

#include <cmath>

#include "base/bytes.h"
#include "base/checksum.h"
#include "base/deflate.h"

namespace lorivan {
namespace {

constexpr int kLevel = 6;
constexpr char kUpFilter = 2;  // neighbouring rows of a height map differ least

void appendChunk(std::string& out, std::string_view type, std::string_view data) {
  appendBig32(out, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = out.size();
  out.append(type).append(data);
  appendBig32(out, crc32(std::string_view(out).substr(start)));
}

std::string headOf(const GreyPicture& picture) {
  std::string head;
  appendBig32(head, static_cast<std::uint32_t>(picture.width));
  appendBig32(head, static_cast<std::uint32_t>(picture.height));
  return head.append({16, 0, 0, 0, 0});  // bits; grey; deflated, filtered row by row, not interlaced
}

/// One row with its filter: each byte less the one above it.
void putRow(const GreyPicture& picture, std::size_t row, std::string& out) {
  const auto width = static_cast<std::size_t>(picture.width);
  const std::uint16_t* here = &picture.levels[row * width];
  const std::uint16_t* above = row > 0 ? here - width : nullptr;
  out.assign(1, kUpFilter);
  for (std::size_t i = 0; i < width; ++i) {
    const unsigned now = here[i], before = above != nullptr ? above[i] : 0U;
    out += static_cast<char>((now >> 8) - (before >> 8));
    out += static_cast<char>((now & 0xFF) - (before & 0xFF));
  }
}

}  // namespace

std::string greyPng(const GreyPicture& picture) {
  std::string out("\x89PNG\r\n\x1A\n", 8);
  appendChunk(out, "IHDR", headOf(picture));
  if (picture.pixelsPerMetre) {
    std::string size;
    for (int axis = 0; axis < 2; ++axis)
      appendBig32(size, static_cast<std::uint32_t>(std::lround(*picture.pixelsPerMetre)));
    appendChunk(out, "pHYs", size + '\1');
  }
  for (const auto& [keyword, text] : picture.texts)
    appendChunk(out, "tEXt", std::string(keyword) + '\0' + text);
  DeflateSink pixels(DeflateForm::zlib, kLevel);
  std::string line;
  for (std::size_t row = 0; row < static_cast<std::size_t>(picture.height); ++row) {
    putRow(picture, row, line);
    pixels.write(line);
  }
  if (!pixels.finish()) return {};
  appendChunk(out, "IDAT", pixels.bytes());
  appendChunk(out, "IEND", {});
  return out;
}

}  // namespace lorivan
