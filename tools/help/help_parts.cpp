#include "tools/help/help_parts.h"

#include <algorithm>

#include "cli/command_line.h"
#include "design/names.h"
#include "design/presets.h"
#include "design/version.h"
#include "export/formats.h"
#include "tools/help/field_help.h"
#include "window/commands.h"
#include "window/languages.h"

namespace lorivan {
namespace {

constexpr HelpPage kPages[] = {{"mnuHelpHelp", "index.html"}, {"mnuHelpCustom", "custom.html"},
                               {"mnuHelp3D", "3d.html"},      {"", "things.html", "From knot to thing"},
                               {"mnuHelpFAQ", "faq.html"},    {"mnuHelpAbout", "about.html"}};

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

/// Writes the parts of one page.
class PartWriter {
 public:
  PartWriter(HelpTexts& texts, const HelpPage& page) : texts_(texts), page_(page) {}

  std::string head();
  std::string fields(std::string_view group);
  std::string shapes();
  std::string presets();
  std::string formats();
  std::string shortcuts();
  std::string version() { return "<p>" + texts_.fill("Version {1}", {std::string(kVersion)}) + "</p>\n"; }

 private:
  std::string picture(const std::string& name, std::string_view caption, std::string_view alternative);
  std::string fieldSection(const FieldHelp& help);
  std::string limits(const FieldHelp& help);
  std::string titleOf(const HelpPage& page);
  std::string otherLanguages();
  std::string keys(std::string_view shortcut);

  HelpTexts& texts_;
  const HelpPage& page_;
};

std::string PartWriter::picture(const std::string& name, std::string_view caption,
                                std::string_view alternative) {
  return "  <figure><img src=\"" + std::string(texts_.up()) + "pictures/" + name + ".png\" alt=\"" +
         escaped(alternative) + "\" width=\"200\" height=\"160\" loading=\"lazy\"><figcaption>" +
         escaped(caption) + "</figcaption></figure>\n";
}

/// Which values a field takes, with its terse name if it has one.
std::string PartWriter::limits(const FieldHelp& help) {
  std::string_view shortName;
  std::string text;
  if (const auto parameter = findParameter(help.field)) {
    const ParamSpec& spec = parameterSpec(*parameter);
    shortName = spec.shortName;
    text = texts_.fill("{1} to {2}, at first {3}", {std::string(spec.min), std::string(spec.max),
                                                    correctedText(*parameter, std::string(spec.firstRun))});
  } else if (const auto box = findCheck(help.field)) {
    const CheckSpec& spec = checkSpec(*box);
    shortName = spec.shortName;
    text = texts_.say(spec.firstRun ? "check box, at first on" : "check box, at first off");
  }
  if (shortName.empty()) return text;
  return texts_.fill("short {1}; {2}", {texts_.say(kShortContext, shortName), text});
}

std::string PartWriter::fieldSection(const FieldHelp& help) {
  const auto parameter = findParameter(help.field);
  const auto box = findCheck(help.field);
  if (!parameter && !box) return {};
  const std::string caption =
      texts_.say(parameter ? parameterSpec(*parameter).caption : checkSpec(*box).caption);
  const std::string name(help.field);
  std::string html = "<section class=\"field\" id=\"" + name + "\">\n<h4>" + escaped(caption) + " <code>" +
                     name + "</code> <small>" + limits(help) + "</small></h4>\n<p>" + texts_.say(help.text) +
                     "</p>\n";
  if (help.pictures.empty()) return html + "</section>\n";
  html += "<div class=\"strip\">\n";
  for (const std::string& value : wordsOf(help.pictures)) {
    const std::string shown = parameter ? value : texts_.say(value == "1" ? "on" : "off");
    html += picture(name + '-' + value, shown, caption + ' ' + shown);
  }
  return html + "</div>\n</section>\n";
}

std::string PartWriter::fields(std::string_view group) {
  std::string html;
  for (const FieldHelp& help : fieldHelp())
    if (help.group == group) html += fieldSection(help);
  return html;
}

std::string PartWriter::shapes() {
  std::string html = "<div class=\"strip four\">\n";
  for (int i = 0; i < kShapeCount - 1; ++i) {
    const ShapeSpec& spec = shapeTable()[i];
    const std::string name = texts_.say(kShapeContext, spec.name);
    html += picture("shape-" + std::to_string(i), name + ": " + texts_.say(spec.about), name);
  }
  return html + "</div>\n";
}

std::string PartWriter::presets() {
  std::string html = "<div class=\"strip five\">\n";
  int number = 0;
  for (const Preset& preset : presetTable()) {
    const std::string name = texts_.say(kStyleContext, preset.name);
    html += picture("preset-" + std::to_string(number++), name + ": " + texts_.say(preset.about), name);
  }
  return html + "</div>\n";
}

std::string PartWriter::formats() {
  std::string html = "<table>\n<tr><th>" + texts_.say("File") + "</th><th>" + texts_.say("For") +
                     "</th><th>" + texts_.say("What is in it") + "</th></tr>\n";
  for (const FormatHelp& help : formatHelp())
    if (findFormat(help.extension, DxfKind::faces) != nullptr)
      html += "<tr><td><code>." + std::string(help.extension) + "</code></td><td>" + texts_.say(help.tools) +
              "</td><td>" + texts_.say(help.text) + "</td></tr>\n";
  return html + "</table>\n";
}

/// "<kbd>Ctrl+Z</kbd>", as the language calls the keys.
std::string PartWriter::keys(std::string_view shortcut) {
  std::string named, rest(shortcut);
  for (const std::string_view held : {"Ctrl+", "Shift+", "Alt+"})
    if (rest.starts_with(held)) {
      named += texts_.say(held);
      rest.erase(0, held.size());
    }
  return "<kbd>" + named + rest + "</kbd>";
}

std::string PartWriter::shortcuts() {
  std::string html =
      "<table>\n<tr><th>" + texts_.say("Keys") + "</th><th>" + texts_.say("Command") + "</th></tr>\n";
  for (const CommandSpec& command : commandTable()) {
    if (command.shortcut.empty()) continue;
    html += "<tr><td>" + keys(command.shortcut);
    if (!command.alternative.empty()) html += ", " + keys(command.alternative);
    html += "</td><td>" + shownText(texts_, command.menu) + " › " + escaped(shownText(texts_, command.text)) +
            "</td></tr>\n";
  }
  return html + "</table>\n";
}

std::string PartWriter::titleOf(const HelpPage& page) {
  return page.command.empty() ? texts_.say(page.title)
                              : shownText(texts_, commandTable()[commandId(page.command)].text);
}

/// Links to this page in every other language, each in its own words.
std::string PartWriter::otherLanguages() {
  std::string html;
  for (const Language& other : languages()) {
    if (other.code == texts_.code()) continue;
    const std::string code(other.code);
    html += "      <a href=\"" + std::string(texts_.up()) + (code == "en" ? "" : code + '/') +
            std::string(page_.file) + "\" lang=\"" + code + "\" hreflang=\"" + code + "\">" +
            std::string(other.name) + "</a>\n";
  }
  return html;
}

/// What all pages begin with, up to the title that the reader sees.
std::string PartWriter::head() {
  const std::string title = titleOf(page_), up(texts_.up());
  std::string html =
      "<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<title>" +
      title + (title.find("Lorivan") == std::string::npos ? " - Lorivan" : "") +
      "</title>\n<link rel=\"stylesheet\" href=\"" + up +
      "help.css\">\n</head>\n<body>\n<header>\n  <div>\n"
      "    <img src=\"" +
      up + "pictures/preset-0.png\" alt=\"\" width=\"64\" height=\"51\">\n    <nav>\n";
  for (const HelpPage& other : kPages)
    html += "      <a href=\"" + std::string(other.file) + '"' +
            (other.file == page_.file ? " aria-current=\"page\"" : "") + '>' + titleOf(other) + "</a>\n";
  return html + otherLanguages() + "    </nav>\n  </div>\n</header>\n<main>\n<h1>" + title + "</h1>\n";
}

}  // namespace

std::span<const HelpPage> helpPages() { return kPages; }

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> all;
  while (!text.empty()) {
    const auto blank = std::min(text.find(' '), text.size());
    all.emplace_back(text.substr(0, blank));
    text.remove_prefix(std::min(blank + 1, text.size()));
  }
  return all;
}

std::string shownText(HelpTexts& texts, std::string_view english) {
  std::string shown = texts.say(english);
  std::erase(shown, '&');
  return shown;
}

std::string helpPart(HelpTexts& texts, const std::string& name, const HelpPage& page) {
  PartWriter part(texts, page);
  if (name == "head") return part.head();
  if (name.starts_with("fields ")) return part.fields(name.substr(7));
  if (name == "shapes") return part.shapes();
  if (name == "presets") return part.presets();
  if (name == "formats") return part.formats();
  if (name == "shortcuts") return part.shortcuts();
  if (name == "usage") return "<pre>" + escaped(usageText()) + "</pre>\n";
  if (name == "version") return part.version();
  return {};
}

}  // namespace lorivan
