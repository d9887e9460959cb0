// Pictures as bytes: BMP, PNG and the clipboard's form of a bitmap out; BMP, PNG and JPEG in.
#pragma once

#include <memory>
#include <string>

#include "base/result.h"
#include "platform/platform.h"
#include "platform/win32/dib_surface.h"

namespace lorivan::win32 {

/// A 24-bit bitmap, rows from the bottom, header first: what stands in a BMP file behind its file header.
/// Transparent pixels show the background.
std::string deviceIndependentBitmap(const DibSurface& picture);

Result<std::string> encodeSurface(const DibSurface& picture, PictureFormat format);

/// The picture file on white, made smaller where it does not fit into width x height.
Result<std::unique_ptr<DibSurface>> loadSurface(const std::string& path, int width, int height);

}  // namespace lorivan::win32
