// Enhanced metafiles of stroked paths, written record by record, the same on every system. Records and their
// fields follow the published format description [MS-EMF].
#pragma once

#include <cstdint>
#include <string>

#include "strands/band_paths.h"

namespace lorivan {

/// Gathers one metafile. Its logical unit is the pixel of its reference device, `width` of which make up the
/// picture's width; it can be far finer than a screen's.
class EmfWriter {
 public:
  /// A picture of `width` by `height` units, `millimetres` wide when placed in a document. Its frame starts
  /// at 0, 0.
  EmfWriter(int width, int height, double millimetres);

  /// Pen, path and stroke of one line. Fewer than two points draw nothing.
  void strokePath(const BandPath& path);

  /// The whole file. Nothing is drawn afterwards.
  std::string finish();

 private:
  struct Box {
    std::int32_t left = INT32_MAX, top = INT32_MAX, right = INT32_MIN, bottom = INT32_MIN;  // inclusive
    void add(PointI p, int margin);
    void add(const Box& box);
    bool empty() const { return left > right; }
  };

  void put16(std::int64_t value);
  void put32(std::int64_t value);
  void put(const Box& box);
  void begin(int type, std::size_t bytes);
  void createPen(const BandPath& path);
  void points(const BandPath& path, const Box& box);
  std::string header() const;

  int width_, height_;
  double millimetres_;
  std::string bytes_;
  int records_ = 1;  // the header is written last
  Box bounds_;
};

/// The knot as a metafile: its bands only, neither grid nor background. `millimetres` is the width of the
/// view's whole picture.
std::string knotMetafile(const KnotCurve& curve, const KnotStyle& style, const GridView& view,
                         double millimetres);

}  // namespace lorivan
