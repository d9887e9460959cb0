#include "platform/none/none_platform.h"

#include <algorithm>
#include <new>

#include "base/sink.h"
#include "platform/common/metafile_records.h"
#include "platform/none/picture_files.h"

namespace lorivan {
namespace {

constexpr std::size_t kLargestPicture = 200'000'000;

/// `from` shrunk or grown to fit into the size, pixel by pixel, in the middle of white paper.
std::unique_ptr<RecordingSurface> fitted(const RecordingSurface& from, int width, int height) {
  const PictureSize size = sizeWithin({from.width(), from.height()}, {width, height});
  auto to = std::make_unique<RecordingSurface>(size.width, size.height);
  const PixelBlock block = to->lendPixels();
  for (int y = 0; y < size.height; ++y)
    for (int x = 0; x < size.width; ++x)
      block.pixels[static_cast<std::ptrdiff_t>(y) * block.stride + x] =
          toArgb(from.pixel({x * from.width() / size.width, y * from.height() / size.height}));
  return to;
}

/// A path in the set of those that are claimed, which may outlive the platform.
class MemoryClaim final : public FileClaim {
 public:
  MemoryClaim(std::shared_ptr<std::set<std::string>> claimed, std::string path)
      : claimed_(std::move(claimed)), path_(std::move(path)) {}
  MemoryClaim(const MemoryClaim&) = delete;
  MemoryClaim& operator=(const MemoryClaim&) = delete;
  ~MemoryClaim() override { claimed_->erase(path_); }

 private:
  std::shared_ptr<std::set<std::string>> claimed_;
  std::string path_;
};

}  // namespace

std::string MemorySettings::read(std::string_view section, std::string_view key,
                                 std::string_view fallback) const {
  const auto found = values.find({std::string(section), std::string(key)});
  return found == values.end() ? std::string(fallback) : found->second;
}

void MemorySettings::write(std::string_view section, std::string_view key, std::string_view value) {
  values[{std::string(section), std::string(key)}] = value;
}

Status MemorySettings::flush() {
  ++flushes;
  return flushed;
}

Status MemoryClipboard::putDrawing(const ClipboardDrawing& lines, Surface& surface) {
  const Status put = putPicture(surface);
  if (put) drawing = lines;
  return put;
}

Status MemoryClipboard::putPicture(Surface& surface) {
  drawing = {};
  const PixelBlock from = surface.lendPixels();
  if (from.pixels == nullptr) return unwritable("this picture has no pixels to copy");
  picture = std::make_unique<RecordingSurface>(from.width, from.height);
  const PixelBlock to = picture->lendPixels();
  for (int y = 0; y < from.height; ++y)
    std::copy_n(from.pixels + static_cast<std::ptrdiff_t>(y) * from.stride, from.width,
                to.pixels + static_cast<std::ptrdiff_t>(y) * to.stride);
  return {};
}

Status RecordingHelp::open(const std::string& page) {
  pages.push_back(page);
  return {};
}

Result<std::unique_ptr<Surface>> NonePlatform::createSurface(int width, int height) {
  if (outOfMemory) throw std::bad_alloc();
  if (const Status size = checkPictureSize(width, height); !size) return size.error();
  return std::unique_ptr<Surface>(std::make_unique<RecordingSurface>(width, height));
}

Result<std::string> NonePlatform::encodePicture(Surface& picture, PictureFormat format) {
  if (outOfMemory) throw std::bad_alloc();
  const PixelBlock block = picture.lendPixels();
  if (block.pixels == nullptr) return unwritable("this picture has no pixels to save");
  const auto encode = format == PictureFormat::png ? encodePng : encodeBmp;
  return encode(block.pixels, block.width, block.height, block.stride);
}

Result<std::unique_ptr<Surface>> NonePlatform::loadPicture(const std::string& path, int width, int height) {
  if (const Status size = checkPictureSize(width, height); !size) return size.error();
  const Result<std::string> bytes = readFile(path, kLargestPicture);
  if (!bytes) return bytes.error();
  const Result<std::unique_ptr<RecordingSurface>> picture = decodeBmp(*bytes);
  if (!picture) return picture.error();
  return std::unique_ptr<Surface>(fitted(**picture, width, height));
}

Result<std::unique_ptr<Metafile>> NonePlatform::createMetafile(const MetafileSize& size) {
  return std::unique_ptr<Metafile>(std::make_unique<MetafileRecords>(size));
}

std::unique_ptr<FileClaim> NonePlatform::claim(const std::string& path) {
  if (path.empty() || !claimed_->insert(path).second) return nullptr;
  return std::make_unique<MemoryClaim>(claimed_, path);
}

Result<std::unique_ptr<Window>> NonePlatform::createWindow(const WindowSpec& spec,
                                                           const WindowEvents& events) {
  if (!windowStatus) return windowStatus.error();
  auto window = std::make_unique<NoneWindow>(spec, events, dialogs, screen);
  window_ = window.get();
  window->onDestroyed = [this] { window_ = nullptr; };
  return std::unique_ptr<Window>(std::move(window));
}

}  // namespace lorivan
