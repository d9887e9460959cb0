#include "platform/qt/dialogs_qt.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>

#include "platform/common/text_helpers.h"
#include "platform/qt/convert.h"

namespace lorivan::dialogs {
namespace {

/// The usual pointer while a dialog is open, also over a busy window.
class NormalPointer {
 public:
  NormalPointer() : wasBusy_(QApplication::overrideCursor() != nullptr) {
    if (wasBusy_) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  NormalPointer(const NormalPointer&) = delete;
  NormalPointer& operator=(const NormalPointer&) = delete;
  ~NormalPointer() {
    if (wasBusy_) QApplication::restoreOverrideCursor();
  }

 private:
  bool wasBusy_;
};

QString titleOf(const std::string& title) {
  return title.empty() ? QStringLiteral("Lorivan") : toQString(title);
}

void setUpMessage(QMessageBox& box, const std::string& text, const std::string& title) {
  box.setWindowTitle(titleOf(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(toQString(text));
}

/// Shows the box with even margins: where it has no icon, Qt leaves more room before its text.
void show(QMessageBox& box) {
  constexpr int kMargin = 20, kIndent = 20, kBelow = 14;
  const int left = box.icon() == QMessageBox::NoIcon ? kMargin - kIndent : kMargin;
  box.layout()->setContentsMargins(left, kMargin, kMargin, kBelow);
  box.exec();
}

}  // namespace

void message(QWidget* parent, const std::string& text, const std::string& title, MessageIcon icon) {
  const NormalPointer pointer;
  QMessageBox box(parent);
  setUpMessage(box, text, title);
  box.setIcon(icon == MessageIcon::critical ? QMessageBox::Critical : QMessageBox::NoIcon);
  show(box);
}

bool confirm(QWidget* parent, const std::string& text, const std::string& title) {
  const NormalPointer pointer;
  QMessageBox box(parent);
  setUpMessage(box, text, title);
  box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
  box.setDefaultButton(QMessageBox::Ok);
  show(box);
  return box.result() == QMessageBox::Ok;
}

SaveAnswer askToSave(QWidget* parent, const std::string& text, const std::string& title) {
  const NormalPointer pointer;
  QMessageBox box(parent);
  setUpMessage(box, text, title);
  QPushButton* const save = box.addButton(QStringLiteral("&Save"), QMessageBox::AcceptRole);
  const QPushButton* const discard =
      box.addButton(QStringLiteral("&Don't save"), QMessageBox::DestructiveRole);
  QPushButton* const cancel = box.addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
  box.setDefaultButton(save);
  box.setEscapeButton(cancel);
  show(box);
  if (box.clickedButton() == save) return SaveAnswer::save;
  return box.clickedButton() == discard ? SaveAnswer::discard : SaveAnswer::cancel;
}

std::string chooseFile(QWidget* parent, const FileDialogSpec& spec) {
  const NormalPointer pointer;
  const InitialName initial = splitInitialName(spec.initialName);
  QString folder = toQString(initial.folder);
  if (!QDir(folder).exists()) folder = QDir::homePath();
  QFileDialog dialog(parent, titleOf(spec.title), folder,
                     toQString(filterText(spec.filterLabel, spec.extensions)));
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !spec.overwritePrompt);
  dialog.setAcceptMode(spec.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(spec.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setDefaultSuffix(toQString(spec.defaultExtension));
  if (!initial.name.empty()) dialog.selectFile(toQString(initial.name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return toUtf8(dialog.selectedFiles().constFirst());
}

std::optional<Colour> chooseColour(QWidget* parent, Colour initial) {
  const NormalPointer pointer;
  QColorDialog dialog(toQColor(initial), parent);
  dialog.setWindowTitle(QStringLiteral("Colour"));
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return toColour(dialog.selectedColor());
}

std::string inputBox(QWidget* parent, const std::string& prompt, const std::string& title,
                     const std::string& initial) {
  const NormalPointer pointer;
  bool accepted = false;
  const QString text = QInputDialog::getText(parent, titleOf(title), toQString(prompt), QLineEdit::Normal,
                                             toQString(initial), &accepted);
  return accepted ? toUtf8(text) : std::string();
}

}  // namespace lorivan::dialogs
