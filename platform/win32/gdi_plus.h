// GDI+ through its flat interface: its start and end, and drawing that keeps its objects on no path.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "base/result.h"
#include "platform/surface.h"
#include "platform/win32/handles.h"

namespace lorivan::win32 {

/// Holds GDI+ open; every other object of this header must be gone before it.
class PlusSession {
 public:
  PlusSession();
  PlusSession(const PlusSession&) = delete;
  PlusSession& operator=(const PlusSession&) = delete;
  ~PlusSession();
  const Status& status() const { return status_; }

 private:
  ULONG_PTR token_ = 0;
  Status status_;
};

struct DeletePlusGraphics {
  void operator()(Gdiplus::GpGraphics* graphics) const { Gdiplus::DllExports::GdipDeleteGraphics(graphics); }
};
struct DeletePlusBrush {
  void operator()(Gdiplus::GpSolidFill* brush) const { Gdiplus::DllExports::GdipDeleteBrush(brush); }
};
struct DeletePlusPen {
  void operator()(Gdiplus::GpPen* pen) const { Gdiplus::DllExports::GdipDeletePen(pen); }
};
struct DisposePlusImage {
  void operator()(Gdiplus::GpImage* image) const { Gdiplus::DllExports::GdipDisposeImage(image); }
};
using PlusGraphics = Owned<Gdiplus::GpGraphics*, DeletePlusGraphics>;
using PlusBrush = Owned<Gdiplus::GpSolidFill*, DeletePlusBrush>;
using PlusPen = Owned<Gdiplus::GpPen*, DeletePlusPen>;
using PlusImage = Owned<Gdiplus::GpImage*, DisposePlusImage>;
using PlusBitmap = Owned<Gdiplus::GpBitmap*, DisposePlusImage>;

/// A bitmap over pixels that stay the caller's; they must outlive it.
Result<PlusBitmap> bitmapOver(const PixelBlock& block, Gdiplus::PixelFormat format);

/// Where GDI+ draws: a memory context, or a bitmap that keeps alpha.
struct PlusTarget {
  HDC context = nullptr;
  Gdiplus::GpBitmap* bitmap = nullptr;  // taken when it is not null
};

// Each call draws one shape in an opaque colour, aliased.
Status plusFill(PlusTarget target, std::span<const PointF> outline, Colour colour);
Status plusLines(PlusTarget target, std::span<const PointI> points, bool closed, const Pen& pen);
Status plusCircle(PlusTarget target, PointI centre, int radius, const Pen& pen);

}  // namespace lorivan::win32
