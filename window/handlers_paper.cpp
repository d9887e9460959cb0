// Handlers of what is printed, pasted as a drawing, or moves.
#include <cmath>

#include "base/sink.h"
#include "base/texts.h"
#include "design/animated_png.h"
#include "design/frame_files.h"
#include "design/printing.h"
#include "window/handlers.h"

namespace lorivan {
namespace {

constexpr int kMostFrames = 240, kFrameWidth = 600;

std::string sizeText(const PrintedSize& size) {
  const auto whole = [](double millimetres) { return std::to_string(std::lround(millimetres)); };
  return tr("{1} x {2} mm", whole(size.width), whole(size.height));
}

}  // namespace

/// Drawings are worked on elsewhere: the grid stays here.
void Handlers::mnuEditCopyDrawing_Click() {
  const auto svg = knotOutput("svg", true), metafile = knotOutput("emf", true);
  Clipboard& clipboard = bench_.platform.clipboard();
  clipboard.clear();
  if (!svg || !metafile) return bench_.status((svg ? metafile : svg).error().message);
  const Status copied = bench_.lendPicture(
      [&](Surface& picture) {
        return clipboard.putDrawing({*svg, *metafile}, picture);
      },
      true);
  bench_.status(copied ? tr("The knot is on the clipboard as a drawing") : copied.error().message);
}

void Handlers::mnuFilePrint_Click() {
  const StrandColours colours = strandColours(bench_.document().fields.boxes);
  const OutputJob job = outputJob(colours);
  PrintedSize size;
  const auto printed = bench_.window.print({tr("Knot, {1}", knotName()), printsLandscape(job)},
                                           [&](PrintPage& page) -> Status {
                                             const auto drawn = printKnot(job, page);
                                             if (!drawn) return drawn.error();
                                             size = *drawn;
                                             return {};
                                           });
  if (!printed) return bench_.status(tr("Nothing was printed: {1}", printed.error().message));
  if (*printed)
    bench_.status(size.whole
                      ? tr("Printed, {1}", sizeText(size))
                      : tr("Printed, {1}; the page is smaller than the knot, which is cut off at its edges",
                           sizeText(size)));
}

void Handlers::mnuFileSaveAnimation_Click() {
  const std::string path = bench_.files.toSave(
      {tr("Saving the animation"), tr("SVG drawings"), "svg", {}, {{tr("Animated PNG pictures"), "png"}}});
  if (path.empty()) return;
  const StrandColours colours = strandColours(bench_.document().fields.boxes);
  OutputJob job = outputJob(colours);
  job.options.solidView = job.options.outline = job.options.lines = false;
  const auto bytes = movingPicture(job, path);
  if (!bytes) return bench_.status(bytes.error().message);
  const Status written = writeFile(path, *bytes);
  written ? tellSaved(path) : bench_.status(written.error().message);
}

/// The animation as a file of this name. While the frames of a picture are made the user's events come in.
Result<std::string> Handlers::movingPicture(const OutputJob& job, const std::string& path) {
  const std::string extension = extensionOf(path);
  OutputJob moving = job;
  if (extension == "svg") {
    moving.options.animate = true;
    MemorySink sink;
    const Status made = makeOutput(*findFormat("svg", DxfKind::faces), moving, sink);
    if (!made) return made.error();
    return std::move(sink.bytes);
  }
  if (extension != "png") return wrongUsage("an animation is saved as svg or png, not as {1}", extension);
  if (!moving.options.width) moving.options.width = kFrameWidth;
  const KnotFields& fields = job.document.fields;
  const FrameMaker frames(moving, kMostFrames);
  const int last = frames.count(), delay = frameDelay(fields.number(Param::Animate)) * frames.stride();
  auto still = frames.make(last, PictureFormat::png);
  if (!still) return still;
  AnimatedPng file(std::move(*still), fields.check(Check::Loop));
  Status made;
  int number = 0;
  const auto step = [&] {
    const auto frame = frames.make(++number, PictureFormat::png);
    made = frame ? file.add(*frame, number < last ? delay : 5 * delay) : Status(frame.error());
    bench_.status(tr("Saving {1}: {2} %; Esc stops", fileNameOf(path), 100 * number / last));
    return made && number < last;
  };
  if (!bench_.actions.work(step, [&] { return bench_.window.processEvents(); }))
    return unwritable("The animation was not saved");
  if (!made) return made.error();
  return file.finish();
}

}  // namespace lorivan
