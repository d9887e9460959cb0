// Copies of unsaved knots that outlive a crash.
//
// Each running program keeps its copy in a place of its own in the user's folder, which it holds by a claim
// on a lock file. A copy whose place nobody holds was left by a program that did not end in order.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/platform.h"

namespace lorivan {

/// The file that holds the knot shown last, from one start to the next; empty without a user's folder.
inline std::string lastKnotFile(const std::string& userFolder) {
  return userFolder.empty() ? std::string() : userFolder + "/last.qzd";
}

class Recovery {
 public:
  /// Claims a place of its own. Without a user's folder nothing is kept.
  explicit Recovery(Platform& platform);

  /// The text of a copy that was left behind; nothing when there is none. It moves to the own place, so that
  /// it outlives the question what is to become of it, until keep() or clear().
  std::optional<std::string> takeLeft();

  /// Keeps the text aside. The copy before is replaced only by a whole one.
  void keep(const std::string& text);
  /// There is nothing to be kept.
  void clear();

 private:
  std::string place(int number, const char* extension) const;

  Platform& platform_;
  std::string folder_;
  int own_ = 0;  // number of the own place; 0: none
  std::unique_ptr<FileClaim> claim_;
  std::string kept_;
};

}  // namespace lorivan
