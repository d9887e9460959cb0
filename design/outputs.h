// Makes output files of a knot in any format of the format table.
#pragma once

#include <memory>

#include "base/sink.h"
#include "design/knot.h"
#include "design/knot_model.h"
#include "design/output_options.h"
#include "export/formats.h"
#include "platform/platform.h"

namespace lorivan {

/// What the outputs of one knot are made from; they share the model.
struct OutputJob {
  Platform& platform;
  const Document& document;
  const Knot& knot;  // of the document, traced
  const StrandColours& colours;
  OutputOptions options = {};
  std::function<void(double)> progress = {};
  std::function<void(const std::string&)> note = {};  // told what a user should know of a file that is made
  std::string fileName = {};  // of the file; a welded OBJ names its materials after it

  std::shared_ptr<KnotModel> model = std::make_shared<KnotModel>();
};

/// The row for a file name's extension; of the two DXF kinds the one that the fields choose, or the options:
/// a drawing for a machine is flat. Null when unknown.
const ExportFormat* outputFormat(const std::string& fileName, const KnotFields& fields,
                                 const OutputOptions& options = {});

/// The knot's text as a file carries it, see design/source.h.
std::string sourceOf(const OutputJob& job);

/// The width of a model, or of a drawing's flat lines with their bands, that gives it the size asked for.
std::optional<double> wantedWidth(const ExportFormat& format, const OutputJob& job, const TubeModel& model);

/// Whether files of the format can go without their background.
bool canBeTransparent(const ExportFormat& format);

/// The name of the second file that a welded OBJ of this name needs; empty where there is none, as for a
/// fused body.
std::string materialsBeside(const ExportFormat& format, const OutputOptions& options,
                            const std::string& fileName);
Status makeMaterials(const OutputJob& job, Sink& sink);

/// "Knot, Star".
std::string titleOf(const Document& document);

/// Makes the whole file into the sink. The error is the program's message for limits, else one sentence.
Status makeOutput(const ExportFormat& format, const OutputJob& job, Sink& sink);

}  // namespace lorivan
