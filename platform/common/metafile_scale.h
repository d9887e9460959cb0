// How a metafile's units become pixels of the device that it refers to.
#pragma once

#include "platform/metafile.h"

namespace lorivan {

struct MetafileScale {
  PointI frame;             // lower right corner, hundredths of a millimetre
  PointI pixels;            // the same corner on the device
  PointI window, viewport;  // extents of the mapping mode: units and pixels of equal length
};

/// `across` and `down` are the device's pixels per millimetre.
MetafileScale metafileScale(const MetafileSize& size, double across, double down);

}  // namespace lorivan
