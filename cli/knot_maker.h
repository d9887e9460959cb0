// From the words of a command line to the document of a knot.
#pragma once

#include "cli/batch.h"
#include "cli/report.h"
#include "custom/autogrid.h"
#include "design/document.h"

namespace lorivan {

/// Reads what the command line names once, and makes any number of knots from it. Every step returns an exit
/// status and has told what is wrong unless that is kDone. Command line and report must outlive it.
class KnotMaker {
 public:
  KnotMaker(const CommandLine& line, Report& report) : line_(line), report_(report) {}
  /// With what another one has read, and words that go elsewhere.
  KnotMaker(const KnotMaker& read, Report& report) : line_(read.line_), report_(report), base_(read.base_) {}

  int read();
  /// What was read, before the line's options.
  const Document& base() const { return base_; }
  /// `options`: gets the width where the line asks for a size that a knot is made for.
  int make(const Member& member, Document& out, OutputOptions& options);

 private:
  int readShape();
  int build(Document& document, const Rnd& random);
  void takeValues(Document& document);
  /// A shape file gets an AutoGrid. An outline in a knot file does not: that file has its grid.
  bool ownShape() const;
  bool mustBuild() const;
  Document withFittedBands(const Document& document) const;
  void noteEmptyOutline(const Document& document, const AutoGridReport& report);
  int fitSize(Document& document, OutputOptions& options);

  const CommandLine& line_;
  Report& report_;
  Document base_;
  std::vector<std::pair<Param, std::string>> values_;  // of the knot that is being made
};

}  // namespace lorivan
