#include "platform/qt/form_qt.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <cmath>
#include <utility>

#include "platform/common/text_helpers.h"
#include "platform/qt/convert.h"

namespace lorivan {
namespace {

bool takesFocus(ControlKind kind) {
  return kind != ControlKind::group && kind != ControlKind::label && kind != ControlKind::text &&
         kind != ControlKind::picture;
}

Key toKey(int key) {
  switch (key) {
    case Qt::Key_Left:
      return Key::left;
    case Qt::Key_Right:
      return Key::right;
    case Qt::Key_Up:
      return Key::up;
    case Qt::Key_Down:
      return Key::down;
    case Qt::Key_Plus:
    case Qt::Key_Equal:  // the same key without Shift, where it is on most keyboards
      return Key::plus;
    case Qt::Key_Minus:
      return Key::minus;
    case Qt::Key_Space:
      return Key::space;
    case Qt::Key_Escape:
      return Key::escape;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Key::enter;
    default:
      return Key::other;
  }
}

}  // namespace

FormQt::FormQt(std::span<const ControlSpec> controls, FormEvents events, QWidget* parent)
    : QWidget(parent), controls_(controls), events_(std::move(events)) {
  QWidget* previous = nullptr;
  for (ControlId id = 0; id < static_cast<ControlId>(controls_.size()); ++id) {
    const ControlSpec& spec = controls_[id];
    QWidget* const made = make(id);
    widgets_.push_back(made);
    made->setObjectName(toQString(spec.name));
    // A tip would cover what the large picture shows under the pointer.
    if (spec.kind != ControlKind::picture || !spec.group.empty()) made->setToolTip(toQString(spec.tooltip));
    made->installEventFilter(this);
    if (spec.kind == ControlKind::group) made->lower();
    if (!takesFocus(spec.kind)) continue;
    if (previous) setTabOrder(previous, made);
    previous = made;
  }
  connectLabels();
  installEventFilter(this);
  afterRelease_.setSingleShot(true);
  connect(&afterRelease_, &QTimer::timeout, this, &FormQt::confirmPending);
}

QWidget* FormQt::make(ControlId id) {
  const ControlSpec& spec = controls_[id];
  switch (spec.kind) {
    case ControlKind::group:
      return new GroupFrame(toQString(withoutMnemonic(spec.caption)), this);
    case ControlKind::label:
      return makeLabel(id);
    case ControlKind::number:
    case ControlKind::text:
    case ControlKind::list:
      return makeField(id);
    case ControlKind::check:
    case ControlKind::radio:
      return makeToggle(id);
    case ControlKind::button:
    case ControlKind::colourBox:
      return makeButton(id);
    case ControlKind::picture:
      break;
  }
  auto* const view = new PictureView(this);
  view->setAccessibleName(toQString(spec.tooltip));
  view->mouse = [this, id](const MouseEvent& event) { events_.mouse(id, event); };
  return view;
}

QWidget* FormQt::makeButton(ControlId id) {
  const ControlSpec& spec = controls_[id];
  QAbstractButton* button = nullptr;
  if (spec.kind == ControlKind::colourBox) {
    button = new ColourBox(this);
    button->setAccessibleName(toQString(spec.tooltip));
  } else {
    auto* const push = new QPushButton(toQString(spec.caption), this);
    push->setAutoDefault(false);
    button = push;
  }
  connect(button, &QAbstractButton::clicked, this, [this, id, button] {
    // A mnemonic leaves the focus in an entry, which would take the arrow keys.
    if (qobject_cast<QLineEdit*>(focusWidget())) button->setFocus(Qt::ShortcutFocusReason);
    events_.clicked(id);
  });
  return button;
}

QWidget* FormQt::makeToggle(ControlId id) {
  const ControlSpec& spec = controls_[id];
  QAbstractButton* toggle = nullptr;
  if (spec.kind == ControlKind::radio) {
    toggle = new QRadioButton(toQString(spec.caption), this);
    QButtonGroup*& others = radios_[spec.group];
    if (!others) others = new QButtonGroup(this);
    others->addButton(toggle);
  } else {
    toggle = new QCheckBox(toQString(spec.caption), this);
  }
  // Not clicked: screen readers toggle without a click. The radio that goes off tells nothing.
  connect(toggle, &QAbstractButton::toggled, this,
          [this, id, radio = spec.kind == ControlKind::radio](bool on) {
            if (on || !radio) events_.changed(id);
          });
  return toggle;
}

QWidget* FormQt::makeField(ControlId id) {
  const ControlSpec& spec = controls_[id];
  if (spec.kind == ControlKind::list) {
    auto* const box = new QComboBox(this);
    box->setFocusPolicy(Qt::StrongFocus);  // the wheel, which does nothing here, leaves the focus alone
    connect(box, &QComboBox::activated, this, [this, id] { events_.changed(id); });
    return box;
  }
  auto* const edit = new NumberEdit(this);
  edit->setText(toQString(spec.caption));
  if (spec.kind == ControlKind::text) {
    edit->setReadOnly(true);
    flatten(*edit);
    edit->setFocusPolicy(Qt::NoFocus);
  } else {
    edit->confirmed = [this, id] { events_.confirmed(id); };
    edit->left = [this, id] { events_.left(id); };
    edit->postponed = [this, edit] { return postpone(*edit); };
    edit->stepped = [this, id](int by) { events_.stepped(id, by); };
    edit->escaped = [this, id] { events_.escaped(id); };
  }
  return edit;
}

/// What cannot be edited has the window's own background.
void FormQt::flatten(QWidget& text) const {
  QPalette flat;
  flat.setColor(QPalette::Base, palette().color(QPalette::Window));
  text.setPalette(flat);
}

QWidget* FormQt::makeLabel(ControlId id) {
  auto* const label = new QLabel(toQString(controls_[id].caption), this);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setTextFormat(Qt::PlainText);
  label->setContentsMargins(0, 0, 2, 0);
  return label;
}

/// A label belongs to the control in the next row: mnemonic, spoken name, tooltip.
void FormQt::connectLabels() {
  for (std::size_t i = 0; i + 1 < controls_.size(); ++i) {
    auto* const label = qobject_cast<QLabel*>(widgets_[i]);
    if (!label || controls_[i].kind != ControlKind::label) continue;
    QWidget* const next = widgets_[i + 1];
    if (takesFocus(controls_[i + 1].kind)) label->setBuddy(next);
    next->setAccessibleName(toQString(withoutMnemonic(controls_[i].caption)));
    if (label->toolTip().isEmpty()) label->setToolTip(next->toolTip());
  }
}

QWidget* FormQt::widget(ControlId control) const { return widgets_.at(static_cast<std::size_t>(control)); }
QComboBox* FormQt::list(ControlId control) const { return qobject_cast<QComboBox*>(widget(control)); }
PictureView* FormQt::picture(ControlId control) const { return dynamic_cast<PictureView*>(widget(control)); }

std::string FormQt::text(ControlId control) const {
  QWidget* const w = widget(control);
  if (const auto* edit = qobject_cast<QLineEdit*>(w)) return toUtf8(edit->text());
  if (const auto* label = qobject_cast<QLabel*>(w)) return toUtf8(label->text());
  if (const auto* button = qobject_cast<QAbstractButton*>(w)) return toUtf8(button->text());
  if (const auto* box = qobject_cast<QComboBox*>(w)) return toUtf8(box->currentText());
  if (const auto* frame = dynamic_cast<GroupFrame*>(w)) return toUtf8(frame->title());
  return {};
}

void FormQt::setText(ControlId control, const std::string& text) {
  QWidget* const w = widget(control);
  const QString shown = toQString(text);
  if (auto* edit = dynamic_cast<NumberEdit*>(w)) {
    edit->setText(shown);
    // A number that is too long for its field shows how it begins.
    edit->hasFocus() ? edit->selectWhole() : edit->home(false);
  } else if (auto* label = qobject_cast<QLabel*>(w)) {
    label->setText(shown);
  } else if (auto* button = qobject_cast<QAbstractButton*>(w)) {
    button->setText(shown);
  } else if (auto* frame = dynamic_cast<GroupFrame*>(w)) {
    frame->setTitle(shown);
  }
}

bool FormQt::checked(ControlId control) const {
  const auto* const button = qobject_cast<QAbstractButton*>(widget(control));
  return button && button->isChecked();
}

void FormQt::setChecked(ControlId control, bool on) {
  auto* const button = qobject_cast<QAbstractButton*>(widget(control));
  if (!button) return;
  const QSignalBlocker silent(button);
  QButtonGroup* const others = button->group();
  if (others) others->setExclusive(on);  // only so can the last one of a group be switched off
  button->setChecked(on);
  if (others) others->setExclusive(true);
}

void FormQt::setColours(ControlId control, Colour background, Colour text) {
  QWidget* const w = widget(control);
  if (auto* box = dynamic_cast<ColourBox*>(w)) return box->setColour(toQColor(background));
  coloured_.insert(w);
  QPalette palette = w->palette();
  palette.setColor(QPalette::Base, toQColor(background));
  palette.setColor(QPalette::Text, toQColor(text));
  w->setPalette(palette);
}

void FormQt::setItemPictures(ControlId control, const std::vector<ItemPicture>& pictures) {
  QComboBox* const box = list(control);
  if (!box) return;
  listPictures_.set(*box, pictures);
  listPictures_.fit(*box);
}

void FormQt::fitLists() {
  for (QWidget* const w : widgets_)
    if (auto* const box = qobject_cast<QComboBox*>(w)) listPictures_.fit(*box);
}

/// The program may answer with a dialog, which would swallow the rest of a click on a button: it is told when
/// the button is let go.
bool FormQt::postpone(NumberEdit& left) {
  if (!qobject_cast<QAbstractButton*>(QApplication::focusWidget())) return false;
  left_ = &left;
  afterRelease_.stop();
  return true;
}

void FormQt::confirmPending() {
  if (NumberEdit* const left = std::exchange(left_, nullptr)) left->confirm();
  if (auto* edit = dynamic_cast<NumberEdit*>(focusWidget()); edit && edit->hasFocus()) edit->confirmPending();
}

void FormQt::setFocusTo(ControlId control) {
  QWidget* const w = widget(control);
  if (w->isEnabled() && w->isVisibleTo(this)) w->setFocus(Qt::OtherFocusReason);
}

ControlId FormQt::focused() const {
  const auto at = std::ranges::find(widgets_, focusWidget());
  return focusWidget() == nullptr || at == widgets_.end() ? -1
                                                          : static_cast<ControlId>(at - widgets_.begin());
}

void FormQt::passFocusOn(ControlId control) {
  if (focusWidget() != widget(control)) return;
  const auto usable = [this, control](ControlId id) {
    return id != control && widget(id)->isEnabled() && widget(id)->isVisibleTo(this);
  };
  const ControlId picture = pictureInUse(controls_, usable);
  (picture >= 0 ? widget(picture) : this)->setFocus(Qt::OtherFocusReason);
}

void FormQt::showDrawn() {
  for (QWidget* const w : widgets_)
    if (auto* view = dynamic_cast<PictureView*>(w)) view->showDrawn();
}

double FormQt::scaling() const { return devicePixelRatioF(); }

LayoutMetrics FormQt::metrics(const QFont& font) const {
  const QFontMetricsF size(font);
  const double ratio = devicePixelRatioF();
  return {.lineHeight = static_cast<int>(std::ceil(size.height() * ratio)),
          .scale = scaling() * font.pixelSize() / QApplication::font().pixelSize(),
          .digitWidth = size.horizontalAdvance(QLatin1Char('0')) * ratio,
          .least = std::min(1.0, 1.0 * kLeastFont / font.pixelSize())};
}

/// In whole pixels, so that it changes in few steps while the window is resized.
void FormQt::fitFont(int clientWidth, int clientHeight) {
  QFont font = QApplication::font();
  const double factor = panelFactor(controls_, clientWidth, clientHeight, metrics(font));
  const double size = font.pixelSize() * factor;
  font.setPixelSize(factor < 1 ? std::max(kLeastFont, static_cast<int>(size)) : qRound(size));
  if (font == this->font()) return;
  setFont(font);
  fitLists();
}

QSize FormQt::toLogical(LayoutSize size) const {
  const double ratio = devicePixelRatioF();
  return {static_cast<int>(std::ceil(size.width / ratio)), static_cast<int>(std::ceil(size.height / ratio))};
}

QSize FormQt::minimumClientSize() const {
  QFont font = QApplication::font();
  font.setPixelSize(std::min(font.pixelSize(), kLeastFont));
  return toLogical(minimumClient(controls_, metrics(font)));
}
QSize FormQt::referenceClientSize() const {
  return toLogical(referenceClient(controls_, metrics(QApplication::font())));
}

void FormQt::place() {
  const double ratio = devicePixelRatioF();
  const auto logical = [ratio](const LayoutRect& r) {
    const int left = qRound(r.left / ratio), top = qRound(r.top / ratio);
    return QRect(left, top, qRound((r.left + r.width) / ratio) - left,
                 qRound((r.top + r.height) / ratio) - top);
  };
  const int clientWidth = static_cast<int>(width() * ratio);
  const int clientHeight = static_cast<int>(height() * ratio);
  fitFont(clientWidth, clientHeight);
  const FormLayout layout = computeLayout(controls_, clientWidth, clientHeight, metrics(font()));
  // No larger than the surface: with a ratio of 1.5 a rounded width can take in one more pixel.
  const auto covered = [&](const LayoutRect& r) {
    return QRect(logical(r).topLeft(),
                 QSize(static_cast<int>(r.width / ratio), static_cast<int>(r.height / ratio)));
  };
  pictureFrame_ = covered(layout.picture);
  for (std::size_t i = 0; i < widgets_.size(); ++i) {
    const LayoutRect& rect = layout.controls[i];
    if (auto* frame = dynamic_cast<GroupFrame*>(widgets_[i]))
      frame->setTitleHeight(qRound(layout.titleHeight / ratio));
    auto* const view = dynamic_cast<PictureView*>(widgets_[i]);
    widgets_[i]->setGeometry(view ? covered(rect) : logical(rect));
    if (view && !rect.isEmpty() && view->resizeSurface(rect.width, rect.height))
      events_.resized(static_cast<ControlId>(i));
  }
  update();
}

void FormQt::resizeEvent(QResizeEvent*) { place(); }

void FormQt::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(pictureFrame_.adjusted(-1, -1, 0, 0));
}

void FormQt::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  fitLists();
  for (std::size_t i = 0; i < widgets_.size(); ++i)
    if (controls_[i].kind == ControlKind::text && !coloured_.contains(widgets_[i])) flatten(*widgets_[i]);
}

/// Left and right move the cursor of an entry, up and down step it, signs are typed.
bool FormQt::isForEntry(QObject* watched, const QKeyEvent& key) {
  const auto* const edit = dynamic_cast<NumberEdit*>(watched);
  const Key which = toKey(key.key());
  const bool typed = which == Key::plus || which == Key::minus || which == Key::space || which == Key::enter;
  return edit && (typed || which == Key::left || which == Key::right || edit->stepOf(key) != 0);
}

/// Tab, a letter and the mouse are the user's ways to the focus.
void FormQt::tellPointed(const QWidget* watched, const QEvent& event) {
  const auto at = std::ranges::find(widgets_, watched);
  if (at == widgets_.end()) return;
  auto control = static_cast<ControlId>(at - widgets_.begin());
  const ControlSpec& spec = controls_[control];
  if (spec.kind == ControlKind::picture && spec.group.empty()) return;
  if (event.type() == QEvent::FocusIn) {
    const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
    if (reason != Qt::MouseFocusReason && reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason &&
        reason != Qt::ShortcutFocusReason)
      return;
  }
  if (event.type() == QEvent::Leave || spec.kind == ControlKind::group)
    control = -1;
  else if (spec.kind == ControlKind::label)
    ++control;
  events_.pointed(control);
}

bool FormQt::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched)) {
    event->ignore();  // goes on to what is behind the list
    return true;
  }
  const QEvent::Type type = event->type();
  if (type == QEvent::Enter || type == QEvent::Leave || type == QEvent::FocusIn)
    tellPointed(qobject_cast<QWidget*>(watched), *event);
  if (event->type() == QEvent::MouseButtonRelease && left_) afterRelease_.start();
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto& press = *static_cast<QKeyEvent*>(event);
  const Key key = toKey(press.key());
  // What a control has no use for comes to the form a second time.
  const bool wasOffered = watched == this && !hasFocus();
  if (key == Key::other || wasOffered || isForEntry(watched, press)) return false;
  return events_.key({.key = key,
                      .shift = press.modifiers().testFlag(Qt::ShiftModifier),
                      .ctrl = press.modifiers().testFlag(Qt::ControlModifier),
                      .alt = press.modifiers().testFlag(Qt::AltModifier),
                      .onPicture = watched == this || dynamic_cast<PictureView*>(watched) != nullptr});
}

}  // namespace lorivan
