#include <algorithm>
#include <cctype>

#include "cli/command_line.h"
#include "custom/shape_file.h"
#include "design/outline_files.h"
#include "design/presets.h"
#include "tools/manual/texts.h"

namespace lorivan {
namespace {

/// As one word of the shell.
std::string quoted(std::string_view text) { return std::string(1, '\'').append(text).append(1, '\''); }

void append(std::string& list, std::string_view word) {
  list.append(list.empty() ? "" : " ").append(quoted(word));
}

template <class Rows, class Name>
std::string listOf(const Rows& rows, const Name& name) {
  std::string list;
  for (const auto& row : rows) append(list, name(row));
  return list;
}

std::string shapes() {
  return listOf(shapeTable().first(kShapeCount - 1), [](const ShapeSpec& spec) { return spec.name; });
}
std::string presets() {
  return listOf(presetTable(), [](const Preset& preset) { return preset.name; });
}
std::string materials() {
  return listOf(kMaterials, [](const Material& material) { return material.name; });
}
std::string parameters() {
  return listOf(parameterTable(), [](const ParamSpec& spec) { return std::string(spec.field) + '='; });
}
std::string checks() {
  return listOf(checkTable(), [](const CheckSpec& spec) { return std::string(spec.field) + '='; });
}
std::string lists() {
  return listOf(kLists, [](std::string_view name) { return name; });
}

/// "svg|pdf": extensions as a regular expression.
std::string outputs() {
  std::string all;
  for (const ExportFormat& format : exportFormats())
    if (!format.summary.empty()) all.append(all.empty() ? "" : "|").append(format.extension);
  return all;
}

std::string inputs() {
  std::string all = "qzd|" + std::string(kShapeFileExtension);
  for (const ExportFormat& format : exportFormats())
    if (format.carriesSource) all.append("|").append(format.extension);
  for (const std::string_view more : {kDrawingExtensions, kPictureExtensions}) all.append("|").append(more);
  std::ranges::replace(all, ' ', '|');
  return all;
}

/// What can stand in the place of a placeholder that is not a number or a free text.
struct Choice {
  std::string_view option;
  std::string command;  // of the shell; empty: nothing can be offered
};

std::vector<Choice> choices() {
  const std::string fields = "_lorivan_offer_fields " + parameters();
  return {{"-o", "_lorivan_offer_outputs " + quoted(outputs())},
          {"--shape", "_lorivan_offer " + shapes()},
          {"--preset", "_lorivan_offer " + presets()},
          {"--material", "_lorivan_offer " + materials()},
          {"--list", "_lorivan_offer " + lists()},
          {"--set", fields + ' ' + checks()},
          {"--sweep", fields}};
}

/// "N|most" gives 'most': what is typed as it stands there.
std::string literals(std::string_view value) {
  std::string list;
  while (!value.empty()) {
    const std::string_view word = value.substr(0, value.find('|'));
    if (std::isupper(static_cast<unsigned char>(word.front())) == 0) append(list, word);
    value.remove_prefix(std::min(word.size() + 1, value.size()));
  }
  return list;
}

/// The names of what may stand there have a list somewhere; a new one wants a choice above.
bool isNameOfSomething(std::string_view value) {
  return value.starts_with("NAME") || value == "WHAT" || value == "FILE";
}

Result<std::string> valueCases() {
  const std::vector<Choice> known = choices();
  std::string cases, free;
  for (const OptionUsage& option : optionUsages()) {
    if (option.value.empty() || option.value.starts_with('[')) continue;
    const auto choice = std::ranges::find(known, option.name, &Choice::option);
    std::string command = choice != known.end() ? choice->command : "";
    if (command.empty() && isNameOfSomething(option.value))
      return wrongUsage("completion: nothing is known of the values of " + std::string(option.name));
    if (const std::string list = literals(option.value); command.empty() && !list.empty())
      command = "_lorivan_offer " + list;
    if (command.empty())
      free.append(free.empty() ? "" : " | ").append(option.name);
    else
      cases += "    " + std::string(option.name) + ")\n      " + command + "\n      return ;;\n";
  }
  return cases + "    " + free + ")\n      return ;;\n";
}

constexpr std::string_view kHelpers =
    R"(# Completion for bash. Written by lorivan_package_texts from the program's tables; do not edit.

# _lorivan_offer WORD...: those that begin with what has been typed.
_lorivan_offer() {
  local word
  for word; do
    word=$(printf '%q' "$word")
    [[ $word == "$cur"* ]] && COMPREPLY+=("$word")
  done
}

# _lorivan_offer_fields FIELD=...: a field, then, of a check box, its value. The shell may have parted "a=b".
_lorivan_offer_fields() {
  local word
  if [[ $field ]]; then
    [[ $field == chk* ]] && _lorivan_offer 0 1
    return
  fi
  compopt -o nospace 2>/dev/null
  if [[ $cur == chk*=* ]]; then
    _lorivan_offer "${cur%%=*}=0" "${cur%%=*}=1"
  else
    for word; do [[ $word == "$cur"* ]] && COMPREPLY+=("$word"); done
  fi
}

# _lorivan_offer_files EXTENSIONS: folders, and files with one of these.
_lorivan_offer_files() {
  local file
  compopt -o filenames 2>/dev/null
  while IFS= read -r file; do
    [[ -d $file || ${file,,} =~ \.($1)$ ]] && COMPREPLY+=("$file")
  done < <(compgen -f -- "$cur")
}

# _lorivan_offer_outputs EXTENSIONS: the same, and behind a dot the extensions for a new file.
_lorivan_offer_outputs() {
  local extension
  _lorivan_offer_files "$1"
  [[ ${cur##*/} == ?*.* ]] || return
  for extension in ${1//|/ }; do
    [[ $extension == "${cur##*.}"* ]] && COMPREPLY+=("${cur%.*}.$extension")
  done
}

_lorivan() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} field=
  COMPREPLY=()
  if [[ $cur == = ]]; then
    cur= field=$previous previous=${COMP_WORDS[COMP_CWORD - 2]}
  elif [[ $previous == = ]]; then
    field=${COMP_WORDS[COMP_CWORD - 2]} previous=${COMP_WORDS[COMP_CWORD - 3]}
  fi
  case $previous in
)";

/// Stands behind the cases of the options' values.
std::string ending() {
  const std::string options = listOf(optionUsages(), [](const OptionUsage& option) { return option.name; });
  return "  esac\n  if [[ $cur == -* ]]; then\n    _lorivan_offer " + options +
         "\n  else\n    _lorivan_offer_files " + quoted(inputs()) +
         "\n  fi\n}\ncomplete -F _lorivan lorivan\n";
}

}  // namespace

Result<std::string> completion() {
  const auto cases = valueCases();
  if (!cases) return cases.error();
  return std::string(kHelpers) + *cases + ending();
}

}  // namespace lorivan
