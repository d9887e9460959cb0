#include "tools/help/help_texts.h"

#include "base/po_file.h"
#include "base/sink.h"
#include "window/languages.h"

namespace lorivan {
namespace {

/// The help counts nothing.
int onlyForm(long long) { return 0; }

}  // namespace

HelpTexts::HelpTexts(std::string_view code) : code_(code), window_(textsOf(code)), help_(onlyForm) {}

Result<HelpTexts> HelpTexts::read(std::string_view code, const std::filesystem::path& folder) {
  HelpTexts texts(code);
  if (texts.window_ == nullptr) return texts;
  const std::string path = (folder / (texts.code_ + ".po")).string();
  const auto file = readFile(path, kLargestPoFile);
  if (!file) return file.error();
  auto table = readPo(*file, onlyForm);
  if (!table) return unreadable("{1}: {2}", path, table.error().message);
  texts.help_ = std::move(*table);
  return texts;
}

std::string HelpTexts::say(std::string_view context, std::string_view english) {
  if (window_ == nullptr) return std::string(english);
  if (const std::string* own = help_.find(context, english)) {
    asked_.insert(std::string(english));
    return *own;
  }
  if (const std::string* shown = window_->find(context, english)) return *shown;
  missing_.insert(std::string(english));
  return std::string(english);
}

std::vector<std::string> HelpTexts::faults() const {
  std::vector<std::string> all;
  for (const std::string& text : missing_) all.push_back(code_ + ".po lacks: " + text);
  for (const auto& [key, forms] : help_.entries())
    if (const std::string english = key.substr(key.find('\0') + 1); !asked_.contains(english))
      all.push_back(code_ + ".po has what no page says: " + english);
  return all;
}

}  // namespace lorivan
