// The ways of turning the 3-D view: the rotator picture, dragging in the knot picture, arrow keys and the
// three angle fields. Each changes the angles of a ViewState and brings its matrix up to date; none draws the
// knot.
#pragma once

#include <cstdint>

#include "model3d/m3ops.h"
#include "platform/mouse.h"
#include "platform/surface.h"

namespace lorivan {

/// Where the rotator's circle lies in its picture, pixels.
struct NavGeometry {
  float NavRadius = 1;
  float NavMarginX = 0, NavMarginY = 0;
  float NavCentreX = 0, NavCentreY = 0;
};
NavGeometry navGeometry(int width, int height);

/// The mouse at (x, y) of the rotator picture with a button held: the left one inside the circle sets azimuth
/// and elevation, the right one outside sets the roll. A roll above one degree is folded into the view
/// matrix, never into the stored azimuth and elevation. Says whether the knot is to be drawn again.
bool DrawNav(ViewState& view, const NavGeometry& nav, int button, float x, float y);

/// The place of the last mouse move, in fiftieths of reference pixels.
struct DragState {
  std::int32_t LastDragX = -9999;  // -9999: there is none
  std::int32_t LastDragY = 0;
  // What rounding left over of the last place. Taken into the next step, so that a slow drag turns as far as
  // a fast one and does not jump back every fifty pixels.
  float restX = 0, restY = 0;
};

/// The mouse at (x, y) of the knot picture, in pixels of its reference size. Turns only while the left button
/// is held; the first move after the state was made only records the place. Says whether to draw again.
bool dragView(ViewState& view, DragState& drag, int button, float x, float y);

/// Key codes 37 to 40 (left, up, right, down) turn by nine degrees. Says whether to draw again.
bool turnByKey(ViewState& view, int keyCode);

/// Field values in degrees.
struct AngleFields {
  float theta = 0, phi = 0, psi = 0;
};

/// Take over one field. The view matrix follows.
void setTheta(ViewState& view, float degrees);
void setPhi(ViewState& view, float degrees);
void setPsi(ViewState& view, float degrees);
/// What the fields are to show, each 0 to 360.
AngleFields anglesInDegrees(const ViewState& view);

/// Middles of the two markers in the rotator picture.
struct NavMarkers {
  PointF thetaPhi, psi;
};
NavMarkers navMarkers(const ViewState& view, const NavGeometry& nav);

/// Draws the rotator: circle, cross, a blue marker for azimuth and elevation, a red one for the roll.
/// `lines` is the colour of the circle, which the cross has fainter: the window's text colour on its
/// background.
void drawRotator(Surface& surface, const ViewState& view, Colour background, Colour lines);

}  // namespace lorivan
