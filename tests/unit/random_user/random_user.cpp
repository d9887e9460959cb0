#include "unit/random_user/random_user.h"

#include <typeinfo>
#include <utility>

#include "design/document_text.h"
#include "design/edits.h"
#include "graph/grid_view.h"
#include "platform/none/picture_files.h"

namespace lorivan::random_user {
namespace {

constexpr ControlId kGrid = controlId("picGrid"), kSolid = controlId("picKnot"),
                    kSheet = controlId("picShape"), kNav = controlId("picNav");
constexpr int kSmallPicture =
    100;  // pixels, where a window needs no more; many thousand pictures are painted

}  // namespace

RandomUserTest::RandomUserTest() : RandomUserTest(contract::makePlatform()) {}

RandomUserTest::RandomUserTest(std::unique_ptr<Platform> real)
    : onScreen(dynamic_cast<NonePlatform*>(real.get()) == nullptr), platform(std::move(real)) {}

void RandomUserTest::begin(std::uint64_t seed) {
  random_ = seededRandom(seed);
  platform.memory.userFolder_ = platform.memory.documents = folder.path.string();
  platform.answer = [this](const AskedDialog& asked) { return answer(asked); };
  writeFiles();
  open();
}

void RandomUserTest::open() {
  platform.memory.clock().seedValue = static_cast<std::uint64_t>(below(1'000'000));
  shut();
  main = std::make_unique<MainWindow>(platform, MainWindowOptions());
  ASSERT_TRUE(main->open());
  w = platform.window;
  w->show();
  user_ = contract::makeUser(w->inner());
  w->resizeTo(1, 1);  // as small as can be
  if (auto* const none = dynamic_cast<NoneWindow*>(&w->inner())) none->userResizes(kSmallPicture);
  EXPECT_TRUE(w->processEvents());
  w->meanwhile = [this] { meddle(); };
  w->beforeBox = [this](bool agrees) {
    if (!onScreen || !oneIn(4)) return false;
    user_->answerNext(agrees);
    return true;
  };
}

void RandomUserTest::shut() {
  user_.reset();
  main.reset();
}

/// Good ones, bad ones, and names of none.
void RandomUserTest::writeFiles() const {
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

std::string RandomUserTest::fileFor(const AskedDialog& asked) {
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

DialogQueue::Answer RandomUserTest::answer(const AskedDialog& asked) {
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
    // Without a screen: the control is hidden, or leaving a field has disabled it.
    if (typeid(impossible) != typeid(std::logic_error)) throw;
    did.push_back(std::string("  ") + impossible.what());
  }
}

/// What comes while an animation or long work runs.
void RandomUserTest::meddle() {
  if (!bench().actions.working() || !oneIn(20)) return;
  did.emplace_back("  meanwhile");
  attempt([this] {
    const int kind = below(4);
    if (kind == 0) pressKey();
    if (kind == 1) pickCommand();
    if (kind == 2) useMouse();
    if (kind == 3) user_->press("Escape");
  });
}

/// Whole numbers that the fields take, and what they do not.
std::string RandomUserTest::number() {
  if (oneIn(8))
    return oneOf({"", "abc", "1e9", "-1e9", "0.3", " 7 ", "nan", "1,5", "-", "2.5", "0x10", "7/2"});
  return std::to_string(below(26) - 2);
}

/// Whether a person can reach it.
bool RandomUserTest::usable(ControlId control) const {
  const std::string_view group = formTable()[control].group;
  return w->visible(control) && w->enabled(control) && (group.empty() || usable(controlNamed(group)));
}

void RandomUserTest::useControl() {
  const ControlId control = below(static_cast<int>(formTable().size()));
  const ControlSpec& row = formTable()[control];
  // An animation that never ends has tests of its own.
  const bool idle = row.kind == ControlKind::picture || row.kind == ControlKind::group ||
                    row.kind == ControlKind::label || row.kind == ControlKind::text;
  if (idle || row.name == "chkLoop" || !usable(control)) return;
  did.push_back("control " + std::string(row.name));
  if (row.kind == ControlKind::list || row.kind == ControlKind::number) {
    user_->focus(control);
    const bool list = row.kind == ControlKind::list;
    for (int times = 1 + (list ? below(6) : 0); times > 0 && user_->hasFocus(control); --times)
      user_->press(list || !oneIn(4) ? oneOf({"Up", "Down"}) : oneOf({"PgUp", "PgDn"}));
    if (oneIn(4)) user_->wheel(control, oneIn(2) ? 120 : -120);
  } else {
    user_->click(control);
  }
}

/// Most times what is quickly shown: a knot as flat as can be takes as long as a hundred others.
std::string RandomUserTest::entryFor(Param p) {
  // Models of a million polygons have tests of their own.
  if (p == Param::PolySides || p == Param::PolyPoints) return std::to_string(below(9));
  if (oneIn(30)) return number();
  if (p == Param::Skew) return oneOf({"0.5", "0.7", "1", "1.4", "2"});
  const bool cells = p == Param::XNo || p == Param::YNo || p == Param::GridSize;
  return cells ? std::to_string(below(9)) : number();
}

void RandomUserTest::typeField() {
  const auto p = static_cast<Param>(below(kParamCount));
  if (fieldControl(p) < 0 || !usable(fieldControl(p))) return;
  const std::string text = entryFor(p);
  did.push_back("type " + std::string(parameterSpec(p).field) + " \"" + text + '"');
  user_->focus(fieldControl(p));
  if (!user_->hasFocus(fieldControl(p))) return;
  text.empty() ? user_->press("Del") : user_->type(text.c_str());
  const int after = below(6);
  if (after < 3) user_->press("Return");
  if (after == 3) user_->press("Escape");
  if (after == 4) user_->press("Tab");
}

void RandomUserTest::pickCommand() {
  const CommandId command = below(static_cast<int>(commandRows().size()));
  const std::string_view name = commandRows()[command].name;
  if (name == "mnuFileExit" || !w->commandEnabled(command) || !w->commandVisible(command)) return;
  const bool slow = name.starts_with("mnuViewCheck") || name.starts_with("mnuViewFitR") ||
                    name.starts_with("mnuStrands") || name.starts_with("mnuFileSaveA");
  if (slow && !oneIn(8)) return;
  did.push_back("pick " + std::string(name));
  user_->pick(command);
}

void RandomUserTest::walkHistory() {
  const std::string_view command = oneIn(3) ? "mnuEditRedoStep" : "mnuEditUndoStep";
  did.emplace_back(command);
  if (w->commandEnabled(commandId(command))) pick(command);
}

void RandomUserTest::pressKey() {
  const std::string held = oneIn(4) ? "Shift+" : oneIn(8) ? "Ctrl+" : "";
  const std::string keys = held + oneOf({"Left", "Up", "Right", "Down", "Escape", "Plus", "Minus", "Space",
                                         "Return", "PgUp", "Tab"});
  did.push_back("key " + keys);
  user_->press(keys);
}

/// Somewhere in a picture or, by so many pixels, beside it.
PointI RandomUserTest::place(ControlId picture, int beside) {
  const Surface& surface = w->surface(picture);
  return {below(surface.width() + 2 * beside) - beside, below(surface.height() + 2 * beside) - beside};
}

void RandomUserTest::useMouse() {
  const ControlId front = w->visible(kSheet) ? kSheet : w->visible(kSolid) ? kSolid : kGrid;
  const ControlId picture = oneIn(8) ? kNav : front;
  if (!usable(picture)) return;
  const int button = 1 + below(3);
  const bool shift = oneIn(6), ctrl = oneIn(6);
  const auto send = [&](MouseAction action, int with, PointI at) {
    if (usable(picture)) user_->mouse(picture, action, with, at.x, at.y);
  };
  PointI at = place(picture, 0);
  const int lines = bench().knot().graph.LastLine + 1;
  if (picture == kGrid && drawn() && oneIn(2) && lines > 0) {
    const GridLine& any = bench().knot().graph.Lines[below(lines)];
    at = bench()
             .flat.lens
             .through(viewOf(bench().knot(), document().fields, knotStyle(document().fields, {}),
                             w->surface(kGrid).width(), true))
             .pixel(any.MidX, any.MidY);
  }
  did.push_back("mouse " + std::string(formTable()[picture].name) + ' ' + std::to_string(at.x) + ' ' +
                std::to_string(at.y) + " button " + std::to_string(button) + (shift ? " Shift" : "") +
                (ctrl ? " Ctrl" : ""));
  user_->holdKeys(shift, ctrl);
  if (oneIn(6)) {
    user_->wheel(picture, 120 * (below(7) - 3));
  } else {
    send(MouseAction::move, 0, at);
    send(oneIn(8) ? MouseAction::doubleClick : MouseAction::press, button, at);
    for (int moves = oneIn(2) ? below(4) : 0; moves > 0; --moves)
      send(MouseAction::move, button, at = place(picture, 10));
    send(MouseAction::release, button, at);
  }
  user_->holdKeys(false, false);
  if (oneIn(3)) user_->point(-1);
}

void RandomUserTest::changeSurroundings() {
  const int kind = below(5);
  did.push_back("surroundings " + std::to_string(kind));
  if (kind == 0) user_->enlarge(below(80) - 50, below(80) - 50);
  if (kind == 1) user_->recolour(true), user_->recolour(false);
  if (kind == 2) user_->point(below(static_cast<int>(formTable().size()) + 1) - 1);
  if (kind == 3) user_->drop(fileFor(AskedDialog()));
  if (kind == 4) {
    user_->highlight(below(static_cast<int>(commandRows().size())));
    user_->highlight(kNoCommand);
  }
}

void RandomUserTest::act() {
  platform.memory.clock().advance(below(3000));
  while (did.size() > 40) did.pop_front();
  attempt([this] {
    if (large() && oneIn(20)) {  // has seen enough of it
      did.emplace_back("drop knot.qzd");
      return user_->drop(folder.file("knot.qzd"));
    }
    const int kind = below(20);
    if (kind < 5) return useControl();
    if (kind < 8) return typeField();
    if (kind < 12) return pickCommand();
    if (kind < 14) return walkHistory();
    if (kind < 15) return pressKey();
    kind < 19 ? useMouse() : changeSurroundings();
  });
  w->inner().processEvents();
}

void RandomUserTest::leaveAndReturn() {
  did.emplace_back("leave");
  user_->close();
  if (w->inner().processEvents()) return;
  const std::string last = documentText(document());
  open();
  EXPECT_TRUE(documentText(document()) == last) << "the next start shows another knot";
}

std::string RandomUserTest::story() const {
  std::string all;
  for (const std::string& action : did) all += action + '\n';
  return all;
}

}  // namespace lorivan::random_user
