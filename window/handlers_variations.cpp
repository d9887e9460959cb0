// Handlers of the sheet of variations.
#include "base/texts.h"
#include "window/handlers.h"
#include "window/summaries.h"

namespace lorivan {
namespace {

/// The field that has the focus, where the picture changes with it.
std::optional<Param> focusedField(const Workbench& bench) {
  const ControlId focused = bench.window.focused();
  const auto p = focused < 0 ? std::nullopt : parameterOf(focused);
  return p && variesPicture(*p) ? p : std::nullopt;
}

std::vector<Variation> along(const Document& document, const std::vector<Param>& fields) {
  return fields.size() == 2 ? variationsAlong(document, fields[0], fields[1])
                            : variationsAlong(document, fields[0]);
}

}  // namespace

void Handlers::mnuViewVariations_Click() {
  const Document& document = bench_.document();
  const auto field = focusedField(bench_);
  if (field && document.lines)
    bench_.showVariations(along(document, {*field}), {});
  else
    bench_.showVariations(randomVariations(document, bench_.random), tr("Random knot"));
}

void Handlers::mnuViewVariationsOf_Click() {
  const auto field = focusedField(bench_);
  const std::string asked =
      bench_.window.inputBox(tr("One or two fields to vary, for example: Swish Width"), tr("Variations"),
                             field ? std::string(parameterSpec(*field).field) : tr("Swish Width"));
  if (asked.empty()) return;
  const auto fields = variedFields(asked);
  if (!fields) return bench_.status(fields.error().message);
  bench_.showVariations(along(bench_.document(), *fields), {});
}

void Handlers::variationsMouse(const MouseEvent& event) {
  const bool hit = event.action != MouseAction::leave && bench_.variations.markAt(event.x, event.y);
  bench_.window.setPointer(controlId("picGrid"), hit ? PointerShape::hand : PointerShape::arrow);
  if (hit && event.action == MouseAction::press && event.button == 1) adoptVariation();
}

bool Handlers::variationsKey(Key key) {
  if (key == Key::escape) {
    bench_.leaveVariations();
    return true;
  }
  // Fields and buttons keep their keys.
  const ControlId focused = bench_.window.focused();
  if (focused >= 0 && focused != controlId("picGrid")) return false;
  if (key == Key::enter)
    adoptVariation();
  else
    return bench_.variations.moveMark(key);
  return true;
}

void Handlers::adoptVariation() {
  const Variation chosen = bench_.variations.marked();
  const std::string name = bench_.variations.stepName();
  const bool random = bench_.variations.random();
  bench_.window.setPointer(controlId("picGrid"), PointerShape::arrow);
  if (random)
    bench_.begin(name, chosen.document, After::draw);
  else
    bench_.step(name, chosen.document, After::all);
}

}  // namespace lorivan
