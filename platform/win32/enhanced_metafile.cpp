#include "platform/win32/enhanced_metafile.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "platform/common/metafile_scale.h"
#include "platform/win32/checked.h"

namespace lorivan::win32 {
namespace {

/// A device's pixels per millimetre, as the header of the metafile says them.
double pixelDensity(HDC context, int pixels, int millimetres) {
  return 1.0 * GetDeviceCaps(context, pixels) / std::max(1, GetDeviceCaps(context, millimetres));
}

MetafileScale scaleOn(HDC context, const MetafileSize& size) {
  return metafileScale(size, pixelDensity(context, HORZRES, HORZSIZE),
                       pixelDensity(context, VERTRES, VERTSIZE));
}

}  // namespace

/// The frame is given, because the system would draw it round the middle lines of the bands.
Result<std::unique_ptr<Metafile>> EnhancedMetafile::create(const MetafileSize& size) {
  const WindowContext screen(nullptr);
  const PointI frame = scaleOn(screen.get(), size).frame;
  const RECT edges = {0, 0, frame.x, frame.y};
  const HDC context = CreateEnhMetaFileW(screen.get(), nullptr, &edges, nullptr);
  if (context == nullptr) return unwritable(systemFault("CreateEnhMetaFile"));
  std::unique_ptr<EnhancedMetafile> made(new EnhancedMetafile(context));
  if (const Status scaled = made->setScale(size); !scaled) return scaled.error();
  return std::unique_ptr<Metafile>(std::move(made));
}

Status EnhancedMetafile::setScale(const MetafileSize& size) {
  const HDC context = context_.get();
  const MetafileScale scale = scaleOn(context, size);
  pixels_ = scale.pixels;
  return checked(SetMapMode(context, MM_ANISOTROPIC) != 0 &&
                     SetWindowExtEx(context, scale.window.x, scale.window.y, nullptr) &&
                     SetViewportExtEx(context, scale.viewport.x, scale.viewport.y, nullptr),
                 "SetMapMode");
}

void EnhancedMetafile::strokePath(std::span<const PointI> points, bool closed, int width, Colour colour) {
  if (points.size() < 2 || !status_) return;
  points_.clear();
  for (const PointI p : points) points_.push_back({p.x, p.y});
  status_ = stroke(closed, width, colour);
}

void EnhancedMetafile::clip(PointI upperLeft, PointI lowerRight) {
  if (!status_) return;
  const int clipped = IntersectClipRect(context_.get(), upperLeft.x, upperLeft.y, lowerRight.x, lowerRight.y);
  status_ = checked(clipped != ERROR, "IntersectClipRect");
}

Status EnhancedMetafile::stroke(bool closed, int width, Colour colour) {
  const HDC context = context_.get();
  const OwnedPen pen(CreatePen(PS_SOLID, width, colour));
  if (!pen) return unwritable(systemFault("CreatePen"));
  const Selection selected(context, pen.get());
  const int count = static_cast<int>(points_.size());
  return checked(
      selected && BeginPath(context) && MoveToEx(context, points_[0].x, points_[0].y, nullptr) &&
          (closed ? Polygon(context, points_.data(), count) : Polyline(context, points_.data(), count)) &&
          EndPath(context) && StrokePath(context),
      "StrokePath");
}

/// Some readers show what the bounds hold, and the system's own may leave out the width of the pens. They are
/// set to the frame.
void EnhancedMetafile::widenBounds(std::string& bytes) const {
  const RECTL bounds = {0, 0, pixels_.x, pixels_.y};
  std::memcpy(bytes.data() + offsetof(ENHMETAHEADER, rclBounds), &bounds, sizeof bounds);
}

Result<std::string> EnhancedMetafile::finish() {
  const OwnedMetafile metafile(CloseEnhMetaFile(context_.release()));
  if (!status_) return status_.error();
  if (!metafile) return unwritable(systemFault("CloseEnhMetaFile"));
  std::string bytes(GetEnhMetaFileBits(metafile.get(), 0, nullptr), '\0');
  const UINT size = static_cast<UINT>(bytes.size());
  if (size < sizeof(ENHMETAHEADER) ||
      GetEnhMetaFileBits(metafile.get(), size, reinterpret_cast<BYTE*>(bytes.data())) != size)
    return unwritable(systemFault("GetEnhMetaFileBits"));
  widenBounds(bytes);
  return bytes;
}

}  // namespace lorivan::win32
