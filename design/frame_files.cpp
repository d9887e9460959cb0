#include "design/frame_files.h"

#include <algorithm>

#include "base/numbers.h"
#include "design/source.h"

namespace lorivan {
namespace {

constexpr int kMostFrames = 9999;
constexpr int kMostDigits = 9;

}  // namespace

std::string FrameNames::name(int number) const {
  std::string text = std::to_string(number);
  const auto width = static_cast<std::size_t>(digits);
  if (text.size() < width) text.insert(0, width - text.size(), '0');
  return before + text + after;
}

int FrameNames::most() const {
  int most = 9;
  for (int i = 1; i < (digits == 0 ? kMostDigits : digits) && most < kMostFrames; ++i) most = most * 10 + 9;
  return most;
}

Result<FrameNames> parseFrameNames(const std::string& pattern) {
  const Error wrong = wrongUsage(
      "\"" + pattern + "\" does not number its frames; --animate takes pictures named like frame-%03d.png");
  const std::size_t folder = pattern.size() - fileNameOf(pattern).size();
  const std::size_t percent = pattern.find('%', folder), end = pattern.find('d', percent);
  if (percent == std::string::npos || end == std::string::npos) return wrong;
  if (pattern.find('%', percent + 1) != std::string::npos) return wrong;
  const std::string digits = pattern.substr(percent + 1, end - percent - 1);
  FrameNames names{pattern.substr(0, percent), pattern.substr(end + 1), 0};
  if (digits.empty()) return names;
  const auto width = parseInteger(digits, 1, kMostDigits);
  if (!width || digits.size() != 2 || digits[0] != '0') return wrong;
  names.digits = static_cast<int>(*width);
  return names;
}

FrameMaker::FrameMaker(const OutputJob& job, int most) : job_(job), steps_(animationSteps(job.knot.curve)) {
  const int all = static_cast<int>(steps_.size());
  stride_ = std::max(1, (all + most - 1) / most);
}

int FrameMaker::count() const {
  return std::max(1, (static_cast<int>(steps_.size()) + stride_ - 1) / stride_);
}

Result<std::string> FrameMaker::make(int number, PictureFormat format) const {
  const KnotStyle style = knotStyle(job_.document.fields, job_.colours);
  const GridView view =
      viewOf(job_.knot, job_.document.fields, style, job_.options.width.value_or(kPictureWidth), true);
  auto surface = job_.platform.createSurface(view.width, view.height());
  if (!surface) return surface.error();
  PictureOptions options = pictureOptions(job_.document.fields);
  options.transparent = job_.options.transparent && format == PictureFormat::png;
  drawAnimationFrame(**surface, job_.knot.graph, job_.knot.curve, style, view, options, steps_,
                     static_cast<std::size_t>(number) * static_cast<std::size_t>(stride_));
  if (const std::string fault = (*surface)->fault(); !fault.empty()) return unwritable(fault);
  auto bytes = job_.platform.encodePicture(**surface, format);
  if (!bytes || format != PictureFormat::png) return bytes;
  return withPngSource(std::move(*bytes), sourceOf(job_));
}

}  // namespace lorivan
