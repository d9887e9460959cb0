#include "window/main_window.h"

#include <algorithm>
#include <new>
#include <utility>

#include "base/memory_reserve.h"
#include "base/sink.h"
#include "base/texts.h"
#include "design/document_text.h"
#include "design/welcome.h"
#include "window/control_handlers.h"
#include "window/languages.h"
#include "window/preferences.h"

namespace lorivan {
namespace {

constexpr int kLeastScreenHeight = 600;
constexpr ControlId kShapes = controlId("lstType");

/// The same event, whose lack of memory ends here: no back end need let an exception through its system.
template <class Answer, class... Words, class Ended>
void guard(std::function<Answer(Words...)>& event, const Ended& ended) {
  event = [inner = std::move(event), ended](Words... words) -> Answer {
    try {
      return inner(std::forward<Words>(words)...);
    } catch (const std::bad_alloc&) {
      ended();
    }
    return Answer();
  };
}

}  // namespace

MainWindow::MainWindow(Platform& platform, MainWindowOptions options)
    : platform_(platform), options_(std::move(options)) {}

Status MainWindow::open() {
  const std::string language = chooseLanguage();
  events_ = makeEvents();
  tables_ = std::make_unique<ShownTables>();
  auto made = platform_.createWindow({tables_->controls(), tables_->commands(), "Lorivan"}, events_);
  if (!made) return made.error();
  window_ = std::move(*made);
  tooSmall_ = screenTooSmall();
  if (tooSmall_) return {};
  bench_ = std::make_unique<Workbench>(platform_, *window_, floor(), options_);
  bench_->spoken = language;
  handlers_ = std::make_unique<Handlers>(*bench_);
  window_->setVisible(controlId("Check1"), options_.stepDisplay);
  window_->setChecked(controlId("Check1"), options_.stepDisplay);
  restorePreferences(*bench_);
  for (const ControlId turned : {controlId("picKnot"), controlId("picNav")})
    window_->setPointer(turned, PointerShape::hand);
  bench_->show(bench_->document().lines ? After::grid : After::sheet);
  bench_->form.startHistories();
  bench_->status(bench_->summary());
  return {};
}

/// All texts are made in it from here on.
std::string MainWindow::chooseLanguage() {
  const std::string_view code = languageFor(languageSetting(platform_.settings()), platform_.language());
  speak(textsOf(code));
  platform_.setLanguage(code);
  return std::string(code);
}

Document MainWindow::floor() const {
  if (options_.welcome) return welcomeDocument();
  auto last = lastKnot(lastKnotFile(platform_.userFolder()), platform_.settings());
  return last ? std::move(*last) : restoredDocument(platform_.settings());
}

bool MainWindow::screenTooSmall() {
  if (window_->screen().height / window_->scaling() >= kLeastScreenHeight) return false;
  window_->message(
      tr("Sorry, this program only works at resolutions of SuperVGA (800*600, small fonts) or better"), "",
      MessageIcon::none);
  return true;
}

Status MainWindow::run() {
  if (tooSmall_) return {};
  window_->show();
  // Only now is the frame's own size known.
  const WindowPlace place = window_->place(), screen = window_->screen();
  const int left = std::max(0, std::min(place.left, screen.width - place.width));
  const int top = std::max(0, std::min(place.top, screen.height - place.height));
  if (left != place.left || top != place.top) window_->moveTo(left, top);
  try {
    window_->run();
  } catch (const std::bad_alloc&) {
    endForLackOfMemory();
  }
  return ended_;
}

/// What was reached before the step that memory did not suffice for is offered at the next start.
void MainWindow::endForLackOfMemory() {
  if (std::exchange(outOfMemory_, true)) return;
  ended_ = refused(kOutOfMemory);
  bench_->actions.stop();
  bench_->actions.forget();
  try {
    bench_->session.keepAside();
    window_->message(
        tr("There is not enough memory left. Your knot is kept aside and offered at the next start."),
        "Lorivan", MessageIcon::critical);
  } catch (const std::bad_alloc&) {
    // The copy of the step before is there.
  }
  window_->close();
}

void MainWindow::onStarted() {
  if (options_.welcome)
    bench_->status(
        tr("Welcome! Press Random for another knot, or turn the wheel over a field that has the focus"));
  offerRecovered();
  if (!options_.knotFile.empty()) handlers_->openFile(options_.knotFile);
}

/// Each knot that a crash left behind is offered once.
void MainWindow::offerRecovered() {
  while (const auto text = bench_->session.recovery().takeLeft()) {
    if (!window_->confirm(
            tr("Lorivan did not end in order last time. Open the knot that was being worked on? "
               "Cancel throws it away."),
            "Lorivan")) {
      bench_->session.recovery().clear();
    } else if (bench_->session.recover(*text)) {
      bench_->show(After::draw);
      bench_->status(tr("Recovered: {1}; it is not saved yet", bench_->summary()));
      return;
    } else {
      bench_->status(tr("The knot that was left behind could not be read"));
    }
  }
}

WindowEvents MainWindow::makeEvents() {
  WindowEvents events;
  fieldEvents(events);
  events.clicked = [this](ControlId control) { onClicked(control); };
  events.changed = [this](ControlId control) { onChanged(control); };
  events.command = [this](CommandId command) { onCommand(command); };
  events.highlighted = [this](CommandId command) { bench_->preview(styleOf(command)); };
  events.mouse = [this](ControlId picture, const MouseEvent& event) { onMouse(picture, event); };
  events.key = [this](const KeyEvent& key) { return onKey(key); };
  events.resized = [this](ControlId picture) {
    if (bench_) bench_->resized(picture);
  };
  events.coloursChanged = [this] { bench_->solid.paintRotator(); };
  events.pointed = [this](ControlId control) {
    if (bench_) bench_->pointed(control);
  };
  events.fileDropped = [this](const std::string& path) {
    bench_->actions.act([this, path] { handlers_->fileDropped(path); });
  };
  events.closeQuery = [this] { return closeQuery(); };
  events.started = [this] { bench_->actions.act([this] { onStarted(); }); };
  const auto all = [](const auto& use, auto&... each) { (use(each), ...); };
  all([this](auto& event) { guard(event, [this] { endForLackOfMemory(); }); }, events.confirmed,
      events.clicked, events.changed, events.command, events.highlighted, events.mouse, events.key,
      events.resized, events.fileDropped, events.started, events.left, events.stepped, events.escaped,
      events.coloursChanged, events.closeQuery);
  return events;
}

void MainWindow::fieldEvents(WindowEvents& events) {
  events.confirmed = [this](ControlId control) {
    if (const auto p = parameterOf(control)) onConfirmed(*p);
  };
  events.left = [this](ControlId control) {
    bench_->session.endRun();
    if (const auto p = parameterOf(control)) bench_->form.left(*p);
  };
  events.stepped = [this](ControlId control, int steps) {
    const auto p = parameterOf(control);
    if (p) bench_->actions.act([this, p, steps] { handlers_->vt_Stepped(*p, steps); });
  };
  events.escaped = [this](ControlId control) {
    if (const auto p = parameterOf(control)) handlers_->vt_Escaped(*p);
  };
}

void MainWindow::onConfirmed(Param p) {
  // The speed of an animation can be changed while it runs.
  if (p == Param::Animate && bench_->actions.animating())
    handlers_->vt_Changed(p);
  else if (bench_->form.isNew(p) || !bench_->actions.working())
    bench_->actions.act([this, p, text = window_->text(fieldControl(p))] {
      // An action before this one may have shown another document.
      window_->setText(fieldControl(p), text);
      handlers_->vt_Changed(p);
    });
  else
    bench_->form.forgetTyped(p);
}

void MainWindow::onClicked(ControlId control) {
  if (control == controlId("cmd2D") && bench_->actions.animating()) return bench_->actions.stop();
  bench_->actions.act([this, control] {
    bench_->confirmPending(true);
    if (window_->enabled(control)) runControl(control, *handlers_);
  });
}

void MainWindow::onChanged(ControlId control) {
  const auto c = checkOf(control);
  // A loop can be ended, or begun, while it runs.
  if (c == Check::Loop && bench_->actions.animating()) return handlers_->chk_Click(*c);
  // Radios leave the knot alone.
  if (!c && control != kShapes) return runControl(control, *handlers_);
  const bool on = c && window_->checked(control);
  const int choice = c ? -1 : window_->selected(control);
  bench_->actions.act([this, control, c, on, choice] {
    // An action before this one may have shown another document.
    c ? window_->setChecked(control, on) : window_->select(control, choice);
    c ? handlers_->chk_Click(*c) : runControl(control, *handlers_);
  });
}

void MainWindow::onCommand(CommandId command) {
  const CommandRow& row = commandRows()[command];
  const auto choose = [this, &row, command] {
    if (!bench_->actions.working()) bench_->confirmPending(!row.keepsUndone);
    if (window_->commandEnabled(command)) row.run(*handlers_);
  };
  if (row.duringWork && bench_->actions.working())
    choose();
  else
    bench_->actions.act(choose);
}

void MainWindow::onMouse(ControlId picture, const MouseEvent& event) {
  if (!bench_->actions.working())
    return bench_->actions.act([this, picture, event] { runMouse(picture, *handlers_, event); });
  // A press counts as a click where it was; one that hits no line does nothing anyway.
  if (event.action != MouseAction::press) return;
  if (picture == controlId("picGrid") && bench_->flat.lineAt(bench_->knot(), event.x, event.y) < 0) return;
  bench_->actions.act([this, picture, event] {
    runMouse(picture, *handlers_, event);
    MouseEvent release = event;
    release.action = MouseAction::release;
    runMouse(picture, *handlers_, release);
  });
}

bool MainWindow::onKey(const KeyEvent& key) {
  if (!bench_->actions.working()) {
    bool taken = false;
    bench_->actions.act([&] { taken = handlers_->frmLorivan_KeyDown(key); });
    return taken;
  }
  if (!bench_->actions.canStop() || key.key != Key::escape) return false;
  bench_->actions.stop();
  return true;
}

bool MainWindow::closeQuery() {
  if (tooSmall_ || outOfMemory_) return true;
  if (!window_->confirm(tr("Are you sure you want to exit?"), tr("Exit check"))) return false;
  // What the fields show is taken, for the settings keep it; the last knot has to agree with them.
  bench_->actions.stop();
  bench_->actions.forget();
  if (!bench_->actions.working()) bench_->confirmPending(true);
  if (!handlers_->mayLeave(tr("The knot has changes that are not saved. Save them before the program ends?")))
    return false;
  // The window closes all the same.
  if (const Status kept = keepPreferences(*bench_); !kept) {
    ended_ = unwritable("the settings could not be kept: {1}", kept.error().message);
    bench_->status(tr("The settings could not be kept: {1}", kept.error().message));
  }
  keepLastKnot();
  return true;
}

/// For the next start, which shows it again.
void MainWindow::keepLastKnot() {
  bench_->session.recovery().clear();
  const std::string file = lastKnotFile(platform_.userFolder());
  if (!file.empty()) static_cast<void>(writeFile(file, documentText(bench_->document())));
}

}  // namespace lorivan
