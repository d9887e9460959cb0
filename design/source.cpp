#include "design/source.h"

#include <cstdint>

#include "base/bytes.h"
#include "base/checksum.h"
#include "base/sink.h"
#include "export/formats.h"

namespace lorivan {
namespace {

constexpr std::string_view kBegin = "lorivan-knot:";
constexpr char kEnd = ';';
constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char kFill = '=';
constexpr std::size_t kLargestCarrier = 512'000'000;
/// The signature, the length and name of the first chunk (IHDR), its 13 bytes and its check sum.
constexpr std::size_t kPngHead = 8 + 8 + 13 + 4;
constexpr std::string_view kPngBeginning = "\x89PNG\r\n\x1A\n";

std::string base64(std::string_view text) {
  std::string out;
  out.reserve((text.size() + 2) / 3 * 4);
  for (std::size_t at = 0; at < text.size(); at += 3) {
    const std::string_view three = text.substr(at, 3);
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
      bits = bits << 8 | (i < three.size() ? static_cast<unsigned char>(three[i]) : 0U);
    for (std::size_t i = 0; i < 4; ++i)
      out += i <= three.size() ? kLetters[bits >> (18 - 6 * i) & 63] : kFill;
  }
  return out;
}

/// Takes letters until the end mark. False for any other character and where the text would grow too large.
class Base64Reader {
 public:
  bool take(char c) {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') return true;
    if (c == kFill) return ++fills_ <= 2;
    const std::size_t place = kLetters.find(c);
    if (place == std::string_view::npos || fills_ > 0) return false;
    bits_ = bits_ << 6 | static_cast<std::uint32_t>(place);
    if (++letters_ % 4 != 1) text_ += static_cast<char>(bits_ >> (6 - 2 * ((letters_ - 1) % 4)) & 0xFF);
    return text_.size() <= kLargestKnotFile;
  }
  std::optional<std::string> finish() {
    if ((letters_ + fills_) % 4 != 0 || text_.empty()) return {};
    return std::move(text_);
  }

 private:
  std::string text_;
  std::uint32_t bits_ = 0;
  std::size_t letters_ = 0, fills_ = 0;
};

std::optional<std::string> textOfMark(std::string_view letters) {
  Base64Reader reader;
  for (const char c : letters) {
    if (c == kEnd) return reader.finish();
    if (!reader.take(c)) return {};
  }
  return {};
}

const ExportFormat* carrier(std::string_view path) {
  const ExportFormat* format = findFormat(extensionOf(path), DxfKind::faces);
  return format != nullptr && format->carriesSource ? format : nullptr;
}

}  // namespace

std::string sourceMark(std::string_view documentText) {
  return std::string(kBegin).append(base64(documentText)) + kEnd;
}

std::optional<std::string> sourceInside(std::string_view bytes) {
  for (std::size_t at = bytes.find(kBegin); at != std::string_view::npos; at = bytes.find(kBegin, at)) {
    at += kBegin.size();
    if (auto text = textOfMark(bytes.substr(at))) return text;
  }
  return {};
}

std::string withPngSource(std::string png, std::string_view mark) {
  if (!png.starts_with(kPngBeginning) || png.size() < kPngHead) return png;
  const std::string body = std::string("tEXtLorivan") + '\0' + std::string(mark);
  std::string chunk;
  appendBig32(chunk, static_cast<std::uint32_t>(body.size() - 4));  // the name is not counted
  chunk += body;
  appendBig32(chunk, crc32(body));
  return png.insert(kPngHead, chunk);
}

bool canHoldKnot(std::string_view path) {
  return extensionOf(path) == kKnotFileExtension || carrier(path) != nullptr;
}

bool holdsKnot(const std::string& path) {
  if (carrier(path) == nullptr) return false;
  const auto bytes = readFile(path, kLargestCarrier);
  return bytes && sourceInside(*bytes);
}

Result<ReadDocument> readKnotFile(const std::string& path, const Document& before) {
  const bool carries = carrier(path) != nullptr;
  const auto bytes = readFile(path, carries ? kLargestCarrier : kLargestKnotFile);
  if (!bytes) return bytes.error();
  if (!carries) {
    auto read = readDocument(*bytes, before);
    if (!read && extensionOf(path) != kKnotFileExtension)
      return unreadable("no knot, drawing or picture that can be read: {1}", read.error().message);
    return read;
  }
  const auto text = sourceInside(*bytes);
  if (!text) return unreadable("there is no knot in it that could be opened");
  return readDocument(*text, before);
}

}  // namespace lorivan
