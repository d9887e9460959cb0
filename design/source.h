// A file's own source: the document's text inside a picture, drawing or model, so that such a file opens as
// the knot that it was made from.
//
// The text travels as one mark of plain ASCII letters that needs no escaping in XML, JSON, a PDF string or a
// PNG text chunk: "lorivan-knot:<base64>;". A writer puts sourceMark() into the place that its format has for
// such things, as it is and not compressed:
//   SVG        the text of the metadata element, see VectorPage::source
//   3MF        a metadata element or a part of its own, in either case of a part that is stored, not deflated
//   PNG        a tEXt chunk, see withPngSource()
//   PDF        a string of the document information dictionary, outside of object streams: VectorPage::source
//   GLB        a string of asset.extras
// Model writers find it as ExportScene::source. The format's row in export/formats.cpp says carriesSource.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "design/document_text.h"

namespace lorivan {

std::string sourceMark(std::string_view documentText);

/// The document's text of the first whole mark among any bytes; none when there is no mark, or when it is cut
/// off, damaged or larger than a knot file may be. White space inside a mark is passed over.
std::optional<std::string> sourceInside(std::string_view bytes);

/// A PNG file with the mark in a text chunk behind its header; any other bytes come back as they are.
std::string withPngSource(std::string png, std::string_view mark);

/// Whether a file of this name may be opened: a knot file, or a format that carries its source.
bool canHoldKnot(std::string_view path);

/// Whether the file can be read and carries its source.
bool holdsKnot(const std::string& path);

/// Reads a knot from a knot file, or from a file that carries its source; see readDocument.
Result<ReadDocument> readKnotFile(const std::string& path, const Document& before = {});

}  // namespace lorivan
