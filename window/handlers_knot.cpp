// Handlers of the grid and the 2-D knot.
#include "base/texts.h"
#include "design/edits.h"
#include "design/fit.h"
#include "window/captions.h"
#include "window/handlers.h"
#include "window/languages.h"
#include "window/summaries.h"
#include "window/waiting.h"

namespace lorivan {

void Handlers::cmdNewGrid_Click() { makeGridAnew(); }

void Handlers::mnuFileNewGrid_Click() { makeGridAnew(); }

void Handlers::makeGridAnew() {
  const Document& document = bench_.document();
  if (document.fields.shape != Shape::Custom) {
    const Document before = document;
    bench_.begin(tr("New grid"), newGrid(before), After::grid);
    tellDropped(before);
    return;
  }
  // Its lines stay; a grid comes from the Shape menu.
  bench_.show(document.lines ? After::same : After::sheet);
  bench_.status(hasLines(bench_.sheet.shape())
                    ? tr("A shape of your own gets its grid from the Shape menu: AutoGrid or New Grid")
                    : shapeSummary(bench_.sheet.shape()));
}

void Handlers::cmdOldGrid_Click() {
  bench_.bringToFront(Picture::flat);
  bench_.showGrid();
  bench_.sortOut();
  bench_.status(bench_.summary());
}

void Handlers::cmdRandknot_Click() {
  const ActionQueue::Working working(bench_.actions);
  Window& window = bench_.window;
  const ControlId button = controlId("cmdRandknot");
  // An animation is no time of waiting.
  const bool waits = !bench_.document().fields.check(Check::Animate);
  const Caption caption(window, button, waits ? waitCaption() : window.text(button));
  if (!window.processEvents()) return;
  const Hourglass hourglass(window, waits);
  bench_.begin(tr("Random knot"), roomyRandomKnot(bench_.document(), bench_.random), After::draw);
}

void Handlers::cmd2D_Click() {
  bench_.bringToFront(Picture::flat);
  if (bench_.drawKnot(true, true)) bench_.status(bench_.summary());
  bench_.sortOut();
}

void Handlers::mnuViewFitPicture_Click() {
  const bool on = !bench_.document().fields.fitPicture;
  bench_.step(on ? tr("Fit picture") : tr("Fit picture off"), withFitPicture(bench_.document(), on),
              After::same);
}

void Handlers::mnuViewClassic_Click() {
  const bool on = !bench_.document().fields.check(Check::Classic);
  bench_.step(checkStep(Check::Classic, on), withCheck(bench_.document(), Check::Classic, on), After::same);
}

void Handlers::mnuViewDrawAtOnce_Click() {
  bench_.drawAtOnce = !bench_.drawAtOnce;
  if (bench_.drawAtOnce) bench_.show(After::same);
  bench_.sortOut();
  bench_.status(bench_.drawAtOnce ? tr("Every grid is drawn as a knot at once")
                                  : tr("A new grid is shown by itself; Create 2D draws its knot"));
}

/// Texts that are there already stay as they are; the next start makes all of them anew.
void Handlers::mnuLanguage_Click(std::string_view code) {
  bench_.language = code;
  bench_.sortOut();
  const std::string_view chosen = languageFor(code, bench_.platform.language());
  for (const Language& language : languages())
    if (language.code == chosen) bench_.status(tr("{1} from the next start on", language.name));
}

}  // namespace lorivan
