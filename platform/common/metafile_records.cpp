#include "platform/common/metafile_records.h"

#include <algorithm>
#include <utility>

#include "base/numbers.h"

namespace lorivan {
namespace {

enum Record {
  kHeader = 1,
  kPolygon = 3,
  kPolyline = 4,
  kSetWindowExtEx = 9,
  kSetViewportExtEx = 11,
  kEof = 14,
  kSetMapMode = 17,
  kMoveToEx = 27,
  kIntersectClipRect = 30,
  kSelectObject = 37,
  kCreatePen = 38,
  kDeleteObject = 40,
  kBeginPath = 59,
  kEndPath = 60,
  kStrokePath = 64,
  kPolygon16 = 86,
  kPolyline16 = 87,
};

constexpr std::size_t kHeaderBytes = 108;
constexpr std::uint32_t kSignature = 0x464D4520;  // " EMF"
constexpr std::uint32_t kVersion = 0x10000;
constexpr int kAnisotropic = 8;  // the mapping mode with extents of our own
constexpr std::uint32_t kPenHandle = 1;
constexpr std::uint32_t kStockBlackPen = 0x80000007;

// The device that the file refers to: 96 pixels per inch, and whole millimetres on both sides.
constexpr int kDeviceWidth = 1920, kDeviceHeight = 1440;
constexpr int kMillimetresWide = 508, kMillimetresHigh = 381;
constexpr double kPixelsPerMillimetre = 1.0 * kDeviceWidth / kMillimetresWide;

bool fits16(PointI p) {
  return p.x == static_cast<std::int16_t>(p.x) && p.y == static_cast<std::int16_t>(p.y);
}

}  // namespace

void MetafileRecords::Box::add(PointI p, int margin) {
  left = std::min(left, p.x - margin);
  top = std::min(top, p.y - margin);
  right = std::max(right, p.x + margin);
  bottom = std::max(bottom, p.y + margin);
}

MetafileRecords::MetafileRecords(const MetafileSize& size)
    : scale_(metafileScale(size, kPixelsPerMillimetre, kPixelsPerMillimetre)) {
  putRecord(kSetMapMode, {kAnisotropic});
  putRecord(kSetWindowExtEx, {scale_.window.x, scale_.window.y});
  putRecord(kSetViewportExtEx, {scale_.viewport.x, scale_.viewport.y});
}

void MetafileRecords::put16(std::int64_t value) {
  for (int shift = 0; shift < 16; shift += 8) bytes_ += static_cast<char>(value >> shift & 0xFF);
}

void MetafileRecords::put32(std::int64_t value) {
  put16(value);
  put16(value >> 16);
}

void MetafileRecords::put(const Box& box) {
  for (const std::int32_t edge : {box.left, box.top, box.right, box.bottom}) put32(edge);
}

void MetafileRecords::begin(int type, std::size_t bytes) {
  put32(type);
  put32(static_cast<std::int64_t>(bytes));
  ++records_;
}

void MetafileRecords::putRecord(int type, std::initializer_list<std::int64_t> values) {
  begin(type, 8 + 4 * values.size());
  for (const std::int64_t value : values) put32(value);
}

void MetafileRecords::putPoints(std::span<const PointI> points, bool closed, const Box& box) {
  const bool narrow = std::all_of(points.begin(), points.end(), fits16);
  if (narrow)
    begin(closed ? kPolygon16 : kPolyline16, 28 + 4 * points.size());
  else
    begin(closed ? kPolygon : kPolyline, 28 + 8 * points.size());
  put(box);
  put32(static_cast<std::int64_t>(points.size()));
  for (const PointI p : points)
    for (const std::int32_t value : {p.x, p.y}) narrow ? put16(value) : put32(value);
}

void MetafileRecords::strokePath(std::span<const PointI> points, bool closed, int width, Colour colour) {
  if (points.size() < 2) return;
  Box box;
  for (const PointI p : points) box.add(p, (width + 1) / 2);
  putRecord(kCreatePen, {kPenHandle, 0, width, 0, colour});  // solid; a pen has no height
  putRecord(kSelectObject, {kPenHandle});
  putRecord(kBeginPath, {});
  putRecord(kMoveToEx, {points[0].x, points[0].y});
  putPoints(points, closed, box);
  putRecord(kEndPath, {});
  putRecord(kStrokePath, {box.left, box.top, box.right, box.bottom});
  putRecord(kSelectObject, {kStockBlackPen});  // a pen in use cannot be deleted
  putRecord(kDeleteObject, {kPenHandle});
}

void MetafileRecords::clip(PointI upperLeft, PointI lowerRight) {
  putRecord(kIntersectClipRect, {upperLeft.x, upperLeft.y, lowerRight.x, lowerRight.y});
}

void MetafileRecords::putHeader(std::size_t bytesBehind, int records) {
  begin(kHeader, kHeaderBytes);
  put({0, 0, scale_.pixels.x, scale_.pixels.y});
  put({0, 0, scale_.frame.x, scale_.frame.y});
  put32(kSignature);
  put32(kVersion);
  put32(static_cast<std::int64_t>(kHeaderBytes + bytesBehind));
  put32(records + 1);
  put16(kPenHandle + 1);  // handles, the unused number 0 among them
  put16(0);
  for (int i = 0; i < 3; ++i) put32(0);  // no description, no palette
  for (const int size : {kDeviceWidth, kDeviceHeight, kMillimetresWide, kMillimetresHigh}) put32(size);
  for (int i = 0; i < 3; ++i) put32(0);  // no pixel format
  for (const int size : {kMillimetresWide, kMillimetresHigh}) put32(size * 1000);
}

Result<std::string> MetafileRecords::finish() {
  putRecord(kEof, {0, 16, 20});  // no palette, where it would be, size of this record
  const std::string behind = std::exchange(bytes_, {});
  putHeader(behind.size(), records_);
  return bytes_ + behind;
}

}  // namespace lorivan
