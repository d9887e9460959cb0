#include "platform/qt/widgets.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "platform/common/wide_registers.h"

namespace lorivan {
namespace {

constexpr int kLongestEntry = 64;
constexpr int kNotch = QWheelEvent::DefaultDeltasPerStep;
constexpr int kFrameMilliseconds = 16;

QColor mixed(const QColor& a, const QColor& b, double share) {
  const auto mix = [share](int from, int to) { return qRound(from + (to - from) * share); };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

int buttonNumber(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return 1;
    case Qt::RightButton:
      return 2;
    case Qt::MiddleButton:
      return 3;
    default:
      return 0;
  }
}

}  // namespace

NumberEdit::NumberEdit(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(kLongestEntry);
  setAlignment(Qt::AlignRight);
  setAcceptDrops(false);  // a file dropped here is for the window
}

void NumberEdit::confirm() {
  setModified(false);
  if (confirmed) confirmed();
}

void NumberEdit::selectWhole() {
  selectAll();
  selectedByUs_ = true;
}

int NumberEdit::stepOf(const QKeyEvent& key) const {
  if (!stepped || (key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return 0;
  switch (key.key()) {
    case Qt::Key_Up:
      return 1;
    case Qt::Key_Down:
      return -1;
    case Qt::Key_PageUp:
      return 10;
    case Qt::Key_PageDown:
      return -10;
    default:
      return 0;
  }
}

/// Only with the focus: scrolling past an entry must not change it.
void NumberEdit::wheelEvent(QWheelEvent* event) {
  if (!hasFocus() || !stepped) return event->ignore();
  turned_ += event->angleDelta().y();
  const int notches = turned_ / kNotch;
  turned_ -= notches * kNotch;
  event->accept();
  if (notches != 0) stepped(notches);
}

void NumberEdit::confirmPending() {
  if (isModified()) confirm();
}

/// Undo and copy are the window's commands, except while something is typed or was selected by hand.
bool NumberEdit::wantsKey(const QKeyEvent& key) const {
  if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) return isModified();
  if (key.matches(QKeySequence::Copy)) return hasSelectedText() && !selectedByUs_;
  return true;
}

bool NumberEdit::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && !wantsKey(*static_cast<QKeyEvent*>(event))) {
    event->ignore();
    return false;
  }
  return QLineEdit::event(event);
}

void NumberEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  clickedIn_ = event->reason() == Qt::MouseFocusReason;
  if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
  turned_ = 0;
  selectWhole();
}

void NumberEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const Qt::FocusReason why = event->reason();
  const bool comesBack =
      why == Qt::PopupFocusReason || why == Qt::ActiveWindowFocusReason || why == Qt::MenuBarFocusReason;
  if (comesBack) return;
  if (left) left();
  if (why != Qt::MouseFocusReason || !postponed || !postponed()) confirm();
}

void NumberEdit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  selectedByUs_ = false;
  if (clickedIn_ && !hasSelectedText()) selectWhole();
  clickedIn_ = false;
}

void NumberEdit::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    confirm();
    return selectWhole();
  }
  if (const int by = stepOf(*event); by != 0) return stepped(by);
  if (event->key() == Qt::Key_Escape && escaped) return escaped();
  const bool isModifier =
      event->key() == Qt::Key_Shift || event->key() == Qt::Key_Control || event->key() == Qt::Key_Alt;
  // The mnemonic of a button that is disabled just now must not type its letter.
  if (event->modifiers() == Qt::AltModifier && !event->text().isEmpty()) return event->ignore();
  if (!isModifier) selectedByUs_ = false;
  QLineEdit::keyPressEvent(event);
}

ColourBox::ColourBox(QWidget* parent) : QAbstractButton(parent) { setFocusPolicy(Qt::StrongFocus); }

void ColourBox::setColour(QColor colour) {
  colour_ = colour;
  update();
}

void ColourBox::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool marked = hasFocus() || underMouse();
  const QColor edge = marked ? palette().color(QPalette::Highlight)
                             : mixed(colour_, palette().color(QPalette::WindowText), 0.35);
  painter.setPen(QPen(edge, marked ? 2 : 1));
  painter.setBrush(isEnabled() ? colour_ : mixed(colour_, palette().color(QPalette::Window), 0.6));
  const double inset = marked ? 1 : 0.5;
  QRectF box = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
  if (isDown()) box.adjust(1, 1, -1, -1);
  painter.drawRoundedRect(box, 3, 3);
}

GroupFrame::GroupFrame(const QString& title, QWidget* parent) : QWidget(parent) {
  setTitle(title);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void GroupFrame::setTitle(const QString& title) {
  title_ = title;
  setAccessibleName(title);
  update();
}

void GroupFrame::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(palette().color(QPalette::AlternateBase));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
  QFont bold = font();
  bold.setWeight(QFont::DemiBold);
  painter.setFont(bold);
  painter.setPen(mixed(palette().color(QPalette::WindowText), palette().color(QPalette::Highlight), 0.6));
  painter.drawText(QRect(7, 1, width() - 14, titleHeight_ - 1), Qt::AlignLeft | Qt::AlignVCenter, title_);
}

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
  surface_ = std::move(*RasterSurface::create(1, 1));
  QElapsedTimer sinceShown;
  sinceShown.start();
  surface_->onRefresh([this, sinceShown]() mutable {
    surface_->takeDrawn();
    // Building up a knot refreshes far more often than a screen can show.
    if (sinceShown.elapsed() < kFrameMilliseconds) return update();
    sinceShown.restart();
    repaint();
    leaveWideRegisters();
  });
  setMouseTracking(true);
  setFocusPolicy(Qt::ClickFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

bool PictureView::resizeSurface(int width, int height) {
  if (width == surface_->width() && height == surface_->height()) return false;
  return static_cast<bool>(surface_->resize(width, height));
}

void PictureView::showDrawn() {
  if (surface_->takeDrawn()) update();
}

void PictureView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QImage& drawn = surface_->image();
  // Without its alpha the picture is copied instead of blended.
  QImage opaque(drawn.constBits(), drawn.width(), drawn.height(), drawn.bytesPerLine(), QImage::Format_RGB32);
  opaque.setDevicePixelRatio(devicePixelRatioF());
  painter.drawImage(0, 0, opaque);
}

void PictureView::report(MouseAction action, int button, const QPointF& at, Qt::KeyboardModifiers modifiers,
                         int steps) {
  last_ = at;
  if (!mouse) return;
  const double ratio = devicePixelRatioF();
  mouse({.action = action,
         .button = button,
         .x = static_cast<int>(std::floor(at.x() * ratio)),
         .y = static_cast<int>(std::floor(at.y() * ratio)),
         .shift = modifiers.testFlag(Qt::ShiftModifier),
         .ctrl = modifiers.testFlag(Qt::ControlModifier),
         .alt = modifiers.testFlag(Qt::AltModifier),
         .steps = steps});
}

void PictureView::endPress() {
  if (pressed_ == Qt::NoButton) return;
  const int button = buttonNumber(pressed_);
  pressed_ = Qt::NoButton;
  report(MouseAction::release, button, last_, Qt::NoModifier);
}

void PictureView::mousePressEvent(QMouseEvent* event) {
  if (pressed_ != Qt::NoButton && !event->buttons().testFlag(pressed_)) endPress();
  if (pressed_ != Qt::NoButton || buttonNumber(event->button()) == 0) return;
  pressed_ = event->button();
  report(MouseAction::press, buttonNumber(pressed_), event->position(), event->modifiers());
}

void PictureView::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
  if (pressed_ == event->button())
    report(MouseAction::doubleClick, buttonNumber(pressed_), event->position(), event->modifiers());
}

void PictureView::wheelEvent(QWheelEvent* event) {
  turned_ += event->angleDelta().y();
  const int notches = turned_ / kNotch;
  turned_ -= notches * kNotch;
  event->accept();
  if (notches != 0)
    report(MouseAction::wheel, buttonNumber(pressed_), event->position(), event->modifiers(), notches);
}

void PictureView::mouseMoveEvent(QMouseEvent* event) {
  // A dialog that opened meanwhile has swallowed the release.
  if (pressed_ != Qt::NoButton && !event->buttons().testFlag(pressed_)) endPress();
  report(MouseAction::move, buttonNumber(pressed_), event->position(), event->modifiers());
}

void PictureView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != pressed_ || pressed_ == Qt::NoButton) return;
  pressed_ = Qt::NoButton;
  report(MouseAction::release, buttonNumber(event->button()), event->position(), event->modifiers());
}

void PictureView::leaveEvent(QEvent*) {
  if (pressed_ == Qt::NoButton) report(MouseAction::leave, 0, last_, Qt::NoModifier);
}

void PictureView::hideEvent(QHideEvent*) {
  // Hidden by the program: the release comes with the next events, not out of that call.
  if (pressed_ != Qt::NoButton) QTimer::singleShot(0, this, [this] { endPress(); });
}

}  // namespace lorivan
