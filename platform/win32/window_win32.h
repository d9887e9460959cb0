// The program's window: takes the system's messages apart, and puts what the program says into effect.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/dialogs.h"
#include "platform/win32/form.h"
#include "platform/win32/menu_bar.h"
#include "platform/win32/status_line.h"
#include "platform/window.h"

namespace lorivan::win32 {

inline constexpr UINT kStarted = WM_APP + 1;    // the window was shown for the first time
inline constexpr UINT kEntryLeft = WM_APP + 2;  // an entry lost the focus
inline constexpr UINT kResized = WM_APP + 3;    // pictures have new surfaces
inline constexpr UINT kColours = WM_APP + 4;    // the system's colours are others

class WindowWin32 final : public Window {
 public:
  static Result<std::unique_ptr<Window>> create(const WindowSpec& spec, const WindowEvents& events);
  WindowWin32(const WindowWin32&) = delete;
  WindowWin32& operator=(const WindowWin32&) = delete;
  ~WindowWin32() override;

  void setTitle(const std::string& title) override;
  void setStatus(const std::string& text) override;
  WindowPlace place() const override;
  void moveTo(int left, int top) override;
  void resizeTo(int width, int height) override;
  bool maximised() const override;
  void setMaximised(bool on) override;
  WindowPlace screen() const override;
  double scaling() const override { return metrics_.scale; }
  Colour faceColour() const override { return GetSysColor(COLOR_BTNFACE); }
  Colour textColour() const override { return GetSysColor(COLOR_BTNTEXT); }
  void show() override;
  void run() override;
  bool processEvents() override;
  void close() override;

  std::string text(ControlId control) const override { return form_.text(control); }
  void setText(ControlId control, const std::string& text) override { form_.setText(control, text); }
  bool checked(ControlId control) const override { return form_.checked(control); }
  void setChecked(ControlId control, bool on) override { form_.setChecked(control, on); }
  void setItems(ControlId list, const std::vector<std::string>& items) override {
    form_.setItems(list, items);
  }
  void setItemPictures(ControlId list, const std::vector<ItemPicture>& pictures) override {
    form_.setItemPictures(list, pictures);
  }
  int selected(ControlId list) const override { return form_.selected(list); }
  void select(ControlId list, int index) override { form_.select(list, index); }
  void focus(ControlId control) override { form_.focus(control); }
  ControlId focused() const override { return form_.find(GetFocus()); }
  void setEnabled(ControlId control, bool on) override { form_.setEnabled(control, on); }
  bool enabled(ControlId control) const override { return form_.enabled(control); }
  void setVisible(ControlId control, bool on) override { form_.setVisible(control, on); }
  bool visible(ControlId control) const override { return form_.visible(control); }
  void setColours(ControlId control, Colour background, Colour text) override {
    form_.setColours(control, background, text);
  }

  void setCommandEnabled(CommandId command, bool on) override { menu_.enable(command, on); }
  bool commandEnabled(CommandId command) const override { return menu_.enabled(command); }
  void setCommandChecked(CommandId command, bool on) override { menu_.check(command, on); }
  bool commandChecked(CommandId command) const override { return menu_.checked(command); }
  void setCommandText(CommandId command, const std::string& text) override { menu_.setText(command, text); }
  void setCommandVisible(CommandId command, bool on) override { menu_.setVisible(command, on); }

  Surface& surface(ControlId picture) override { return form_.picture(picture)->surface(); }
  void setPointer(ControlId picture, PointerShape shape) override {
    form_.picture(picture)->setPointer(shape);
  }
  void setBusy(bool on) override;

  void message(const std::string& text, const std::string& title, MessageIcon icon) override;
  bool confirm(const std::string& text, const std::string& title) override;
  SaveAnswer askToSave(const std::string& text, const std::string& title) override;
  std::string chooseFile(const FileDialogSpec& dialog) override;
  std::optional<Colour> chooseColour(Colour initial) override;
  std::optional<std::vector<OptionLine>> chooseOptions(const OptionDialogSpec& dialog) override;
  std::string inputBox(const std::string& prompt, const std::string& title,
                       const std::string& initial) override;
  Result<bool> print(const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw) override;

 private:
  WindowWin32(const WindowSpec& spec, const WindowEvents& events);
  Status make(const std::string& title);
  LayoutSize frameAround(LayoutSize client) const;
  void fitToScreen();

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wide, LPARAM argument);
  LRESULT handle(UINT message, WPARAM wide, LPARAM argument);
  void sized(WPARAM how);
  void tellResized();
  void coloursChanged();
  OwnedFont fitFormFont(int clientWidth, int clientHeight);
  void limitSize(MINMAXINFO& limits) const;
  void densityChanged(const RECT& proposal);
  void takeFont();
  void takeLeastFont(HFONT usual);
  void paintFrame();
  void activated(bool on);
  void giveFocusBack();
  void notified(int notification, ControlId control);
  void chosen(int identifier);
  void menuHighlighted(int identifier, UINT flags);
  void filesDropped(HDROP files);
  void drawItem(const DRAWITEMSTRUCT& item);
  LRESULT colourControl(UINT message, WPARAM wide, LPARAM argument);
  bool showBusyPointer() const;
  void closeAsked();
  void destroyed();

  void takeMessage(MSG& message);
  bool takeKey(const MSG& message);
  bool tellKey(WPARAM key, bool onPicture);
  bool takeWheel(const MSG& message);
  void followPointer(const MSG& message);
  void followFocus();
  void tellPointed(ControlId control);
  void moveFocus(WPARAM target, bool isWindow);
  void confirmEntry(ControlId entry);
  void entryFocused(ControlId entry);
  void entryLeft(ControlId entry);
  void confirmLeftEntry();
  bool isButtonHeld() const;
  void confirmPending();
  void pressButton(ControlId control);

  /// Calls what the program installed, if it did, and shows what that drew.
  template <class Event, class... Arguments>
  void tell(const Event& event, const Arguments&... arguments) {
    if (event) event(arguments...);
    form_.showDrawnPictures();
  }

  const WindowEvents& events_;
  MenuBar menu_;
  Form form_;
  ColourDialog colourDialog_;
  HWND window_ = nullptr;     // null once it is closed
  HWND lastFocus_ = nullptr;  // gets the focus back when the window becomes active
  StatusLine status_;
  OwnedFont font_;
  LayoutMetrics metrics_, leastMetrics_;
  OwnedFont formFont_;  // the same, larger in a large window and smaller in a small one
  LONG formFontHeight_ = 0;
  LayoutMetrics formMetrics_;
  ControlId pointed_ = -1;          // the control under the pointer, as told
  HWND pointedIn_ = nullptr;        // the window that will tell when the pointer leaves it
  HWND knownFocus_ = nullptr;       // that the program knows of
  ControlId leftEntry_ = -1;        // left, but not confirmed yet
  std::vector<ControlId> resized_;  // pictures with a new surface that the program does not know of
  int turned_ = 0;                  // of the wheel over the entry with the focus, less than a notch
  bool startsMaximised_ = false;
  bool shown_ = false, closed_ = false, busy_ = false, askingToClose_ = false;
};

}  // namespace lorivan::win32
