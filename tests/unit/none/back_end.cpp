// The platform object without a screen and its user for the tests that all back ends share.
#include "unit/platform_contract/back_end.h"

#include <algorithm>
#include <map>

#include "platform/none/none_platform.h"
#include "scratch_folder.h"
#include "window/form_table.h"

namespace lorivan::contract {
namespace {

NonePlatform* current = nullptr;

/// An action that a driver of this back end has no words for.
void unknown(const std::string& action) {
  ADD_FAILURE() << "nobody can do this without a screen: " << action;
}

class NoneUser final : public User {
 public:
  explicit NoneUser(NoneWindow& window) : window_(window) {}

  void focus(ControlId control) override { window_.userFocuses(control); }
  bool hasFocus(ControlId control) const override { return window_.focused() == control; }
  void type(const char* text) override { window_.userTypes(window_.focused(), text); }
  void press(const std::string& keys) override {
    static const std::map<std::string, int> steps = {{"Up", 1}, {"Down", -1}, {"PgUp", 10}, {"PgDn", -10}};
    const ControlKind kind = focusedKind();
    if (keys == "Return") return window_.userPressesEnter();
    if (keys == "Escape") return window_.userEscapes();
    if (keys == "Tab") return tab();
    if (keys == "Del") return window_.userTypes(window_.focused(), "");
    if (kind == ControlKind::number && steps.contains(keys))
      return window_.userSteps(window_.focused(), steps.at(keys));
    if (pressToProgram(keys)) return;
    if (kind == ControlKind::list && steps.contains(keys))
      step(window_.focused(), -steps.at(keys));
    else if (kind == ControlKind::button && keys == "Space")
      window_.userClicks(window_.focused());
    else
      pressShortcut(keys);
  }
  void tab() {
    ControlId next = window_.focused() + 1;
    const auto end = static_cast<ControlId>(formTable().size());
    while (next < end && (formTable()[next].kind == ControlKind::label || !window_.enabled(next))) ++next;
    if (next < end) window_.userFocuses(next);
  }
  void click(ControlId control) override { window_.userClicks(control); }
  void hold(ControlId) override { unknown("holding a button"); }
  void letGo(ControlId, bool) override { unknown("letting a button go"); }
  void pick(CommandId command) override { window_.userPicks(command); }
  std::string menuText(CommandId command) const override {
    return window_.commandVisible(command) ? window_.commandText(command) : std::string();
  }
  void highlight(CommandId command) override { window_.userHighlights(command); }
  void point(ControlId control) override { window_.userPoints(control); }
  void holdKeys(bool shift, bool ctrl) override { shift_ = shift, ctrl_ = ctrl; }
  void wheel(ControlId control, int by) override {
    if (formTable()[control].kind == ControlKind::picture)
      window_.userMouse(control, {MouseAction::wheel, 0, 9, 9, shift_, ctrl_, false, by / 120});
    else if (hasFocus(control) && focusedKind() == ControlKind::number)
      window_.userSteps(control, by / 120);
  }
  void mouse(ControlId picture, MouseAction action, int button, int x, int y) override {
    MouseEvent event{action, button, x, y, shift_, ctrl_};
    if (action == MouseAction::doubleClick) {
      event.action = MouseAction::press;
      window_.userMouse(picture, event);
      event.action = action;
    }
    window_.userMouse(picture, event);
  }
  void enlarge(int width, int height) override {
    window_.resizeTo(window_.place().width + width, window_.place().height + height);
    window_.userResizes(window_.surface(controlId("picGrid")).width());  // they are told, if no larger
  }
  void drop(const std::string& path) override { window_.userDrops(path); }
  void close() override { window_.userCloses(); }
  void recolour(bool other) override {
    if (!other) return window_.userColours(usual_.first, usual_.second);
    usual_ = {window_.faceColour(), window_.textColour()};
    window_.userColours(0x303030, 0xEEEEEE);
  }
  void pressNext(const std::string& label) override {
    const bool saves = label == "&Save", discards = label == "&Don't save";
    current->dialogs.answerSave(saves      ? SaveAnswer::save
                                : discards ? SaveAnswer::discard
                                           : SaveAnswer::cancel);
  }
  void answerNext(bool, const std::string&) override { unknown("answering before the question is known"); }

 private:
  ControlKind focusedKind() const {
    return window_.focused() < 0 ? ControlKind::picture : formTable()[window_.focused()].kind;
  }
  void step(ControlId list, int by) {
    const auto last = static_cast<int>(window_.items(list).size()) - 1;
    window_.userChooses(list, std::clamp(window_.selected(list) + by, 0, last));
  }
  /// Whether the program takes a key, which an entry needs for itself.
  bool pressToProgram(const std::string& keys) {
    static const std::map<std::string, Key> known = {
        {"Left", Key::left}, {"Up", Key::up},       {"Right", Key::right}, {"Down", Key::down},
        {"Plus", Key::plus}, {"Minus", Key::minus}, {"Space", Key::space}};
    const auto key = known.find(keys.substr(keys.rfind('+') + 1));
    if (key == known.end() || focusedKind() == ControlKind::number) return false;
    const auto with = [&](const char* name) { return keys.find(name) != std::string::npos; };
    return window_.userPresses(
        {key->second, with("Shift+"), with("Ctrl+"), false, focusedKind() == ControlKind::picture});
  }
  void pressShortcut(const std::string& keys) {
    const auto commands = contractCommands();
    for (std::size_t i = 0; i < commands.size(); ++i) {
      const auto id = static_cast<CommandId>(i);
      const bool means = commands[i].shortcut == keys || commands[i].alternative == keys;
      if (means && window_.commandEnabled(id) && window_.commandVisible(id)) window_.userPicks(id);
    }
  }

  NoneWindow& window_;
  std::pair<Colour, Colour> usual_;
  bool shift_ = false, ctrl_ = false;
};

}  // namespace

std::unique_ptr<Platform> makePlatform(bool) {
  auto made = std::make_unique<NonePlatform>();
  current = made.get();
  return made;
}
std::unique_ptr<User> makeUser(Window& window) {
  return std::make_unique<NoneUser>(dynamic_cast<NoneWindow&>(window));
}
std::string scrapFile(const std::string& name) {
  static const Folder folder;
  return folder.file(name);
}
int clipboardWidth() {
  const auto& picture = current->clipboard().picture;
  return picture ? picture->width() : 0;
}
std::string clipboardSvg() { return current->clipboard().drawing.svg; }
Held held() { return heldOnLinux(); }

}  // namespace lorivan::contract
