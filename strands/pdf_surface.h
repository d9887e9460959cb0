// A PDF file as a drawing surface: one page of its real size, vector paths, optional content for each group.
#pragma once

#include <string>
#include <vector>

#include "strands/vector_surface.h"

namespace lorivan {

/// Draws into PDF 1.6 without compression and without a date: the same drawing gives the same bytes. Groups
/// become optional content, in the tree in which they were begun.
class PdfSurface final : public VectorSurface {
 public:
  explicit PdfSurface(const VectorPage& page)
      : VectorSurface(page), title_(page.title), source_(page.source) {}

  void clear(Colour background) override;
  void clearTransparent(Colour background) override;
  void segment(PointI from, PointI to, const Pen& pen) override;
  void circle(PointI centre, int radius, const Pen& pen) override;
  void dot(PointI centre, int diameter, Colour colour) override;
  void polygonOutline(std::span<const PointI> points, const Pen& pen) override;
  void polyline(std::span<const PointI> points, const Pen& pen) override;
  void fillPolygon(std::span<const PointI> points, Colour colour) override;
  void wideCurve(const WideCurve& curve) override;
  void fillPath(std::span<const std::vector<PointF>> contours, Colour colour) override;
  void strokePath(std::span<const std::vector<PointF>> chains, Colour colour) override;
  void beginGroup(std::string_view name) override { beginLayer(name, false); }
  void beginHiddenGroup(std::string_view name) override { beginLayer(name, true); }
  void endGroup() override;
  void beginClip(double left, double right) override;
  void endClip() override { word("Q"); }

  std::string finish() override;

 private:
  struct Layer {
    std::string name;
    int depth = 0;
    bool hidden = false;
  };

  void beginLayer(std::string_view name, bool hidden);
  void number(double value);
  void numbers(std::initializer_list<double> values, std::string_view word);
  void colour(Colour colour, bool fills);
  void pen(const Pen& pen);
  void point(double x, double y, std::string_view word);
  void line(std::span<const PointI> points);
  void chain(std::span<const PointF> bezier);
  void circlePath(PointI centre, double radius);
  void word(std::string_view word) { body_.append(word).append("\n"); }
  std::string contents() const;
  std::string layerList() const;
  std::string layerTree() const;
  std::string metadata() const;

  std::string title_, source_, body_;
  std::vector<Layer> layers_;
  int depth_ = 0;
};

}  // namespace lorivan
