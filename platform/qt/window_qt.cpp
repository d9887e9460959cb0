#include "platform/qt/window_qt.h"

#include <QAction>
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
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <map>
#include <vector>

#include "platform/common/text_helpers.h"
#include "platform/qt/convert.h"
#include "platform/qt/dialogs_qt.h"
#include "platform/qt/form_qt.h"

namespace lorivan {
namespace {

/// The frame around the form: menus, status line, dropped files, closing.
class MainFrame final : public QMainWindow {
 public:
  std::function<bool()> mayClose;
  std::function<void()> closed;
  std::function<void(const std::string&)> fileDropped;

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
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    if (!mayClose()) return event->ignore();
    event->accept();
    closed();
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

  QLabel status_;
};

class WindowQt final : public Window {
 public:
  WindowQt(const WindowSpec& spec, const WindowEvents& events);
  ~WindowQt() override { setBusy(false); }

  void setTitle(const std::string& title) override { frame_.setWindowTitle(toQString(title)); }
  void setStatus(const std::string& text) override { frame_.setStatus(toQString(text)); }
  WindowPlace place() const override;
  void moveTo(int left, int top) override;
  WindowPlace screen() const override;
  double scaling() const override { return form_->scaling(); }
  void show() override;
  void run() override;
  bool processEvents() override;
  void close() override { frame_.close(); }

  std::string text(ControlId control) const override { return form_->text(control); }
  void setText(ControlId control, const std::string& text) override { form_->setText(control, text); }
  bool checked(ControlId control) const override { return form_->checked(control); }
  void setChecked(ControlId control, bool on) override { form_->setChecked(control, on); }
  void setItems(ControlId list, const std::vector<std::string>& items) override;
  int selected(ControlId list) const override;
  void select(ControlId list, int index) override;
  void setEnabled(ControlId control, bool on) override;
  bool enabled(ControlId control) const override { return form_->widget(control)->isEnabledTo(form_); }
  void setVisible(ControlId control, bool on) override;
  bool visible(ControlId control) const override { return form_->widget(control)->isVisibleTo(form_); }
  void setColours(ControlId control, Colour background, Colour text) override {
    form_->setColours(control, background, text);
  }

  void setCommandEnabled(CommandId command, bool on) override { action(command)->setEnabled(on); }
  bool commandEnabled(CommandId command) const override { return action(command)->isEnabled(); }
  void setCommandChecked(CommandId command, bool on) override { action(command)->setChecked(on); }
  bool commandChecked(CommandId command) const override { return action(command)->isChecked(); }

  Surface& surface(ControlId picture) override;
  void setPointer(ControlId picture, PointerShape shape) override;
  void setBusy(bool on) override;

  void message(const std::string& text, const std::string& title, MessageIcon icon) override {
    dialogs::message(&frame_, text, title, icon);
  }
  bool confirm(const std::string& text, const std::string& title) override {
    return dialogs::confirm(&frame_, text, title);
  }
  std::string chooseFile(const FileDialogSpec& dialog) override {
    return dialogs::chooseFile(&frame_, dialog);
  }
  std::optional<Colour> chooseColour(Colour initial) override {
    return dialogs::chooseColour(&frame_, initial);
  }
  std::string inputBox(const std::string& prompt, const std::string& title,
                       const std::string& initial) override {
    return dialogs::inputBox(&frame_, prompt, title, initial);
  }

 private:
  FormEvents formEvents();
  void makeMenus(const WindowSpec& spec);
  void makeCommand(QMenu& menu, const CommandSpec& spec);
  void setFirstSize();
  void pictureResized(ControlId picture);
  void flushResized();
  void start();
  void highlight(CommandId command);
  QAction* action(CommandId command) const { return actions_.at(static_cast<std::size_t>(command)); }

  /// Calls the program back, unless the program itself caused the event, and shows what it drew.
  template <class Event, class... Arguments>
  void report(const Event& event, const Arguments&... arguments) {
    if (quiet_ > 0 || !event) return;
    event(arguments...);
    form_->showDrawn();
  }

  const WindowEvents& events_;
  MainFrame frame_;
  FormQt* form_ = nullptr;  // owned by the frame
  QEventLoop loop_;
  std::vector<QAction*> actions_;
  std::vector<ControlId> resized_;  // pictures with a new surface that the program does not know of
  int quiet_ = 0;                   // above 0 while the program's own calls move the focus
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
  ready_ = true;
}

FormEvents WindowQt::formEvents() {
  FormEvents made;
  made.confirmed = [this](ControlId id) { report(events_.confirmed, id); };
  made.left = [this](ControlId id) { report(events_.left, id); };
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
  made.key = [this](const KeyEvent& event) {
    const bool taken = events_.key && events_.key(event);
    form_->showDrawn();
    return taken;
  };
  return made;
}

void WindowQt::makeMenus(const WindowSpec& spec) {
  std::map<std::string_view, QMenu*> menus;
  for (const CommandSpec& command : spec.commands) {
    QMenu*& menu = menus[command.menu];
    if (!menu) {
      menu = frame_.menuBar()->addMenu(toQString(command.menu));
      QObject::connect(menu, &QMenu::aboutToHide, &frame_, [this] { highlight(kNoCommand); });
    }
    makeCommand(*menu, command);
  }
}

void WindowQt::makeCommand(QMenu& menu, const CommandSpec& spec) {
  if (spec.separatorBefore) menu.addSeparator();
  QAction* const made = menu.addAction(toQString(spec.text));
  made->setObjectName(toQString(spec.name));
  made->setCheckable(spec.checkable);
  if (const auto shortcut = parseShortcut(spec.shortcut))
    made->setShortcut(QKeySequence(toQString(shortcutText(*shortcut))));
  const auto id = static_cast<CommandId>(actions_.size());
  actions_.push_back(made);
  QObject::connect(made, &QAction::hovered, &frame_, [this, id] { highlight(id); });
  QObject::connect(made, &QAction::triggered, &frame_, [this, id, made] {
    if (made->isCheckable()) made->setChecked(!made->isChecked());  // the mark is the program's to set
    form_->confirmPending();
    report(events_.command, id);
  });
}

void WindowQt::highlight(CommandId command) {
  report(events_.highlighted, command);
  form_->showDrawn();
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
  const QRect outer = frame_.frameGeometry();
  return {qRound(outer.left() * ratio), qRound(outer.top() * ratio), qRound(outer.width() * ratio),
          qRound(outer.height() * ratio)};
}

void WindowQt::moveTo(int left, int top) {
  const double ratio = frame_.devicePixelRatioF();
  frame_.move(qRound(left / ratio), qRound(top / ratio));
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

void WindowQt::setEnabled(ControlId control, bool on) {
  ++quiet_;
  if (!on) form_->passFocusOn(control);
  form_->widget(control)->setEnabled(on);
  --quiet_;
}

void WindowQt::setVisible(ControlId control, bool on) {
  ++quiet_;
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
