#include "platform/common/metafile_scale.h"

#include <algorithm>

#include "base/numbers.h"

namespace lorivan {

/// A mapping is the ratio of two whole extents. Both are made large, so that rounding them changes nothing
/// that anyone could measure.
MetafileScale metafileScale(const MetafileSize& size, double across, double down) {
  constexpr double kLongest = 1e6;
  const double high = size.millimetres * size.height / size.width;
  const double times =
      kLongest / std::max({1.0 * size.width, 1.0 * size.height, size.millimetres * across, high * down});
  const auto extent = [&](double length) { return std::max(1, toInt32(length * times)); };
  return {{toInt32(size.millimetres * 100), toInt32(high * 100)},
          {toInt32(size.millimetres * across), toInt32(high * down)},
          {extent(size.width), extent(size.height)},
          {extent(size.millimetres * across), extent(high * down)}};
}

}  // namespace lorivan
