#include "base/texts.h"

#include <utility>

namespace lorivan {
namespace {

const TextTable* spoken = nullptr;

std::string keyOf(std::string_view context, std::string_view english) {
  std::string key(context);
  key += '\0';
  return key.append(english);
}

}  // namespace

void TextTable::add(std::string_view context, std::string_view english, std::vector<std::string> forms) {
  entries_.insert_or_assign(keyOf(context, english), std::move(forms));
}

const std::string* TextTable::find(std::string_view context, std::string_view english) const {
  const auto found = entries_.find(keyOf(context, english));
  return found == entries_.end() || found->second.empty() ? nullptr : &found->second.front();
}

const std::string* TextTable::find(std::string_view context, std::string_view english,
                                   long long number) const {
  const auto found = entries_.find(keyOf(context, english));
  if (found == entries_.end()) return nullptr;
  const auto form = static_cast<std::size_t>(rule_(number));
  return form < found->second.size() ? &found->second[form] : nullptr;
}

void speak(const TextTable* language) { spoken = language; }

std::string translated(std::string_view english) { return translated({}, english); }

std::string translated(std::string_view context, std::string_view english) {
  const std::string* const text = spoken == nullptr ? nullptr : spoken->find(context, english);
  return text == nullptr ? std::string(english) : *text;
}

std::string filled(std::string_view text, std::span<const std::string> words, std::string_view number) {
  std::string whole;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool place = text[at] == '{' && at + 2 < text.size() && text[at + 2] == '}';
    const auto word = place ? static_cast<std::size_t>(text[at + 1] - '1') : words.size();
    if (place && text[at + 1] == 'n')
      whole.append(number);
    else if (word < words.size())
      whole.append(words[word]);
    else {
      whole += text[at];
      continue;
    }
    at += 2;
  }
  return whole;
}

std::string_view texts::formFor(std::string_view one, std::string_view many, long long number) {
  const std::string* const text = spoken == nullptr ? nullptr : spoken->find({}, one, number);
  if (text != nullptr) return *text;
  return number == 1 ? one : many;
}

}  // namespace lorivan
