// An open window with the program's own form, for the tests that all back ends share.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "unit/platform_contract/back_end.h"
#include "window/commands.h"
#include "window/form_table.h"

namespace lorivan::contract {

using Told = std::vector<std::string>;

inline constexpr ControlId kX = controlId("vtXNo"), kY = controlId("vtYNo"), kList = controlId("lstType"),
                           kGrid = controlId("picGrid"), kButton = controlId("cmd2D"),
                           kBox = controlId("chkMirror"), kPov = controlId("optPOV"),
                           kStl = controlId("optSTL"), kBasic = controlId("fraBasic");

/// Opens the window on the large grid picture, with a button in focus, and writes down what is told.
class WindowFixture : public testing::Test {
 protected:
  WindowFixture() {
    const auto note = [this](const char* what) {
      return [this, what](ControlId control) {
        told_.push_back(std::string(what) + std::string(formTable()[control].name));
      };
    };
    events_.confirmed = note("confirmed ");
    events_.left = note("left ");
    events_.clicked = note("clicked ");
    events_.changed = note("changed ");
    events_.resized = note("resized ");
    events_.escaped = note("escaped ");
    events_.pointed = [this](ControlId control) { pointed_ = control; };
    events_.stepped = [this](ControlId control, int by) {
      told_.push_back("stepped " + std::string(formTable()[control].name) + " " + std::to_string(by));
    };
    events_.coloursChanged = [this] { told_.emplace_back("colours"); };
    events_.command = [this](CommandId command) { told_.emplace_back(contractCommands()[command].name); };
    events_.mouse = [this](ControlId, const MouseEvent& e) {
      constexpr const char* actions[] = {"press ", "move ", "release ", "leave ", "wheel ", "doubleClick "};
      if (e.steps != 0) told_.push_back("wheel " + std::to_string(e.steps));
      if (e.button != 0)  // on a real screen a pointer may stand anywhere
        told_.push_back(actions[static_cast<int>(e.action)] + std::to_string(e.button) + " " +
                        std::to_string(e.x) + "," + std::to_string(e.y));
    };
    events_.key = [this](const KeyEvent& e) {
      if (takesKeys_) told_.push_back("key " + std::to_string(static_cast<int>(e.key)));
      return takesKeys_;
    };
    events_.fileDropped = [this](const std::string& path) { told_.push_back("dropped " + path); };
    events_.started = [this] { told_.emplace_back("started"); };
    events_.closeQuery = [this] { return told_.emplace_back("closing?"), mayClose_; };
    auto made = platform_->createWindow({formTable(), contractCommands(), "Lorivan contract"}, events_);
    EXPECT_TRUE(made) << (made ? "" : made.error().message);
    window_ = std::move(*made);
    for (const ControlId large : {controlId("picKnot"), controlId("picShape")})
      window_->setVisible(large, false);
    window_->setVisible(controlId("cmd3DView"), false);
    window_->setItems(kList, {"one", "two", "three"});
    window_->select(kList, 0);
    window_->show();
    user_ = makeUser(*window_);
    const Told beginning = told();  // a small screen may have changed its size
    EXPECT_NE(std::ranges::find(beginning, "started"), beginning.end());
    user_->focus(kButton);
    told();
  }

  Told told() {
    window_->processEvents();
    return std::exchange(told_, {});
  }

  std::unique_ptr<Platform> platform_ = makePlatform();
  WindowEvents events_;
  std::unique_ptr<Window> window_;
  std::unique_ptr<User> user_;
  Told told_;
  ControlId pointed_ = -1;
  bool takesKeys_ = false, mayClose_ = true;
};

}  // namespace lorivan::contract
