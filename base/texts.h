// Texts that a person reads, in the language of the window. The English text is the key to the translation;
// where none is known, or no language was chosen, as on the command line, it is the text itself.
#pragma once

#include <array>
#include <concepts>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace lorivan {

/// The translations of one language.
class TextTable {
 public:
  /// Which of a text's forms a number takes, from 0.
  using PluralRule = int (*)(long long);

  explicit TextTable(PluralRule rule) : rule_(rule) {}
  void add(std::string_view context, std::string_view english, std::vector<std::string> forms);
  /// The whole text; null where there is none.
  const std::string* find(std::string_view context, std::string_view english) const;
  /// Its form for a number.
  const std::string* find(std::string_view context, std::string_view english, long long number) const;
  /// Every entry: context, zero byte and English text, and the forms.
  const std::map<std::string, std::vector<std::string>, std::less<>>& entries() const { return entries_; }

 private:
  PluralRule rule_;
  std::map<std::string, std::vector<std::string>, std::less<>> entries_;
};

/// Chooses the language for the whole process; null: English. For the one thread that has windows, before it
/// makes one. The table must outlive all texts.
void speak(const TextTable* language);

/// The translation of a text that a table holds, without and with a context that tells its meaning.
std::string translated(std::string_view english);
std::string translated(std::string_view context, std::string_view english);

/// A text with "{1}", "{2}" ... and "{n}" in place of words and of a number. Every translation may have them
/// in its own order.
std::string filled(std::string_view text, std::span<const std::string> words, std::string_view number = {});

namespace texts {

template <class Word>
std::string wordOf(const Word& word) {
  if constexpr (std::is_integral_v<Word>)
    return std::to_string(word);
  else
    return std::string(word);
}

/// An English text with as many places as there are words; anything else does not compile.
template <class... Words>
class Pattern {
 public:
  template <class Text>
  requires std::convertible_to<const Text&, std::string_view>
  consteval Pattern(const Text& text) : text_(text) {
    for (std::size_t word = 1; word <= sizeof...(Words); ++word)
      if (!hasPlace(word)) throw "a word has no place in the text";
    if (hasPlace(sizeof...(Words) + 1)) throw "the text has a place without a word";
  }
  std::string_view text() const { return text_; }

 private:
  consteval bool hasPlace(std::size_t word) const {
    const char place[] = {'{', static_cast<char>('0' + word), '}'};
    return text_.find(std::string_view(place, 3)) != std::string_view::npos;
  }
  std::string_view text_;
};

template <class... Words>
std::string fill(std::string_view text, std::string_view number, const Words&... words) {
  const std::array<std::string, sizeof...(Words)> all = {wordOf(words)...};
  return filled(text, all, number);
}

/// The form of a text for a number.
std::string_view formFor(std::string_view one, std::string_view many, long long number);

}  // namespace texts

template <class... Words>
using Pattern = texts::Pattern<std::type_identity_t<Words>...>;

/// The text in the window's language, with its words: tr("Loaded {1}: {2}", path, summary).
template <class... Words>
std::string tr(Pattern<Words...> english, const Words&... words) {
  if constexpr (sizeof...(Words) == 0)
    return translated(english.text());
  else
    return texts::fill(translated(english.text()), {}, words...);
}

/// The same for a text with a number, in the form that it takes: trn("{n} strand", "{n} strands", 3). Words
/// have their places beside it.
template <class... Words>
std::string trn(Pattern<Words...> one, Pattern<Words...> many, long long number, const Words&... words) {
  return texts::fill(texts::formFor(one.text(), many.text(), number), std::to_string(number), words...);
}

}  // namespace lorivan
