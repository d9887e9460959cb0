// The real window, driven as a person drives it: every field does what it is for, and ten thousand random
// keys and clicks end in a window that still works.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "app/main_window.h"
#include "base/random.h"
#include "platform/qt/platform_qt.h"

namespace lorivan {
namespace {

class QtProgramTest : public testing::Test {
 protected:
  void SetUp() override {
    platform_ = std::make_unique<PlatformQt>(folder_.filePath("settings.ini").toStdString());
    main_ = std::make_unique<MainWindow>(*platform_, MainWindowOptions{});
    ASSERT_TRUE(main_->open());
    main_->window().show();
    for (QWidget* const w : QApplication::topLevelWidgets())
      if (auto* const frame = qobject_cast<QMainWindow*>(w)) frame_ = frame;
    ASSERT_NE(frame_, nullptr);
    QApplication::processEvents();
  }

  template <class Widget>
  Widget* find(const char* name) const {
    return frame_->findChild<Widget*>(name);
  }
  void type(const char* field, const char* text, Qt::Key confirm = Qt::Key_Return) {
    auto* const entry = find<QLineEdit>(field);
    ASSERT_NE(entry, nullptr) << field;
    entry->setFocus();
    entry->selectAll();
    QTest::keyClicks(entry, text);
    QTest::keyClick(entry, confirm);
    QApplication::processEvents();
  }
  void click(const char* button) {
    QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    QApplication::processEvents();
  }
  void choose(int shape) {
    auto* const list = find<QComboBox>("lstType");
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < shape; ++i) QTest::keyClick(list, Qt::Key_Down);
    QApplication::processEvents();
  }
  /// Answers the next message box, and keeps its text.
  void answerNext(QMessageBox::StandardButton button) {
    QTimer::singleShot(50, qApp, [this, button] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      asked_ = box != nullptr ? box->text().toStdString() : "nothing";
      if (box != nullptr) QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
  }
  std::string text(const char* field) const { return find<QLineEdit>(field)->text().toStdString(); }
  bool enabled(const char* button) const { return find<QPushButton>(button)->isEnabled(); }
  int lines() const { return main_->knot().graph.LastLine + 1; }
  long heightSum() const {
    long sum = 0;
    for (int j = 0; j < lines(); ++j) sum += main_->knot().graph.Lines[static_cast<std::size_t>(j)].MidY;
    return sum;
  }
  std::vector<std::uint32_t> picture(ControlId control) {
    const PixelBlock block = main_->window().surface(control).lendPixels();
    return {block.pixels, block.pixels + static_cast<std::ptrdiff_t>(block.stride) * block.height};
  }

  QTemporaryDir folder_;
  std::unique_ptr<PlatformQt> platform_;
  std::unique_ptr<MainWindow> main_;
  QMainWindow* frame_ = nullptr;
  std::string asked_;
};

TEST_F(QtProgramTest, GridFieldsBuildTheGridAnew) {
  EXPECT_EQ(text("vtXNo"), "2");
  type("vtXNo", "3");
  EXPECT_EQ(lines(), 17);
  type("vtYNo", "3", Qt::Key_Tab);
  EXPECT_EQ(lines(), 24);
  type("vtXNo", "99");
  EXPECT_EQ(text("vtXNo"), "20") << "corrected to the limit";
  type("vtXNo", "5");
  choose(8);
  const long heights = heightSum();
  type("vtCrossOffset", "-1");
  EXPECT_NE(heightSum(), heights) << "the arm has moved";
  const float before = main_->knot().graph.CellSize;
  type("vtSkew", "4");
  EXPECT_LT(main_->knot().graph.CellSize, before) << "stretched, the grid needs a smaller scale";
}

TEST_F(QtProgramTest, TheScaleAsksOnlyWhileAKnotIsDrawn) {
  type("vtScale", "24");
  EXPECT_EQ(main_->knot().graph.CellSize, 24);
  click("cmd2D");
  answerNext(QMessageBox::Cancel);
  type("vtScale", "20");
  EXPECT_EQ(asked_, "Changing scale will erase your current grid. OK to continue?");
  EXPECT_EQ(text("vtScale"), "24");
  EXPECT_EQ(main_->knot().graph.CellSize, 24);
  answerNext(QMessageBox::Ok);
  type("vtScale", "20");
  EXPECT_EQ(main_->knot().graph.CellSize, 20);
  EXPECT_FALSE(main_->knotDrawn());
}

TEST_F(QtProgramTest, StyleFieldsDrawTheKnotAnew) {
  click("cmd2D");
  ASSERT_TRUE(main_->knotDrawn());
  EXPECT_TRUE(enabled("cmd3DView"));
  EXPECT_FALSE(enabled("cmd3D"));
  const std::pair<const char*, const char*> fields[] = {
      {"vtWidth", "9"},  {"vtEdge", "2"},        {"vtSwish", "3"},
      {"vtSmooth", "4"}, {"vtStartColour", "3"}, {"vtPicKnotBackColour", "14"}};
  for (const auto& [field, value] : fields) {
    const auto before = picture(controlId("picGrid"));
    type(field, value);
    EXPECT_NE(picture(controlId("picGrid")), before) << field;
    EXPECT_TRUE(main_->knotDrawn()) << field;
    const auto after = picture(controlId("picGrid"));
    type(field, value);
    EXPECT_EQ(picture(controlId("picGrid")), after) << field << ": no real change";
  }
}

TEST_F(QtProgramTest, SolidFieldsAskForANewModelAndTurnAndLightTheView) {
  click("cmd2D");
  const std::pair<const char*, const char*> shapes[] = {{"vtPolySides", "7"},  {"vtPolyPoints", "5"},
                                                        {"vtPolyRadius", "3"}, {"vtPolySmooth", "5"},
                                                        {"vtPolyZF", "1"},     {"vtRingPerc", "75"}};
  for (const auto& [field, value] : shapes) {
    type(field, value);
    EXPECT_TRUE(enabled("cmd3D")) << field;
    click("cmd3D");
    EXPECT_FALSE(enabled("cmd3D")) << field;
    EXPECT_TRUE(enabled("cmd2DView")) << field;
  }
  const std::pair<const char*, const char*> views[] = {{"vtTheta", "40"}, {"vtPhi", "20"},    {"vtPsi", "30"},
                                                       {"vtKa", "0.8"},   {"vtKd", "0.1"},    {"vtKs", "0.9"},
                                                       {"vtNFact", "3"},  {"vtKDist", "-900"}};
  for (const auto& [field, value] : views) {
    const auto before = picture(controlId("picKnot"));
    type(field, value);
    EXPECT_NE(picture(controlId("picKnot")), before) << field;
  }
  click("cmd2DView");
  EXPECT_TRUE(enabled("cmd3DView"));
}

TEST_F(QtProgramTest, SpeedAndAlignmentGridActWhereTheyAreSeen) {
  EXPECT_FALSE(find<QLineEdit>("vtAnimate")->isEnabled());
  QTest::mouseClick(find<QCheckBox>("chkAnimate"), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_TRUE(find<QLineEdit>("vtAnimate")->isEnabled());
  type("vtAnimate", "5");
  EXPECT_FALSE(main_->knotDrawn());
  choose(12);
  find<QAction>("mnuShapeGridOnOff")->trigger();
  QApplication::processEvents();
  const auto before = picture(controlId("picShape"));
  type("vtGridSize", "7");
  EXPECT_NE(picture(controlId("picShape")), before) << "fewer alignment lines";
}

TEST_F(QtProgramTest, TenThousandRandomKeysAndClicks) {
  const Rnd random = seededRandom(5);
  QTimer dismiss;  // whatever dialog a random deed opens is closed again
  QObject::connect(&dismiss, &QTimer::timeout, [] {
    if (QWidget* const dialog = QApplication::activeModalWidget()) QTest::keyClick(dialog, Qt::Key_Escape);
  });
  dismiss.start(5);
  const auto entries = frame_->findChildren<QLineEdit*>();
  const auto buttons = frame_->findChildren<QPushButton*>();
  const auto pick = [&](const auto& list) {
    return list[static_cast<qsizetype>(random() * double(list.size()))];
  };
  const QString letters = "0123456789-.,x";
  for (int i = 0; i < 10000; ++i) {
    const double kind = random();
    if (kind < 0.6) {
      QTest::keyClick(pick(entries),
                      letters[static_cast<qsizetype>(random() * double(letters.size()))].toLatin1());
    } else if (kind < 0.97) {
      QTest::mouseMove(frame_, QPoint(int(random() * frame_->width()), int(random() * frame_->height())));
      QTest::keyClick(frame_, random() < 0.5 ? Qt::Key_Left : Qt::Key_Tab);
    } else if (QPushButton* const button = pick(buttons); button->isEnabled() && button->isVisible()) {
      QTest::mouseClick(button, Qt::LeftButton);
    }
  }
  dismiss.stop();
  QApplication::processEvents();
  choose(0);
  type("vtXNo", "3");
  type("vtYNo", "2");
  EXPECT_EQ(lines(), 17) << "the window still works";
}

}  // namespace
}  // namespace lorivan
