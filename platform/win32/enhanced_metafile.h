// Metafiles made by the system's own call, in memory: the caller writes the file.
#pragma once

#include <memory>
#include <vector>

#include "platform/metafile.h"
#include "platform/win32/handles.h"

namespace lorivan::win32 {

class EnhancedMetafile final : public Metafile {
 public:
  static Result<std::unique_ptr<Metafile>> create(const MetafileSize& size);

  void strokePath(std::span<const PointI> points, bool closed, int width, Colour colour) override;
  void clip(PointI upperLeft, PointI lowerRight) override;
  Result<std::string> finish() override;

 private:
  explicit EnhancedMetafile(HDC context) : context_(context) {}
  Status setScale(const MetafileSize& size);
  void widenBounds(std::string& bytes) const;
  Status stroke(bool closed, int width, Colour colour);

  OwnedMetafileContext context_;
  PointI pixels_;  // lower right corner on the device
  std::vector<POINT> points_;
  Status status_;
};

}  // namespace lorivan::win32
