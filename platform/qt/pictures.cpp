#include "platform/qt/pictures.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <algorithm>

#include "base/sink.h"
#include "platform/common/wide_registers.h"
#include "platform/platform.h"
#include "platform/qt/convert.h"

namespace lorivan {
namespace {

constexpr std::size_t kMostPictureBytes = 256'000'000;
constexpr int kMostDecodedMegabytes = static_cast<int>(kMostPixels * 4 >> 20) + 1;

/// The surface's pixels without their alpha, or with it when the picture is transparent.
QImage pixelsOf(Surface& picture) {
  const auto* raster = dynamic_cast<RasterSurface*>(&picture);
  const bool transparent = raster && raster->isTransparent();
  const PixelBlock block = picture.lendPixels();
  if (!block.pixels) return {};
  const auto format = transparent ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
  QImage image(reinterpret_cast<const uchar*>(block.pixels), block.width, block.height,
               static_cast<qsizetype>(block.stride) * 4, format);
  image.setDotsPerMeterX(3780);
  image.setDotsPerMeterY(3780);
  return image;
}

QImage onWhite(const QImage& picture) {
  QImage page(picture.size(), QImage::Format_ARGB32_Premultiplied);
  if (page.isNull()) return page;
  page.fill(Qt::white);
  QPainter(&page).drawImage(0, 0, picture);
  leaveWideRegisters();
  return page;
}

}  // namespace

Result<std::string> encodeRaster(Surface& picture, PictureFormat format) {
  QImage image = pixelsOf(picture);
  if (image.isNull()) return unwritable("this picture has no pixels to save");
  if (format == PictureFormat::bmp && image.hasAlphaChannel()) image = onWhite(image);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  QImageWriter writer(&buffer, format == PictureFormat::png ? "png" : "bmp");
  if (!buffer.open(QIODevice::WriteOnly) || !writer.write(image))
    return unwritable("the picture cannot be encoded: {1}", toUtf8(writer.errorString()));
  return bytes.toStdString();
}

Result<std::unique_ptr<RasterSurface>> loadRaster(const std::string& path, int width, int height) {
  if (const Status size = checkPictureSize(width, height); !size) return size.error();
  const auto file = readFile(path, kMostPictureBytes);
  if (!file) return file.error();
  QByteArray bytes = QByteArray::fromRawData(file->data(), static_cast<qsizetype>(file->size()));
  QBuffer buffer(&bytes);
  QImageReader reader(&buffer);
  const QByteArray format = buffer.open(QIODevice::ReadOnly) ? reader.format() : QByteArray();
  if (format != "bmp" && format != "png" && format != "jpeg")
    return unreadable("it is no BMP, PNG or JPEG picture");
  reader.setAutoTransform(true);
  QImageReader::setAllocationLimit(kMostDecodedMegabytes);
  const QSize size = reader.size();
  if (const Status fits = checkPictureSize(std::max(1, size.width()), std::max(1, size.height())); !fits)
    return unreadable(fits.error().message);
  const QImage picture = reader.read();
  if (picture.isNull()) return unreadable(toUtf8(reader.errorString()));
  const PictureSize shown = sizeWithin({picture.width(), picture.height()}, {width, height});
  const QImage page =
      onWhite(picture.scaled(shown.width, shown.height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  if (page.isNull()) return unwritable("there is not enough memory to show it");
  auto surface = RasterSurface::create(shown.width, shown.height);
  if (!surface) return surface;
  const PixelBlock block = (*surface)->lendPixels();
  for (int y = 0; y < shown.height; ++y)
    std::copy_n(reinterpret_cast<const std::uint32_t*>(page.constScanLine(y)), shown.width,
                block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride);
  return surface;
}

}  // namespace lorivan
