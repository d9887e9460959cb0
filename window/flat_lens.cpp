#include "window/flat_lens.h"

#include <algorithm>
#include <cmath>

#include "platform/mouse.h"

namespace lorivan {
namespace {

constexpr double kLeast = 0.5, kMost = 16;
constexpr double kStep = 1.2;           // of a notch of the wheel, and of a key
constexpr int kWidestPicture = 30'000;  // that a surface is still told to draw a part of
constexpr double kHeight = 0.8;         // of a picture, in its widths

}  // namespace

/// What lies at (x, y) stays there.
void FlatLens::zoomAbout(double factor, double x, double y) {
  // As many notches back lead to where it began, whatever was rounded on the way.
  double zoomed = std::clamp(zoom_ * factor, kLeast, kMost);
  if (std::abs(zoomed - 1) < 0.01) zoomed = 1;
  const double share = zoomed / zoom_;
  zoom_ = zoomed;
  panBy((x - panX_) * (1 - share), (y - panY_) * (1 - share));
}

/// Some of the picture always stays in sight.
void FlatLens::panBy(double x, double y) {
  const double farX = zoom_ / 2, farY = zoom_ / 2 * kHeight;
  panX_ = std::clamp(panX_ + x, -farX, farX);
  panY_ = std::clamp(panY_ + y, -farY, farY);
  if (zoom_ == 1 && std::hypot(panX_, panY_) < 0.005) panX_ = panY_ = 0;
}

bool FlatLens::moved(const MouseEvent& event, int width) {
  const FlatLens before = *this;
  const double x = (event.x + 0.5) / width - 0.5, y = (event.y + 0.5) / width - kHeight / 2;
  if (event.action == MouseAction::wheel) zoomAbout(std::pow(kStep, std::clamp(event.steps, -10, 10)), x, y);
  if (event.button == kMiddleButton) {
    if (event.action == MouseAction::move) panBy(x - gripX_, y - gripY_);
    gripX_ = x;
    gripY_ = y;
  }
  return zoom_ != before.zoom_ || panX_ != before.panX_ || panY_ != before.panY_;
}

bool FlatLens::key(Key key) {
  if (key != Key::plus && key != Key::minus) return false;
  zoomAbout(key == Key::plus ? kStep : 1 / kStep, 0, 0);
  return true;
}

bool FlatLens::reset() {
  const bool changed = !isWhole();
  zoom_ = 1;
  panX_ = panY_ = 0;
  return changed;
}

GridView FlatLens::through(const GridView& whole) const {
  if (isWhole()) return whole;
  GridView part = whole;
  part.width = std::clamp(toInt32(whole.width * zoom_), 1, std::max(kWidestPicture, whole.width));
  const double zoom = static_cast<double>(part.width) / whole.width;
  const double across = kHalfView * whole.zoom, up = across * whole.stretch;
  part.centreX += across * (1 - (1 + 2 * panX_) / zoom);
  part.centreY -= up * (1 - (1 + 2 * panY_ / kHeight) / zoom);
  return part;
}

}  // namespace lorivan
