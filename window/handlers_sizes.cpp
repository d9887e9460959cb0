// Handlers that give the knot a wanted size.
#include "base/numbers.h"
#include "base/texts.h"
#include "window/handlers.h"

namespace lorivan {

void Handlers::mnuEditFitFrame_Click() {
  const std::string asked =
      bench_.window.inputBox(tr("Width and height of the drawn knot in millimetres, bands included"),
                             tr("Fit to frame"), "200 x 120");
  if (asked.empty()) return;
  const auto size = parseLengths(asked);
  if (!size) return bench_.status(size.error().message);
  adoptSize(tr("Fit to frame"),
            fitFrame(bench_.document(), size->first, size->second, bench_.saveOptions.outline), false);
}

void Handlers::mnuEditFitRing_Click() {
  const std::string asked = bench_.window.inputBox(
      tr("Inner diameter and height of the ring in millimetres; Ring % below 100 makes a bracelet"),
      tr("Fit to ring"), "18.2 x 6");
  if (asked.empty()) return;
  const auto size = parseLengths(asked);
  if (!size) return bench_.status(size.error().message);
  adoptSize(tr("Fit to ring"), fitRing(bench_.document(), size->first, size->second), true);
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
