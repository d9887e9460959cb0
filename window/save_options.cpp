#include "window/save_options.h"

#include <array>

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

constexpr std::array<Choice, 7> kChoices = {{
    {"&Width of the knot in millimetres", &OutputOptions::millimetres},
    {"&Height of the knot in millimetres", &OutputOptions::height},
    {"&Pixels across, for pictures", nullptr, &OutputOptions::width},
    {"&Transparent background (SVG, PDF, PNG)", nullptr, nullptr, &OutputOptions::transparent},
    {"&Outlines of the bands, to cut (SVG, PDF, flat DXF)", nullptr, nullptr, &OutputOptions::outline},
    {"Centre &lines alone (SVG, PDF, flat DXF)", nullptr, nullptr, &OutputOptions::lines},
    {"Page or origin at the knot's &corner (SVG, PDF, flat DXF)", nullptr, nullptr,
     &OutputOptions::cornerOrigin},
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
  if (text.empty()) return true;
  if (choice.pixels != nullptr) {
    const auto pixels = parseInteger(text, 1, kLongestSide);
    if (pixels) options.*choice.pixels = static_cast<int>(*pixels);
    return pixels.has_value();
  }
  const auto length = parseTyped(text);
  const bool good = length && *length >= kLeastMillimetres && *length <= kMostMillimetres;
  if (good) options.*choice.length = *length;
  return good;
}

/// The first entry that is no such number.
std::optional<WrongLine> wrongEntry(const std::vector<OptionLine>& lines) {
  OutputOptions options;
  for (std::size_t i = 0; i < kChoices.size() && i < lines.size(); ++i) {
    const std::string& text = lines[i].text;
    if (lines[i].isBox || take(kChoices[i], text, options)) continue;
    return WrongLine{i, kChoices[i].pixels != nullptr
                            ? tr("{1} is no whole number from 1 to {2}.", quoted(text), kLongestSide)
                            : tr("{1} is no length from 0.01 to 100000 millimetres.", quoted(text))};
  }
  return std::nullopt;
}

}  // namespace

OptionDialogSpec saveOptionsDialog(const OutputOptions& options) {
  OptionDialogSpec dialog{tr("Saving options"),
                          tr("For every file that is saved from now on. What is left empty is as usual."),
                          {},
                          wrongEntry};
  for (const Choice& choice : kChoices) {
    const std::string text = textOf(choice, options);
    dialog.lines.push_back(
        {translated(choice.label), isBox(choice), isBox(choice) ? std::string() : text, text == "1"});
    if (!isBox(choice)) dialog.lines.back().on = false;
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
  return options;
}

}  // namespace lorivan
