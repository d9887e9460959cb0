// The languages that the window speaks, each with its translations, which are part of the program.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/texts.h"

namespace lorivan {

/// data/texts/de.po, line by line.
extern const std::span<const std::string_view> kGermanTexts;

struct Language {
  std::string_view code;  // "de"
  std::string_view name;  // as its speakers call it: "Deutsch"
};

/// All of them, English first.
std::span<const Language> languages();

/// The translations into a language; null for English, and for what is not in the list.
const TextTable* textsOf(std::string_view code);

/// The code of the language to speak: the one that the settings name, or the user's own ("de_AT.UTF-8") where
/// they name none. English for a language that is not in the list.
std::string_view languageFor(std::string_view setting, std::string_view system);

}  // namespace lorivan
