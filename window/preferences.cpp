#include "window/preferences.h"

#include <algorithm>

#include "base/numbers.h"
#include "base/sink.h"
#include "design/document_text.h"
#include "design/edits.h"
#include "design/settings_table.h"
#include "export/formats.h"
#include "window/save_options.h"

namespace lorivan {
namespace {

constexpr int kTwipsPerPixel = 15;

/// Settings that are no numbers read as 0.
double numberOf(const std::string& text) { return parseNumber(text).value_or(0); }

bool truthOf(const std::string& text) { return lowerCase(text) == "true" || numberOf(text) != 0; }

std::string truth(bool on) { return on ? "True" : "False"; }

std::string twips(int pixels) { return shortestText(static_cast<float>(pixels) * kTwipsPerPixel); }

int pixels(const std::string& twips) { return toInt32(numberOf(twips) / kTwipsPerPixel); }

/// Takes what the settings hold of a document; the window's affairs are nothing to it.
class DocumentRestorer {
 public:
  explicit DocumentRestorer(Document& document) : fields_(document.fields) {}

  void take(ColourBoxNumber box, const std::string& text) const {
    const auto number = parseInteger(text, INT32_MIN, INT32_MAX).value_or(0);
    fields_.boxes[box.box] = static_cast<Colour>(number) & 0xFFFFFF;
  }
  /// A fall-back outside the limits is held within them by the second correction, as when a field is left.
  void take(Param p, const std::string& text) const {
    fields_.text(p) = correctedText(p, correctedText(p, text));
  }
  void take(Check c, const std::string& text) const { fields_.check(c) = numberOf(text) == 1; }
  void take(RecentFile, const std::string&) const {}
  void take(WindowState state, const std::string& text) const {
    if (state == WindowState::fitPicture) fields_.fitPicture = truthOf(text);
    if (state != WindowState::shape) return;
    const double index = numberOf(text);
    fields_.shape = static_cast<Shape>(index >= 0 && index < kShapeCount ? static_cast<int>(index) : 0);
  }

 private:
  KnotFields& fields_;
};

/// Left or top such that a window of `size` stays on a screen of `room`.
int keptOnScreen(const std::string& text, int size, int room) {
  return std::max(0, std::min(pixels(text), room - size));
}

/// A number of no format leaves the first one chosen.
void restoreFormat(Window& window, double number) {
  const bool known = std::ranges::any_of(exportFormats(), [&](const ExportFormat& format) {
    return !format.option.empty() && number == format.saveNumber;
  });
  for (const ExportFormat& format : exportFormats())
    if (!format.option.empty())
      window.setChecked(controlNamed(format.option), (known ? number : 1) == format.saveNumber);
}

void restoreWindow(Workbench& bench, WindowState state, const std::string& text) {
  Window& window = bench.window;
  const WindowPlace place = window.place(), screen = window.screen();
  switch (state) {
    case WindowState::left:
      return window.moveTo(keptOnScreen(text, place.width, screen.width), place.top);
    case WindowState::top:
      return window.moveTo(place.left, keptOnScreen(text, place.height, screen.height));
    case WindowState::width:
      return pixels(text) > 0 ? window.resizeTo(pixels(text), place.height) : void();
    case WindowState::height:
      return pixels(text) > 0 ? window.resizeTo(place.width, pixels(text)) : void();
    case WindowState::maximised:
      return truthOf(text) ? window.setMaximised(true) : void();
    case WindowState::gridOn:
      return bench.sheet.setAlignmentGrid(truthOf(text));
    case WindowState::snapOn:
      return bench.sheet.setSnap(truthOf(text));
    case WindowState::lastFolder:
      return bench.files.setLastFolder(text);
    case WindowState::drawAtOnce:
      bench.drawAtOnce = trimmed(text).empty() || truthOf(text);
      return;
    case WindowState::symmetry:
      return bench.symmetry.choose(symmetryOf(text), bench.knot().graph);
    case WindowState::saveFormat:
      return restoreFormat(window, numberOf(text));
    case WindowState::saveOptions:
      bench.saveOptions = readSaveOptions(text);
      return;
    case WindowState::language:
      bench.language = text;
      return;
    case WindowState::fitPicture:
    case WindowState::shape:
      return;
  }
}

bool isSize(WindowState state) { return state == WindowState::width || state == WindowState::height; }

std::string chosenFormat(const Window& window) {
  for (const ExportFormat& format : exportFormats())
    if (!format.option.empty() && window.checked(controlNamed(format.option)))
      return std::to_string(format.saveNumber);
  return "0";
}

/// What the settings are to hold.
class Keeper {
 public:
  explicit Keeper(const Workbench& bench) : bench_(bench), fields_(bench.form.read()) {}

  std::string kept(ColourBoxNumber box) const { return std::to_string(fields_.boxes[box.box]); }
  std::string kept(Param p) const { return fields_.text(p); }
  std::string kept(Check c) const { return fields_.check(c) ? "1" : "0"; }
  std::string kept(RecentFile file) const {
    const auto place = static_cast<std::size_t>(file.place);
    return place < bench_.recentFiles.size() ? bench_.recentFiles[place] : std::string();
  }
  std::string kept(WindowState state) const;

 private:
  const Workbench& bench_;
  KnotFields fields_;
};

std::string Keeper::kept(WindowState state) const {
  const WindowPlace place = bench_.window.place();
  switch (state) {
    case WindowState::left:
      return twips(place.left);
    case WindowState::top:
      return twips(place.top);
    case WindowState::width:
      return twips(place.width);
    case WindowState::height:
      return twips(place.height);
    case WindowState::maximised:
      return truth(bench_.window.maximised());
    case WindowState::shape:
      return std::to_string(static_cast<int>(fields_.shape));
    case WindowState::gridOn:
      return truth(bench_.sheet.alignmentGrid());
    case WindowState::snapOn:
      return truth(bench_.sheet.snap());
    case WindowState::lastFolder:
      return bench_.files.lastFolder();
    case WindowState::fitPicture:
      return truth(bench_.document().fields.fitPicture);
    case WindowState::drawAtOnce:
      return truth(bench_.drawAtOnce);
    case WindowState::saveOptions:
      return saveOptionsText(bench_.saveOptions);
    case WindowState::language:
      return bench_.language;
    case WindowState::symmetry:
      return symmetryName(bench_.symmetry.chosen());
    case WindowState::saveFormat:
      break;
  }
  return chosenFormat(bench_.window);
}

std::string settingOf(const Settings& settings, const SettingRow& row) {
  return settings.read(kSettingsSection, row.key, row.fallback);
}

/// The fields as they were left, before a grid corrects them.
Document keptFields(const Settings& settings) {
  Document document;
  const DocumentRestorer restorer(document);
  for (const SettingRow& row : settingTable())
    std::visit([&](const auto& owner) { restorer.take(owner, settingOf(settings, row)); }, row.owner);
  return document;
}

}  // namespace

Document restoredDocument(const Settings& settings) {
  Document document = keptFields(settings);
  // Widths are as they were left, also where walls were drawn after the bands were fitted.
  const bool fit = std::exchange(document.fields.check(Check::FitBands), false);
  const auto made = newGrid(document);
  if (made) document = *made;
  document.fields.check(Check::FitBands) = fit;
  return document;
}

std::string languageSetting(const Settings& settings) {
  return settings.read(kSettingsSection, kLanguageKey, "");
}

bool isFirstStart(const Settings& settings) {
  return settings.read(kSettingsSection, parameterSpec(Param::XNo).key, "").empty();
}

void restorePreferences(Workbench& bench) {
  // What place the window can have depends on its size.
  for (const bool sizes : {true, false})
    for (const SettingRow& row : settingTable())
      if (const auto* state = std::get_if<WindowState>(&row.owner);
          state != nullptr && isSize(*state) == sizes)
        restoreWindow(bench, *state, settingOf(bench.platform.settings(), row));
  for (const SettingRow& row : settingTable()) {
    const std::string text = settingOf(bench.platform.settings(), row);
    if (std::get_if<RecentFile>(&row.owner) != nullptr && !text.empty()) bench.recentFiles.push_back(text);
  }
}

Status keepPreferences(const Workbench& bench) {
  Settings& settings = bench.platform.settings();
  const Keeper keeper(bench);
  for (const SettingRow& row : settingTable())
    settings.write(kSettingsSection, row.key,
                   std::visit([&](const auto& owner) { return keeper.kept(owner); }, row.owner));
  return settings.flush();
}

std::optional<Document> lastKnot(const std::string& file, const Settings& settings) {
  const auto text = file.empty() ? Result<std::string>(unreadable("none is kept"))
                                 : readRegularFile(file, kLargestKnotFile);
  auto read = text ? readDocument(*text) : Result<ReadDocument>(text.error());
  const KnotFields kept = keptFields(settings).fields;
  if (!read || read->document.fields.shape != kept.shape) return std::nullopt;
  for (const SettingRow& row : settingTable())
    if (const Param* p = std::get_if<Param>(&row.owner))
      if (read->document.fields.text(*p) != kept.text(*p)) return std::nullopt;
  return std::move(read->document);
}

}  // namespace lorivan
