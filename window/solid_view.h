// The 3-D picture with its rotator: the model of the knot, the angles it is seen at, and the mouse that turns
// it.
#pragma once

#include <memory>
#include <optional>
#include <span>

#include "design/knot.h"
#include "design/knot_model.h"
#include "model3d/model_picture.h"
#include "model3d/rotator.h"
#include "model3d/strand_hit.h"
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
  const TubeModel& model() const { return model_->built(); }
  /// The same for those who make files of it. They must ask for no other number of sides than the field's.
  std::shared_ptr<KnotModel> sharedModel() const { return model_; }
  /// Shows marks round these places until the model is built anew.
  void mark(std::span<const Vec3> places);

  /// The slot of the strand at a pixel of the picture; 0: none.
  int strandAt(int x, int y) const;
  /// The strand of this slot is outlined from the next painting on; 0: none.
  void setMarkedStrand(int slot) { markedStrand_ = slot; }
  /// While `plain` the picture is painted as it leaves the program: without that mark.
  void setPlain(bool plain) { plain_ = plain; }
  bool altered() const { return markedStrand_ != 0; }

  /// Turns to the document's angles. What was turned with the mouse stays as fine as it is as long as the
  /// document says the same degrees.
  void takeAngles(const Document& document);
  /// The document with the degrees of this view in its fields.
  Document withAngles(const Document& document) const;

  /// While the view is being moved a coarser model stands in for a large one, and the next paint() after
  /// rest() shows the model itself.
  void paint(const Document& document);
  /// The same after another strand was marked, without rendering the model again.
  void paintMark(const Document& document);
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

  /// Coming closer with the wheel or the keys, moving with the middle button, fitting with a double click.
  /// They tell whether the view is another one. The lens belongs to the window and to no document.
  bool lensMoved(const MouseEvent& event);
  bool lensKey(Key key);
  void resetLens() { lens_ = {}; }
  /// The mouse lets go. Whether the picture is to be painted again, since something stood in.
  bool rest();
  /// Polygons of what paint() shows.
  int shownPolygons() const { return shownModel().QuadCount; }

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
  void buildStandIn(const Document& document, const KnotStages& stages);
  const TubeModel& shownModel() const {
    if (moving_ && standIn_.QuadCount > 0) return markedStandIn_ ? *markedStandIn_ : standIn_;
    return marked_ ? *marked_ : model_->built();
  }
  PictureLook look(const Document& document) const;
  void drawMark(const Document& document, const PixelBlock& block);
  void zoom(float factor, PointF at);
  /// A place of the picture, in its widths from its middle.
  PointF placeOf(int x, int y);

  Platform& platform_;
  Window& window_;
  std::shared_ptr<KnotModel> model_ = std::make_shared<KnotModel>();
  std::optional<Inputs> inputs_;                     // what the model was built from
  TubeModel standIn_;                                // empty where the model itself is quick to show
  std::optional<TubeModel> marked_, markedStandIn_;  // both with marks, while there are any
  ModelPicture renderer_;                            // keeps its memory from one picture to the next
  StrandMark mark_;
  std::vector<std::uint32_t> unmarked_;  // the pixels of the last paint(), without the mark of a strand
  int markedStrand_ = 0;
  bool plain_ = false;
  ViewState angles_;
  DragState drag_;
  Lens lens_;
  PointF grip_;                   // where the middle button holds the picture
  bool moving_ = false;           // the view follows the mouse
  Colour background_ = 0xFFFFFF;  // as of the last build or key
  bool heightMap_ = false;        // as of the last build
  std::unique_ptr<Surface> picBig_;
};

}  // namespace lorivan
