// Handlers that give the knot a wanted size.
#include "base/numbers.h"
#include "base/texts.h"
#include "window/handlers.h"

namespace lorivan {

void Handlers::mnuEditFitFrame_Click() {
  const bool outlines = bench_.saveOptions.outline;
  const auto size =
      askLengths(outlines ? tr("Width and height of what is cut out, in millimetres")
                          : tr("Width and height of the drawn knot in millimetres, bands included"),
                 tr("Fit to frame"), frame_);
  if (size)
    adoptSize(tr("Fit to frame"), fitFrame(bench_.document(), size->first, size->second, outlines), false);
}

void Handlers::mnuEditFitRing_Click() {
  const auto size = askLengths(
      tr("Inner diameter and height of the ring in millimetres; Ring % below 100 makes a bracelet"),
      tr("Fit to ring"), ring_);
  if (size) adoptSize(tr("Fit to ring"), fitRing(bench_.document(), size->first, size->second), true);
}

/// Nothing when the question is cancelled, or the answer is not two lengths, which the user is told. Others
/// are proposed the next time.
std::optional<TwoLengths> Handlers::askLengths(const std::string& prompt, const std::string& title,
                                               std::string& initial) {
  const std::string asked = bench_.window.inputBox(prompt, title, initial);
  if (asked.empty()) return {};
  const auto size = parseLengths(asked);
  if (!size) {
    bench_.status(size.error().message);
    return {};
  }
  initial = asked;
  return *size;
}

/// The document holds no millimetres: the width to save files with is told.
void Handlers::adoptSize(const std::string& step, const Result<FittedSize>& fitted, bool solid) {
  if (!fitted) return bench_.tell(fitted.error());
  if (!bench_.step(step, fitted->document, After::draw)) return;
  if (solid && (bench_.modelCurrent() || bench_.buildModel(true))) showModel();
  bench_.sortOut();
  const double width = roundHalfEven(fitted->width * 1000) / 1000;
  bench_.status(tr("Save it {1} mm wide: {2}", shortestText(static_cast<float>(width)), fittedNote(*fitted)));
}

}  // namespace lorivan
