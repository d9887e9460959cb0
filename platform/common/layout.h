// Where the controls of a form stand. Both back ends place their widgets by this.
//
// The client area (what the menu bar and the status line leave) has three parts: the large picture, always
// 5 wide to 4 high, as the heart; the side panel to the right of it, as tall as the window; and the strip
// under the picture.
//
//   +----------------------+-------------+
//   |                      | side panel  |
//   |       picture        | 24 columns  |
//   |                      |             |
//   +----------------------+             |
//   |  strip, 40 columns   |             |
//   +----------------------+-------------+
//
// How ControlSpec::place is read:
// - A control without a group stands on the panels' grid: rows 0 ... 99 on the side panel, rows kStripRow ...
//   on the strip (row kStripRow is its first). `column` and `columns` count cells of the panel. What shares a
//   row stands side by side, and the row is as tall as its tallest member; empty rows take no place.
// - A group is as tall as its contents: title, then as many lines as its controls reach down to. Its own
//   `rows` is not looked at.
// - A control in a group stands on the group's own grid, which has as many columns as its controls reach; its
//   (0, 0) is the first cell below the title. One row is one line of controls.
// - A picture without a group fills the picture's place, so several of them lie over each other. One in a
//   group is the largest square in its cells, centred.
// - A control with no columns or no rows gets an empty rectangle: it is never shown.
//
// At the smallest size a column is 11 pixels wide (at 100 %), and 24 columns hold three pairs of a label (5
// columns) and an entry (3 columns, or 4 and 4). For an 800 x 600 screen keep to 5 groups with 15 lines in
// all on the side panel, and to a row of buttons and a row of groups with 2 lines on the strip.
#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/window.h"

namespace lorivan {

inline constexpr int kSideColumns = 24;
inline constexpr int kStripColumns = 40;

/// Pixels at 100 %: smaller letters are hard to read.
inline constexpr int kLeastFont = 11;

/// What the layout needs to know of the window's font and screen. Device pixels.
struct LayoutMetrics {
  int lineHeight = 15;    // of the window's font, descenders included
  double scale = 1;       // Window::scaling()
  double digitWidth = 6;  // of the window's font; wide fonts widen the columns
  double least = 1;       // what a small window may multiply the font with
};

/// Device pixels from the client area's top left corner; left + width is the first pixel outside.
struct LayoutRect {
  int left = 0, top = 0, width = 0, height = 0;
  bool isEmpty() const { return width <= 0 || height <= 0; }
};

struct FormLayout {
  std::vector<LayoutRect> controls;  // one for each row of the table, those in groups included
  LayoutRect picture;                // where the large pictures stand
  int titleHeight = 0;               // what a group keeps for its title at its top
};

/// The places of all controls. In a client area smaller than minimumClient() the picture shrinks as far as it
/// can and what is left over hangs out at the right and at the bottom.
FormLayout computeLayout(std::span<const ControlSpec> controls, int clientWidth, int clientHeight,
                         const LayoutMetrics& metrics);

/// The picture without a group that `usable` says yes to, -1 when there is none: where the focus goes when
/// its control is disabled. A button would be pressed by the next Space, an entry would take the arrow keys.
ControlId pictureInUse(std::span<const ControlSpec> controls, const std::function<bool(ControlId)>& usable);

struct LayoutSize {
  int width = 0, height = 0;
};

/// The smallest client area that shows everything in the smallest font, with a picture of 3/4 of the
/// reference size.
LayoutSize minimumClient(std::span<const ControlSpec> controls, const LayoutMetrics& metrics);

/// The client area for a picture of the reference size, times the scale, with the panels at their smallest.
LayoutSize referenceClient(std::span<const ControlSpec> controls, const LayoutMetrics& metrics);

/// What a window multiplies its font and its scale with, so that the panels grow and shrink with the picture:
/// 1 about the reference size, about 2 in one of 2560 x 1440, at most 3. `metrics` are those of the
/// unmultiplied font. Fonts below 1 have to be rounded down.
double panelFactor(std::span<const ControlSpec> controls, int clientWidth, int clientHeight,
                   const LayoutMetrics& metrics);

}  // namespace lorivan
