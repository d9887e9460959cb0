#include "window/control_handlers.h"

#include "window/form_table.h"
#include "window/handlers.h"

namespace lorivan {
namespace {

struct ControlRow {
  ControlId control;
  Run run;
  When enabled = nullptr;  // none: always, or somebody else's affair
};

bool gridIsCurrent(const Workbench& b) { return b.gridIsCurrent(); }

template <int Box>
constexpr ControlRow colourRow() {
  return {kFirstColourBox + Box, [](Handlers& h) { h.txtCol_Click(Box); }};
}

constexpr auto kControlRows = std::to_array<ControlRow>({
    {controlId("lstType"), [](Handlers& h) { h.lstType_Click(); }},
    {controlId("cmdRandknot"), [](Handlers& h) { h.cmdRandknot_Click(); }},
    {controlId("cmdNewGrid"), [](Handlers& h) { h.cmdNewGrid_Click(); }},
    {controlId("cmdOldGrid"), [](Handlers& h) { h.cmdOldGrid_Click(); },
     [](const Workbench& b) { return b.hasGrid(); }},
    {controlId("cmd2D"), [](Handlers& h) { h.cmd2D_Click(); }, gridIsCurrent},
    {controlId("cmd3D"), [](Handlers& h) { h.cmd3D_Click(); },
     [](const Workbench& b) { return gridIsCurrent(b) && b.canCreate3D(); }},
    {controlId("cmd2DView"), [](Handlers& h) { h.cmd2DView_Click(); },
     [](const Workbench& b) { return b.flatIsBehind(); }},
    {controlId("cmd3DView"), [](Handlers& h) { h.cmd3DView_Click(); },
     [](const Workbench& b) { return b.knotDrawn() && !b.solidShown(); }},
    colourRow<0>(),
    colourRow<1>(),
    colourRow<2>(),
    colourRow<3>(),
    colourRow<4>(),
    colourRow<5>(),
    colourRow<6>(),
    colourRow<7>(),
    colourRow<8>(),
    colourRow<9>(),
    colourRow<10>(),
    colourRow<11>(),
    colourRow<12>(),
    colourRow<13>(),
    colourRow<14>(),
    {controlId("optPOV"), [](Handlers& h) { h.opt_Click(); }},
    {controlId("optVRML"), [](Handlers& h) { h.opt_Click(); }},
    {controlId("optOBJ"), [](Handlers& h) { h.opt_Click(); }},
    {controlId("optDXF"), [](Handlers& h) { h.opt_Click(); }},
    {controlId("optSTL"), [](Handlers& h) { h.opt_Click(); }},
    {controlId("optGemVision"), [](Handlers& h) { h.opt_Click(); }},
    {controlId("optXYZ"), [](Handlers& h) { h.opt_Click(); }},
    {controlId("Check1"), [](Handlers&) { /* read when a knot is traced */ }},
});

struct MouseRow {
  ControlId picture;
  void (*run)(Handlers&, const MouseEvent&);
};
constexpr auto kPictures = std::to_array<MouseRow>({
    {controlId("picGrid"), [](Handlers& h, const MouseEvent& e) { h.picGrid_Mouse(e); }},
    {controlId("picKnot"), [](Handlers& h, const MouseEvent& e) { h.picKnot_Mouse(e); }},
    {controlId("picShape"), [](Handlers& h, const MouseEvent& e) { h.picShape_Mouse(e); }},
    {controlId("picNav"), [](Handlers& h, const MouseEvent& e) { h.picNav_Mouse(e); }},
});

template <class Rows, class Member>
consteval bool names(const Rows& rows, Member member, ControlId control) {
  for (const auto& row : rows)
    if (row.*member == control) return true;
  return false;
}

/// Whether a row of the form that a person can use does something.
consteval bool isHandled(ControlId control) {
  const FormRow& row = form::kRows[control];
  switch (row.kind) {
    case ControlKind::group:
    case ControlKind::label:
    case ControlKind::text:
      return true;
    case ControlKind::number:
      return findParameter(row.name).has_value();
    case ControlKind::picture:
      return names(kPictures, &MouseRow::picture, control);
    case ControlKind::check:
      return findCheck(row.name).has_value() || names(kControlRows, &ControlRow::control, control);
    default:
      return names(kControlRows, &ControlRow::control, control);
  }
}

consteval bool everyControlIsHandled() {
  for (std::size_t i = 0; i < form::kRows.size(); ++i)
    if (!isHandled(static_cast<ControlId>(i))) return false;
  return true;
}
static_assert(everyControlIsHandled(), "a control of the form does nothing");

}  // namespace

void sortOutControls(Workbench& bench) {
  for (const ControlRow& row : kControlRows) {
    if (row.enabled == nullptr) continue;
    const bool on = row.enabled(bench);
    if (on != bench.window.enabled(row.control)) bench.window.setEnabled(row.control, on);
  }
}

void runControl(ControlId control, Handlers& handlers) {
  for (const ControlRow& row : kControlRows)
    if (row.control == control) row.run(handlers);
}

void runMouse(ControlId picture, Handlers& handlers, const MouseEvent& event) {
  for (const MouseRow& row : kPictures)
    if (row.picture == picture) row.run(handlers, event);
}

}  // namespace lorivan
