// Texts of people inside XML and JSON.
#pragma once

#include <string>
#include <string_view>

namespace lorivan {

/// With the characters that XML gives a meaning escaped, and control characters left out.
inline std::string xmlText(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '&')
      out += "&amp;";
    else if (c == '"')
      out += "&quot;";
    else if (static_cast<unsigned char>(c) >= 0x20)
      out += c;
  }
  return out;
}

/// As a JSON string, without its quotes; control characters become blanks.
inline std::string jsonText(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return out;
}

}  // namespace lorivan
