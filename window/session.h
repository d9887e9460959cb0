// The document that is open: its history, the files it came from, and the copy that a crash leaves behind.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "design/document.h"
#include "design/history.h"
#include "window/recovery.h"

namespace lorivan {

/// Where documents came from. The steps that go on from one share it, and it goes with the last of them.
struct Origin {
  std::string path;
  Document basis;            // as saved, loaded or made
  bool isStored = true;      // the basis can be had again without a copy kept aside
  std::string caption = {};  // the file named last that holds a part of it; empty: the path
};

/// A document together with where it came from.
struct Opened {
  Document document;
  std::shared_ptr<Origin> origin;
  bool fromSheet = false;  // the step that led here was made on the shape's sheet
  bool operator==(const Opened& other) const { return document == other.document && origin == other.origin; }
};
inline std::size_t sizeBeside(const Opened& step, const Opened& neighbour) {
  return sizeBeside(step.document, neighbour.document);
}

class Session {
 public:
  Session(Platform& platform, Document floor);

  const Document& document() const { return history_.now().document; }
  /// The open file's full path; empty when there is none.
  const std::string& path() const { return history_.now().origin->path; }
  /// What the caption shows: usually the path.
  const std::string& caption() const;
  /// Whether there are changes since the document was saved, loaded or made.
  bool modified() const { return document() != history_.now().origin->basis; }

  /// Steps are made on the shape's sheet from now on, or are not.
  void setOnSheet(bool on) { onSheet_ = on; }
  /// One step of the user's. `run`: see History::add.
  void step(const std::string& name, Document next, std::string_view run = {});
  /// The step leads to another knot that came from a file, or, without a path, from nowhere: then changes
  /// that were not saved before are not saved yet.
  void begin(const std::string& name, Document next, const std::string& path = {});
  /// The next step joins none before it, and what the run led to is kept aside.
  void endRun();
  /// The document was written to this file, which is the open one from now on.
  void saved(const std::string& path);

  /// A part of the document was written to this file, whose name the caption shows from now on.
  void named(const std::string& path) { history_.now().origin->caption = path; }

  const History<Opened>& history() const { return history_; }
  /// Whether the step that was taken back was made on the shape's sheet.
  bool undo();
  void redo();

  /// A knot that a crash left behind becomes the document; it counts as unsaved.
  bool recover(const std::string& text);
  Recovery& recovery() { return recovery_; }

  /// Writes the copy that a crash leaves, or removes it where there is nothing to keep.
  void keepAside();

 private:
  History<Opened> history_;
  std::vector<std::weak_ptr<Origin>> origins_;
  std::string run_;  // of the step made last
  bool onSheet_ = false;
  Recovery recovery_;
};

}  // namespace lorivan
