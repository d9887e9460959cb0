// One knot on its way from a document to a picture: graph, strands and curve, each made from the one before
// and kept until its input changes.
#pragma once

#include <memory>
#include <optional>

#include "design/document.h"
#include "strands/knot_curve.h"
#include "strands/knot_drawing.h"
#include "strands/tracing.h"

namespace lorivan {

struct Knot {
  KnotGraph graph;
  StrandStore strands;
  KnotCurve curve;
  float stretch = 0.8F;  // that the strands were traced with
};

/// The view that shows the whole grid, and with `knotDrawn` the whole knot, in a picture of this width.
GridView viewOf(const Knot& knot, const KnotFields& fields, const KnotStyle& style, int pictureWidth,
                bool knotDrawn);

/// What a drawn knot's view is laid round, in grid units. It depends on no width.
struct KnotBoxes {
  GridBox grid, strands;
  float stretch;  // of the view
};
KnotBoxes boxesOf(const Knot& knot);

/// viewOf() of a drawn knot.
GridView viewOf(const KnotBoxes& boxes, const KnotFields& fields, const KnotStyle& style, int pictureWidth);

/// Follows documents. Each call does what is out of date since the one before and nothing else.
class KnotStages {
 public:
  KnotStages() : knot_(std::make_unique<Knot>()) {}

  /// The graph gets the document's lines. Strands of other lines are no longer the knot's.
  Status followGrid(const Document& document);

  /// Orders the neighbours, walks the strands and samples their curves. Errors are the program's messages,
  /// after which there are no strands. With a watcher the walk is always made, so that it can be followed.
  Result<TraceEnd> trace(const Document& document, const TraceWatcher& watcher = {});

  const Knot& knot() const { return *knot_; }
  /// Another number whenever the strands are other ones; 0 while there are none.
  int strands() const { return walked_ ? walk_ : 0; }

 private:
  struct Curve {
    int order = 0, samples = 0;
    bool operator==(const Curve&) const = default;
  };

  Result<TraceEnd> walk(const TraceSettings& settings, const TraceWatcher& watcher);
  bool takeOver(const TraceSettings& settings);

  std::unique_ptr<Knot> knot_;
  Shared<KnotLines> lines_;
  std::int16_t cellSize_ = 0;
  Wrap wrap_;
  std::optional<TraceSettings> walked_;  // what the strands were walked with
  std::optional<Curve> sampled_;
  int walk_ = 0;
};

/// Those that functions from one document to another make their knots in, one of each thread. The next stages
/// to trace a document that these have traced last take its knot over instead of making it again.
KnotStages& workingStages();

/// All stages at once. Errors are the program's messages.
Status makeKnot(const Document& document, Knot& knot);

/// "6 more strands are not drawn: there is room for 39", or nothing.
std::string lostStrands(const Knot& knot);

/// Whether the strands of a grid made from a shape will run together: strands side by side, seldom further
/// apart than 0.6 of a line's length, are wider than that.
bool strandsRunTogether(const Document& document);

}  // namespace lorivan
