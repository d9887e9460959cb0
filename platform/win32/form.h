// The controls of the window, made from the control table: native ones, with their state, places and colours.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/common/layout.h"
#include "platform/win32/handles.h"
#include "platform/win32/identifiers.h"
#include "platform/win32/picture_view.h"
#include "platform/window.h"

namespace lorivan::win32 {

class Form {
 public:
  using MouseHandler = std::function<void(ControlId, const MouseEvent&)>;

  explicit Form(std::span<const ControlSpec> controls) : specs_(controls), states_(controls.size()) {}

  /// Makes all controls as children of `parent`.
  Status create(HWND parent, const MouseHandler& onMouse);
  /// The window has taken its children with it; surfaces and states stay.
  void forgetHandles();

  /// Takes the font and gives all controls their places; returns the pictures that changed their size.
  std::vector<ControlId> place(int clientWidth, int clientHeight, HFONT font, const LayoutMetrics& metrics);

  std::span<const ControlSpec> specs() const { return specs_; }
  HWND handle(ControlId control) const { return at(control).handle; }
  PictureView* picture(ControlId control) const { return at(control).picture.get(); }
  ControlKind kind(ControlId control) const { return specs_[control].kind; }
  /// The control with this window, or -1.
  ControlId find(HWND window) const;

  std::string text(ControlId control) const;
  void setText(ControlId control, const std::string& text);
  bool checked(ControlId control) const;
  void setChecked(ControlId control, bool on);
  /// The user's click on a check or radio: true when its state is another one since this was last asked.
  bool takeToggled(ControlId control);
  void setItems(ControlId list, const std::vector<std::string>& items);
  void setItemPictures(ControlId list, const std::vector<ItemPicture>& pictures);
  int selected(ControlId list) const;
  void select(ControlId list, int index);
  void focus(ControlId control);
  /// Gives the focus to the picture, or to the window itself; the program is not told.
  void focusPicture();
  void setEnabled(ControlId control, bool on);
  bool enabled(ControlId control) const;
  void setVisible(ControlId control, bool on);
  bool visible(ControlId control) const { return at(control).visible; }
  void setColours(ControlId control, Colour background, Colour text);

  /// While the program's own calls move the focus, of which it is not told.
  bool isMovingFocus() const { return movingFocus_; }
  /// The window that such a call gave it last.
  HWND movedTo() const { return movedTo_; }
  /// The control whose place holds a point of the window, shown but perhaps disabled; for a label the one
  /// that it names. -1 where there is none but a group or a large picture.
  ControlId controlAt(POINT point) const;
  const LayoutRect& largePicture() const { return largePicture_; }

  /// WM_CTLCOLOR...: the brush for a control with colours of its own, null for others.
  HBRUSH brushFor(HWND control, HDC context) const;
  /// WM_DRAWITEM of a colour box.
  void drawColourBox(const DRAWITEMSTRUCT& item) const;
  /// WM_DRAWITEM of a label: its text at the right end of its place, whole also where the font draws it wider
  /// than it says.
  void drawLabel(const DRAWITEMSTRUCT& item) const;
  /// WM_DRAWITEM of a list's item.
  void drawItem(const DRAWITEMSTRUCT& item) const;
  void showDrawnPictures();

 private:
  struct Colours {
    Colour background = 0, text = 0;
    OwnedBrush brush;
  };
  struct State {
    HWND handle = nullptr;
    std::unique_ptr<PictureView> picture;
    ControlId group = -1;
    bool enabled = true, visible = true;  // as told; a group's own state counts for its members, too
    bool wasChecked = false;
    LayoutRect place;
    std::optional<Colours> colours;
    std::vector<ItemPicture> pictures;  // of a list's items
  };

  State& at(ControlId control) { return states_[control]; }
  const State& at(ControlId control) const { return states_[control]; }
  ControlId groupOf(const ControlSpec& control) const;
  Status makeControl(ControlId control, HWND parent, const MouseHandler& onMouse);
  bool isPlaced(ControlId control) const;
  bool shown(ControlId control) const;
  void showState(ControlId control);
  void forMembers(ControlId group, void (Form::*act)(ControlId));
  void takeFont(ControlId control, HFONT font, const LayoutMetrics& metrics);
  void placeControl(ControlId control, const LayoutRect& rect, const LayoutMetrics& metrics);
  void moveFocus(HWND window);
  LayoutRect placeList(ControlId control, const LayoutRect& rect, const LayoutMetrics& metrics);
  void makeTips(HWND parent);
  std::string_view tipOf(ControlId control) const;
  void placeTip(ControlId control);

  std::span<const ControlSpec> specs_;
  std::vector<State> states_;
  HWND parent_ = nullptr;
  HWND tips_ = nullptr;  // owned by the parent
  LayoutRect largePicture_;
  HWND movedTo_ = nullptr;
  bool movingFocus_ = false;
};

}  // namespace lorivan::win32
