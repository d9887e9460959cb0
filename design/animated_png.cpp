#include "design/animated_png.h"

#include <algorithm>
#include <optional>

#include "base/bytes.h"
#include "base/checksum.h"

namespace lorivan {
namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
constexpr std::size_t kAround = 12;  // length, name and check sum of a chunk
constexpr std::size_t kHeadLength = 13;
constexpr int kLongestDelay = 60'000;

struct Chunk {
  std::string_view name, data, whole;
};

/// Takes the first chunk off; nothing when the rest holds none.
std::optional<Chunk> takeChunk(std::string_view& rest) {
  if (rest.size() < kAround) return std::nullopt;
  const std::size_t length = big32(rest.data());
  if (length > rest.size() - kAround) return std::nullopt;
  const Chunk chunk{rest.substr(4, 4), rest.substr(8, length), rest.substr(0, length + kAround)};
  rest.remove_prefix(chunk.whole.size());
  return chunk;
}

/// What tells the size and the kind of pixels; empty for what is no PNG file.
std::string_view headOf(std::string_view png) {
  if (!png.starts_with(kSignature)) return {};
  png.remove_prefix(kSignature.size());
  const auto first = takeChunk(png);
  return first && first->name == "IHDR" && first->data.size() == kHeadLength ? first->data
                                                                             : std::string_view();
}

void appendChunk(std::string& out, std::string_view name, std::string_view data) {
  const std::string body = std::string(name).append(data);
  appendBig32(out, static_cast<std::uint32_t>(data.size()));
  out += body;
  appendBig32(out, crc32(body));
}

void appendBig16(std::string& out, int value) {
  out += static_cast<char>(value >> 8 & 0xFF);
  out += static_cast<char>(value & 0xFF);
}

}  // namespace

Status AnimatedPng::add(std::string_view png, int milliseconds) {
  const std::string_view head = headOf(png);
  if (head.empty() || head != headOf(still_)) return unwritable("a frame has another size than the first");
  std::string control;
  appendBig32(control, sequence_++);
  control += head.substr(0, 8);  // width and height
  control.append(8, '\0');       // it fills the picture
  appendBig16(control, std::clamp(milliseconds, 0, kLongestDelay));
  appendBig16(control, 1000);
  control.append(2, '\0');  // it replaces the one before and stays
  appendChunk(frames_, "fcTL", control);
  std::string_view rest = png.substr(kSignature.size());
  while (const auto chunk = takeChunk(rest)) {
    if (chunk->name != "IDAT") continue;
    std::string data;
    appendBig32(data, sequence_++);
    appendChunk(frames_, "fdAT", data.append(chunk->data));
  }
  ++count_;
  return {};
}

Result<std::string> AnimatedPng::finish() const {
  if (count_ == 0) return unwritable("an animation needs frames");
  std::string_view rest = still_;
  rest.remove_prefix(kSignature.size());
  std::string out(kSignature);
  while (const auto chunk = takeChunk(rest)) {
    if (chunk->name == "IEND") out += frames_;
    out += chunk->whole;
    if (chunk->name != "IHDR") continue;
    std::string control;
    appendBig32(control, count_);
    appendBig32(control, loop_ ? 0 : 1);
    appendChunk(out, "acTL", control);
  }
  return out;
}

}  // namespace lorivan
