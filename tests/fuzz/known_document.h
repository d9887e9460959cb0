// What holds for every document.
#pragma once

#include "design/document_text.h"
#include "fuzz.h"

namespace lorivan::fuzz {

/// Its text gives the same document again, without a correction.
inline void requireStored(const Document& document) {
  const std::string text = documentText(document);
  const auto again = readDocument(text);
  require(static_cast<bool>(again), "what was written can be read");
  require(again->corrections.empty(), "what was written needs no correction");
  require(documentText(again->document) == text, "writing and reading change nothing in the text");
  require(again->document.outline == document.outline && again->document.fields == document.fields,
          "writing and reading change no field and no shape");
}

}  // namespace lorivan::fuzz
