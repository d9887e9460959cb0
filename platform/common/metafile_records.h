// Enhanced metafiles written record by record, for systems that have no call for them. Records and their
// fields follow the published format description [MS-EMF].
#pragma once

#include <cstdint>

#include "platform/common/metafile_scale.h"

namespace lorivan {

/// The records that Windows itself makes of the same drawing.
class MetafileRecords final : public Metafile {
 public:
  explicit MetafileRecords(const MetafileSize& size);

  void strokePath(std::span<const PointI> points, bool closed, int width, Colour colour) override;
  void clip(PointI upperLeft, PointI lowerRight) override;
  Result<std::string> finish() override;

 private:
  struct Box {
    std::int32_t left = INT32_MAX, top = INT32_MAX, right = INT32_MIN, bottom = INT32_MIN;  // inclusive
    void add(PointI p, int margin);
  };

  void put16(std::int64_t value);
  void put32(std::int64_t value);
  void put(const Box& box);
  void begin(int type, std::size_t bytes);
  void putRecord(int type, std::initializer_list<std::int64_t> values);
  void putPoints(std::span<const PointI> points, bool closed, const Box& box);
  void putHeader(std::size_t bytesBehind, int records);

  MetafileScale scale_;
  std::string bytes_;
  int records_ = 0;
};

}  // namespace lorivan
