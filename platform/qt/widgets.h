// The widgets of the form that Qt has not: an entry that is confirmed, a colour box, a group's frame and a
// picture with its own surface.
#pragma once

#include <QAbstractButton>
#include <QLineEdit>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/qt/raster_surface.h"
#include "platform/window.h"

namespace lorivan {

/// A one-line entry. Selects all its text when it gets the focus; tells when Enter was pressed, when it was
/// left, and what should change it by steps.
class NumberEdit final : public QLineEdit {
 public:
  explicit NumberEdit(QWidget* parent);
  std::function<void()> confirmed;
  std::function<void()> left;  // the focus went elsewhere; `confirmed` follows
  /// Asked after `left` by a mouse press elsewhere: true when somebody else will call confirm() later.
  std::function<bool()> postponed;
  std::function<void(int)> stepped;  // see WindowEvents
  std::function<void()> escaped;
  /// Tells it now when something was typed since the last time.
  void confirmPending();
  void confirm();
  /// Selects everything; that is not the user's selection.
  void selectWhole();
  /// How far a key with these modifiers steps; 0 for all others.
  int stepOf(const QKeyEvent& key) const;

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool wantsKey(const QKeyEvent& key) const;
  int turned_ = 0;          // of the wheel, less than a notch, in eighths of a degree
  bool clickedIn_ = false;  // the focus came with the mouse button that is still down
  bool selectedByUs_ = false;
};

/// A small button filled with its colour.
class ColourBox final : public QAbstractButton {
 public:
  explicit ColourBox(QWidget* parent);
  void setColour(QColor colour);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor colour_ = Qt::white;
};

/// A titled frame; what it encloses are its siblings.
class GroupFrame final : public QWidget {
 public:
  GroupFrame(const QString& title, QWidget* parent);
  void setTitle(const QString& title);
  QString title() const { return title_; }
  void setTitleHeight(int pixels) { titleHeight_ = pixels; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString title_;
  int titleHeight_ = 16;
};

/// Shows a surface, one pixel of it for each pixel of the screen, and reports the mouse in its pixels.
class PictureView final : public QWidget {
 public:
  explicit PictureView(QWidget* parent);
  std::function<void(const MouseEvent&)> mouse;

  RasterSurface& surface() { return *surface_; }
  /// Device pixels. True when the surface is a new one.
  bool resizeSurface(int width, int height);
  /// Has what was drawn since the last time painted with the next events.
  void showDrawn();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void report(MouseAction action, int button, const QPointF& at, Qt::KeyboardModifiers modifiers,
              int steps = 0);
  void endPress();

  std::unique_ptr<RasterSurface> surface_;
  QPointF last_;
  Qt::MouseButton pressed_ = Qt::NoButton;
  int turned_ = 0;  // of the wheel, less than a notch, in eighths of a degree
};

}  // namespace lorivan
