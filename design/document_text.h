// A document as text: the knot configuration file (.qzd).
//
// Line 1 holds the cell size and the shape, line 2 eight fields, and every line after them one line of the
// graph. What else the document has follows on line 2 as name=value, each only where it differs from a first
// start; programs that know the eight fields alone pass over it.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "design/document.h"

namespace lorivan {

inline constexpr std::string_view kKnotFileExtension = "qzd";
inline constexpr std::string_view kKnotFileProblem = "Sorry, there was a problem with that file";
inline constexpr std::size_t kLargestKnotFile = 4'000'000;

/// The fields at the beginning of the file's second line, in its order.
inline constexpr std::array<Param, 8> kKnotFileFields = {Param::Scale,       Param::XNo,   Param::YNo,
                                                         Param::StartColour, Param::Width, Param::Swish,
                                                         Param::Smooth,      Param::Edge};

/// CR LF line ends. A document without lines gives the two first lines alone.
std::string documentText(const Document& document);

struct ReadDocument {
  Document document;
  std::vector<std::string> corrections;  // "vtWidth \"99\" corrected to 30"
};

/// The document that a text holds. Of the eight fields those that older files do not have are `before`'s;
/// everything else that the text does not name is as at a first start. Lines end with CR LF, LF or CR, the
/// last one may have no end, and a byte order mark is passed over. Nothing is trusted: counts, 16-bit ranges
/// and numbers are checked. The error names the line and what is wrong with it: "line 7: ...".
Result<ReadDocument> readDocument(std::string_view text, const Document& before = {});

}  // namespace lorivan
