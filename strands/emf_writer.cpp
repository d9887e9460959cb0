#include "strands/emf_writer.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {
namespace {

enum Record {
  kHeader = 1,
  kPolygon = 3,
  kPolyline = 4,
  kEof = 14,
  kMoveToEx = 27,
  kSelectObject = 37,
  kCreatePen = 38,
  kDeleteObject = 40,
  kBeginPath = 59,
  kEndPath = 60,
  kStrokePath = 64,
  kPolygon16 = 86,
  kPolyline16 = 87,
  kExtCreatePen = 95,
};

constexpr std::size_t kHeaderBytes = 108;
constexpr std::uint32_t kSignature = 0x464D4520;  // " EMF"
constexpr std::uint32_t kVersion = 0x10000;
constexpr std::uint32_t kPenHandle = 1;
constexpr std::uint32_t kStockBlackPen = 0x80000007;
constexpr std::uint32_t kGeometricPen = 0x10000,
                        kFlatEnds = 0x200;  // solid, with round joins; ends also round

bool fits16(PointI p) {
  return p.x == static_cast<std::int16_t>(p.x) && p.y == static_cast<std::int16_t>(p.y);
}

}  // namespace

void EmfWriter::Box::add(PointI p, int margin) {
  left = std::min(left, p.x - margin);
  top = std::min(top, p.y - margin);
  right = std::max(right, p.x + margin);
  bottom = std::max(bottom, p.y + margin);
}

void EmfWriter::Box::add(const Box& box) {
  left = std::min(left, box.left);
  top = std::min(top, box.top);
  right = std::max(right, box.right);
  bottom = std::max(bottom, box.bottom);
}

EmfWriter::EmfWriter(int width, int height, double millimetres)
    : width_(width), height_(height), millimetres_(millimetres) {}

void EmfWriter::put16(std::int64_t value) {
  for (int shift = 0; shift < 16; shift += 8) bytes_ += static_cast<char>(value >> shift & 0xFF);
}

void EmfWriter::put32(std::int64_t value) {
  put16(value);
  put16(value >> 16);
}

void EmfWriter::put(const Box& box) {
  for (const std::int32_t edge : {box.left, box.top, box.right, box.bottom}) put32(edge);
}

void EmfWriter::begin(int type, std::size_t bytes) {
  put32(type);
  put32(static_cast<std::int64_t>(bytes));
  ++records_;
}

/// A plain solid pen has round ends and joins and is understood everywhere. Only flat ends take the record
/// for extended pens, which some players read wrongly.
void EmfWriter::createPen(const BandPath& path) {
  const bool flat = path.caps == CapStyle::flat;
  begin(flat ? kExtCreatePen : kCreatePen, flat ? 56 : 28);
  put32(kPenHandle);
  for (int i = 0; flat && i < 4; ++i) put32(0);  // no bitmap
  put32(flat ? kGeometricPen | kFlatEnds : 0);   // solid
  put32(path.width);
  put32(0);  // height of a plain pen, unused; solid brush of an extended one
  put32(path.colour);
  for (int i = 0; flat && i < 3; ++i) put32(0);  // no hatch, no dashes
}

void EmfWriter::points(const BandPath& path, const Box& box) {
  const std::size_t count = path.points.size();
  const bool narrow = std::all_of(path.points.begin(), path.points.end(), fits16);
  if (narrow)
    begin(path.closed ? kPolygon16 : kPolyline16, 28 + 4 * count);
  else
    begin(path.closed ? kPolygon : kPolyline, 28 + 8 * count);
  put(box);
  put32(static_cast<std::int64_t>(count));
  for (const PointI p : path.points)
    for (const std::int32_t value : {p.x, p.y}) narrow ? put16(value) : put32(value);
}

void EmfWriter::strokePath(const BandPath& path) {
  if (path.points.size() < 2) return;
  Box box;
  for (const PointI p : path.points) box.add(p, (path.width + 1) / 2);
  bounds_.add(box);
  createPen(path);
  begin(kSelectObject, 12);
  put32(kPenHandle);
  begin(kBeginPath, 8);
  begin(kMoveToEx, 16);
  put32(path.points[0].x);
  put32(path.points[0].y);
  points(path, box);
  begin(kEndPath, 8);
  begin(kStrokePath, 24);
  put(box);
  begin(kSelectObject, 12);  // a pen in use cannot be deleted
  put32(kStockBlackPen);
  begin(kDeleteObject, 12);
  put32(kPenHandle);
}

/// Readers compute sizes from the reference device's pixels and whole millimetres, so the device is made much
/// larger than the picture: then rounding its size changes nothing that anyone could measure. Its pixels are
/// the picture's fine units, which keeps the lines as exact as the units are, without any mapping mode.
std::string EmfWriter::header() const {
  const double times = std::clamp(10000 / millimetres_, 1.0, 1e5);
  const double high = millimetres_ * height_ / width_;
  EmfWriter out(width_, height_, millimetres_);
  out.begin(kHeader, kHeaderBytes);
  out.put(bounds_.empty() ? Box{0, 0, -1, -1} : bounds_);
  out.put({0, 0, toInt32(millimetres_ * 100), toInt32(high * 100)});
  out.put32(kSignature);
  out.put32(kVersion);
  out.put32(static_cast<std::int64_t>(kHeaderBytes + bytes_.size()));
  out.put32(records_);
  out.put16(kPenHandle + 1);  // handles, the unused number 0 among them
  out.put16(0);
  for (int i = 0; i < 3; ++i) out.put32(0);  // no description, no palette
  for (const double size : {width_ * times, height_ * times, millimetres_ * times, high * times})
    out.put32(std::max(1, toInt32(size)));
  for (int i = 0; i < 3; ++i) out.put32(0);  // no pixel format
  for (const double size : {millimetres_, high}) out.put32(std::max(1, toInt32(size * times * 1000)));
  return out.bytes_;
}

std::string EmfWriter::finish() {
  begin(kEof, 20);
  put32(0);   // no palette
  put32(16);  // where it would be
  put32(20);
  return header() + bytes_;
}

std::string knotMetafile(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                         double millimetres) {
  EmfWriter writer(view.width, view.height(), millimetres);
  forEachBandPath(curve, style, view, [&](const BandPath& path) { writer.strokePath(path); });
  return writer.finish();
}

}  // namespace lorivan
