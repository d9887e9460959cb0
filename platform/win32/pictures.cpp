#include "platform/win32/pictures.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "base/sink.h"
#include "platform/common/pixels.h"
#include "platform/win32/checked.h"
#include "platform/win32/gdi_plus.h"

namespace lorivan::win32 {
namespace {

namespace flat = Gdiplus::DllExports;

constexpr std::size_t kMostFileBytes = 256U << 20;
// The system's own encoder for PNG files.
constexpr CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

template <class Record>
void appendRecord(std::string& bytes, const Record& record) {
  std::array<char, sizeof(Record)> raw;
  std::memcpy(raw.data(), &record, sizeof record);
  bytes.append(raw.data(), raw.size());
}

BITMAPINFOHEADER headerFor(const DibSurface& picture, int rowBytes) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = picture.width();
  header.biHeight = picture.height();
  header.biPlanes = 1;
  header.biBitCount = 24;
  header.biSizeImage = static_cast<DWORD>(rowBytes) * static_cast<DWORD>(picture.height());
  header.biXPelsPerMeter = header.biYPelsPerMeter = 3780;  // 96 pixels per inch
  return header;
}

/// Rows of blue, green, red, each filled up to a multiple of four bytes.
void appendRow(std::string& bytes, const DibSurface& picture, int y, int rowBytes) {
  const PixelBlock block = picture.pixels();
  const std::uint32_t* row = block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride;
  const std::size_t end = bytes.size() + static_cast<std::size_t>(rowBytes);
  for (int x = 0; x < block.width; ++x) {
    const std::uint32_t argb =
        picture.isTransparent() ? toArgb(overBackground(row[x], picture.background())) : row[x];
    for (const int shift : {0, 8, 16}) bytes.push_back(static_cast<char>(argb >> shift & 0xFF));
  }
  bytes.resize(end, '\0');
}

std::uint32_t unpremultiplied(std::uint32_t argb) {
  const std::uint32_t alpha = argb >> 24;
  if (alpha == 0 || alpha == 255) return argb;
  std::uint32_t straight = alpha << 24;
  for (const int shift : {0, 8, 16})
    straight |= std::min<std::uint32_t>(255, ((argb >> shift & 0xFF) * 255 + alpha / 2) / alpha) << shift;
  return straight;
}

Result<std::string> bytesOf(IStream* stream) {
  STATSTG facts{};
  HRESULT code = stream->Stat(&facts, STATFLAG_NONAME);
  if (SUCCEEDED(code)) code = stream->Seek({}, STREAM_SEEK_SET, nullptr);
  if (FAILED(code)) return unwritable(systemFault("IStream::Stat", static_cast<DWORD>(code)));
  std::string bytes(static_cast<std::size_t>(facts.cbSize.QuadPart), '\0');
  ULONG got = 0;
  code = stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &got);
  if (FAILED(code) || got != bytes.size())
    return unwritable(systemFault("IStream::Read", static_cast<DWORD>(code)));
  return bytes;
}

Result<std::string> saveAsPng(const PixelBlock& block, Gdiplus::PixelFormat format) {
  Result<PlusBitmap> bitmap = bitmapOver(block, format);
  if (!bitmap) return bitmap.error();
  const OwnedStream stream(SHCreateMemStream(nullptr, 0));
  if (!stream) return unwritable(systemFault("SHCreateMemStream", ERROR_OUTOFMEMORY));
  const Status saved =
      checkedPlus(flat::GdipSaveImageToStream(bitmap->get(), stream.get(), &kPngEncoder, nullptr),
                  "GdipSaveImageToStream");
  if (!saved) return saved.error();
  return bytesOf(stream.get());
}

Result<std::string> encodePng(const DibSurface& picture) {
  PixelBlock block = picture.pixels();
  if (!picture.isTransparent()) return saveAsPng(block, PixelFormat32bppRGB);
  std::vector<std::uint32_t> straight(
      block.pixels, block.pixels + static_cast<std::ptrdiff_t>(block.stride) * block.height);
  std::transform(straight.begin(), straight.end(), straight.begin(), unpremultiplied);
  block.pixels = straight.data();
  return saveAsPng(block, PixelFormat32bppARGB);
}

std::string encodeBmp(const DibSurface& picture) {
  const std::string body = deviceIndependentBitmap(picture);
  BITMAPFILEHEADER file{};
  file.bfType = 0x4D42;  // "BM"
  file.bfOffBits = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
  file.bfSize = static_cast<DWORD>(sizeof(BITMAPFILEHEADER) + body.size());
  std::string bytes;
  appendRecord(bytes, file);
  return bytes + body;
}

/// GDI+ reads more kinds of files than the program promises; the others are refused by their first bytes.
bool isKnownPicture(const std::string& bytes) {
  constexpr std::array<std::string_view, 3> beginnings = {"BM", "\x89PNG", "\xFF\xD8\xFF"};
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [&](std::string_view b) { return std::string_view(bytes).substr(0, b.size()) == b; });
}

Result<PictureSize> sizeOf(Gdiplus::GpImage* image) {
  UINT width = 0, height = 0;
  flat::GdipGetImageWidth(image, &width);
  flat::GdipGetImageHeight(image, &height);
  const auto tooLarge = [](UINT side) { return side > static_cast<UINT>(kLongestSide); };
  if (tooLarge(width) || tooLarge(height)) return unreadable("the picture is too large");
  const PictureSize size{static_cast<int>(width), static_cast<int>(height)};
  if (const Status fits = checkPictureSize(size.width, size.height); !fits)
    return unreadable(fits.error().message);
  return size;
}

Status drawWhole(Gdiplus::GpImage* image, DibSurface& surface) {
  PlusGraphics graphics;
  const Status drawn =
      checkedPlus(flat::GdipCreateFromHDC(surface.context(), graphics.receive()), "GdipCreateFromHDC");
  if (!drawn) return drawn;
  flat::GdipSetInterpolationMode(graphics.get(), Gdiplus::InterpolationModeHighQualityBicubic);
  return checkedPlus(flat::GdipDrawImageRectI(graphics.get(), image, 0, 0, surface.width(), surface.height()),
                     "GdipDrawImageRectI");
}

}  // namespace

std::string deviceIndependentBitmap(const DibSurface& picture) {
  GdiFlush();
  const int rowBytes = (picture.width() * 3 + 3) / 4 * 4;
  const BITMAPINFOHEADER header = headerFor(picture, rowBytes);
  std::string bytes;
  bytes.reserve(sizeof header + header.biSizeImage);
  appendRecord(bytes, header);
  for (int y = picture.height() - 1; y >= 0; --y) appendRow(bytes, picture, y, rowBytes);
  return bytes;
}

Result<std::string> encodeSurface(const DibSurface& picture, PictureFormat format) {
  GdiFlush();
  if (format == PictureFormat::bmp) return encodeBmp(picture);
  return encodePng(picture);
}

Result<std::unique_ptr<DibSurface>> loadSurface(const std::string& path, int width, int height) {
  const Result<std::string> bytes = readFile(path, kMostFileBytes);
  if (!bytes) return bytes.error();
  if (!isKnownPicture(*bytes)) return unreadable("it is no BMP, PNG or JPEG picture");
  const OwnedStream stream(
      SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes->data()), static_cast<UINT>(bytes->size())));
  if (!stream) return unwritable(systemFault("SHCreateMemStream", ERROR_OUTOFMEMORY));
  PlusImage image;
  if (flat::GdipLoadImageFromStream(stream.get(), image.receive()) != Gdiplus::Ok)
    return unreadable("the picture in it is damaged");
  const Result<PictureSize> size = sizeOf(image.get());
  if (!size) return size.error();
  const PictureSize shown = sizeWithin(*size, {width, height});
  Result<std::unique_ptr<DibSurface>> surface = DibSurface::create(shown.width, shown.height);
  if (!surface) return surface.error();
  if (const Status drawn = drawWhole(image.get(), **surface); !drawn) return drawn.error();
  return surface;
}

}  // namespace lorivan::win32
