#include "strands/vector_surface.h"

#include <array>
#include <charconv>

namespace lorivan {

VectorSurface::VectorSurface(const VectorPage& page)
    : width_(page.width),
      height_(page.height),
      pageWidth_(page.width),
      pageHeight_(page.height),
      scale_(page.millimetres / page.width) {
  if (page.box) {
    left_ = page.box->left;
    top_ = page.box->top;
    pageWidth_ = page.box->right - left_;
    pageHeight_ = page.box->bottom - top_;
  }
  decimals_ = pageWidth() < 20 ? 6 : 3;
}

std::string VectorSurface::labelOf(std::string_view name) {
  std::string label(name);
  for (char& c : label)
    if (c == '-') c = ' ';
  if (!label.empty() && label[0] >= 'a' && label[0] <= 'z')
    label[0] = static_cast<char>(label[0] - 'a' + 'A');
  return label;
}

void appendDecimal(std::string& out, double value, int decimals) {
  std::array<char, 64> text{};
  char* end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals).ptr;
  if (decimals > 0) {
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
  }
  const std::string_view digits(text.data(), static_cast<std::size_t>(end - text.data()));
  out += digits == "-0" ? "0" : digits;
}

std::string xmlText(std::string_view text) {
  std::string safe;
  for (const char c : text) switch (c) {
      case '&':
        safe += "&amp;";
        break;
      case '<':
        safe += "&lt;";
        break;
      case '>':
        safe += "&gt;";
        break;
      case '"':
        safe += "&quot;";
        break;
      default:
        if (static_cast<unsigned char>(c) >= 0x20) safe += c;
    }
  return safe;
}

}  // namespace lorivan
