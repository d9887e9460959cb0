// What is special in Qt's dialogs: the words stay plain, the pointer rests, and overwriting is asked for.
#include "platform/qt/dialogs_qt.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include "base/sink.h"

namespace lorivan {
namespace {

/// Runs `action` on the dialog that opens next.
template <class Dialog>
void whenOpen(std::function<void(Dialog&)> action) {
  QTimer::singleShot(0, qApp, [action] {
    auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog);
    action(*dialog);
  });
}

TEST(DialogsQt, AMessageShowsItsWordsUnchangedUnderARestingPointer) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  whenOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.text(), QStringLiteral("<b>No & no</b>"));
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    QTest::keyClick(&box, Qt::Key_Return);
  });
  dialogs::message(nullptr, "<b>No & no</b>", "", MessageIcon::critical);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  QApplication::restoreOverrideCursor();
}

TEST(DialogsQt, OptionsStayOpenAtTheEntryThatIsWrong) {
  const auto check = [](const std::vector<OptionLine>& lines) -> std::optional<WrongLine> {
    if (lines[1].text == "x") return WrongLine{1, "no <i>"};
    return {};
  };
  whenOpen<QDialog>([](QDialog& dialog) {
    QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_3);  // takes the place of what was there
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.findChild<QLabel*>()->text(), QStringLiteral("no <i>"));
    QTest::keyClick(dialog.focusWidget(), Qt::Key_2);  // takes the place of what is wrong
    QTest::keyClick(&dialog, Qt::Key_Return);
    if (dialog.isVisible()) dialog.reject();
  });
  const auto lines =
      dialogs::chooseOptions(nullptr, {"Options", "hint", {{"&1", false, "1"}, {"&2", false, "x"}}, check});
  ASSERT_TRUE(lines);
  EXPECT_EQ(lines->at(0).text + lines->at(1).text, "32");
}

TEST(DialogsQt, OverwritingIsAskedForWhereWanted) {
  const QTemporaryDir folder;
  const std::string path = folder.path().toStdString() + "/old.qzd";
  ASSERT_TRUE(writeFile(path, "x"));
  FileDialogSpec spec{true, "Save", "Lorivan files", "qzd", path, "qzd", true};
  int asked = 0;
  for (const bool prompt : {false, true}) {
    spec.overwritePrompt = prompt;
    whenOpen<QFileDialog>([&](QFileDialog& dialog) {
      EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Lorivan files (*.qzd)")});
      if (prompt)
        whenOpen<QMessageBox>([&](QMessageBox& box) {
          ++asked;
          box.button(QMessageBox::Yes)->click();
        });
      QTest::keyClick(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });
    EXPECT_EQ(dialogs::chooseFile(nullptr, spec), path);
  }
  EXPECT_EQ(asked, 1);
}

}  // namespace
}  // namespace lorivan
