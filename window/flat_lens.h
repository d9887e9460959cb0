// How closely the flat picture is looked at: the wheel, the middle button and the keys change it. It belongs
// to the window; another knot is shown whole.
#pragma once

#include "graph/grid_view.h"
#include "platform/window.h"

namespace lorivan {

class FlatLens {
 public:
  /// They tell whether the view is another one. `width` is the picture's.
  bool moved(const MouseEvent& event, int width);
  bool key(Key key);
  bool reset();

  bool isWhole() const { return zoom_ == 1 && panX_ == 0 && panY_ == 0; }
  double zoom() const { return zoom_; }

  /// The part of a view of the whole picture that the lens shows. Everything drawn through it is larger,
  /// widths too; its width is that of the whole picture as large, of which the surface shows a part.
  GridView through(const GridView& whole) const;

 private:
  void zoomAbout(double factor, double x, double y);
  void panBy(double x, double y);

  // Picture widths, from the picture's middle.
  double zoom_ = 1, panX_ = 0, panY_ = 0;
  double gripX_ = 0, gripY_ = 0;  // where the middle button holds the picture
};

}  // namespace lorivan
