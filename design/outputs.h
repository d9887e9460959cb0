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
  std::function<void(const std::string&)> note = {};  // told what a maker should know of an output

  std::shared_ptr<KnotModel> model = std::make_shared<KnotModel>();
};

/// The row for a file name's extension; of the two DXF kinds the one that the fields choose. Null when
/// unknown.
const ExportFormat* outputFormat(const std::string& fileName, const KnotFields& fields);

/// Makes the whole file into the sink. The error is the program's message for limits, else one sentence.
Status makeOutput(const ExportFormat& format, const OutputJob& job, Sink& sink);

}  // namespace lorivan
