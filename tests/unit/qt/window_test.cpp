// What is special in Qt's window: tips over what is disabled, texts that fit, and what is drawn is seen.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QStyle>
#include <QTest>
#include <QToolTip>

#include "platform/common/text_helpers.h"
#include "platform/qt/look.h"
#include "platform/qt/window_qt.h"
#include "unit/platform_contract/back_end.h"
#include "window/form_table.h"
#include "window/languages.h"
#include "window/shown_tables.h"

namespace lorivan {
namespace {

class WindowQtTest : public testing::Test {
 protected:
  WindowQtTest() { open(formTable()); }
  void open(std::span<const ControlSpec> form) {
    window_.reset();
    window_ = makeWindowQt({form, {}, "Test"}, events_);
    for (QWidget* const w : QApplication::topLevelWidgets())
      if (auto* const main = qobject_cast<QMainWindow*>(w)) frame_ = main;
    window_->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frame_, contract::kPatience));
  }
  QWidget* find(std::string_view name) const {
    return frame_->findChild<QWidget*>(QString::fromUtf8(name.data(), std::ssize(name)));
  }
  void expectNothingIsCut(std::span<const ControlSpec> form) const {
    for (const ControlSpec& row : form) {
      const QWidget* const w = find(row.name);
      const bool marked = row.kind == ControlKind::check || row.kind == ControlKind::radio;
      const bool button = row.kind == ControlKind::button;
      if (!marked && !button && row.kind != ControlKind::label) continue;
      const int mark = w->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, w) +
                       w->style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
      const QString caption = QString::fromStdString(withoutMnemonic(row.caption));
      EXPECT_GE(w->width(), w->fontMetrics().horizontalAdvance(caption) + (marked   ? mark
                                                                           : button ? 8
                                                                                    : 2))
          << row.name << ": " << row.caption;
    }
  }
  WindowEvents events_;
  std::unique_ptr<Window> window_;
  QMainWindow* frame_ = nullptr;
};

TEST_F(WindowQtTest, PicturesShowWhatIsDrawn) {
  window_->setVisible(controlId("picShape"), false);
  window_->setVisible(controlId("picKnot"), false);
  window_->surface(controlId("picGrid")).clear(0x0000FF);
  window_->processEvents();
  EXPECT_EQ(find("picGrid")->grab().toImage().pixelColor(50, 50), QColor(Qt::red));
}

TEST_F(WindowQtTest, TooltipsShowOverDisabledControlsToo) {
  window_->setEnabled(controlId("vtWidth"), false);
  for (const char* const name : {"vtScale", "vtWidth"}) {
    const QPoint at = find(name)->mapTo(frame_, QPoint(8, 8));
    QTest::mouseMove(frame_->windowHandle(), at);
    QTest::mouseMove(frame_->windowHandle(), at + QPoint(1, 1));
    const QString tip = find(name)->toolTip();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QToolTip::isVisible() && QToolTip::text() == tip; },
                                contract::kPatience))
        << name;
  }
}

TEST_F(WindowQtTest, ALongStatusEndsInAnEllipsisAndIsWholeInItsTip) {
  auto* const status = frame_->findChild<QStatusBar*>()->findChild<QLabel*>();
  const QString text(500, QLatin1Char('W'));
  window_->setStatus(text.toStdString());
  EXPECT_EQ(status->toolTip(), text);
  const QImage shown = status->grab().toImage();
  window_->setStatus(
      status->fontMetrics().elidedText(text, Qt::ElideRight, status->contentsRect().width()).toStdString());
  EXPECT_EQ(status->grab().toImage(), shown);
}

TEST_F(WindowQtTest, LargePicturesAreNamedButNotCoveredByATip) {
  for (const ControlSpec& row : formTable()) {
    if (row.kind != ControlKind::picture) continue;
    EXPECT_EQ(find(row.name)->accessibleName().toStdString(), row.tooltip);
    EXPECT_EQ(find(row.name)->toolTip().isEmpty(), row.group.empty()) << row.name;
  }
}

TEST_F(WindowQtTest, WhatAScreenReaderTogglesIsTold) {
  std::vector<std::string_view> told;
  events_.changed = [&](ControlId id) { told.push_back(formTable()[id].name); };
  open(formTable());
  const auto toggle = [this](std::string_view name) {
    QAccessibleInterface* const made = QAccessible::queryAccessibleInterface(find(name));
    made->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  };
  for (const char* const name : {"chkMirror", "optPOV", "optSTL", "chkMirror"}) toggle(name);
  EXPECT_EQ(told, (std::vector<std::string_view>{"chkMirror", "optPOV", "optSTL", "chkMirror"}));
}

TEST_F(WindowQtTest, TextsThatCannotBeEditedKeepTheWindowsColour) {
  for (const bool dark : {true, false}) {
    applyColours(dark);
    window_->processEvents();
    const QPalette palette = find("txtNPoly")->palette();
    EXPECT_EQ(palette.color(QPalette::Base), frame_->palette().color(QPalette::Window));
    EXPECT_EQ(palette.color(QPalette::Text), frame_->palette().color(QPalette::WindowText));
  }
}

TEST_F(WindowQtTest, AltWithTheLetterOfADisabledButtonTypesNothing) {
  window_->setEnabled(controlId("cmd3D"), false);
  window_->setText(controlId("vtXNo"), "7");
  find("vtXNo")->setFocus();
  QTest::keyClick(find("vtXNo"), Qt::Key_3, Qt::AltModifier);
  EXPECT_EQ(window_->text(controlId("vtXNo")), "7");
}

TEST_F(WindowQtTest, NoTextIsCutAtAnySizeInAnyLanguage) {
  for (const Language& language : languages()) {
    speak(textsOf(language.code));
    const ShownTables tables;
    open(tables.controls());
    const int usual = find("vtXNo")->font().pixelSize();
    for (const QSize size : {frame_->minimumSize(), frame_->size(), QSize(1600, 1000), QSize(2500, 1400)}) {
      frame_->resize(size);
      expectNothingIsCut(tables.controls());
    }
    EXPECT_GT(find("vtXNo")->font().pixelSize(), usual);
    open(formTable());
    speak(nullptr);
  }
}

}  // namespace
}  // namespace lorivan
