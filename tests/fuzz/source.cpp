// Knots inside pictures, drawings and models: any bytes may surround them.
#include "design/source.h"

#include "fuzz.h"
#include "known_document.h"

namespace lorivan::fuzz {

void source(Bytes bytes) {
  const std::string_view text = textOf(bytes);
  const auto found = sourceInside(text);
  if (!found) {
    // Bytes without a mark are carried whole.
    const std::string mark = sourceMark(text);
    if (!text.empty()) require(sourceInside(mark) == std::string(text), "a mark gives back its text");
    const std::string png = withPngSource(std::string(text), mark);
    require(png == text || sourceInside(png) == std::string(text), "a picture gives back its text");
    return;
  }
  require(found->size() <= kLargestKnotFile, "a text is no larger than a knot file");
  require(sourceInside(sourceMark(*found)) == *found, "a mark gives back its text");
  if (const auto read = readDocument(*found)) requireStored(read->document);
}

}  // namespace lorivan::fuzz
