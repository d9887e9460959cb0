// The records are those of the ZIP application note, 4.3.7, 4.3.12 and 4.3.16.
#include "export/zip.h"

#include "base/bytes.h"
#include "base/checksum.h"

namespace lorivan {
namespace {

constexpr std::uint32_t kLocalMark = 0x04034B50, kDirectoryMark = 0x02014B50, kEndMark = 0x06054B50;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kDeflateMethod = 8;
constexpr std::uint16_t kFirstDay = 0x21;  // 1 January 1980, the earliest that an entry can have
constexpr std::size_t kLocalSize = 30, kDirectorySize = 46, kEndSize = 22;
constexpr std::uint64_t kMostArchiveBytes = 0xFFFFFFFF;

/// Version to sizes and the name's length: the part that both records of an entry share.
std::string sharedRecord(std::size_t nameSize, bool deflated, std::uint32_t crc, std::uint32_t packedSize,
                         std::uint32_t rawSize) {
  std::string out;
  appendLittle16(out, kVersion);
  appendLittle16(out, 0);
  appendLittle16(out, deflated ? kDeflateMethod : 0);
  appendLittle16(out, 0);
  appendLittle16(out, kFirstDay);
  appendLittle32(out, crc);
  appendLittle32(out, packedSize);
  appendLittle32(out, rawSize);
  appendLittle16(out, static_cast<std::uint16_t>(nameSize));
  appendLittle16(out, 0);
  return out;
}

}  // namespace

void ZipWriter::write(std::string_view bytes) {
  ok_ = ok_ && sink_.write(bytes);
  written_ += bytes.size();
}

void ZipWriter::add(Entry entry, std::string_view packed, std::uint64_t rawSize) {
  if (rawSize > kMostArchiveBytes ||
      written_ + packed.size() + kLocalSize + entry.name.size() > kMostArchiveBytes)
    ok_ = false;
  if (!ok_) return;
  entry.offset = static_cast<std::uint32_t>(written_);
  entry.packedSize = static_cast<std::uint32_t>(packed.size());
  entry.rawSize = static_cast<std::uint32_t>(rawSize);
  std::string head;
  appendLittle32(head, kLocalMark);
  write(head + sharedRecord(entry.name.size(), entry.deflated, entry.crc, entry.packedSize, entry.rawSize) +
        entry.name);
  write(packed);
  entries_.push_back(std::move(entry));
}

void ZipWriter::addStored(std::string_view name, std::string_view bytes) {
  Entry entry;
  entry.name = name;
  entry.crc = crc32(bytes);
  add(std::move(entry), bytes, bytes.size());
}

void ZipWriter::addDeflated(std::string_view name, const DeflateSink& deflated) {
  Entry entry;
  entry.name = name;
  entry.deflated = true;
  entry.crc = deflated.crc();
  add(std::move(entry), deflated.bytes(), deflated.rawSize());
}

bool ZipWriter::finish() {
  const std::uint64_t start = written_;
  for (const Entry& entry : entries_) {
    std::string record;
    appendLittle32(record, kDirectoryMark);
    appendLittle16(record, kVersion);
    record += sharedRecord(entry.name.size(), entry.deflated, entry.crc, entry.packedSize, entry.rawSize);
    record.append(10, '\0');  // comment, disk and attributes
    appendLittle32(record, entry.offset);
    write(record + entry.name);
  }
  std::string end;
  appendLittle32(end, kEndMark);
  appendLittle32(end, 0);
  appendLittle16(end, static_cast<std::uint16_t>(entries_.size()));
  appendLittle16(end, static_cast<std::uint16_t>(entries_.size()));
  appendLittle32(end, static_cast<std::uint32_t>(written_ - start));
  appendLittle32(end, static_cast<std::uint32_t>(start));
  appendLittle16(end, 0);
  write(end);
  return ok_ && written_ <= kMostArchiveBytes;
}

std::vector<ZipEntry> zipEntries(std::string_view archive) {
  if (archive.size() < kEndSize) return {};
  const char* end = archive.data() + archive.size() - kEndSize;
  if (little32(end) != kEndMark) return {};
  std::vector<ZipEntry> entries;
  std::uint64_t at = little32(end + 16);
  for (std::uint16_t left = little16(end + 10); left > 0; --left) {
    if (at + kDirectorySize > archive.size()) return {};
    const char* record = archive.data() + at;
    const std::uint64_t nameSize = little16(record + 28), local = little32(record + 42);
    const std::uint64_t packed = local + kLocalSize + nameSize, size = little32(record + 20);
    if (little32(record) != kDirectoryMark || at + kDirectorySize + nameSize > archive.size() ||
        packed + size > archive.size() || little32(archive.data() + local) != kLocalMark)
      return {};
    entries.push_back({std::string(archive.substr(at + kDirectorySize, nameSize)),
                       archive.substr(packed, size), little16(record + 10) == kDeflateMethod,
                       little32(record + 16), little32(record + 24)});
    at += kDirectorySize + nameSize;
  }
  return entries;
}

}  // namespace lorivan
