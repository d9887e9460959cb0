// What the help says in its languages: the texts of the window, and those of data/texts/help/CODE.po.
#pragma once

#include <filesystem>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "base/texts.h"

namespace lorivan {

/// A language of the help, with its texts, and with what is found missing while they are asked for.
class HelpTexts {
 public:
  /// `code` is one of languages(); `folder` holds CODE.po. English needs none.
  static Result<HelpTexts> read(std::string_view code, const std::filesystem::path& folder);

  const std::string& code() const { return code_; }
  /// From a page of this language to the folder with style sheet, pictures and English pages: "" or "../".
  std::string_view up() const { return code_ == "en" ? "" : "../"; }

  /// The translation of a text of the help or of the window, without and with a context.
  std::string say(std::string_view english) { return say({}, english); }
  std::string say(std::string_view context, std::string_view english);
  /// The same with words in the places {1}, {2} ...
  std::string fill(std::string_view english, const std::vector<std::string>& words) {
    return filled(say(english), words);
  }

  /// Texts without a translation, and translations of the help that no page asked for.
  std::vector<std::string> faults() const;

 private:
  explicit HelpTexts(std::string_view code);

  std::string code_;
  const TextTable* window_;
  TextTable help_;
  std::set<std::string> missing_, asked_;
};

}  // namespace lorivan
