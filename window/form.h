// The fields of the window: what they show of a document, and what the user put into them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/valid_text.h"
#include "design/document.h"
#include "platform/platform.h"
#include "window/form_table.h"

namespace lorivan {

class Form {
 public:
  /// Both must outlive it.
  Form(Window& window, Platform& platform);

  /// Shows every field, check box, the shape and the colours of a document. With `record` new texts become
  /// entries of the fields' own histories.
  void show(const Document& document, bool record = true);
  /// What stands in the form now, every text as its field corrected it.
  KnotFields read() const;
  /// The fields' own histories begin with what they show now.
  void startHistories();

  struct Confirmed {
    std::string text;        // what the field shows now
    std::string correction;  // a sentence when that is another number than was typed; else empty
    bool changed = false;    // it is not what the document has
  };
  /// Enter was pressed in the field, or it was left.
  Confirmed confirm(Param p);
  /// The field loses the focus: its text is corrected, and confirm() follows.
  void left(Param p);
  /// Fields with a text that was typed and not confirmed; with `undone`, those that undoLatest() stepped back
  /// as well.
  std::vector<Param> pending(bool undone) const;
  /// Whether confirm() would find something new in the field.
  bool isNew(Param p) const;
  /// Forgets what was typed into a field that was gone through only.
  void forgetTyped(Param p) { field(p).typed.clear(); }
  /// The text confirmed last is to be in no history.
  void forgetLatest(Param p);
  /// Escape: shows the document's text again.
  void restore(Param p);
  /// The text so many steps on from what stands in the field, within its limits.
  std::string stepped(Param p, int steps) const;

  /// Steps the field that was changed last back by one entry of its own history; nothing is applied.
  std::optional<Param> undoLatest();

  const std::string& text(Param p) const { return field(p).text.Value(); }
  bool checked(Check c) const {
    return checkControl(c) < 0 ? shown_.check(c) : window_.checked(checkControl(c));
  }
  Shape shape() const;

 private:
  struct Field {
    ValidText text;
    std::string typed = {};  // what the user left in it, until it is confirmed; empty: nothing
  };
  Field& field(Param p) { return fields_[static_cast<std::size_t>(p)]; }
  const Field& field(Param p) const { return fields_[static_cast<std::size_t>(p)]; }
  void setText(Param p, const std::string& text);
  void showColours();
  void showOffset();
  void showAnimation();
  void showWrap();

  Window& window_;
  std::vector<Field> fields_;
  KnotFields shown_;  // the document's, as shown last
};

}  // namespace lorivan
