// Everything can be taken back, and what is shown is always what the document says.
#include "design/document_text.h"
#include "design/edits.h"
#include "main_window_driver.h"

namespace lorivan {
namespace {

constexpr int kSmall = 100;  // pixels; thousands of pictures are painted

class HistoryTest : public MainWindowTest {
 protected:
  HistoryTest() { platform.settings().values.clear(); }
  void undo() { pick("mnuEditUndoStep"); }
  void redo() { pick("mnuEditRedoStep"); }
  /// What a person sees that depends on the document alone.
  std::vector<std::string> shown(NoneWindow& window, Workbench& of) {
    std::vector<std::string> all;
    for (ControlId control = 0; control < static_cast<ControlId>(formTable().size()); ++control) {
      const ControlSpec& row = formTable()[static_cast<std::size_t>(control)];
      const bool made = row.name == "cmdOldGrid" || row.name == "cmd2D";
      if (!made && !parameterOf(control) && !checkOf(control) && row.kind != ControlKind::colourBox &&
          row.kind != ControlKind::list)
        continue;
      all.push_back(std::string(row.name) + ' ' + window.text(control) + ' ' +
                    std::to_string(window.background(control)) + (window.enabled(control) ? "" : " off") +
                    (window.visible(control) ? "" : " hidden") + (window.checked(control) ? " on" : ""));
    }
    for (const char* command : {"mnuShapeMakeGrid", "mnuShapeAutoGrid"})
      all.push_back(std::string(command) + (window.commandEnabled(window.command(command)) ? " on" : " off"));
    all.push_back(of.form.read() == of.document().fields ? "form" : "another form");
    return all;
  }
  void expectAsFresh();
  void actRandomly(const std::function<int(int)>& draw);

  Folder folder;
};

TEST_F(HistoryTest, AnyDeedIsTakenBackAndDoneAgainByItsName) {
  start();
  const std::string knot = folder.write("k&n.qzd", documentText(*chooseShape({}, Shape::Hexagonal)));
  const std::pair<const char*, std::function<void()>> deeds[] = {
      {"Wall", [this] { clickLine(3), w->userMouse(kGrid, {MouseAction::leave}); }},
      {"Width 9", [this] { enter(Param::Width, "9"); }},
      {"Scale 20", [this] { enter(Param::Scale, "20"); }},
      {"Style Gold",
       [this] {
         for (const CommandRow& row : commandRows())
           if (row.menu == "Sty&le" && commandText(row.name).ends_with(" Gold")) pick(row.name);
       }},
      {"Colour 3", [this] { platform.dialogs.answerColour(0x123456), click("txtCol2"); }},
      {"Swap over/under on", [this] { click("chkMirror"); }},
      {"Random knot", [this] { click("cmdRandknot"); }},
      {"Star", [this] { choose(Shape::Star); }},
      {"Turn 30", [this] { enter(Param::Theta, "30"); }},
      {"Load k&&n.qzd", [&] { platform.dialogs.answerSave(SaveAnswer::discard), w->userDrops(knot); }},
      {"Make from Standard", [this] { pick("mnuShapeMakeStandard"); }},
      {"Shape: 17 points",
       [this] {
         return pick("mnuShapeView"), drag(kSheet, {250, 200}, {30, 30});
       }},
      {"New Grid", [this] { pick("mnuShapeMakeGrid"); }},
      {"Blank shape", [this] { pick("mnuShapeBlank"); }},
  };
  std::vector<Document> documents = {document()};
  std::vector<std::vector<std::uint32_t>> pictures = {pixels()};
  std::vector<std::string> names;
  for (const auto& [name, deed] : deeds) {
    deed();
    const std::string told = commandText("mnuEditUndoStep");
    EXPECT_EQ(told, "&Undo " + std::string(name));
    EXPECT_FALSE(document() == documents.back()) << name;
    documents.push_back(document());
    names.push_back(told.substr(6));
    if (bench().picture() == Picture::sheet) pick("mnuShapeView");
    pictures.push_back(pixels());
    EXPECT_EQ(commandText("mnuEditRedoStep"), "&Redo");
  }
  for (std::size_t i = names.size(); i-- > 0;) {
    undo();
    EXPECT_TRUE(document() == documents[i]) << names[i];
    EXPECT_EQ(pixels(), pictures[i]) << names[i];
    EXPECT_EQ(commandText("mnuEditRedoStep"), "&Redo " + names[i]);
    EXPECT_EQ(visible("picShape"), names[i] == "Blank shape" || names[i].starts_with("Shape: ")) << names[i];
  }
  EXPECT_FALSE(commandEnabled("mnuEditUndoStep"));
  for (std::size_t i = 0; i < names.size(); ++i) {
    redo();
    EXPECT_TRUE(document() == documents[i + 1]) << names[i];
    EXPECT_EQ(visible("picShape"), i > 9 && names[i] != "New Grid") << names[i];
  }
  EXPECT_FALSE(commandEnabled("mnuEditRedoStep"));
}

TEST_F(HistoryTest, TheStartIsTheFloor) {
  stored("txtXNo") = "6";
  stored("txtWidth") = "11";
  start();
  const Document first = document();
  const auto picture = pixels();
  EXPECT_FALSE(commandEnabled("mnuEditUndoStep"));
  for (int i = 0; i < 6; ++i) pick("mnuEditUndo");
  EXPECT_TRUE(document() == first);
  EXPECT_EQ(pixels(), picture);
  expectTexts({{Param::XNo, "6"}, {Param::Width, "11"}, {Param::Animate, "9"}});
  enterAll({{Param::Theta, "30"}, {Param::Theta, "50"}, {Param::Theta, "360"}});
  EXPECT_EQ(text(Param::Theta), "0");
  for (const char* before : {"50", "30", "0"}) {
    undo();
    EXPECT_EQ(text(Param::Theta), before);
  }
}

/// Another window that does nothing but show the document.
void HistoryTest::expectAsFresh() {
  if (bench().picture() == Picture::variations) w->userPresses({Key::escape});
  NonePlatform other;
  MainWindow fresh(other, {});
  ASSERT_TRUE(fresh.open());
  other.window()->userResizes(kSmall);
  fresh.bench().session.begin("", document());
  fresh.bench().show(drawn() ? After::draw : After::grid);
  EXPECT_EQ(shown(*w, bench()), shown(*other.window(), fresh.bench()));
  const auto read = readDocument(documentText(document()));
  ASSERT_TRUE(read && read->corrections.empty());
  EXPECT_EQ(documentText(read->document), documentText(document()));
  if (!drawn()) return;
  ASSERT_TRUE(fresh.bench().knotDrawn());
  bench().flat.setPlain(true);  // without what is laid over the picture
  bench().paintFlat();
  bench().flat.setPlain(false);
  EXPECT_TRUE(std::ranges::equal(w->surface(kGrid).pixels(), other.window()->surface(kGrid).pixels()));
}

/// Whatever a person can do that opens no dialog. Animations would take their time.
void HistoryTest::actRandomly(const std::function<int(int)>& draw) {
  const int kind = draw(10);
  const PointI at{draw(kSmall), draw(kSmall)};
  const ControlId picture = visible("picShape") ? kSheet : visible("picKnot") ? kSolid : kGrid;
  if (kind < 3) {
    const ControlId control = draw(static_cast<int>(formTable().size()));
    const ControlSpec& row = formTable()[static_cast<std::size_t>(control)];
    if (!w->enabled(control) || !w->visible(control) || row.name == "chkAnimate") return;
    if (row.kind == ControlKind::button || row.kind == ControlKind::check) w->userClicks(control);
    if (row.kind == ControlKind::colourBox) {
      w->message("", "", MessageIcon::none);  // the answer that waits for a message
      platform.dialogs.answerColour(static_cast<Colour>(draw(0x1000000)));
      w->userClicks(control);
    }
    if (row.kind == ControlKind::list) w->userChooses(control, draw(kShapeCount));
    if (row.kind == ControlKind::number) w->userSteps(control, draw(5) - 2);
  } else if (kind == 3) {
    const auto p = static_cast<Param>(draw(kParamCount));
    if (!w->visible(fieldControl(p)) || !w->enabled(fieldControl(p))) return;
    const std::string typed = std::to_string(draw(24) - 2);
    draw(3) == 0 ? w->userTypes(fieldControl(p), typed) : enter(p, typed);
  } else if (kind < 6) {
    const CommandId command = draw(static_cast<int>(commandRows().size()));
    const CommandRow& row = commandRows()[static_cast<std::size_t>(command)];
    const bool asks = row.menu == "&File" && row.name != "mnuFileNewGrid" && row.name != "mnuFileRandom";
    if (row.text.ends_with("...")) return;
    if (row.name == "mnuViewDrawAtOnce") return;  // without it scales ask
    const bool files = row.name.starts_with("mnuShapeLoad") || row.name == "mnuShapeSaveFile" ||
                       row.name == "mnuStrandsOther";
    if (!asks && !files && w->commandEnabled(command)) w->userPicks(command);
  } else if (kind == 6) {
    const bool back = draw(3) > 0;
    if (commandEnabled(back ? "mnuEditUndoStep" : "mnuEditRedoStep")) back ? undo() : redo();
  } else if (kind == 7) {
    w->userPresses({static_cast<Key>(draw(8))});
  } else if (kind == 8 && picture == kGrid && document().lines && draw(2) == 0) {
    clickLine(draw(lines()), 1 + draw(2));
  } else {
    drag(picture, at, {draw(kSmall), draw(kSmall)}, 1 + draw(2));
  }
}

TEST_F(HistoryTest, WhatIsShownIsAlwaysWhatAFreshWindowShows) {
  for (const std::uint64_t seed : {1U, 2U, 3U, 4U, 5U}) {
    start({{}, false, seededRandom(seed)});
    w->userResizes(kSmall);
    const Rnd random = seededRandom(seed);
    const auto draw = [&](int n) { return static_cast<int>(random() * static_cast<float>(n)) % n; };
    const Document first = document();
    for (int step = 0; step < 400; ++step) {
      const std::size_t before = asked();
      platform.dialogs.answerMessage();
      actRandomly(draw);
      if (asked() == before) w->message("", "", MessageIcon::none);  // takes the answer that is left
      if (step % 10 != 9) continue;
      SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
      bench().confirmPending(true);
      expectAsFresh();
      if (HasFailure()) return;
    }
    while (commandEnabled("mnuEditRedoStep")) redo();
    const Document last = document();
    while (commandEnabled("mnuEditUndoStep")) undo();
    EXPECT_TRUE(document() == first) << seed;
    expectAsFresh();
    while (commandEnabled("mnuEditRedoStep")) redo();
    EXPECT_TRUE(document() == last) << seed;
    expectAsFresh();
  }
}

}  // namespace
}  // namespace lorivan
