// Picture files to and from surfaces. Needs no application object.
#pragma once

#include <memory>
#include <string>

#include "platform/qt/raster_surface.h"
#include "platform/services.h"

namespace lorivan {

/// The bytes of a PNG or of a 24-bit BMP file; the same bytes for the same picture.
Result<std::string> encodeRaster(Surface& picture, PictureFormat format);

/// A BMP, PNG or JPEG file on white, made smaller where it does not fit into width x height. Files of more
/// than 256 MB and pictures that checkPictureSize() refuses are not read.
Result<std::unique_ptr<RasterSurface>> loadRaster(const std::string& path, int width, int height);

}  // namespace lorivan
