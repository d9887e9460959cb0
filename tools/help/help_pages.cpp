// Fills the parts of the help pages that come from the program's own tables:
//   lorivan_help_pages [--check] FOLDER
// A part stands between <!-- made: NAME --> and <!-- end -->. --check writes nothing and fails when a page is
// out of date.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>

#include "base/sink.h"
#include "cli/command_line.h"
#include "design/presets.h"
#include "design/version.h"
#include "export/formats.h"
#include "tools/help/field_help.h"
#include "window/commands.h"

namespace lorivan {
namespace {

struct HelpPage {
  std::string_view command;  // the Help menu's, whose text is the page's title
  std::string_view file;
  std::string_view title = {};  // of a page that no command opens
};

constexpr HelpPage kPages[] = {{"mnuHelpHelp", "index.html"}, {"mnuHelpCustom", "custom.html"},
                               {"mnuHelp3D", "3d.html"},      {"", "things.html", "From knot to thing"},
                               {"mnuHelpFAQ", "faq.html"},    {"mnuHelpAbout", "about.html"}};
constexpr std::string_view kOpen = "<!-- made: ", kClose = "<!-- end -->";

std::string escaped(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    if (c == '&')
      safe += "&amp;";
    else if (c == '<')
      safe += "&lt;";
    else
      safe += c;
  }
  return safe;
}

std::string picture(const std::string& name, std::string_view caption, std::string_view alternative) {
  return "  <figure><img src=\"pictures/" + name + ".png\" alt=\"" + escaped(alternative) +
         "\" width=\"200\" height=\"160\" loading=\"lazy\"><figcaption>" + escaped(caption) +
         "</figcaption></figure>\n";
}

/// Splits at single blanks.
std::vector<std::string> words(std::string_view text) {
  std::vector<std::string> all;
  while (!text.empty()) {
    const auto blank = std::min(text.find(' '), text.size());
    all.emplace_back(text.substr(0, blank));
    text.remove_prefix(std::min(blank + 1, text.size()));
  }
  return all;
}

/// The terse name that a field may have.
std::string shortly(std::string_view shortName) {
  return shortName.empty() ? std::string() : "short " + std::string(shortName) + "; ";
}

std::string fieldSection(const FieldHelp& help) {
  std::string caption, limits;
  if (const auto parameter = findParameter(help.field)) {
    const ParamSpec& spec = parameterSpec(*parameter);
    caption = spec.caption;
    limits = shortly(spec.shortName) + std::string(spec.min) + " to " + std::string(spec.max) +
             ", at first " + correctedText(*parameter, std::string(spec.firstRun));
  } else if (const auto box = findCheck(help.field)) {
    const CheckSpec& spec = checkSpec(*box);
    caption = spec.caption;
    limits = shortly(spec.shortName) + "check box, at first " + (spec.firstRun ? "on" : "off");
  }
  const std::string name(help.field);
  std::string html = "<section class=\"field\" id=\"" + name + "\">\n<h4>" + escaped(caption) + " <code>" +
                     name + "</code> <small>" + limits + "</small></h4>\n<p>" + std::string(help.text) +
                     "</p>\n";
  if (help.pictures.empty()) return html + "</section>\n";
  html += "<div class=\"strip\">\n";
  for (const std::string& value : words(help.pictures)) {
    const bool box = !findParameter(help.field);
    const std::string shown = box ? (value == "1" ? "on" : "off") : value;
    html += picture(name + '-' + value, shown, caption + ' ' + shown);
  }
  return html + "</div>\n</section>\n";
}

std::string fields(std::string_view group) {
  std::string html;
  for (const FieldHelp& help : fieldHelp())
    if (help.group == group) html += fieldSection(help);
  return html;
}

std::string shapes() {
  std::string html = "<div class=\"strip four\">\n";
  for (int i = 0; i < kShapeCount - 1; ++i) {
    const ShapeSpec& spec = shapeTable()[i];
    html += picture("shape-" + std::to_string(i), std::string(spec.name) + ": " + std::string(spec.about),
                    spec.name);
  }
  return html + "</div>\n";
}

std::string presets() {
  std::string html = "<div class=\"strip five\">\n";
  int number = 0;
  for (const Preset& preset : presetTable())
    html += picture("preset-" + std::to_string(number++),
                    std::string(preset.name) + ": " + std::string(preset.about), preset.name);
  return html + "</div>\n";
}

std::string formats() {
  std::string html = "<table>\n<tr><th>File</th><th>For</th><th>What is in it</th></tr>\n";
  for (const FormatHelp& help : formatHelp())
    if (findFormat(help.extension, DxfKind::faces) != nullptr)
      html += "<tr><td><code>." + std::string(help.extension) + "</code></td><td>" + std::string(help.tools) +
              "</td><td>" + std::string(help.text) + "</td></tr>\n";
  return html + "</table>\n";
}

/// The text of a menu or command as the window shows it, without the mark before its letter.
std::string shownText(std::string_view text) {
  std::string shown(text);
  std::erase(shown, '&');
  return shown;
}

std::string shortcuts() {
  std::string html = "<table>\n<tr><th>Keys</th><th>Command</th></tr>\n";
  for (const CommandSpec& command : commandTable()) {
    if (command.shortcut.empty()) continue;
    html += "<tr><td><kbd>" + std::string(command.shortcut) + "</kbd>";
    if (!command.alternative.empty()) html += ", <kbd>" + std::string(command.alternative) + "</kbd>";
    html += "</td><td>" + shownText(command.menu) + " › " + escaped(shownText(command.text)) + "</td></tr>\n";
  }
  return html + "</table>\n";
}

std::string titleOf(const HelpPage& page) {
  return page.command.empty() ? std::string(page.title)
                              : shownText(commandTable()[commandId(page.command)].text);
}

/// What all pages begin with, up to the title that the reader sees.
std::string head(const HelpPage& page) {
  const std::string title = titleOf(page);
  std::string html =
      "<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<title>" +
      title + (title.find("Lorivan") == std::string::npos ? " - Lorivan" : "") +
      "</title>\n<link rel=\"stylesheet\" href=\"help.css\">\n</head>\n<body>\n<header>\n  <div>\n"
      "    <img src=\"pictures/preset-0.png\" alt=\"\" width=\"64\" height=\"51\">\n    <nav>\n";
  for (const HelpPage& other : kPages)
    html += "      <a href=\"" + std::string(other.file) + '"' +
            (other.file == page.file ? " aria-current=\"page\"" : "") + '>' + titleOf(other) + "</a>\n";
  return html + "    </nav>\n  </div>\n</header>\n<main>\n<h1>" + title + "</h1>\n";
}

/// What stands in the part of this name on a page; nothing for a name that is not known.
std::string part(const std::string& name, const HelpPage& page) {
  if (name == "head") return head(page);
  if (name.starts_with("fields ")) return fields(name.substr(7));
  if (name == "shapes") return shapes();
  if (name == "presets") return presets();
  if (name == "formats") return formats();
  if (name == "shortcuts") return shortcuts();
  if (name == "usage") return "<pre>" + escaped(usageText()) + "</pre>\n";
  if (name == "version") return "<p>Version " + std::string(kVersion) + "</p>\n";
  return {};
}

/// The page's text with all its parts made anew.
Result<std::string> filled(const HelpPage& which, const std::string& page, std::set<std::string>& used) {
  std::string out;
  std::size_t at = 0;
  while (true) {
    const auto open = page.find(kOpen, at);
    if (open == std::string::npos) return out + page.substr(at);
    const auto nameEnd = page.find(" -->", open), close = page.find(kClose, open);
    if (nameEnd == std::string::npos || close == std::string::npos) return unreadable("a part has no end");
    const auto nameStart = open + kOpen.size();
    const std::string name = page.substr(nameStart, nameEnd - nameStart), made = part(name, which);
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
    for (const std::string& value : words(help.pictures))
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

/// Local files, and places in them, that a page links to and that are not there.
std::vector<std::string> deadLinks(const std::filesystem::path& folder, const std::string& page) {
  std::vector<std::string> dead;
  for (const std::string_view mark : {"src=\"", "href=\""})
    for (auto at = page.find(mark); at != std::string::npos; at = page.find(mark, at)) {
      at += mark.size();
      const std::string target = page.substr(at, page.find('"', at) - at);
      const auto cut = std::min(target.find('#'), target.size());
      const std::string file = target.substr(0, cut);
      const auto there = file.empty() ? page : readFile((folder / file).string(), 4'000'000);
      const bool found = there && (cut == target.size() ||
                                   there->find("id=\"" + target.substr(cut + 1) + '"') != std::string::npos);
      if (!found) dead.push_back(target + " is missing");
    }
  return dead;
}

int run(const std::filesystem::path& folder, bool checkOnly) {
  std::set<std::string> used;
  std::vector<std::string> faults;
  for (const HelpPage& which : kPages) {
    const std::string file = (folder / which.file).string();
    const auto old = readFile(file, 4'000'000);
    const auto page = old ? filled(which, *old, used) : old;
    if (!page) {
      faults.push_back(file + ": " + page.error().message);
      continue;
    }
    for (const std::string& dead : deadLinks(folder, *page)) faults.push_back(file + ": " + dead);
    if (*page == *old) continue;
    if (checkOnly)
      faults.push_back(file + " is out of date: run lorivan_help_pages " + folder.string());
    else if (const Status written = writeFile(file, *page); !written)
      faults.push_back(written.error().message);
  }
  for (const std::string& gap : gaps(folder, used)) faults.push_back(gap);
  for (const std::string& fault : faults) std::cerr << fault << '\n';
  return faults.empty() ? 0 : 1;
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
