// Fills the parts of the help pages that come from the program's own tables, in every language:
//   lorivan_help_pages [--check] data/help
// English pages lie in the folder, those of another language in its CODE, their texts in
// ../texts/help/CODE.po. A part stands between <!-- made: NAME --> and <!-- end -->. --check writes nothing
// and fails when a page is out of date.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>

#include "base/sink.h"
#include "design/names.h"
#include "design/presets.h"
#include "export/formats.h"
#include "tools/help/field_help.h"
#include "tools/help/help_parts.h"
#include "window/commands.h"
#include "window/languages.h"

namespace lorivan {
namespace {

constexpr std::string_view kOpen = "<!-- made: ", kClose = "<!-- end -->";
constexpr std::size_t kLargestPage = 4'000'000;

/// The page's text with all its parts made anew.
Result<std::string> filled(HelpTexts& texts, const HelpPage& which, const std::string& page,
                           std::set<std::string>& used) {
  std::string out;
  std::size_t at = 0;
  while (true) {
    const auto open = page.find(kOpen, at);
    if (open == std::string::npos) return out + page.substr(at);
    const auto nameEnd = page.find(" -->", open), close = page.find(kClose, open);
    if (nameEnd == std::string::npos || close == std::string::npos) return unreadable("a part has no end");
    const auto nameStart = open + kOpen.size();
    const std::string name = page.substr(nameStart, nameEnd - nameStart), made = helpPart(texts, name, which);
    if (made.empty()) return unreadable("there is no part \"" + name + '"');
    used.insert(name);
    out += page.substr(at, nameEnd + 4 - at) + '\n' + made;
    at = close;
  }
}

/// Sentences without a row, rows without a sentence, pictures that are missing.
std::vector<std::string> gaps(const std::filesystem::path& folder, const std::set<std::string>& used) {
  std::vector<std::string> all;
  std::set<std::string_view> told;
  for (const FieldHelp& help : fieldHelp()) {
    const std::string name(help.field);
    if (!findParameter(name) && !findCheck(name)) all.push_back("no field is called " + name);
    if (!told.insert(help.field).second) all.push_back(name + " is told twice");
    if (!used.contains("fields " + std::string(help.group))) all.push_back("no page has the list of " + name);
    for (const std::string& value : wordsOf(help.pictures))
      if (const std::string file = "pictures/" + name + '-' + value + ".png";
          !std::filesystem::exists(folder / file))
        all.push_back(file + " is missing");
  }
  for (const ParamSpec& spec : parameterTable())
    if (!told.contains(spec.field)) all.push_back(std::string(spec.field) + " is not told");
  for (const CheckSpec& spec : checkTable())
    if (!told.contains(spec.field)) all.push_back(std::string(spec.field) + " is not told");
  for (const ExportFormat& format : exportFormats())
    if (std::ranges::find(formatHelp(), format.extension, &FormatHelp::extension) == formatHelp().end())
      all.push_back("the format " + std::string(format.extension) + " is not told");
  return all;
}

/// What stands between two marks, for each time that they are there.
std::vector<std::string> between(const std::string& page, std::string_view open, std::string_view close) {
  std::vector<std::string> all;
  for (auto at = page.find(open); at != std::string::npos; at = page.find(open, at)) {
    at += open.size();
    const auto end = std::min(page.find(close, at), page.size());
    all.push_back(page.substr(at, end - at));
  }
  return all;
}

/// Local files, and places in them, that a page links to and that are not there.
std::vector<std::string> deadLinks(const std::filesystem::path& folder, const std::string& page) {
  std::vector<std::string> dead;
  for (const std::string_view mark : {"src=\"", "href=\""})
    for (const std::string& target : between(page, mark, "\"")) {
      const auto cut = std::min(target.find('#'), target.size());
      const std::string file = target.substr(0, cut);
      const auto there = file.empty() ? page : readFile((folder / file).string(), kLargestPage);
      const bool found = there && (cut == target.size() ||
                                   there->find("id=\"" + target.substr(cut + 1) + '"') != std::string::npos);
      if (!found) dead.push_back(target + " is missing");
    }
  return dead;
}

/// Commands, as "File › Save picture", that a page names otherwise than the window does.
std::vector<std::string> wrongCommands(HelpTexts& texts, const std::string& page) {
  std::map<std::string, std::set<std::string>> menus;
  const auto plain = [&](std::string_view english) {
    std::string shown = shownText(texts, english);
    return shown.substr(0, shown.find("..."));
  };
  for (const CommandSpec& command : commandTable())
    for (const std::string_view text : {command.text, command.submenu})
      if (!text.empty()) menus[plain(command.menu)].insert(plain(text));
  for (int style = 0; const Preset& preset : presetTable())
    menus[plain(commandTable()[commandId("mnuStyle" + std::to_string(style++))].menu)].insert(
        texts.say(kStyleContext, preset.name));
  std::vector<std::string> wrong;
  for (std::string named : between(page, "<b>", "</b>")) {
    std::ranges::replace(named, '\n', ' ');
    constexpr std::string_view kArrow = " › ";
    const auto arrow = named.find(kArrow);
    if (arrow == std::string::npos) continue;
    const auto menu = menus.find(named.substr(0, arrow));
    if (menu == menus.end() || !menu->second.contains(named.substr(arrow + kArrow.size())))
      wrong.push_back("the window has no " + named);
  }
  return wrong;
}

/// What a page must have in common with the English one: its places, pictures and lines to type.
std::vector<std::string> differences(const std::string& page, const std::string& english) {
  std::vector<std::string> all;
  for (const auto& [open, close] : {std::pair{"id=\"", "\""}, {"pictures/", "\""}, {"<pre>", "</pre>"}}) {
    const auto here = between(page, open, close), there = between(english, open, close);
    const auto [mine, its] = std::ranges::mismatch(here, there);
    if (mine != here.end() || its != there.end())
      all.push_back(std::string(open) + (mine == here.end() ? "" : *mine) + " here, " +
                    (its == there.end() ? "" : *its) + " on the English page");
  }
  return all;
}

/// All pages of one language.
class HelpFolder {
 public:
  HelpFolder(std::filesystem::path root, HelpTexts& texts, bool checkOnly)
      : root_(std::move(root)),
        folder_(texts.code() == "en" ? root_ : root_ / texts.code()),
        texts_(texts),
        checkOnly_(checkOnly) {}

  std::vector<std::string> faults() {
    for (const HelpPage& page : helpPages()) bring(page);
    for (const std::string& gap : gaps(root_, used_)) faults_.push_back(folder_.string() + ": " + gap);
    for (const std::string& fault : texts_.faults()) faults_.push_back(fault);
    return faults_;
  }

 private:
  /// Brings a page up to date.
  void bring(const HelpPage& which) {
    const std::string file = (folder_ / which.file).string();
    const auto old = readFile(file, kLargestPage);
    const auto page = old ? filled(texts_, which, *old, used_) : old;
    if (!page) return faults_.push_back(file + ": " + page.error().message);
    if (*page != *old && checkOnly_)
      faults_.push_back(file + " is out of date: run lorivan_help_pages " + root_.string());
    else if (const Status written = *page == *old ? Status() : writeFile(file, *page); !written)
      faults_.push_back(written.error().message);
    look(which, file, *page);
  }

  void look(const HelpPage& which, const std::string& file, const std::string& page) {
    const auto tell = [&](const std::vector<std::string>& all) {
      for (const std::string& fault : all) faults_.push_back(file + ": " + fault);
    };
    tell(deadLinks(folder_, page));
    tell(wrongCommands(texts_, page));
    if (const auto english = readFile((root_ / which.file).string(), kLargestPage))
      tell(differences(page, *english));
  }

  std::filesystem::path root_, folder_;
  HelpTexts& texts_;
  bool checkOnly_;
  std::set<std::string> used_;
  std::vector<std::string> faults_;
};

int run(const std::filesystem::path& folder, bool checkOnly) {
  bool good = true;
  for (const Language& language : languages()) {
    auto texts = HelpTexts::read(language.code, folder / ".." / "texts" / "help");
    const auto faults = texts ? HelpFolder(folder, *texts, checkOnly).faults()
                              : std::vector<std::string>{texts.error().message};
    for (const std::string& fault : faults) std::cerr << fault << '\n';
    good = good && faults.empty();
  }
  return good ? 0 : 1;
}

}  // namespace
}  // namespace lorivan

int main(int count, char** arguments) {
  const std::vector<std::string_view> words(arguments + 1, arguments + count);
  const bool check = !words.empty() && words.front() == "--check";
  if (words.size() != (check ? 2u : 1u)) {
    std::cerr << "lorivan_help_pages [--check] FOLDER\n";
    return 2;
  }
  return lorivan::run(words.back(), check);
}
