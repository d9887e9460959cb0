// A user who does anything at any time, with good and with bad files, and answers every dialog.
#pragma once

#include <deque>
#include <string>
#include <typeinfo>
#include <utility>

#include "base/random.h"
#include "design/document_text.h"
#include "main_window_driver.h"
#include "platform/none/picture_files.h"

namespace lorivan {

inline constexpr int kSmallPicture = 100;  // pixels; many thousand pictures are painted

class RandomUserTest : public MainWindowTest {
 protected:
  void begin(std::uint64_t seed);
  /// Does one thing. What it was stands at the end of `did`.
  void act();
  /// What was done last, for a message.
  std::string story() const;
  int below(int n) { return std::min(n - 1, static_cast<int>(random_() * static_cast<float>(n))); }
  bool oneIn(int n) { return below(n) == 0; }
  std::string oneOf(std::initializer_list<const char*> words) {
    return words.begin()[below(static_cast<int>(words.size()))];
  }
  /// Closes the window as far as the answers let it, and starts again with the settings that are left.
  void leaveAndReturn();

  Folder folder;
  std::deque<std::string> did;

 private:
  DialogQueue::Answer answer(const AskedDialog& asked);
  std::string fileFor(const AskedDialog& asked);
  void writeFiles();
  template <class Action>
  void attempt(const Action& action);
  void meddle();
  void open();
  void useControl();
  void typeField();
  void pickCommand();
  void walkHistory() {
    const bool back = !oneIn(3);
    did.push_back(back ? "undo" : "redo");
    pick(back ? "mnuEditUndoStep" : "mnuEditRedoStep");
  }
  void pressKey();
  void useMouse();
  void changeSurroundings();
  std::string number();
  PointI place() { return {below(kSmallPicture + 20) - 10, below(kSmallPicture) - 10}; }

  Rnd random_;
};

inline void RandomUserTest::begin(std::uint64_t seed) {
  random_ = seededRandom(seed);
  platform.settings().values.clear();
  platform.userFolder_ = platform.documents = folder.path.string();
  platform.dialogs.otherwise = [this](const AskedDialog& asked) { return answer(asked); };
  writeFiles();
  open();
}

inline void RandomUserTest::open() {
  platform.clock().seedValue = static_cast<std::uint64_t>(below(1'000'000));
  start();
  w->userResizes(kSmallPicture);
  w->onEvents = [this] { meddle(); };
}

/// Good ones, bad ones, and names of none.
inline void RandomUserTest::writeFiles() {
  const std::string knot = documentText(*newGrid(withField({}, Param::XNo, "4")));
  const std::string shape = "7500 6000\n4\n90 90\n400 90\n400 300\n90 300\n4\n1 2\n2 3\n3 4\n4 1\nsmooth\n";
  folder.write("knot.qzd", knot);
  folder.write("cut.qzd", knot.substr(0, knot.size() / 2));
  folder.write("far.qzd", "20,11\n99,20,20,12,30,50,6,28\n-32768,0,32767,0,0,0,1,0\n0,0,0,0,0,0,9,7\n");
  folder.write("empty.qzd", "");
  folder.write("shape.qzc", shape);
  folder.write("cut.qzc", shape.substr(0, 30));
  folder.write("drawing.svg", "<svg><path d='M0 0 90 0 90 60 0 60zM20 20 40 20 30 40z'/></svg>");
  folder.write("cut.svg", "<svg><path d='M0 0");
  folder.write("circle.dxf", "0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n10\n5\n20\n5\n40\n4\n0\nENDSEC\n0\nEOF\n");
  std::vector<std::uint32_t> disc(40 * 40, 0xFFFFFFFF);
  for (int i = 0; i < 40 * 40; ++i)
    if ((i % 40 - 20) * (i % 40 - 20) + (i / 40 - 20) * (i / 40 - 20) < 200) disc[i] = 0xFF000000;
  folder.write("disc.bmp", encodeBmp(disc.data(), 40, 40, 40));
  folder.write("cut.bmp", "BM");
  std::filesystem::create_directory(folder.path / "folder.qzd");
}

inline std::string RandomUserTest::fileFor(const AskedDialog& asked) {
  if (oneIn(6)) return {};
  if (!asked.file.save)
    return folder.file(
        oneOf({"knot.qzd", "cut.qzd", "far.qzd", "empty.qzd", "shape.qzc", "cut.qzc", "drawing.svg",
               "cut.svg", "circle.dxf", "disc.bmp", "cut.bmp", "folder.qzd", "none.qzd", "saved-0.qzd",
               "saved-1.qzc", "saved-0.svg", "saved-1.png", "saved-2.3mf"}));
  if (oneIn(10)) return folder.file("no/such/place." + asked.file.defaultExtension);
  const std::string extension = oneIn(3)
                                    ? oneOf({"svg", "png", "pdf", "3mf", "glb", "stl", "txt", "qzd", "bmp"})
                                    : asked.file.defaultExtension;
  return folder.file("saved-" + std::to_string(below(3)) + '.' + extension);
}

inline DialogQueue::Answer RandomUserTest::answer(const AskedDialog& asked) {
  DialogQueue::Answer given{asked.kind, {}, {}, !oneIn(4)};
  given.save = static_cast<SaveAnswer>(below(3));
  if (!oneIn(4)) given.colour = static_cast<Colour>(below(0x1000000));
  if (asked.kind == DialogKind::file) given.text = fileFor(asked);
  if (asked.kind == DialogKind::input) given.text = number();
  if (asked.kind == DialogKind::options && !oneIn(4)) {
    given.lines = asked.lines;
    for (OptionLine& line : *given.lines)
      line.isBox ? void(line.on = oneIn(3)) : void(line.text = oneOf({"", "", "60", "120", "5x", "0.5"}));
  }
  did.push_back("  answered: " + asked.title + ' ' + given.text);
  return given;
}

template <class Action>
void RandomUserTest::attempt(const Action& action) {
  try {
    action();
  } catch (const std::logic_error& impossible) {
    // What no person could do: the control is hidden, or leaving a field has disabled it.
    if (typeid(impossible) != typeid(std::logic_error)) throw;
    did.push_back(std::string("  ") + impossible.what());
  }
}

/// What comes while an animation or long work runs.
inline void RandomUserTest::meddle() {
  if (!bench().actions.working() || !oneIn(20)) return;
  did.push_back("  meanwhile");
  attempt([this] {
    const int kind = below(4);
    if (kind == 0) pressKey();
    if (kind == 1) pickCommand();
    if (kind == 2) useMouse();
    if (kind == 3) w->userPresses({Key::escape});
  });
}

/// Whole numbers that the fields take, and what they do not.
inline std::string RandomUserTest::number() {
  if (oneIn(8))
    return oneOf({"", "abc", "1e9", "-1e9", "0.3", " 7 ", "nan", "1,5", "-", "2.5", "0x10", "\xC3\xA9"});
  return std::to_string(below(26) - 2);
}

inline void RandomUserTest::useControl() {
  const ControlId control = below(static_cast<int>(formTable().size()));
  const ControlSpec& row = formTable()[control];
  did.push_back("control " + std::string(row.name));
  // An animation that never ends has tests of its own.
  if (row.name == "chkLoop") return;
  if (row.kind == ControlKind::list) return w->userChooses(control, below(kShapeCount));
  if (row.kind == ControlKind::number) return w->userSteps(control, below(5) - 2);
  if (row.kind != ControlKind::picture && row.kind != ControlKind::group && row.kind != ControlKind::label)
    w->userClicks(control);
}

inline void RandomUserTest::typeField() {
  const auto p = static_cast<Param>(below(kParamCount));
  // Models of a million polygons have tests of their own.
  const bool many = p == Param::PolySides || p == Param::PolyPoints;
  const bool cells = p == Param::XNo || p == Param::YNo || p == Param::GridSize;
  const std::string text = many || (cells && !oneIn(10)) ? std::to_string(below(9)) : number();
  did.push_back("type " + std::string(parameterSpec(p).field) + " \"" + text + '"');
  w->userTypes(fieldControl(p), text);
  const int after = below(6);
  if (after < 3) w->userPressesEnter();
  if (after == 3) w->userEscapes();
}

inline void RandomUserTest::pickCommand() {
  const CommandId command = below(static_cast<int>(commandRows().size()));
  const std::string_view name = commandRows()[command].name;
  if (name == "mnuFileExit" || !w->commandEnabled(command) || !w->commandVisible(command)) return;
  const bool slow = name.starts_with("mnuViewCheck") || name.starts_with("mnuViewFitR") ||
                    name.starts_with("mnuStrands") || name.starts_with("mnuFileSaveA");
  if (slow && !oneIn(8)) return;
  did.push_back("pick " + std::string(name));
  w->userPicks(command);
}

inline void RandomUserTest::pressKey() {
  const KeyEvent key{static_cast<Key>(below(10)), oneIn(4), oneIn(8), oneIn(8), !oneIn(4)};
  did.push_back("key " + std::to_string(static_cast<int>(key.key)) + (key.shift ? " shift" : ""));
  w->userPresses(key);
}

inline void RandomUserTest::useMouse() {
  const ControlId front = visible("picShape") ? kSheet : visible("picKnot") ? kSolid : kGrid;
  const ControlId picture = oneIn(8) ? kNav : front;
  MouseEvent event{MouseAction::press, 1 + below(3), 0, 0, oneIn(6), oneIn(6)};
  const auto send = [&](MouseAction action, int button, PointI at) {
    event.action = action, event.button = button, event.x = at.x, event.y = at.y;
    if (w->visible(picture)) w->userMouse(picture, event);
  };
  PointI at = place();
  if (picture == kGrid && drawn() && oneIn(2) && lines() > 0) {
    const GridLine& any = line(below(lines()));
    const GridView view = bench().flat.lens.through(
        viewOf(bench().knot(), document().fields, knotStyle(document().fields, {}), kSmallPicture, true));
    at = view.pixel(any.MidX, any.MidY);
  }
  const int button = event.button;
  did.push_back("mouse " + std::string(formTable()[picture].name) + ' ' + std::to_string(at.x) + ' ' +
                std::to_string(at.y) + " button " + std::to_string(button));
  if (oneIn(6)) return event.steps = below(7) - 3, send(MouseAction::wheel, 0, at);
  send(MouseAction::move, 0, at);
  send(MouseAction::press, button, at);
  if (oneIn(8)) send(MouseAction::doubleClick, button, at);
  for (int moves = oneIn(2) ? below(4) : 0; moves > 0; --moves) send(MouseAction::move, button, at = place());
  send(MouseAction::release, button, at);
  if (oneIn(3)) send(MouseAction::leave, 0, at);
}

inline void RandomUserTest::changeSurroundings() {
  const int kind = below(5);
  did.push_back("surroundings " + std::to_string(kind));
  if (kind == 0) w->userResizes(kSmallPicture);
  if (kind == 1) w->userColours(static_cast<Colour>(below(0x1000000)), static_cast<Colour>(below(0x1000000)));
  if (kind == 2) w->userPoints(below(static_cast<int>(formTable().size()) + 1) - 1);
  if (kind == 3) w->userDrops(fileFor(AskedDialog()));
  if (kind == 4) {
    w->userHighlights(below(static_cast<int>(commandRows().size())));
    w->userHighlights(kNoCommand);
  }
}

inline void RandomUserTest::act() {
  platform.dialogs.forget();
  platform.clock().advance(below(3000));
  while (did.size() > 40) did.pop_front();
  attempt([this] {
    const int kind = below(20);
    if (kind < 5) return useControl();
    if (kind < 8) return typeField();
    if (kind < 12) return pickCommand();
    if (kind < 14) return walkHistory();
    if (kind < 15) return pressKey();
    kind < 19 ? useMouse() : changeSurroundings();
  });
}

inline void RandomUserTest::leaveAndReturn() {
  did.push_back("leave");
  w->userCloses();
  if (!w->closed()) return;
  const std::string last = documentText(document());
  open();
  EXPECT_TRUE(documentText(document()) == last) << "the next start shows another knot";
}

inline std::string RandomUserTest::story() const {
  std::string all;
  for (const std::string& action : did) all += action + '\n';
  return all;
}

}  // namespace lorivan
