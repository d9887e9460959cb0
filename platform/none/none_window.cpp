#include "platform/none/none_window.h"

#include <algorithm>
#include <stdexcept>

#include "platform/common/layout.h"

namespace lorivan {
namespace {

constexpr int kLargeWidth = 500, kSmallSize = 120;
constexpr int kLeastWidth = 640, kLeastHeight = 480;

[[noreturn]] void refuse(const std::string& what) { throw std::logic_error(what); }

template <class Function, class... Arguments>
void call(const Function& function, Arguments&&... arguments) {
  if (function) function(std::forward<Arguments>(arguments)...);
}

}  // namespace

DialogQueue::Answer DialogQueue::take(AskedDialog asked) {
  const std::string words = asked.text.empty() ? asked.title : asked.text;
  const DialogKind kind = asked.kind;
  asked_.push_back(std::move(asked));
  if (answers_.empty() && otherwise) return otherwise(asked_.back());
  if (answers_.empty() || answers_.front().kind != kind) refuse("no answer waits for the dialog: " + words);
  Answer answer = std::move(answers_.front());
  answers_.pop_front();
  return answer;
}

NoneWindow::NoneWindow(const WindowSpec& spec, const WindowEvents& events, DialogQueue& dialogs,
                       WindowPlace screen)
    : controlSpecs_(spec.controls.begin(), spec.controls.end()),
      commandSpecs_(spec.commands.begin(), spec.commands.end()),
      events_(events),
      dialogs_(dialogs),
      controls_(spec.controls.size()),
      commands_(spec.commands.size()),
      title_(spec.title),
      place_{0, 0, 780, 560},
      screen_(screen) {
  for (std::size_t i = 0; i < commands_.size(); ++i) commands_[i].text = commandSpecs_[i].text;
  for (std::size_t i = 0; i < controls_.size(); ++i) {
    const ControlSpec& row = controlSpecs_[i];
    if (row.kind != ControlKind::number && row.kind != ControlKind::text) controls_[i].text = row.caption;
    if (row.kind != ControlKind::picture) continue;
    controls_[i].surface = row.group.empty()
                               ? std::make_unique<RecordingSurface>(kLargeWidth, kLargeWidth * 4 / 5)
                               : std::make_unique<RecordingSurface>(kSmallSize, kSmallSize);
  }
}

NoneWindow::~NoneWindow() { call(onDestroyed); }

NoneWindow::Control& NoneWindow::at(ControlId control) {
  return controls_.at(static_cast<std::size_t>(control));
}
const NoneWindow::Control& NoneWindow::at(ControlId control) const {
  return controls_.at(static_cast<std::size_t>(control));
}
NoneWindow::Command& NoneWindow::command_(CommandId command) {
  return commands_.at(static_cast<std::size_t>(command));
}
const NoneWindow::Command& NoneWindow::command_(CommandId command) const {
  return commands_.at(static_cast<std::size_t>(command));
}
const ControlSpec& NoneWindow::spec(ControlId control) const {
  return controlSpecs_.at(static_cast<std::size_t>(control));
}

ControlId NoneWindow::control(std::string_view name) const {
  const auto found = std::ranges::find(controlSpecs_, name, &ControlSpec::name);
  if (found == controlSpecs_.end()) refuse("no control is called " + std::string(name));
  return static_cast<ControlId>(found - controlSpecs_.begin());
}

CommandId NoneWindow::command(std::string_view name) const {
  const auto found = std::ranges::find(commandSpecs_, name, &CommandSpec::name);
  if (found == commandSpecs_.end()) refuse("no command is called " + std::string(name));
  return static_cast<CommandId>(found - commandSpecs_.begin());
}

void NoneWindow::moveTo(int left, int top) {
  place_.left = left;
  place_.top = top;
}

void NoneWindow::resizeTo(int width, int height) {
  if (maximised_) return;
  place_.width = std::min(std::max(width, kLeastWidth), screen_.width);
  place_.height = std::min(std::max(height, kLeastHeight), screen_.height);
  place_.left = std::clamp(place_.left, screen_.left, screen_.left + screen_.width - place_.width);
  place_.top = std::clamp(place_.top, screen_.top, screen_.top + screen_.height - place_.height);
}

void NoneWindow::show() {
  if (shown_) return;
  shown_ = true;
  waiting_.push_front([this] { call(events_.started); });
}

bool NoneWindow::processEvents() {
  if (!closed_) call(onEvents);
  while (!waiting_.empty() && !closed_) {
    const std::function<void()> action = std::move(waiting_.front());
    waiting_.pop_front();
    action();
  }
  return !closed_;
}

void NoneWindow::close() {
  if (closed_) return;
  if (!events_.closeQuery || events_.closeQuery()) closed_ = true;
}

std::string NoneWindow::text(ControlId control) const {
  const Control& c = at(control);
  if (spec(control).kind != ControlKind::list) return c.text;
  return c.selected < 0 ? std::string() : c.items[c.selected];
}

void NoneWindow::setChecked(ControlId control, bool on) {
  if (spec(control).kind == ControlKind::radio && on)
    chooseRadio(control);
  else
    at(control).on = on;
}

void NoneWindow::chooseRadio(ControlId control) {
  for (ControlId other = 0; other < static_cast<ControlId>(controls_.size()); ++other)
    if (spec(other).kind == ControlKind::radio && spec(other).group == spec(control).group)
      at(other).on = other == control;
}

void NoneWindow::setItems(ControlId list, const std::vector<std::string>& items) {
  at(list).items = items;
  at(list).selected = -1;
}

void NoneWindow::select(ControlId list, int index) {
  if (index >= static_cast<int>(at(list).items.size()))
    refuse("the list has no entry " + std::to_string(index));
  at(list).selected = std::max(index, -1);
}

bool NoneWindow::usable(ControlId control) const {
  const Control& c = at(control);
  if (!c.visible || !c.enabled || spec(control).group.empty()) return c.visible && c.enabled;
  const Control& group = at(this->control(spec(control).group));
  return group.visible && group.enabled;
}

void NoneWindow::focus(ControlId control) {
  if (usable(control)) focus_ = control;
}

void NoneWindow::passFocusOn() {
  if (focus_ < 0 || usable(focus_)) return;
  focus_ = pictureInUse(controlSpecs_, [this](ControlId picture) { return usable(picture); });
}

void NoneWindow::setEnabled(ControlId control, bool on) {
  at(control).enabled = on;
  passFocusOn();
}

void NoneWindow::setVisible(ControlId control, bool on) {
  at(control).visible = on;
  passFocusOn();
}

void NoneWindow::setColours(ControlId control, Colour background, Colour text) {
  at(control).background = background;
  at(control).textColour = text;
}

RecordingSurface& NoneWindow::surface(ControlId picture) {
  Control& c = at(picture);
  if (c.surface == nullptr) refuse(std::string(spec(picture).name) + " is no picture");
  return *c.surface;
}

void NoneWindow::setBusy(bool on) {
  if (on && !busy_) ++busyTimes_;
  busy_ = on;
}

void NoneWindow::message(const std::string& text, const std::string& title, MessageIcon icon) {
  AskedDialog asked{DialogKind::message, text, title, {}, icon, {}, 0};
  dialogs_.take(std::move(asked));
}

bool NoneWindow::confirm(const std::string& text, const std::string& title) {
  AskedDialog asked{DialogKind::confirm, text, title, {}, MessageIcon::none, {}, 0};
  return dialogs_.take(std::move(asked)).ok;
}

SaveAnswer NoneWindow::askToSave(const std::string& text, const std::string& title) {
  AskedDialog asked{DialogKind::save, text, title, {}, MessageIcon::none, {}, 0};
  return dialogs_.take(std::move(asked)).save;
}

std::string NoneWindow::chooseFile(const FileDialogSpec& dialog) {
  AskedDialog asked{DialogKind::file, {}, dialog.title, dialog.initialName, MessageIcon::none, dialog, 0};
  return dialogs_.take(std::move(asked)).text;
}

std::optional<Colour> NoneWindow::chooseColour(Colour initial) {
  AskedDialog asked{DialogKind::colour, {}, "colour", {}, MessageIcon::none, {}, initial};
  return dialogs_.take(std::move(asked)).colour;
}

std::optional<std::vector<OptionLine>> NoneWindow::chooseOptions(const OptionDialogSpec& dialog) {
  AskedDialog asked{DialogKind::options, dialog.hint, dialog.title, {}, MessageIcon::none, {}, 0};
  asked.lines = dialog.lines;
  for (;;) {
    auto lines = dialogs_.take(asked).lines;
    const auto wrong = lines && dialog.check ? dialog.check(*lines) : std::nullopt;
    if (!wrong) return lines;
    asked.text = wrong->why;  // the dialog stays open and waits for another answer
    asked.lines = std::move(*lines);
  }
}

std::string NoneWindow::inputBox(const std::string& prompt, const std::string& title,
                                 const std::string& initial) {
  AskedDialog asked{DialogKind::input, prompt, title, initial, MessageIcon::none, {}, 0};
  return dialogs_.take(std::move(asked)).text;
}

Result<bool> NoneWindow::print(const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw) {
  AskedDialog asked{DialogKind::print, {}, spec.title, {}, MessageIcon::none, {}, 0};
  if (!dialogs_.take(std::move(asked)).ok) return false;
  auto page = std::make_unique<NonePage>(spec.landscape);
  if (const Status drawn = draw(*page); !drawn) return drawn.error();
  printed_ = std::move(page);
  return true;
}

Status NonePage::place(Surface& picture, PointI corner, int width, int height) {
  placed.push_back({picture.width(), corner, width, height});
  return picture.lendPixels().pixels != nullptr ? Status()
                                                : unwritable("this picture has no pixels to print");
}

void NoneWindow::reach(ControlId control) const {
  if (closed_) refuse("the window is closed");
  if (!usable(control)) refuse(std::string(spec(control).name) + " or its group is hidden or disabled");
}

void NoneWindow::userFocuses(ControlId control) {
  reach(control);
  if (focus_ == control) return;
  const ControlId left = focus_;
  focus_ = control;
  call(events_.pointed, control);
  if (left < 0 || spec(left).kind != ControlKind::number) return;
  call(events_.left, left);
  call(events_.confirmed, left);
}

void NoneWindow::userTypes(ControlId control, const std::string& text) {
  if (spec(control).kind != ControlKind::number) refuse("nothing can be typed there");
  userFocuses(control);
  at(control).text = text;
}

void NoneWindow::userPressesEnter() {
  if (focus_ >= 0 && spec(focus_).kind == ControlKind::number)
    call(events_.confirmed, focus_);
  else
    userPresses({Key::enter});
}

void NoneWindow::userSteps(ControlId control, int by) {
  if (spec(control).kind != ControlKind::number) refuse("nothing can be stepped there");
  userFocuses(control);
  reach(control);  // leaving another field may have changed it
  call(events_.stepped, control, by);
}

void NoneWindow::userEscapes() {
  if (userPresses({Key::escape})) return;
  if (focus_ >= 0 && spec(focus_).kind == ControlKind::number) call(events_.escaped, focus_);
}

void NoneWindow::userEnters(ControlId control, const std::string& text) {
  userTypes(control, text);
  userPressesEnter();
}

void NoneWindow::userClicks(ControlId control) {
  userFocuses(control);
  reach(control);  // leaving another field may have changed it
  switch (spec(control).kind) {
    case ControlKind::button:
    case ControlKind::colourBox:
      call(events_.clicked, control);
      break;
    case ControlKind::check:
      at(control).on = !at(control).on;
      call(events_.changed, control);
      break;
    case ControlKind::radio:
      if (at(control).on) break;
      chooseRadio(control);
      call(events_.changed, control);
      break;
    default:
      break;
  }
}

void NoneWindow::userChooses(ControlId list, int index) {
  userFocuses(list);
  if (index < 0 || index == at(list).selected) return;
  select(list, index);
  call(events_.changed, list);
}

void NoneWindow::userPicks(CommandId command) {
  if (closed_ || !commandEnabled(command) || !commandVisible(command))
    refuse(std::string(commandSpecs_[command].name) + " cannot be chosen");
  call(events_.command, command);
}

void NoneWindow::userPoints(ControlId control) { call(events_.pointed, control); }

void NoneWindow::userHighlights(CommandId command) { call(events_.highlighted, command); }

bool NoneWindow::userPresses(const KeyEvent& key) { return events_.key && events_.key(key); }

void NoneWindow::userMouse(ControlId picture, const MouseEvent& event) {
  reach(picture);
  call(events_.mouse, picture, event);
}

void NoneWindow::userClicksAt(ControlId picture, int button, int x, int y) {
  userMouse(picture, {MouseAction::move, 0, x, y});
  userMouse(picture, {MouseAction::press, button, x, y});
  userMouse(picture, {MouseAction::release, button, x, y});
}

void NoneWindow::userDrops(const std::string& path) { call(events_.fileDropped, path); }

void NoneWindow::userResizes(int width) {
  for (ControlId id = 0; id < static_cast<ControlId>(controls_.size()); ++id) {
    if (spec(id).kind != ControlKind::picture || !spec(id).group.empty()) continue;
    at(id).surface = std::make_unique<RecordingSurface>(width, width * 4 / 5);
    call(events_.resized, id);
  }
}

void NoneWindow::userColours(Colour face, Colour text) {
  face_ = face;
  ink_ = text;
  call(events_.coloursChanged);
}

}  // namespace lorivan
