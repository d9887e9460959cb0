// The modal dialogs, answered the way a person does while they are open.
#include "platform/qt/dialogs_qt.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include "base/sink.h"

namespace lorivan {
namespace {

/// Runs `deed` on the dialog that opens next.
template <class Dialog>
void whenOpen(std::function<void(Dialog&)> deed) {
  QTimer::singleShot(0, qApp, [deed] {
    auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog);
    deed(*dialog);
  });
}

TEST(DialogsQt, MessageShowsItsWordsUnchanged) {
  whenOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.text(), QStringLiteral("<b>No & no</b>"));
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    QTest::keyClick(&box, Qt::Key_Return);
  });
  dialogs::message(nullptr, "<b>No & no</b>", "", MessageIcon::critical);
}

TEST(DialogsQt, ConfirmIsTrueForOkAlone) {
  for (const auto& [key, answer] : {std::pair(Qt::Key_Return, true), {Qt::Key_Escape, false}}) {
    whenOpen<QMessageBox>([key = key](QMessageBox& box) { QTest::keyClick(&box, key); });
    EXPECT_EQ(dialogs::confirm(nullptr, "Sure?", "Check"), answer);
  }
}

TEST(DialogsQt, ABusyPointerRestsWhileADialogIsOpen) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  whenOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    box.accept();
  });
  dialogs::message(nullptr, "text", "", MessageIcon::none);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  QApplication::restoreOverrideCursor();
}

class FileDialogTest : public testing::Test {
 protected:
  FileDialogSpec save() const {
    return {.save = true,
            .title = "Save",
            .filterLabel = "Lorivan files",
            .extensions = "qzd",
            .initialName = folder_.path().toStdString() + "/*.qzd",
            .defaultExtension = "qzd",
            .overwritePrompt = true};
  }
  static void enter(QFileDialog& dialog, const QString& name) {
    auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_TRUE(edit);
    edit->setText(name);
    QTest::keyClick(edit, Qt::Key_Return);
  }
  QTemporaryDir folder_;
};

TEST_F(FileDialogTest, SaveStartsInTheFolderAndAddsTheExtension) {
  whenOpen<QFileDialog>([this](QFileDialog& dialog) {
    EXPECT_EQ(dialog.directory().path(), folder_.path());
    EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Lorivan files (*.qzd)")});
    enter(dialog, QStringLiteral("knöt"));
  });
  EXPECT_EQ(dialogs::chooseFile(nullptr, save()), folder_.path().toStdString() + "/knöt.qzd");
  whenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(dialogs::chooseFile(nullptr, save()), "");
}

TEST_F(FileDialogTest, OverwritingIsAskedForWhereWanted) {
  const std::string path = folder_.path().toStdString() + "/old.qzd";
  ASSERT_TRUE(writeFile(path, "x"));
  FileDialogSpec spec = save();
  spec.initialName = path;
  int asked = 0;
  for (const bool prompt : {false, true}) {
    spec.overwritePrompt = prompt;
    whenOpen<QFileDialog>([&](QFileDialog& dialog) {
      if (prompt)
        whenOpen<QMessageBox>([&](QMessageBox& box) {
          ++asked;
          box.button(QMessageBox::Yes)->click();
        });
      enter(dialog, QStringLiteral("old.qzd"));
    });
    EXPECT_EQ(dialogs::chooseFile(nullptr, spec), path);
  }
  EXPECT_EQ(asked, 1);
}

TEST(DialogsQt, ColourStartsWithTheGivenOne) {
  whenOpen<QColorDialog>([](QColorDialog& dialog) {
    EXPECT_EQ(dialog.currentColor(), QColor(0x11, 0x22, 0x33));
    dialog.setCurrentColor(QColor(1, 2, 3));
    dialog.accept();
  });
  EXPECT_EQ(dialogs::chooseColour(nullptr, 0x332211), makeColour(1, 2, 3));
  whenOpen<QColorDialog>([](QColorDialog& dialog) { dialog.reject(); });
  EXPECT_FALSE(dialogs::chooseColour(nullptr, 0));
}

TEST(DialogsQt, InputGivesTheTextOrNothing) {
  whenOpen<QDialog>([](QDialog& dialog) {
    auto* const edit = dialog.findChild<QLineEdit*>();
    EXPECT_EQ(edit->text(), QStringLiteral("500"));
    edit->setText(QStringLiteral("42"));
    dialog.accept();
  });
  EXPECT_EQ(dialogs::inputBox(nullptr, "Width?", "Size", "500"), "42");
  whenOpen<QDialog>([](QDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(dialogs::inputBox(nullptr, "Width?", "Size", "500"), "");
}

}  // namespace
}  // namespace lorivan
