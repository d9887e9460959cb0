// The 3-D picture with its rotator: the model of the knot, the angles it is seen at, and the mouse that turns
// it.
#pragma once

#include <memory>
#include <optional>
#include <span>

#include "design/knot.h"
#include "design/knot_model.h"
#include "model3d/renderer.h"
#include "model3d/rotator.h"
#include "platform/platform.h"

namespace lorivan {

class SolidView {
 public:
  SolidView(Platform& platform, Window& window) : platform_(platform), window_(window) {}

  /// Builds the model of the strands, unless it is the one that is there. The error is the program's message
  /// for too many polygons; the model is then as before. A knot without strands gives an empty one.
  Status build(const Document& document, const KnotStages& stages);
  /// Whether the model is the one that build() would make, shown as the document says.
  bool current(const Document& document, const KnotStages& stages) const;
  /// Whether the model is one of these strands, whatever its other inputs were.
  bool ofStrands(const KnotStages& stages) const;
  /// Whether the model has the colours that the document's strands have.
  bool sameColours(const Document& document) const;
  const TubeModel& model() const { return model_.built(); }
  /// Shows marks round these places until the model is built anew.
  void mark(std::span<const Vec3> places);

  /// Turns to the document's angles. What was turned with the mouse stays as fine as it is as long as the
  /// document says the same degrees.
  void takeAngles(const Document& document);
  /// The document with the degrees of this view in its fields.
  Document withAngles(const Document& document) const;

  void paint(const Document& document);
  void paintRotator();
  /// The document in another style, without a change of the model that is shown. False when that would take
  /// long.
  bool paintPreview(const Document& document, const KnotStages& stages);
  /// The background is the document's from now on; it changes with a build or a key.
  void takeBackground(const Document& document);

  /// The ways of turning. They tell whether the view was turned.
  bool dragged(const MouseEvent& event);
  bool rotatorMoved(const MouseEvent& event);
  bool keyPressed(Key key);

  /// The depth of the view as greys, at twice the size of the picture, made for saving it. Null while there
  /// is no model or no memory for the picture.
  Surface* picBig(const Document& document);

  /// From so many polygons on, work on the model is felt.
  static constexpr std::int64_t kLargeModel = 100'000;

 private:
  struct Inputs {
    int strands = 0;
    TubeSettings tube;
    SlotColours colours{};
    Colour background = 0;
    bool heightMap = false;
    bool operator==(const Inputs&) const = default;
  };
  static Inputs inputsOf(const Document& document, const KnotStages& stages);

  Platform& platform_;
  Window& window_;
  KnotModel model_;
  std::optional<TubeModel> marked_;  // the model with marks, while there are any
  std::optional<Inputs> inputs_;     // what the model was built from
  Renderer renderer_;                // keeps its memory from one picture to the next
  ViewState angles_;
  DragState drag_;
  Colour background_ = 0xFFFFFF;  // as of the last build or key
  bool heightMap_ = false;        // as of the last build
  std::unique_ptr<Surface> picBig_;
};

}  // namespace lorivan
