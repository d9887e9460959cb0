#include "window/recovery.h"

#include "base/sink.h"
#include "design/document_text.h"

namespace lorivan {
namespace {

constexpr int kPlaces = 16;  // more programs than anybody runs at once

}  // namespace

Recovery::Recovery(Platform& platform) : platform_(platform), folder_(platform.userFolder()) {
  for (int number = 1; !folder_.empty() && number <= kPlaces && own_ == 0; ++number) {
    // A place with a copy is left to takeLeft.
    if (fileExists(place(number, ".qzd"))) continue;
    claim_ = platform_.claim(place(number, ".lock"));
    if (claim_) own_ = number;
  }
}

std::string Recovery::place(int number, const char* extension) const {
  return folder_ + "/unsaved-" + std::to_string(number) + extension;
}

std::optional<std::string> Recovery::takeLeft() {
  for (int number = 1; !folder_.empty() && number <= kPlaces; ++number) {
    const std::string file = place(number, ".qzd");
    if (number == own_ || !fileExists(file)) continue;
    const auto claim = platform_.claim(place(number, ".lock"));
    if (!claim) continue;
    if (own_ == 0 || !moveFile(file, place(own_, ".qzd"))) continue;
    const auto text = readRegularFile(place(own_, ".qzd"), kLargestKnotFile);
    if (!text) continue;
    kept_ = *text;
    return kept_;
  }
  return std::nullopt;
}

void Recovery::keep(const std::string& text) {
  if (own_ == 0 || text == kept_) return;
  // A copy that cannot be written is no reason to disturb the work: there is nothing that the user could do.
  if (writeFile(place(own_, ".qzd"), text)) kept_ = text;
}

void Recovery::clear() {
  if (own_ == 0 || kept_.empty()) return;
  static_cast<void>(removeFile(place(own_, ".qzd")));
  kept_.clear();
}

}  // namespace lorivan
