#include "platform/qt/dialogs_qt.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "base/texts.h"
#include "platform/common/text_helpers.h"
#include "platform/common/wide_registers.h"
#include "platform/qt/convert.h"

namespace lorivan::dialogs {
namespace {

/// While a dialog is open: the usual pointer, also over a busy window. What follows it computes at full
/// speed.
class OpenDialog {
 public:
  OpenDialog() : wasBusy_(QApplication::overrideCursor() != nullptr) {
    if (wasBusy_) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  OpenDialog(const OpenDialog&) = delete;
  OpenDialog& operator=(const OpenDialog&) = delete;
  ~OpenDialog() {
    if (wasBusy_) QApplication::restoreOverrideCursor();
    leaveWideRegisters();
  }

 private:
  bool wasBusy_;
};

void takeEntries(const std::vector<QWidget*>& entries, std::vector<OptionLine>& lines) {
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (lines[i].isBox)
      lines[i].on = static_cast<QCheckBox*>(entries[i])->isChecked();
    else
      lines[i].text = toUtf8(static_cast<QLineEdit*>(entries[i])->text());
}

QString titleOf(const std::string& title) {
  return title.empty() ? QStringLiteral("Lorivan") : toQString(title);
}

void setUpMessage(QMessageBox& box, const std::string& text, const std::string& title) {
  box.setWindowTitle(titleOf(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(toQString(text));
}

/// Qt's own translations need not be installed.
void nameCancel(QAbstractButton* button) { button->setText(toQString(tr("Cancel"))); }

/// Shows the box with even margins: where it has no icon, Qt leaves more room before its text.
void show(QMessageBox& box) {
  constexpr int kMargin = 20, kIndent = 20, kBelow = 14;
  const int left = box.icon() == QMessageBox::NoIcon ? kMargin - kIndent : kMargin;
  box.layout()->setContentsMargins(left, kMargin, kMargin, kBelow);
  box.exec();
}

}  // namespace

void message(QWidget* parent, const std::string& text, const std::string& title, MessageIcon icon) {
  const OpenDialog open;
  QMessageBox box(parent);
  setUpMessage(box, text, title);
  box.setIcon(icon == MessageIcon::critical ? QMessageBox::Critical : QMessageBox::NoIcon);
  show(box);
}

bool confirm(QWidget* parent, const std::string& text, const std::string& title) {
  const OpenDialog open;
  QMessageBox box(parent);
  setUpMessage(box, text, title);
  box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
  box.setDefaultButton(QMessageBox::Ok);
  nameCancel(box.button(QMessageBox::Cancel));
  show(box);
  return box.result() == QMessageBox::Ok;
}

SaveAnswer askToSave(QWidget* parent, const std::string& text, const std::string& title) {
  const OpenDialog open;
  QMessageBox box(parent);
  setUpMessage(box, text, title);
  QPushButton* const save = box.addButton(toQString(tr("&Save")), QMessageBox::AcceptRole);
  const QPushButton* const discard =
      box.addButton(toQString(tr("&Don't save")), QMessageBox::DestructiveRole);
  QPushButton* const cancel = box.addButton(toQString(tr("Cancel")), QMessageBox::RejectRole);
  box.setDefaultButton(save);
  box.setEscapeButton(cancel);
  show(box);
  if (box.clickedButton() == save) return SaveAnswer::save;
  return box.clickedButton() == discard ? SaveAnswer::discard : SaveAnswer::cancel;
}

namespace {

/// All filters of the dialog as it shows them, the first one in front.
QStringList filtersOf(const FileDialogSpec& spec) {
  QStringList filters = {toQString(filterText(spec.filterLabel, spec.extensions))};
  for (const FileFilter& filter : spec.more)
    filters << toQString(filterText(filter.label, filter.extensions));
  return filters;
}

/// Names without an extension get that of the filter in use.
void followFilter(QFileDialog& dialog, const FileDialogSpec& spec) {
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog, &spec](const QString& chosen) {
    const auto place = filtersOf(spec).indexOf(chosen);
    if (place < 0) return;
    const std::string extensions = place == 0 ? spec.defaultExtension : spec.more[place - 1].extensions;
    dialog.setDefaultSuffix(toQString(extensions.substr(0, extensions.find(' '))));
  });
}

}  // namespace

namespace {

/// Qt's own translations need not be installed.
void nameParts(QFileDialog& dialog, bool save) {
  dialog.setLabelText(QFileDialog::LookIn, toQString(tr("Look in:")));
  dialog.setLabelText(QFileDialog::FileName, toQString(tr("File &name:")));
  dialog.setLabelText(QFileDialog::FileType, toQString(tr("Files of type:")));
  dialog.setLabelText(QFileDialog::Accept, save ? toQString(tr("&Save")) : toQString(tr("&Open")));
  dialog.setLabelText(QFileDialog::Reject, toQString(tr("Cancel")));
}

}  // namespace

std::string chooseFile(QWidget* parent, const FileDialogSpec& spec) {
  const OpenDialog open;
  const InitialName initial = splitInitialName(spec.initialName);
  QString folder = toQString(initial.folder);
  if (!QDir(folder).exists()) folder = QDir::homePath();
  QFileDialog dialog(parent, titleOf(spec.title), folder);
  dialog.setNameFilters(filtersOf(spec));
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !spec.overwritePrompt);
  dialog.setAcceptMode(spec.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(spec.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setDefaultSuffix(toQString(spec.defaultExtension));
  followFilter(dialog, spec);
  nameParts(dialog, spec.save);
  if (!initial.name.empty()) dialog.selectFile(toQString(initial.name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return toUtf8(dialog.selectedFiles().constFirst());
}

std::optional<Colour> chooseColour(QWidget* parent, Colour initial) {
  const OpenDialog open;
  QColorDialog dialog(toQColor(initial), parent);
  dialog.setWindowTitle(toQString(tr("Colour")));
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return toColour(dialog.selectedColor());
}

std::optional<std::vector<OptionLine>> chooseOptions(QWidget* parent, const OptionDialogSpec& spec) {
  const OpenDialog open;
  QDialog dialog(parent);
  dialog.setWindowTitle(titleOf(spec.title));
  QFormLayout form(&dialog);
  auto* const hint = new QLabel(toQString(spec.hint), &dialog);
  hint->setTextFormat(Qt::PlainText);
  hint->setWordWrap(true);
  form.addRow(hint);
  std::vector<QWidget*> entries;
  for (const OptionLine& line : spec.lines) {
    if (line.isBox) {
      auto* const box = new QCheckBox(toQString(line.label), &dialog);
      box->setChecked(line.on);
      form.addRow(box);
      entries.push_back(box);
    } else {
      auto* const entry = new QLineEdit(toQString(line.text), &dialog);
      entry->selectAll();  // what is typed replaces it, also in the entry that has the focus at first
      form.addRow(toQString(line.label), entry);
      entries.push_back(entry);
    }
  }
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  std::vector<OptionLine> lines = spec.lines;
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, [&] {
    takeEntries(entries, lines);
    const auto wrong = spec.check ? spec.check(lines) : std::nullopt;
    if (!wrong) return dialog.accept();
    hint->setText(toQString(wrong->why));
    QFont bold = hint->font();
    bold.setBold(true);
    hint->setFont(bold);
    entries[wrong->place]->setFocus(Qt::OtherFocusReason);
    if (auto* const entry = qobject_cast<QLineEdit*>(entries[wrong->place])) entry->selectAll();
  });
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  nameCancel(buttons->button(QDialogButtonBox::Cancel));
  form.addRow(buttons);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return lines;
}

std::string inputBox(QWidget* parent, const std::string& prompt, const std::string& title,
                     const std::string& initial) {
  const OpenDialog open;
  QInputDialog dialog(parent);
  dialog.setWindowTitle(titleOf(title));
  dialog.setLabelText(toQString(prompt));
  dialog.setTextValue(toQString(initial));
  dialog.setCancelButtonText(toQString(tr("Cancel")));
  return dialog.exec() == QDialog::Accepted ? toUtf8(dialog.textValue()) : std::string();
}

}  // namespace lorivan::dialogs
