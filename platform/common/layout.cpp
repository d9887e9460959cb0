#include "platform/common/layout.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace lorivan {
namespace {

// Digits that a column holds: the side panel has long labels, and with the widest of the usual fonts a small
// window is still to fit an 800 x 600 screen.
constexpr double kSideDigits = 1.7, kStripDigits = 1.655;

/// Distances in device pixels, and the two sizes that give way: the width of a column and the height of a
/// line.
struct Measures {
  int margin;                      // around the parts of the window
  int between;                     // between groups
  int sideGap;                     // between the groups of the side panel, wider where there is room
  int padding;                     // inside a group's frame
  int gap;                         // between neighbouring controls
  int title;                       // of a group
  double sideColumn, stripColumn;  // widths of one column of the panels
  int line;                        // height of one line of controls, the gap below it included
  int lineMost;                    // the largest comfortable line
};

Measures measuresOf(const LayoutMetrics& metrics) {
  const auto scaled = [&](double pixels) { return static_cast<int>(std::lround(pixels * metrics.scale)); };
  return {.margin = scaled(6),
          .between = scaled(4),
          .sideGap = scaled(4),
          .padding = scaled(6),
          .gap = std::max(2, scaled(2)),
          .title = metrics.lineHeight + scaled(2),
          .sideColumn = std::max<double>(scaled(11), metrics.digitWidth * kSideDigits),
          .stripColumn = std::max<double>(scaled(11), metrics.digitWidth * kStripDigits),
          .line = metrics.lineHeight + std::max(6, scaled(6)),
          .lineMost = metrics.lineHeight + scaled(14)};
}

bool isPlaced(const ControlSpec& control) { return control.place.columns > 0 && control.place.rows > 0; }
bool isPanelItem(const ControlSpec& control) {
  return control.group.empty() && isPlaced(control) && control.kind != ControlKind::picture;
}

/// Lines and columns that the contents of a group reach.
struct Extent {
  int lines = 0, columns = 1;
};

Extent extentOf(std::span<const ControlSpec> controls, std::string_view group) {
  Extent extent;
  for (const ControlSpec& control : controls) {
    if (control.group != group || !isPlaced(control)) continue;
    extent.lines = std::max(extent.lines, control.place.row + control.place.rows);
    extent.columns = std::max(extent.columns, control.place.column + control.place.columns);
  }
  return extent;
}

int itemHeight(std::span<const ControlSpec> controls, const ControlSpec& item, const Measures& m) {
  if (item.kind != ControlKind::group) return item.place.rows * m.line + m.gap;
  return m.title + extentOf(controls, item.name).lines * m.line + m.padding;
}

/// One of the two panels: the heights of its rows that hold something.
struct Panel {
  int gap = 0;  // between them
  std::map<int, int> heights;

  int height() const {
    int sum = 0;
    for (const auto& [row, tall] : heights) sum += tall + (sum > 0 ? gap : 0);
    return sum;
  }
  int topOf(int row) const {
    int top = 0;
    for (const auto& [other, tall] : heights)
      if (other < row) top += tall + gap;
    return top;
  }
};

struct Panels {
  Panel side, strip;
};

Panels panelsOf(std::span<const ControlSpec> controls, const Measures& m) {
  Panels panels{{m.sideGap, {}}, {m.between, {}}};
  for (const ControlSpec& control : controls) {
    if (!isPanelItem(control)) continue;
    Panel& panel = control.place.row < kStripRow ? panels.side : panels.strip;
    int& tall = panel.heights[control.place.row];
    tall = std::max(tall, itemHeight(controls, control, m));
  }
  return panels;
}

/// Height of the strip with the distance to the picture above it.
int stripHeight(const Panels& panels, const Measures& m) {
  const int height = panels.strip.height();
  return height > 0 ? height + m.margin : 0;
}

/// Moves the groups of a side panel with room to spare apart, up to four times the usual distance.
void spreadGroups(const Panels& panels, int room, Measures& m) {
  const int gaps = std::max(1, static_cast<int>(panels.side.heights.size()) - 1);
  m.sideGap += std::clamp((room - panels.side.height()) / gaps, 0, 3 * m.between);
}

/// Lines as tall as the height allows without taking from a picture of the reference size.
void stretchLines(std::span<const ControlSpec> controls, int clientHeight, double scale, Measures& m) {
  const int least = m.line;
  const int room = clientHeight - 2 * m.margin;
  const int picture = std::min(static_cast<int>(std::lround(kReferenceHeight * scale)),
                               room - stripHeight(panelsOf(controls, m), m));
  for (m.line = m.lineMost; m.line > least; --m.line) {
    const Panels panels = panelsOf(controls, m);
    if (panels.side.height() <= room && stripHeight(panels, m) + picture <= room)
      return spreadGroups(panels, room, m);
  }
}

/// The largest 5:4 rectangle in the middle of a place.
LayoutRect fitPicture(const LayoutRect& place) {
  const int fifth = std::max(1, std::min(place.width / 5, place.height / 4));
  return {place.left + (place.width - 5 * fifth) / 2, place.top + (place.height - 4 * fifth) / 2, 5 * fifth,
          4 * fifth};
}

/// A part of a row: cells `first` ... `first + count` of `columns` equal ones over the width, less the gap.
LayoutRect cells(const LayoutRect& row, int first, int count, int columns, int gap) {
  const auto edge = [&](int cell) { return row.left + cell * row.width / columns; };
  const int right = edge(first + count) - (first + count < columns ? gap : 0);
  return {edge(first), row.top, right - edge(first), row.height};
}

LayoutRect squareIn(const LayoutRect& place) {
  const int side = std::min(place.width, place.height);
  return {place.left + (place.width - side) / 2, place.top + (place.height - side) / 2, side, side};
}

class Placer {
 public:
  Placer(std::span<const ControlSpec> controls, const Measures& m) : controls_(controls), m_(m) {
    layout_.controls.resize(controls.size());
    layout_.titleHeight = m.title;
  }

  void placePanel(const Panel& panel, const LayoutRect& area, int columns, bool isStrip) {
    for (std::size_t i = 0; i < controls_.size(); ++i) {
      const ControlSpec& control = controls_[i];
      const CellPlace& place = control.place;
      if (!isPanelItem(control) || (place.row >= kStripRow) != isStrip) continue;
      const LayoutRect row{area.left, area.top + panel.topOf(place.row), area.width,
                           panel.heights.at(place.row)};
      layout_.controls[i] = cells(row, place.column, place.columns, columns, m_.between);
      if (control.kind == ControlKind::group) placeGroup(control, layout_.controls[i]);
    }
  }

  void placePictures(const LayoutRect& picture) {
    layout_.picture = picture;
    for (std::size_t i = 0; i < controls_.size(); ++i)
      if (controls_[i].kind == ControlKind::picture && controls_[i].group.empty() && isPlaced(controls_[i]))
        layout_.controls[i] = picture;
  }

  FormLayout take() { return std::move(layout_); }

 private:
  void placeGroup(const ControlSpec& group, const LayoutRect& frame) {
    const int columns = extentOf(controls_, group.name).columns;
    for (std::size_t i = 0; i < controls_.size(); ++i) {
      const ControlSpec& control = controls_[i];
      const CellPlace& place = control.place;
      if (control.group != group.name || !isPlaced(control)) continue;
      const LayoutRect row{frame.left + m_.padding, frame.top + m_.title + place.row * m_.line,
                           frame.width - 2 * m_.padding, place.rows * m_.line - m_.gap};
      LayoutRect& rect = layout_.controls[i];
      rect = cells(row, place.column, place.columns, columns, m_.gap);
      if (control.kind == ControlKind::picture) rect = squareIn(rect);
    }
  }

  std::span<const ControlSpec> controls_;
  const Measures& m_;
  FormLayout layout_;
};

int leastWidth(const Panel& panel, double columns, const Measures& m) {
  return panel.heights.empty() ? 0 : static_cast<int>(std::lround(columns)) + 2 * m.padding;
}
int leastSideWidth(const Panels& panels, const Measures& m) {
  return leastWidth(panels.side, kSideColumns * m.sideColumn, m);
}
int leastStripWidth(const Panels& panels, const Measures& m) {
  return leastWidth(panels.strip, kStripColumns * m.stripColumn, m);
}

/// Width of the side panel: what a picture of the given width leaves, as far as the strip can spare it.
int sideWidth(const Panels& panels, int width, int pictureWidth, const Measures& m) {
  const int least = leastSideWidth(panels, m);
  const int spare = width - m.margin - std::max(pictureWidth, leastStripWidth(panels, m));
  return std::clamp(spare, least, least * 3 / 2);
}

LayoutSize clientFor(std::span<const ControlSpec> controls, const LayoutMetrics& metrics, double part) {
  const Measures m = measuresOf(metrics);
  const Panels panels = panelsOf(controls, m);
  const auto picture = [&](int pixels) {
    return static_cast<int>(std::lround(pixels * metrics.scale * part));
  };
  const int side = leastSideWidth(panels, m);
  return {picture(kReferenceWidth) + 2 * m.margin + (side > 0 ? side + m.margin : 0),
          std::max(picture(kReferenceHeight) + stripHeight(panels, m), panels.side.height()) + 2 * m.margin};
}

LayoutMetrics multiplied(const LayoutMetrics& metrics, double factor) {
  return {.lineHeight = static_cast<int>(std::ceil(metrics.lineHeight * factor)),
          .scale = metrics.scale * factor,
          .digitWidth = metrics.digitWidth * factor};
}

}  // namespace

FormLayout computeLayout(std::span<const ControlSpec> controls, int clientWidth, int clientHeight,
                         const LayoutMetrics& metrics) {
  Measures m = measuresOf(metrics);
  stretchLines(controls, clientHeight, metrics.scale, m);
  const Panels panels = panelsOf(controls, m);
  const int strip = stripHeight(panels, m);
  const int width = clientWidth - 2 * m.margin;
  const int tall = std::max(4, clientHeight - 2 * m.margin - strip);
  const int side = sideWidth(panels, width, tall * 5 / 4, m);
  const int leftWidth = std::max(5, side > 0 ? width - side - m.margin : width);

  Placer placer(controls, m);
  const LayoutRect picture = fitPicture({m.margin, m.margin, leftWidth, tall});
  placer.placePictures(picture);
  placer.placePanel(panels.side, {m.margin + leftWidth + m.margin, m.margin, side, panels.side.height()},
                    kSideColumns, false);
  const int stripLeast = leastStripWidth(panels, m);
  const int stripWidth = std::clamp(picture.width, stripLeast, std::max(stripLeast, leftWidth));
  const int stripLeft = m.margin + std::max(0, (leftWidth - stripWidth) / 2);
  placer.placePanel(
      panels.strip,
      {stripLeft, clientHeight - m.margin - panels.strip.height(), stripWidth, panels.strip.height()},
      kStripColumns, true);
  return placer.take();
}

LayoutSize minimumClient(std::span<const ControlSpec> controls, const LayoutMetrics& metrics) {
  LayoutSize least = clientFor(controls, metrics, 0.75);
  const Measures m = measuresOf(metrics);
  const Panels panels = panelsOf(controls, m);
  const int side = leastSideWidth(panels, m);
  const int strip = leastStripWidth(panels, m);
  least.width = std::max(least.width, strip + 2 * m.margin + (side > 0 ? side + m.margin : 0));
  return least;
}

LayoutSize referenceClient(std::span<const ControlSpec> controls, const LayoutMetrics& metrics) {
  const LayoutSize least = minimumClient(controls, metrics);
  const LayoutSize reference = clientFor(controls, metrics, 1);
  return {std::max(least.width, reference.width), std::max(least.height, reference.height)};
}

double panelFactor(std::span<const ControlSpec> controls, int clientWidth, int clientHeight,
                   const LayoutMetrics& metrics) {
  constexpr double kRoomy = 1.3, kMost = 3;  // up to that many reference sizes nothing is enlarged
  const auto times = [&](const LayoutSize& size) {
    return std::min(1.0 * clientWidth / size.width, 1.0 * clientHeight / size.height);
  };
  const auto fits = [&](double factor) {
    return times(minimumClient(controls, multiplied(metrics, factor))) >= 1;
  };
  if (!fits(1)) {
    double factor = 1;
    while (factor > metrics.least && !fits(factor)) factor -= 0.01;  // sizes go in steps of whole pixels
    return std::max(factor, metrics.least);
  }
  return std::clamp(times(referenceClient(controls, metrics)) / kRoomy, 1.0, kMost);
}

ControlId pictureInUse(std::span<const ControlSpec> controls, const std::function<bool(ControlId)>& usable) {
  for (ControlId id = 0; id < static_cast<ControlId>(controls.size()); ++id) {
    const ControlSpec& control = controls[id];
    if (control.kind == ControlKind::picture && control.group.empty() && usable(id)) return id;
  }
  return -1;
}

}  // namespace lorivan
