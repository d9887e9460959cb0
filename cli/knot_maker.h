// From the words of a command line to the document of a knot.
#pragma once

#include "cli/batch.h"
#include "cli/report.h"
#include "custom/autogrid.h"
#include "design/document.h"
#include "platform/platform.h"

namespace lorivan {

/// Reads what the command line names once, and makes any number of knots from it. Every step returns an exit
/// status and has told what is wrong unless that is kDone. Platform, command line and report must outlive it.
class KnotMaker {
 public:
  KnotMaker(Platform& platform, const CommandLine& line, Report& report)
      : platform_(platform), line_(line), report_(report) {}
  /// With what another one has read, and words that go elsewhere.
  KnotMaker(const KnotMaker& read, Report& report)
      : platform_(read.platform_),
        line_(read.line_),
        report_(report),
        base_(read.base_),
        ownShape_(read.ownShape_) {}

  int read();
  /// What was read, before the line's options.
  const Document& base() const { return base_; }
  /// `options`: gets the width where the line asks for a size that a knot is made for.
  int make(const Member& member, Document& out, OutputOptions& options);

 private:
  int readShape();
  int readOutline();
  int takeShape(CustomShape shape);
  int build(Document& document, const Rnd& random);
  void takeValues(Document& document);
  bool mustBuild() const;
  Document withFittedBands(const Document& document) const;
  void noteEmptyOutline(const Document& document, const AutoGridReport& report);
  int fitSize(Document& document, OutputOptions& options);

  Platform& platform_;
  const CommandLine& line_;
  Report& report_;
  Document base_;
  /// A shape or outline file was read, which gets an AutoGrid. An outline in a knot file does not: that file
  /// has its grid.
  bool ownShape_ = false;
  std::vector<std::pair<Param, std::string>> values_;  // of the knot that is being made
};

}  // namespace lorivan
