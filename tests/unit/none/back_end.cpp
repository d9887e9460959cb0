// The platform object without a screen and its user for the tests that all back ends share.
#include "unit/platform_contract/back_end.h"

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
    const std::map<std::string, int> steps = {{"Up", 1}, {"Down", -1}, {"PgUp", 10}, {"PgDn", -10}};
    if (keys == "Return") return window_.userPressesEnter();
    if (keys == "Escape") return window_.userEscapes();
    if (keys == "Tab") return tab();
    if (steps.contains(keys)) return window_.userSteps(window_.focused(), steps.at(keys));
    if (keys != "Space") pressShortcut(keys);
  }
  void tab() {
    ControlId next = window_.focused() + 1;
    while (formTable()[next].kind == ControlKind::label || !window_.enabled(next)) ++next;
    window_.userFocuses(next);
  }
  void click(ControlId control) override { window_.userClicks(control); }
  void hold(ControlId) override { unknown("holding a button"); }
  void letGo(ControlId, bool) override { unknown("letting a button go"); }
  void pick(CommandId command) override { window_.userPicks(command); }
  std::string menuText(CommandId command) const override {
    return window_.commandVisible(command) ? window_.commandText(command) : std::string();
  }
  void wheel(ControlId, int) override { unknown("turning the wheel"); }
  void mouse(ControlId picture, MouseAction action, int button, int x, int y) override {
    if (action == MouseAction::doubleClick) window_.userMouse(picture, {MouseAction::press, button, x, y});
    window_.userMouse(picture, {action, button, x, y});
  }
  void enlarge(int width, int height) override {
    window_.resizeTo(window_.place().width + width, window_.place().height + height);
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

}  // namespace lorivan::contract
