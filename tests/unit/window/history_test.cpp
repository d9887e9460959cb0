// Everything can be taken back, and done again by its name.
#include "design/document_text.h"
#include "design/edits.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

class HistoryTest : public MainWindowTest {
 protected:
  HistoryTest() { platform.settings().values.clear(); }
  Folder folder;
};

TEST_F(HistoryTest, AnyDeedIsTakenBackAndDoneAgainByItsName) {
  start();
  const std::string knot = folder.write("k&n.qzd", documentText(*chooseShape({}, Shape::Hexagonal)));
  const std::pair<const char*, std::function<void()>> actions[] = {
      {"Wall", [this] { clickLine(3), w->userMouse(kGrid, {MouseAction::leave}); }},
      {"Colour 3", [this] { platform.dialogs.answerColour(0x123456), click("txtCol2"); }},
      {"Swap over/under on", [this] { click("chkMirror"); }},
      {"Turn 30", [this] { enter(Param::Theta, "30"); }},
      {"Load k&&n.qzd", [&] { platform.dialogs.answerSave(SaveAnswer::discard), w->userDrops(knot); }},
      {"Make from Standard", [this] { pick("mnuShapeMakeStandard"); }},
      {"New point",
       [this] {
         return pick("mnuShapeView"), drag(kSheet, {250, 200}, {30, 30});
       }},
      {"New Grid", [this] { pick("mnuShapeMakeGrid"); }},
      {"Blank shape", [this] { pick("mnuShapeBlank"); }},
  };
  std::vector<Document> documents = {document()};
  std::vector<std::string> names;
  for (const auto& [name, action] : actions) {
    action();
    const std::string told = commandText("mnuEditUndoStep");
    EXPECT_EQ(told, "&Undo " + std::string(name));
    EXPECT_FALSE(document() == documents.back()) << name;
    documents.push_back(document());
    names.push_back(told.substr(6));
    if (bench().picture() == Picture::sheet) pick("mnuShapeView");
    EXPECT_EQ(commandText("mnuEditRedoStep"), "&Redo");
  }
  for (std::size_t i = names.size(); i-- > 0;) {
    undo();
    EXPECT_TRUE(document() == documents[i]) << names[i];
    EXPECT_EQ(commandText("mnuEditRedoStep"), "&Redo " + names[i]);
    EXPECT_EQ(visible("picShape"), names[i] == "Blank shape" || names[i] == "New point") << names[i];
  }
  EXPECT_FALSE(commandEnabled("mnuEditUndoStep"));
  for (std::size_t i = 1; i < documents.size(); ++i) pick("mnuEditRedoStep");
  EXPECT_EQ(document(), documents.back());
}

}  // namespace
}  // namespace lorivan
