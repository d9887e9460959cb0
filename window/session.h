// The document that is open: its history, the files it came from, and the copy that a crash leaves behind.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "design/document.h"
#include "design/history.h"
#include "window/recovery.h"

namespace lorivan {

/// A document together with where it came from.
struct Opened {
  Document document;
  int origin = 0;
  bool operator==(const Opened&) const = default;
};
inline std::size_t sizeBeside(const Opened& step, const Opened& neighbour) {
  return sizeBeside(step.document, neighbour.document);
}

class Session {
 public:
  Session(Platform& platform, Document floor);

  const Document& document() const { return history_.now().document; }
  /// The open file's full path; empty when there is none.
  const std::string& path() const { return origins_[origin()].path; }
  /// Whether there are changes since the document was saved, loaded or made.
  bool modified() const { return document() != origins_[origin()].basis; }

  /// One step of the user's. `run`: see History::add.
  void step(const std::string& name, Document next, std::string_view run = {});
  /// The step leads to another knot that came from a file, or, without a path, from nowhere.
  void begin(const std::string& name, Document next, const std::string& path = {});
  void endRun() { history_.endRun(); }
  /// The document was written to this file, which is the open one from now on.
  void saved(const std::string& path);

  /// The document is known by this name from now on, whether or not the file holds all of it.
  void named(const std::string& path) { origins_[origin()].path = path; }

  const History<Opened>& history() const { return history_; }
  void undo();
  void redo();

  /// A knot that a crash left behind becomes the document; it counts as unsaved.
  bool recover(const std::string& text);
  Recovery& recovery() { return recovery_; }

 private:
  struct Origin {
    std::string path;
    Document basis;  // as saved, loaded or made
  };
  std::size_t origin() const { return static_cast<std::size_t>(history_.now().origin); }
  void keepAside();

  History<Opened> history_;
  std::vector<Origin> origins_;
  Recovery recovery_;
};

}  // namespace lorivan
