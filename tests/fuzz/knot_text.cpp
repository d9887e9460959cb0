// Knot files: what can be read is written and read again without a change.
#include "design/document_text.h"
#include "fuzz.h"
#include "known_document.h"

namespace lorivan::fuzz {

void knotText(Bytes bytes) {
  const auto read = readDocument(textOf(bytes));
  if (!read) return require(read.error().kind == ErrorKind::input, "a file that cannot be read is told so");
  requireStored(read->document);
}

}  // namespace lorivan::fuzz
