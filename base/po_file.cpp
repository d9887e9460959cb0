#include "base/po_file.h"

#include <algorithm>
#include <utility>

#include "base/numbers.h"

namespace lorivan {
namespace {

constexpr int kMostForms = 6;

/// One entry while its lines are read.
struct Entry {
  std::string context, english, plural;
  std::vector<std::string> forms;
  bool fuzzy = false;
  bool hasText = false;

  bool translated() const {
    if (fuzzy || english.empty() || forms.empty()) return false;
    for (const std::string& form : forms)
      if (form.empty()) return false;
    return true;
  }
};

class PoReader {
 public:
  explicit PoReader(TextTable::PluralRule rule) : table_(rule) {}

  Result<TextTable> read(std::string_view file) {
    if (file.size() > kLargestPoFile) return unreadable("line {1}: {2}", 1, "the file is too large");
    while (!file.empty() && fault_.empty()) {
      ++line_;
      const auto end = std::min(file.find('\n'), file.size());
      takeLine(trimmed(file.substr(0, end)));
      file.remove_prefix(std::min(end + 1, file.size()));
    }
    if (fault_.empty()) endEntry();
    if (!fault_.empty()) return unreadable("line {1}: {2}", line_, fault_);
    return std::move(table_);
  }

 private:
  void fail(std::string_view reason) {
    if (fault_.empty()) fault_ = reason;
  }

  void takeLine(std::string_view line) {
    if (line.empty()) return endEntry();
    if (line.front() == '#') {
      if (line.starts_with("#,") && line.find("fuzzy") != std::string_view::npos)
        startNext(), entry_.fuzzy = true;
      return;
    }
    if (line.front() != '"') {
      const auto blank = line.find(' ');
      chooseText(line.substr(0, blank));
      line = blank == std::string_view::npos ? std::string_view() : trimmed(line.substr(blank));
    }
    if (fault_.empty()) appendQuoted(line);
  }

  /// A keyword that begins an entry ends the one before it.
  void startNext() {
    if (entry_.hasText) endEntry();
  }

  void chooseText(std::string_view keyword) {
    if (keyword == "msgctxt") {
      startNext();
      text_ = &entry_.context;
    } else if (keyword == "msgid") {
      startNext();
      text_ = &entry_.english;
    } else if (keyword == "msgid_plural") {
      text_ = &entry_.plural;
    } else if (keyword.starts_with("msgstr")) {
      chooseForm(keyword.substr(6));
    } else {
      fail("a keyword is not known");
    }
  }

  void chooseForm(std::string_view place) {
    const bool indexed = place.size() == 3 && place.front() == '[' && place.back() == ']';
    const int form = indexed ? place[1] - '0' : 0;
    if ((!place.empty() && !indexed) || form != static_cast<int>(entry_.forms.size()) || form >= kMostForms)
      return fail("the forms of a text do not follow each other");
    entry_.hasText = true;
    text_ = &entry_.forms.emplace_back();
  }

  void appendQuoted(std::string_view line) {
    if (text_ == nullptr || line.size() < 2 || line.front() != '"' || line.back() != '"')
      return fail("a text in quotes is missing");
    line = line.substr(1, line.size() - 2);
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (line[i] == '"') return fail("a quote stands within a text");
      if (line[i] != '\\') {
        *text_ += line[i];
        continue;
      }
      const char escaped = ++i < line.size() ? line[i] : '\0';
      constexpr std::string_view kLetters = "nrt\"\\", kMeanings = "\n\r\t\"\\";
      const auto known = escaped == '\0' ? std::string_view::npos : kLetters.find(escaped);
      if (known == std::string_view::npos) return fail("an escape is not known");
      *text_ += kMeanings[known];
    }
  }

  void endEntry() {
    if (entry_.translated()) {
      if (table_.entries().size() >= kMostPoEntries) return fail("there are too many texts");
      if (table_.find(entry_.context, entry_.english) != nullptr) return fail("a text is there twice");
      table_.add(entry_.context, entry_.english, std::move(entry_.forms));
    }
    entry_ = {};
    text_ = nullptr;
  }

  TextTable table_;
  Entry entry_;
  std::string* text_ = nullptr;  // of the entry, that quoted lines add to
  std::string fault_;
  int line_ = 0;
};

}  // namespace

Result<TextTable> readPo(std::string_view file, TextTable::PluralRule rule) {
  return PoReader(rule).read(file);
}

}  // namespace lorivan
