// Variations of the knot side by side in the place of its picture, one of them marked.
#pragma once

#include <string>
#include <vector>

#include "design/contact_sheet.h"
#include "design/variations.h"
#include "platform/platform.h"

namespace lorivan {

class VariationView {
 public:
  VariationView(Platform& platform, Window& window) : platform_(platform), window_(window) {}

  /// Marks the one that is the document, else the first.
  void take(std::vector<Variation> variations, const Document& document, std::string step);
  /// Each knot is made anew, in a few milliseconds, rather than kept.
  void paint();
  /// The sheet without the mark, as a file.
  Result<std::string> svg() const;
  /// Hides the mark as long as it is true.
  void setPlain(bool plain);

  const Variation& marked() const { return variations_[mark_]; }
  std::size_t count() const { return variations_.size(); }
  /// The name of the step that adopts the marked one; empty: its caption.
  std::string stepName() const { return step_.empty() ? marked().caption : step_; }
  bool random() const { return !step_.empty(); }

  /// Marks the one at a pixel of the picture; false when there is none.
  bool markAt(int x, int y);
  /// Whether the key moves the mark.
  bool moveMark(Key key);

 private:
  void drawAll(Surface& surface, const SheetLayout& layout) const;
  void drawMark(Colour colour);
  void mark(int place);
  SheetLayout layoutOn(const Surface& surface) const;

  Platform& platform_;
  Window& window_;
  std::vector<Variation> variations_;
  std::string step_;
  Colour ground_ = 0xFFFFFF;
  int mark_ = 0;
};

}  // namespace lorivan
