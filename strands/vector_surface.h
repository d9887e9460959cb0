// What drawing surfaces that become files of lines and curves have in common: a page in millimetres.
#pragma once

#include <optional>
#include <string>

#include "platform/surface.h"

namespace lorivan {

/// A part of a picture, in its units.
struct PictureBox {
  double left = 0, top = 0, right = 0, bottom = 0;
};

/// A box that holds nothing yet.
inline constexpr PictureBox kEmptyBox{1e30, 1e30, -1e30, -1e30};

struct VectorPage {
  int width = 0, height = 0;           // of the whole picture, in its units
  double millimetres = 0;              // width of the whole picture as printed or cut
  std::string title = {};              // UTF-8
  std::optional<PictureBox> box = {};  // the page is only this part; its upper left corner is the origin
  std::string source = {};             // kept in the file's metadata as it is: text that needs no escaping
};

/// Its units are fine steps of the picture. Groups become layers of the file.
class VectorSurface : public Surface {
 public:
  explicit VectorSurface(const VectorPage& page);

  int width() const override { return width_; }
  int height() const override { return height_; }
  bool isRaster() const override { return false; }
  Colour pixel(PointI) const override { return background_; }

  /// Draws chains of cubic Bezier segments, 3 n + 1 points each, as hairlines. Where the last point of a
  /// chain repeats the first one it is a closed path; all are parts of one path.
  virtual void strokePath(std::span<const std::vector<PointF>> chains, Colour colour) = 0;
  /// beginGroup() for what is there but not shown until a reader shows it.
  virtual void beginHiddenGroup(std::string_view name) = 0;

  /// The whole file. Nothing is drawn afterwards.
  virtual std::string finish() = 0;

 protected:
  static constexpr double kHairline = 0.1;  // millimetres

  /// Millimetres on the page.
  double pageX(double x) const { return (x - left_) * scale_; }
  double pageY(double y) const { return (y - top_) * scale_; }
  double pageWidth() const { return pageWidth_ * scale_; }
  double pageHeight() const { return pageHeight_ * scale_; }
  double scale() const { return scale_; }
  /// So many decimals that a step is small beside the picture.
  int decimals() const { return decimals_; }

  /// The curve's chain with as few nodes as a share of its width allows.
  static std::vector<PointF> fewerNodes(const WideCurve& curve);
  /// What a drawing program's list of layers calls a group: "strand-1" is "Strand 1".
  static std::string labelOf(std::string_view name);

 private:
  int width_, height_;
  double left_ = 0, top_ = 0, pageWidth_, pageHeight_;
  double scale_;  // millimetres for a unit
  int decimals_;
};

/// Without trailing zeros and without "-0".
void appendDecimal(std::string& out, double value, int decimals);

}  // namespace lorivan
