#include "window/languages.h"

#include <algorithm>
#include <array>

#include "base/numbers.h"
#include "base/po_file.h"

namespace lorivan {
namespace {

constexpr std::array<Language, 2> kLanguages = {{{"en", "English"}, {"de", "Deutsch"}}};

bool isListed(std::string_view code) {
  return std::ranges::find(kLanguages, code, &Language::code) != kLanguages.end();
}

TextTable germanTexts() {
  std::string file;
  for (const std::string_view line : kGermanTexts) file.append(line);
  constexpr auto rule = [](long long n) { return n == 1 ? 0 : 1; };
  auto texts = readPo(file, rule);
  return texts ? std::move(*texts) : TextTable(rule);  // a test reads the file as well
}

}  // namespace

std::span<const Language> languages() { return kLanguages; }

const TextTable* textsOf(std::string_view code) {
  if (code != "de") return nullptr;
  static const TextTable german = germanTexts();
  return &german;
}

std::string_view languageFor(std::string_view setting, std::string_view system) {
  const std::string code = lowerCase(system.substr(0, system.find_first_of("_-.@")));
  const std::string_view wanted = isListed(setting) ? setting : std::string_view(code);
  const auto found = std::ranges::find(kLanguages, wanted, &Language::code);
  return found == kLanguages.end() ? kLanguages.front().code : found->code;
}

}  // namespace lorivan
