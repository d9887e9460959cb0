#include "platform/qt/window_qt.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QEventLoop>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QPainter>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <optional>
#include <vector>

#include "platform/common/wide_registers.h"
#include "platform/qt/convert.h"
#include "platform/qt/dialogs_qt.h"
#include "platform/qt/form_qt.h"
#include "platform/qt/menus_qt.h"
#include "platform/qt/printing.h"

namespace lorivan {
namespace {

/// One line of text that ends in an ellipsis where it is cut; the tooltip then has it whole.
class StatusText final : public QLabel {
 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QRect box = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, box.width());
    style()->drawItemText(&painter, box, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, palette(),
                          isEnabled(), shown, foregroundRole());
  }
};

/// The frame around the form: menus, status line, dropped files, closing.
class MainFrame final : public QMainWindow {
 public:
  std::function<bool()> mayClose;
  std::function<void()> closed;
  std::function<void(const std::string&)> fileDropped;
  std::function<void()> coloursChanged;

  MainFrame() {
    setAcceptDrops(true);
    statusBar()->addWidget(&status_, 1);
    status_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    status_.setTextFormat(Qt::PlainText);
    status_.setContentsMargins(4, 0, 4, 0);
  }
  void setStatus(const QString& text) {
    status_.setText(text);
    status_.setToolTip(text);
    status_.repaint();  // long work shows its progress without handling events
    leaveWideRegisters();
  }
  /// Logical pixels of the whole frame. Before the window is shown nobody knows how much of that the border
  /// takes: then the size is set right when it is known.
  void resizeOuter(QSize outer) {
    const QSize border = frameGeometry().size() - size();
    resize(outer - border);
    wanted_ = border.isEmpty() ? outer : std::optional<QSize>();
  }
  /// The whole frame when it is not maximised.
  QRect normalOuter() const {
    if (!isMaximized()) return frameGeometry();
    if (wanted_) return {normalGeometry().topLeft(), *wanted_};
    return windowHandle() ? normalGeometry().marginsAdded(windowHandle()->frameMargins()) : normalGeometry();
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    if (!mayClose()) return event->ignore();
    event->accept();
    closed();
  }
  void moveEvent(QMoveEvent* event) override {
    QMainWindow::moveEvent(event);
    if (wanted_ && isVisible() && !isMaximized() && frameGeometry().size() != size()) resizeOuter(*wanted_);
  }
  void changeEvent(QEvent* event) override {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && coloursChanged) coloursChanged();
  }
  void dragEnterEvent(QDragEnterEvent* event) override {
    if (!localFile(*event).isEmpty()) event->acceptProposedAction();
  }
  void dropEvent(QDropEvent* event) override {
    const QString file = localFile(*event);
    if (file.isEmpty()) return;
    event->acceptProposedAction();
    fileDropped(toUtf8(file));
  }

 private:
  static QString localFile(const QDropEvent& event) {
    for (const QUrl& url : event.mimeData()->urls())
      if (url.isLocalFile()) return url.toLocalFile();
    return {};
  }

  StatusText status_;
  std::optional<QSize> wanted_;
};

class WindowQt final : public Window {
 public:
  WindowQt(const WindowSpec& spec, const WindowEvents& events);
  ~WindowQt() override { setBusy(false); }

  void setTitle(const std::string& title) override { frame_.setWindowTitle(toQString(title)); }
  void setStatus(const std::string& text) override { frame_.setStatus(toQString(text)); }
  WindowPlace place() const override;
  void moveTo(int left, int top) override;
  void resizeTo(int width, int height) override;
  bool maximised() const override { return frame_.isMaximized(); }
  void setMaximised(bool on) override {
    frame_.setWindowState(frame_.windowState().setFlag(Qt::WindowMaximized, on));
  }
  WindowPlace screen() const override;
  double scaling() const override { return form_->scaling(); }
  Colour faceColour() const override { return toColour(frame_.palette().color(QPalette::Window)); }
  Colour textColour() const override { return toColour(frame_.palette().color(QPalette::WindowText)); }
  void show() override;
  void run() override;
  bool processEvents() override;
  void close() override { frame_.close(); }

  std::string text(ControlId control) const override { return form_->text(control); }
  void setText(ControlId control, const std::string& text) override { form_->setText(control, text); }
  bool checked(ControlId control) const override { return form_->checked(control); }
  void setChecked(ControlId control, bool on) override { form_->setChecked(control, on); }
  void setItems(ControlId list, const std::vector<std::string>& items) override;
  void setItemPictures(ControlId list, const std::vector<ItemPicture>& pictures) override {
    form_->setItemPictures(list, pictures);
  }
  int selected(ControlId list) const override;
  void select(ControlId list, int index) override;
  void focus(ControlId control) override;
  ControlId focused() const override;
  void setEnabled(ControlId control, bool on) override;
  bool enabled(ControlId control) const override { return form_->widget(control)->isEnabledTo(form_); }
  void setVisible(ControlId control, bool on) override;
  bool visible(ControlId control) const override { return form_->widget(control)->isVisibleTo(form_); }
  void setColours(ControlId control, Colour background, Colour text) override {
    form_->setColours(control, background, text);
  }

  void setCommandEnabled(CommandId command, bool on) override { menus_.enable(command, on); }
  bool commandEnabled(CommandId command) const override { return menus_.enabled(command); }
  void setCommandChecked(CommandId command, bool on) override { menus_.check(command, on); }
  bool commandChecked(CommandId command) const override { return menus_.checked(command); }
  void setCommandText(CommandId command, const std::string& text) override { menus_.setText(command, text); }
  void setCommandVisible(CommandId command, bool on) override { menus_.setVisible(command, on); }

  Surface& surface(ControlId picture) override;
  void setPointer(ControlId picture, PointerShape shape) override;
  void setBusy(bool on) override;

  void message(const std::string& text, const std::string& title, MessageIcon icon) override {
    dialogs::message(&frame_, text, title, icon);
  }
  bool confirm(const std::string& text, const std::string& title) override {
    return dialogs::confirm(&frame_, text, title);
  }
  SaveAnswer askToSave(const std::string& text, const std::string& title) override {
    return dialogs::askToSave(&frame_, text, title);
  }
  std::string chooseFile(const FileDialogSpec& dialog) override {
    return dialogs::chooseFile(&frame_, dialog);
  }
  std::optional<Colour> chooseColour(Colour initial) override {
    return dialogs::chooseColour(&frame_, initial);
  }
  std::optional<std::vector<OptionLine>> chooseOptions(const OptionDialogSpec& dialog) override {
    return dialogs::chooseOptions(&frame_, dialog);
  }
  std::string inputBox(const std::string& prompt, const std::string& title,
                       const std::string& initial) override {
    return dialogs::inputBox(&frame_, prompt, title, initial);
  }
  Result<bool> print(const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw) override {
    return printOnPaper(&frame_, spec, draw);
  }

 private:
  FormEvents formEvents();
  void makeMenus(const WindowSpec& spec);
  void coloursMayHaveChanged();
  void setFirstSize();
  void pictureResized(ControlId picture);
  void flushResized();
  void start();

  /// Calls the program back, unless the program itself caused the event, and shows what it drew.
  template <class Event, class... Arguments>
  void report(const Event& event, const Arguments&... arguments) {
    if (quiet_ > 0 || !event) return;
    leaveWideRegisters();
    event(arguments...);
    form_->showDrawn();
  }

  const WindowEvents& events_;
  MainFrame frame_;
  FormQt* form_ = nullptr;  // owned by the frame
  QEventLoop loop_;
  MenusQt menus_;
  std::pair<Colour, Colour> colours_;  // that the program knows of
  std::vector<ControlId> resized_;     // pictures with a new surface that the program does not know of
  int quiet_ = 0;                      // above 0 while the program's own calls move the focus
  bool busy_ = false, closed_ = false, shown_ = false, ready_ = false;
};

WindowQt::WindowQt(const WindowSpec& spec, const WindowEvents& events) : events_(events) {
  form_ = new FormQt(spec.controls, formEvents(), &frame_);
  frame_.setCentralWidget(form_);
  frame_.setWindowTitle(toQString(spec.title));
  frame_.mayClose = [this] {
    form_->confirmPending();
    return !events_.closeQuery || events_.closeQuery();
  };
  frame_.closed = [this] {
    closed_ = true;
    loop_.quit();
  };
  frame_.fileDropped = [this](const std::string& path) { report(events_.fileDropped, path); };
  makeMenus(spec);
  setFirstSize();
  colours_ = {faceColour(), textColour()};
  frame_.coloursChanged = [this] { coloursMayHaveChanged(); };
  ready_ = true;
}

FormEvents WindowQt::formEvents() {
  FormEvents made;
  made.confirmed = [this](ControlId id) { report(events_.confirmed, id); };
  made.left = [this](ControlId id) { report(events_.left, id); };
  made.stepped = [this](ControlId id, int by) { report(events_.stepped, id, by); };
  made.escaped = [this](ControlId id) { report(events_.escaped, id); };
  made.clicked = [this](ControlId id) {
    form_->confirmPending();
    if (enabled(id)) report(events_.clicked, id);  // the entry that was left may have switched it off
  };
  made.changed = [this](ControlId id) {
    form_->confirmPending();
    report(events_.changed, id);
  };
  made.mouse = [this](ControlId id, const MouseEvent& event) { report(events_.mouse, id, event); };
  made.resized = [this](ControlId id) { pictureResized(id); };
  made.pointed = [this](ControlId id) { report(events_.pointed, id); };
  made.key = [this](const KeyEvent& event) {
    leaveWideRegisters();
    const bool taken = events_.key && events_.key(event);
    form_->showDrawn();
    return taken;
  };
  return made;
}

void WindowQt::makeMenus(const WindowSpec& spec) {
  menus_.chosen = [this](CommandId command) {
    form_->confirmPending();
    report(events_.command, command);
  };
  menus_.highlighted = [this](CommandId command) { report(events_.highlighted, command); };
  menus_.make(*frame_.menuBar(), spec.commands);
}

/// Told with the next events: by then every widget has the new colours.
void WindowQt::coloursMayHaveChanged() {
  const std::pair now(faceColour(), textColour());
  if (now == colours_) return;
  colours_ = now;
  QMetaObject::invokeMethod(
      &frame_, [this] { report(events_.coloursChanged); }, Qt::QueuedConnection);
}

/// The reference size on a small screen, about four fifths of a larger one's height.
void WindowQt::setFirstSize() {
  frame_.ensurePolished();
  const QSize reference = form_->referenceClientSize();
  const QSize around(0, frame_.menuBar()->sizeHint().height() + frame_.statusBar()->sizeHint().height());
  const QSize available = frame_.screen()->availableSize();
  const int spare = std::min(available.height() * 8 / 10 - reference.height() - around.height(),
                             (available.width() * 8 / 10 - reference.width()) * 4 / 5);
  const QSize more(std::max(0, spare) * 5 / 4, std::max(0, spare));
  frame_.setMinimumSize((form_->minimumClientSize() + around).boundedTo(available));
  frame_.resize((reference + around + more).boundedTo(available));
  form_->resize(reference + more);
  form_->place();  // the surfaces can be drawn on before the window is shown
}

/// The program is told at once when it waits for events, otherwise with the next ones.
void WindowQt::pictureResized(ControlId picture) {
  if (!ready_) return;
  if (resized_.empty()) QTimer::singleShot(0, &frame_, [this] { flushResized(); });
  if (std::ranges::find(resized_, picture) == resized_.end()) resized_.push_back(picture);
}

void WindowQt::flushResized() {
  for (const ControlId picture : std::exchange(resized_, {})) report(events_.resized, picture);
}

WindowPlace WindowQt::place() const {
  const double ratio = frame_.devicePixelRatioF();
  const QRect outer = frame_.normalOuter();
  return {qRound(outer.left() * ratio), qRound(outer.top() * ratio), qRound(outer.width() * ratio),
          qRound(outer.height() * ratio)};
}

void WindowQt::moveTo(int left, int top) {
  const double ratio = frame_.devicePixelRatioF();
  frame_.move(qRound(left / ratio), qRound(top / ratio));
}

void WindowQt::resizeTo(int width, int height) {
  if (maximised()) return;
  const double ratio = frame_.devicePixelRatioF();
  const QRect room = frame_.screen()->availableGeometry();
  const QSize border = frame_.frameGeometry().size() - frame_.size();
  const QSize size = QSize(qRound(width / ratio), qRound(height / ratio))
                         .expandedTo(frame_.minimumSize() + border)
                         .boundedTo(room.size());
  const QPoint at = frame_.pos();
  const QPoint least = room.topLeft(),
               most = room.bottomRight() - QPoint(size.width() - 1, size.height() - 1);
  frame_.resizeOuter(size);
  const QPoint inside(std::clamp(at.x(), least.x(), most.x()), std::clamp(at.y(), least.y(), most.y()));
  if (inside != at) frame_.move(inside);
}

WindowPlace WindowQt::screen() const {
  const QScreen& screen = *frame_.screen();
  const double ratio = screen.devicePixelRatio();
  const QRect all = screen.geometry();
  return {qRound(all.left() * ratio), qRound(all.top() * ratio), qRound(all.width() * ratio),
          qRound(all.height() * ratio)};
}

void WindowQt::show() {
  frame_.show();
  if (shown_) return;
  shown_ = true;
  QObject::connect(frame_.windowHandle(), &QWindow::screenChanged, form_, [this] { form_->place(); });
  QTimer::singleShot(0, &frame_, [this] { start(); });
}

void WindowQt::start() {
  flushResized();
  report(events_.started);
}

void WindowQt::run() {
  form_->showDrawn();
  if (!closed_) loop_.exec();
}

bool WindowQt::processEvents() {
  form_->showDrawn();
  QApplication::processEvents();
  leaveWideRegisters();
  return !closed_;
}

void WindowQt::setItems(ControlId list, const std::vector<std::string>& items) {
  QComboBox* const box = form_->list(list);
  if (!box) return;
  box->clear();
  for (const std::string& item : items) box->addItem(toQString(item));
  box->setCurrentIndex(-1);
  box->setMaxVisibleItems(static_cast<int>(std::max<std::size_t>(items.size(), 10)));
}

int WindowQt::selected(ControlId list) const {
  const QComboBox* const box = form_->list(list);
  return box ? box->currentIndex() : -1;
}

void WindowQt::select(ControlId list, int index) {
  if (QComboBox* const box = form_->list(list)) box->setCurrentIndex(index < box->count() ? index : -1);
}

void WindowQt::focus(ControlId control) {
  ++quiet_;
  form_->setFocusTo(control);
  --quiet_;
}

ControlId WindowQt::focused() const { return form_->focused(); }

void WindowQt::setEnabled(ControlId control, bool on) {
  ++quiet_;
  if (!on) form_->passFocusOn(control);
  form_->widget(control)->setEnabled(on);
  --quiet_;
}

void WindowQt::setVisible(ControlId control, bool on) {
  ++quiet_;
  if (!on) form_->passFocusOn(control);
  form_->widget(control)->setVisible(on);
  --quiet_;
}

Surface& WindowQt::surface(ControlId picture) { return form_->picture(picture)->surface(); }

void WindowQt::setPointer(ControlId picture, PointerShape shape) {
  constexpr Qt::CursorShape shapes[] = {Qt::ArrowCursor, Qt::PointingHandCursor, Qt::WaitCursor};
  form_->widget(picture)->setCursor(shapes[static_cast<int>(shape)]);
}

void WindowQt::setBusy(bool on) {
  if (on == busy_) return;
  busy_ = on;
  if (on) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

}  // namespace

std::unique_ptr<Window> makeWindowQt(const WindowSpec& spec, const WindowEvents& events) {
  return std::make_unique<WindowQt>(spec, events);
}

}  // namespace lorivan
