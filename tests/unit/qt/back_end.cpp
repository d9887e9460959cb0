// Qt's platform object and user for the tests that all back ends share.
#include "unit/platform_contract/back_end.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QImage>
#include <QKeySequence>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>
#include <map>

#include "platform/qt/look.h"
#include "platform/qt/platform_qt.h"
#include "window/form_table.h"

namespace lorivan::contract {
namespace {

class QtUser final : public User {
 public:
  explicit QtUser(Window& window) : window_(window) {
    for (QWidget* const w : QApplication::topLevelWidgets())
      if (auto* const main = qobject_cast<QMainWindow*>(w)) frame_ = main;
    EXPECT_TRUE(QTest::qWaitForWindowActive(frame_, kPatience));
  }
  void focus(ControlId control) override { find(control)->setFocus(); }
  bool hasFocus(ControlId control) const override { return find(control)->hasFocus(); }
  void type(const char* text) override { QTest::keyClicks(focused(), text); }
  void press(const std::string& keys) override {
    const QString name = QString::fromStdString(keys)
                             .replace(QStringLiteral("PgDn"), QStringLiteral("PgDown"))
                             .replace(QStringLiteral("Plus"), QStringLiteral("+"))
                             .replace(QStringLiteral("Minus"), QStringLiteral("-"));
    const QKeyCombination pressed = QKeySequence(name)[0];
    if (name.contains(QStringLiteral("Pg")))  // has no character code, which keyClick() looks for
      QTest::sendKeyEvent(QTest::Click, focused(), pressed.key(), QString(), pressed.keyboardModifiers());
    else
      QTest::keyClick(focused(), pressed.key(), pressed.keyboardModifiers());
    QTest::qWait(keys.starts_with("Alt") ? 150 : 0);  // a button that its letter presses shows it for a while
  }
  void click(ControlId control) override {
    QTest::mouseClick(find(control), Qt::LeftButton, {}, {9, 9});
    window_.processEvents();
  }
  void hold(ControlId control) override { QTest::mousePress(find(control), Qt::LeftButton, {}, {9, 9}); }
  void letGo(ControlId control, bool inside) override {
    QTest::mouseRelease(find(control), Qt::LeftButton, {}, {inside ? 9 : -9, 9});
  }
  void pick(CommandId command) override { action(command)->trigger(); }
  std::string menuText(CommandId command) const override {
    const QAction& item = *action(command);
    const auto* const menu = qobject_cast<QMenu*>(item.associatedObjects().constFirst());
    return item.isVisible() && menu->isEnabled() ? item.text().toStdString() : std::string();
  }
  void highlight(CommandId command) override {
    if (command != kNoCommand) return action(command)->hover();
    for (QMenu* const menu : frame_->menuBar()->findChildren<QMenu*>()) emit menu->aboutToHide();
  }
  void point(ControlId control) override {
    QEvent leave(QEvent::Leave);
    if (pointed_ >= 0) QApplication::sendEvent(find(pointed_), &leave);
    pointed_ = control;
    if (control < 0) return;
    QEnterEvent enter({9, 9}, find(control)->mapTo(frame_, QPointF(9, 9)),
                      find(control)->mapToGlobal(QPointF(9, 9)));
    QApplication::sendEvent(find(control), &enter);
  }
  void holdKeys(bool shift, bool ctrl) override {
    held_ = (shift ? Qt::ShiftModifier : Qt::NoModifier) | (ctrl ? Qt::ControlModifier : Qt::NoModifier);
  }
  void wheel(ControlId control, int by) override {
    const QPointF at(9, 9);
    QWheelEvent event(at, find(control)->mapToGlobal(at), {}, {0, by}, Qt::NoButton, held_, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(find(control), &event);
  }
  void mouse(ControlId picture, MouseAction action, int button, int x, int y) override {
    QWidget* const widget = find(picture);
    const auto which = button == 1 ? Qt::LeftButton : button == 2 ? Qt::RightButton : Qt::MiddleButton;
    if (action == MouseAction::leave) {
      widget->hide();
      return QTest::mouseRelease(widget->window(), which, {}, {1, 1});  // the button goes up somewhere else
    }
    const std::map<MouseAction, QEvent::Type> types = {
        {MouseAction::press, QEvent::MouseButtonPress},
        {MouseAction::move, QEvent::MouseMove},
        {MouseAction::release, QEvent::MouseButtonRelease},
        {MouseAction::doubleClick, QEvent::MouseButtonDblClick}};
    const bool moves = action == MouseAction::move;
    if (moves && button == 0) down_ = Qt::NoButton;
    if (!moves) down_.setFlag(which, action != MouseAction::release);
    QMouseEvent event(types.at(action), QPointF(x, y), widget->mapToGlobal(QPointF(x, y)),
                      moves ? Qt::NoButton : which, down_, held_);
    QApplication::sendEvent(widget, &event);
  }
  void enlarge(int width, int height) override {
    frame_->resize(frame_->size() + QSize(width, height));
    QTest::qWait(50);
  }
  void drop(const std::string& path) override {
    QMimeData data;
    data.setUrls(
        {QUrl(QStringLiteral("http://example.org/x")), QUrl::fromLocalFile(QString::fromStdString(path))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame_, &enter);
    QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    if (enter.isAccepted()) QApplication::sendEvent(frame_, &drop);
  }
  void close() override { frame_->close(); }
  void recolour(bool other) override {
    applyColours(other);
    QApplication::processEvents();  // to every widget first
  }
  void pressNext(const std::string& label) override {
    QTimer::singleShot(0, qApp, [label = QString::fromStdString(label)] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_TRUE(box);
      if (label.isEmpty()) return QTest::keyClick(box, Qt::Key_Escape);
      for (QAbstractButton* const button : box->buttons())
        if (button->text() == label) return button->click();
      box->reject();
      ADD_FAILURE() << "no button " << label.toStdString();
    });
  }
  void answerNext(bool agree, const std::string& text) override {
    QTimer::singleShot(0, qApp, [agree, text = QString::fromStdString(text)] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(dialog);
      auto* const named = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
      auto* const entry = named != nullptr ? named : dialog->findChild<QLineEdit*>();
      if (!text.isEmpty()) entry->setText(text);
      const bool isBox = qobject_cast<QMessageBox*>(dialog) != nullptr;
      if (agree && (isBox || named != nullptr))
        QTest::keyClick(isBox ? static_cast<QWidget*>(dialog) : named, Qt::Key_Return);
      else
        agree ? dialog->accept() : dialog->reject();
    });
  }

 private:
  QWidget* find(ControlId control) const {
    const auto& name = formTable()[control].name;
    return frame_->findChild<QWidget*>(QString::fromUtf8(name.data(), std::ssize(name)));
  }
  QAction* action(CommandId command) const {
    const auto& name = contractCommands()[command].name;
    return frame_->findChild<QAction*>(QString::fromUtf8(name.data(), std::ssize(name)));
  }
  QWidget* focused() const { return frame_->focusWidget() != nullptr ? frame_->focusWidget() : frame_; }

  Window& window_;
  QMainWindow* frame_ = nullptr;
  Qt::KeyboardModifiers held_;
  Qt::MouseButtons down_;
  ControlId pointed_ = -1;
};

const QTemporaryDir& scraps() {
  static const QTemporaryDir folder;
  return folder;
}

}  // namespace

std::unique_ptr<Platform> makePlatform(bool fresh) {
  const std::string path = scrapFile("settings.ini");
  if (fresh) QFile::remove(QString::fromStdString(path));
  return std::make_unique<PlatformQt>(path);
}
std::unique_ptr<User> makeUser(Window& window) { return std::make_unique<QtUser>(window); }
std::string scrapFile(const std::string& name) {
  return scraps().filePath(QString::fromStdString(name)).toStdString();
}
Held held() {
  Held held = heldOnLinux();
  held.windows = QApplication::allWidgets().size();
  return held;
}
int clipboardWidth() { return QGuiApplication::clipboard()->image().width(); }
std::string clipboardSvg() {
  return QGuiApplication::clipboard()->mimeData()->data(QStringLiteral("image/svg+xml")).toStdString();
}

}  // namespace lorivan::contract
