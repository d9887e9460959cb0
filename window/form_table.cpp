#include "window/form_table.h"

#include <algorithm>
#include <deque>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "base/texts.h"
#include "design/names.h"

namespace lorivan {
namespace {

struct Words {
  std::string_view caption, tooltip;
};

/// What the parameter and check-box tables say of a field; empty for other controls.
Words wordsOf(std::string_view field) {
  if (const auto p = findParameter(field)) return {parameterSpec(*p).caption, parameterSpec(*p).tooltip};
  if (const auto c = findCheck(field)) {
    const CheckSpec& spec = checkSpec(*c);
    return {spec.caption, spec.tooltip};
  }
  return {};
}

/// The caption with "&" before the mnemonic letter.
std::string marked(std::string_view caption, char mnemonic) {
  std::string text(caption);
  const std::string letter = lowerCase(std::string(1, mnemonic));
  const auto at = mnemonic == 0 ? std::string::npos : lowerCase(caption).find(letter);
  if (at != std::string::npos) text.insert(at, 1, '&');
  return text;
}

struct BuiltForm {
  std::deque<std::string> captions;  // the table's texts point into it
  std::vector<ControlSpec> controls;
  std::array<ControlId, kParamCount> fields{};
  std::array<ControlId, kCheckCount> checks{};  // -1: it has none
};

BuiltForm makeForm() {
  BuiltForm form;
  form.checks.fill(-1);
  const auto& rows = form::kRows;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const FormRow& row = rows[i];
    // A label without words of its own takes those of the field behind it.
    const bool labels = row.kind == ControlKind::label && i + 1 < rows.size();
    const Words words = wordsOf(labels ? rows[i + 1].name : row.name);
    const bool captioned = row.kind == ControlKind::label || row.kind == ControlKind::check;
    const std::string_view caption = row.caption.empty() && captioned ? words.caption : row.caption;
    form.captions.push_back(marked(caption, row.mnemonic));
    form.controls.push_back({row.name, row.kind, form.captions.back(),
                             row.tooltip.empty() ? words.tooltip : row.tooltip, row.group, row.place});
    if (const auto p = findParameter(row.name))
      form.fields[static_cast<std::size_t>(*p)] = static_cast<ControlId>(i);
    if (const auto c = findCheck(row.name))
      form.checks[static_cast<std::size_t>(*c)] = static_cast<ControlId>(i);
  }
  return form;
}

const BuiltForm& form_() {
  static const BuiltForm form = makeForm();
  return form;
}

}  // namespace

std::span<const ControlSpec> formTable() { return form_().controls; }

ControlId controlNamed(std::string_view name) {
  const auto row = std::ranges::find(form::kRows, name, &FormRow::name);
  return static_cast<ControlId>(row - form::kRows.begin());
}

std::string controlHint(ControlId control) {
  if (control < 0) return {};
  const auto sentence = [](const auto& spec) {
    const std::string caption = translated(spec.caption), about = translated(spec.about);
    return spec.shortName.empty()
               ? tr("{1}: {2}", caption, about)
               : tr("{1} ({2}): {3}", caption, translated(kShortContext, spec.shortName), about);
  };
  if (const auto p = parameterOf(control)) {
    const ParamSpec& spec = parameterSpec(*p);
    return tr("{1}, {2} to {3}", sentence(spec), spec.min, spec.max);
  }
  if (const auto c = checkOf(control)) return sentence(checkSpec(*c));
  const ControlSpec& spec = formTable()[control];
  if (spec.kind == ControlKind::colourBox)
    return tr("Strand colour {1}: a click chooses another one", control - kFirstColourBox + 1);
  if (spec.kind == ControlKind::list)
    return tr("{1}: what its grid is made of; the arrow keys go through the shapes",
              translated(spec.tooltip));
  return translated(spec.tooltip);
}

ControlId fieldControl(Param parameter) { return form_().fields[static_cast<std::size_t>(parameter)]; }

ControlId checkControl(Check check) { return form_().checks[static_cast<std::size_t>(check)]; }

std::optional<Param> parameterOf(ControlId control) {
  if (control < 0 || static_cast<std::size_t>(control) >= form::kRows.size()) return std::nullopt;
  const FormRow& row = form::kRows[control];
  return row.kind == ControlKind::number ? findParameter(row.name) : std::nullopt;
}

std::optional<Check> checkOf(ControlId control) {
  if (control < 0 || static_cast<std::size_t>(control) >= form::kRows.size()) return std::nullopt;
  return findCheck(form::kRows[control].name);
}

}  // namespace lorivan
