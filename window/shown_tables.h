// The tables that a window is made from, in the language that is spoken when they are made.
#pragma once

#include <deque>
#include <span>
#include <string>
#include <vector>

#include "platform/window.h"

namespace lorivan {

class ShownTables {
 public:
  ShownTables();
  ShownTables(const ShownTables&) = delete;
  ShownTables& operator=(const ShownTables&) = delete;

  std::span<const ControlSpec> controls() const { return controls_; }
  std::span<const CommandSpec> commands() const { return commands_; }

 private:
  /// Puts the translation in the place of a text.
  void translate(std::string_view& text);

  std::deque<std::string> texts_;  // the rows point into it
  std::vector<ControlSpec> controls_;
  std::vector<CommandSpec> commands_;
};

}  // namespace lorivan
