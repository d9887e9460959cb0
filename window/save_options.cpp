#include "window/save_options.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/numbers.h"
#include "base/texts.h"
#include "export/scene.h"
#include "platform/platform.h"

namespace lorivan {
namespace {

/// One choice; exactly one of the pointers is set.
struct Choice {
  std::string_view label;
  std::optional<double> OutputOptions::*length = nullptr;  // millimetres
  std::optional<int> OutputOptions::*pixels = nullptr;
  bool OutputOptions::*flag = nullptr;
};

/// In the order of the dialog's lines, which is that of the settings' text, too.
constexpr std::array<Choice, 9> kChoices = {{
    {"&Width of the knot in millimetres", &OutputOptions::millimetres},
    {"&Height of the knot in millimetres", &OutputOptions::height},
    {"&Pixels across, for pictures", nullptr, &OutputOptions::width},
    {"&Transparent background (SVG, PDF, PNG)", nullptr, nullptr, &OutputOptions::transparent},
    {"&Outlines of the bands, to cut (SVG, PDF, flat DXF)", nullptr, nullptr, &OutputOptions::outline},
    {"Width of the c&ut in millimetres", &OutputOptions::kerf},
    {"Centre &lines alone (SVG, PDF, flat DXF)", nullptr, nullptr, &OutputOptions::lines},
    {"Page or origin at the knot's &corner (SVG, PDF, flat DXF)", nullptr, nullptr,
     &OutputOptions::cornerOrigin},
    {"&Fuse the strands to one body (STL, OBJ, 3MF, GLB)", nullptr, nullptr, &OutputOptions::solid},
}};

bool isBox(const Choice& choice) { return choice.flag != nullptr; }

std::string textOf(const Choice& choice, const OutputOptions& options) {
  if (choice.flag != nullptr) return std::string(1, options.*choice.flag ? '1' : '0');
  if (choice.pixels != nullptr)
    return options.*choice.pixels ? std::to_string(*(options.*choice.pixels)) : std::string();
  const auto& length = options.*choice.length;
  return length ? shortestText(static_cast<float>(*length)) : std::string();
}

/// False for a text that is no such number. An empty one chooses nothing.
bool take(const Choice& choice, std::string_view text, OutputOptions& options) {
  text = trimmed(text);
  if (choice.flag != nullptr) {
    options.*choice.flag = text == "1";
    return true;
  }
  if (choice.pixels != nullptr) (options.*choice.pixels).reset();
  if (choice.length != nullptr) (options.*choice.length).reset();
  if (text.empty()) return true;
  if (choice.pixels != nullptr) {
    const auto pixels = parseInteger(text, 1, kLongestSide);
    if (pixels) options.*choice.pixels = static_cast<int>(*pixels);
    return pixels.has_value();
  }
  const auto length = parseTyped(text);
  if (choice.length == &OutputOptions::kerf && length == 0.0) return true;
  const bool good = length && *length >= kLeastMillimetres && *length <= kMostMillimetres;
  if (good) options.*choice.length = *length;
  return good;
}

template <class Value>
WrongLine wrongAt(Value OutputOptions::*value, Value OutputOptions::*Choice::*kind, std::string why) {
  const auto place = std::ranges::find(kChoices, value, kind);
  return {static_cast<std::size_t>(place - kChoices.begin()), std::move(why)};
}

/// What does not go together.
std::optional<WrongLine> clash(const OutputOptions& options) {
  if (options.outline && options.lines)
    return wrongAt(&OutputOptions::lines, &Choice::flag,
                   tr("Outlines have the centre lines, too: check only one of both."));
  if (options.kerf && !options.outline)
    return wrongAt(&OutputOptions::kerf, &Choice::length,
                   tr("Only outlines make up for a cut: check them, too."));
  if (options.solid && options.height)
    return wrongAt(&OutputOptions::height, &Choice::length,
                   tr("A fused body takes the width, not the height."));
  return std::nullopt;
}

/// The first entry that is no such number, or does not go with what is checked.
std::optional<WrongLine> wrongEntry(const std::vector<OptionLine>& lines) {
  OutputOptions options;
  for (std::size_t i = 0; i < kChoices.size() && i < lines.size(); ++i) {
    const std::string& text = lines[i].text;
    if (lines[i].isBox || take(kChoices[i], text, options)) continue;
    return WrongLine{i, kChoices[i].pixels != nullptr
                            ? tr("{1} is no whole number from 1 to {2}.", quoted(text), kLongestSide)
                            : tr("{1} is no length from 0.01 to 100000 millimetres.", quoted(text))};
  }
  return clash(optionsOf(lines));
}

}  // namespace

OptionDialogSpec saveOptionsDialog(const OutputOptions& options) {
  OptionDialogSpec dialog{tr("Saving options"),
                          tr("For every file that is saved from now on. What is left empty is as usual."),
                          {},
                          wrongEntry};
  for (const Choice& choice : kChoices) {
    const std::string text = textOf(choice, options);
    const bool box = isBox(choice);
    dialog.lines.push_back({translated(choice.label), box, box ? std::string() : text, box && text == "1"});
  }
  return dialog;
}

OutputOptions optionsOf(const std::vector<OptionLine>& lines) {
  OutputOptions options;
  for (std::size_t i = 0; i < kChoices.size() && i < lines.size(); ++i)
    take(kChoices[i], lines[i].isBox ? (lines[i].on ? "1" : "0") : lines[i].text, options);
  return options;
}

std::string saveOptionsText(const OutputOptions& options) {
  if (options == OutputOptions{}) return {};
  std::string text;
  for (const Choice& choice : kChoices) {
    if (&choice != kChoices.data()) text += ',';
    text += textOf(choice, options);
  }
  return text;
}

OutputOptions readSaveOptions(std::string_view text) {
  OutputOptions options;
  for (const Choice& choice : kChoices) {
    const auto comma = text.find(',');
    take(choice, text.substr(0, comma), options);
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  // A choice that does not go with the others is left out.
  while (const auto wrong = clash(options)) take(kChoices[wrong->place], "", options);
  return options;
}

}  // namespace lorivan
