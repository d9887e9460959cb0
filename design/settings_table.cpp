#include "design/settings_table.h"

#include <deque>
#include <string>
#include <vector>

#include "strands/colours.h"

namespace lorivan {
namespace {

// Fields, check boxes and window state in their order; the colour boxes come before them.
constexpr SettingOwner kOrder[] = {WindowState::left,
                                   WindowState::top,
                                   Param::XNo,
                                   Param::YNo,
                                   WindowState::shape,
                                   Param::StartColour,
                                   Param::Width,
                                   Param::Edge,
                                   Param::Scale,
                                   Param::Swish,
                                   Param::Animate,
                                   Param::Smooth,
                                   Param::Skew,
                                   Param::CrossOffset,
                                   Param::PolySides,
                                   Param::PolyPoints,
                                   Param::PolyRadius,
                                   Param::PolySmooth,
                                   Param::PolyZF,
                                   Param::RingPerc,
                                   Param::PicKnotBackColour,
                                   Check::ShowGrid,
                                   Check::ShowCrossings,
                                   Check::DXF2D,
                                   Check::FullyCrossed,
                                   Param::GridSize,
                                   Check::ShapeT,
                                   Check::HeightMap,
                                   Check::Animate,
                                   Check::Loop,
                                   Check::ConstantShape,
                                   WindowState::gridOn,
                                   WindowState::snapOn,
                                   WindowState::lastFolder,
                                   WindowState::saveFormat,
                                   Check::FitBands,
                                   WindowState::fitPicture,
                                   WindowState::drawAtOnce,
                                   WindowState::width,
                                   WindowState::height,
                                   WindowState::maximised,
                                   Check::Classic,
                                   Check::Smooth,
                                   Check::Wrap,
                                   WindowState::symmetry,
                                   WindowState::saveOptions,
                                   WindowState::language};

struct KeySpec {
  std::string_view key, fallback;
};

// In the order of WindowState.
constexpr KeySpec kStateKeys[] = {{"LastX", "0"},       {"LastY", "0"},          {"lsttype", "0"},
                                  {"GridOn", "False"},  {"SnapOn", "False"},     {"LastFolder", ""},
                                  {"3DSave", "1"},      {"FitPicture", "False"}, {"DrawAtOnce", "True"},
                                  {"LastWidth", "0"},   {"LastHeight", "0"},     {"Maximised", "False"},
                                  {"Symmetry", "None"}, {"SaveOptions", ""},     {kLanguageKey, ""}};

KeySpec keyOf(const SettingOwner& owner) {
  if (const Param* p = std::get_if<Param>(&owner)) return {parameterSpec(*p).key, parameterSpec(*p).firstRun};
  if (const Check* c = std::get_if<Check>(&owner)) {
    const CheckSpec& spec = checkSpec(*c);
    return {spec.key, spec.firstRun ? "1" : "0"};
  }
  return kStateKeys[static_cast<std::size_t>(std::get<WindowState>(owner))];
}

struct Table {
  std::deque<std::string> texts;  // the rows point into it
  std::vector<SettingRow> rows;
};

Table makeTable() {
  Table table;
  const ColourBoxes first = firstColourBoxes();
  for (int box = 0; box < kColourBoxes; ++box) {
    const std::string& key = table.texts.emplace_back(std::to_string(box) + "txtCol");
    const std::string& colour = table.texts.emplace_back(std::to_string(first[box]));
    table.rows.push_back({key, colour, ColourBoxNumber{box}});
  }
  for (const SettingOwner& owner : kOrder) {
    const KeySpec key = keyOf(owner);
    table.rows.push_back({key.key, key.fallback, owner});
  }
  for (int place = 0; place < kRecentFiles; ++place)
    table.rows.push_back({table.texts.emplace_back("Recent" + std::to_string(place)), "", RecentFile{place}});
  return table;
}

}  // namespace

std::span<const SettingRow> settingTable() {
  static const Table table = makeTable();
  return table.rows;
}

}  // namespace lorivan
