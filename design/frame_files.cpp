#include "design/frame_files.h"

#include <algorithm>

#include "design/source.h"

namespace lorivan {

Result<NumberedName> parseFrameNames(const std::string& pattern) {
  auto names = parseNumberedName(pattern);
  if (names && names->places() == 1) return names;
  return wrongUsage("\"{1}\" does not number its frames; --animate takes pictures named like frame-%03d.png",
                    pattern);
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
