// The one table of file formats. Save dialogs, the list of formats and the usage text are computed from it.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/sink.h"
#include "export/scene.h"

namespace lorivan {

enum class FormatKind {
  knotFile,  // the knot's own file
  picture,   // pixels of the 2-D or 3-D picture
  vector,    // the 2-D picture as lines and curves
  model,     // written by a function of this table from an ExportScene
};

/// What a width in millimetres is the width of.
enum class WidthOf { nothing, drawing, model };

struct ExportFormat {
  std::string_view identifier;  // unique
  std::string_view extension;   // without the dot; both DXF kinds share one
  std::string_view label;       // "<label> files" in a save dialog
  std::string_view summary;     // one line of the list of formats
  FormatKind kind;
  WidthOf width = WidthOf::nothing;
  std::string_view option = {};  // the option button that chooses it; empty: none
  int saveNumber = 0;            // the option's number in the settings; 0: none
  int sides = 0;                 // the model must be built with so many sides; 0: with the field's
  Status (*write)(const ExportScene&, Sink&) = nullptr;  // null unless the kind is model
  bool takesSolid = false;                               // writes a fused body where the scene has one
  bool carriesSource = false;  // holds the document's text and opens as its knot, see ExportScene::source
};

/// What a DXF file holds is chosen by a check box, not by its extension.
enum class DxfKind { faces, flat };

std::span<const ExportFormat> exportFormats();

/// Whether a row is the DXF of flat lines.
bool isFlatDxf(const ExportFormat& format);

/// Whether a row can be written in a binary form as well.
bool hasBinaryForm(const ExportFormat& format);

/// The row for an extension ("stl"; case does not matter) or for an option's settings number; null when
/// there is none.
const ExportFormat* findFormat(std::string_view extension, DxfKind dxf);
const ExportFormat* findSavedFormat(int saveNumber, DxfKind dxf);

/// One line for each extension: the extension and what it holds.
std::string formatList();

/// "qzd, svg, ...", each extension once.
std::string formatExtensions();

/// "svg, emf and flat dxf": the formats whose width in millimetres is that of this.
std::string formatsWithWidth(WidthOf width);

/// "obj and stl": the formats that take a fused body.
std::string formatsWithSolid();

/// "svg and png": the formats that open as the knot that they were made from.
std::string formatsWithSource();

}  // namespace lorivan
