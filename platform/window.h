// The window contract. The program describes its window as tables; a back end turns rows into real widgets,
// reports what the user does through WindowEvents, and does what the program says through Window. It knows
// nothing of what the controls mean.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "platform/print_page.h"
#include "platform/services.h"
#include "platform/surface.h"

namespace lorivan {

enum class ControlKind {
  group,      // a titled frame
  label,      // a text; its mnemonic goes to the control in the next row of the table
  number,     // a single-line entry; selects all its text when it gets the focus
  text,       // a single line that the user cannot edit
  check,      // on or off
  radio,      // one of the radios of its group
  list,       // a drop-down list of texts
  button,     // a push button
  colourBox,  // a small button filled with its background colour
  picture,    // a surface of its own, see Window::surface
};

/// First row of the strip under the pictures; controls without a group in smaller rows stand on the panel
/// beside them.
inline constexpr int kStripRow = 100;

/// A place on the grid of the enclosing group, or of the window's panels for what has no group. Units are the
/// layout's cells: platform/common/layout.h tells where they lie and how they become pixels.
struct CellPlace {
  int column = 0, row = 0, columns = 1, rows = 1;
};

/// One row of the form table. All texts live as long as the program.
struct ControlSpec {
  std::string_view name;  // unique, as in the code: "vtXNo"
  ControlKind kind = ControlKind::label;
  std::string_view caption;  // "&" before the mnemonic letter
  std::string_view tooltip;  // of a picture without a group: its spoken name alone
  std::string_view group;    // name of the enclosing group; empty: the window itself
  CellPlace place;
};

/// One row of the command table: a menu item, in the menu's order.
struct CommandSpec {
  std::string_view name;      // "mnuFileSave"
  std::string_view menu;      // title of the top-level menu it stands in: "&File"
  std::string_view text;      // "&Save knot file"
  std::string_view shortcut;  // "Ctrl+S", empty for none
  bool checkable = false;
  bool separatorBefore = false;
  // Title of a submenu of `menu` that the row stands in. Consecutive rows with the same title share it; it is
  // disabled while none of its rows is visible.
  std::string_view submenu = {};
  std::string_view alternative = {};  // a second shortcut, not shown: "Ctrl+Shift+Z" beside "Ctrl+Y"
};

/// Rows are named by their place in the table that the window was made with.
using ControlId = int;
using CommandId = int;
inline constexpr CommandId kNoCommand = -1;

enum class MouseAction { press, move, release, leave, wheel, doubleClick };

/// Buttons are 0 none, 1 left, 2 right, 3 middle. A press is always followed by its release, also when the
/// pointer left the picture in between, and the button of the moves in between is the pressed one. The second
/// press of a double click is a press like the first, and `doubleClick` follows it.
struct MouseEvent {
  MouseAction action = MouseAction::move;
  int button = 0;
  int x = 0, y = 0;  // pixels of the picture's surface
  bool shift = false, ctrl = false, alt = false;
  int steps = 0;  // wheel: the notches it was turned, away from the user above 0
};

enum class Key { other, left, up, right, down, escape, plus, minus, space, enter };

struct KeyEvent {
  Key key = Key::other;
  bool shift = false, ctrl = false, alt = false;
  bool onPicture = false;  // a picture has the focus, or nothing that has a use for keys
};

enum class PointerShape { arrow, hand, busy };

/// A further choice of a file dialog beside its first one.
struct FileFilter {
  std::string label;       // "SVG drawings"
  std::string extensions;  // the first is added to names without one while this is chosen
};

struct FileDialogSpec {
  bool save = false;
  std::string title;
  std::string filterLabel;  // "Lorivan files"
  std::string extensions;   // "qzd" or, for several, "bmp png jpg"
  std::string initialName;  // full path that the name field starts with: "<folder>/*.qzd"
  std::string defaultExtension;
  bool overwritePrompt = false;
  std::vector<FileFilter> more = {};
};

/// One line of a dialog of options: a box to check, or an entry behind its label.
struct OptionLine {
  std::string label;  // "&" before the mnemonic letter
  bool isBox = false;
  std::string text = {};  // of the entry
  bool on = false;        // of the box
};

/// A line of such a dialog that cannot be taken, by its place, and why.
struct WrongLine {
  std::size_t place = 0;
  std::string why;
};

struct OptionDialogSpec {
  std::string title, hint;  // the hint stands above the lines
  std::vector<OptionLine> lines;
  /// Asked when the user is done. The dialog stays open while a line is wrong, shows the reason in the place
  /// of the hint, and leads to the line. Empty: everything can be taken.
  std::function<std::optional<WrongLine>(const std::vector<OptionLine>&)> check = {};
};

/// A small picture beside the text of a list's item, in whatever colour the text has: how far each pixel is
/// covered, 0 to 255, in rows from the top.
struct ItemPicture {
  int width = 0, height = 0;
  std::vector<std::uint8_t> cover;
};

/// A page to be printed. Orientation and paper are what the dialog begins with; the user may choose others.
struct PrintSpec {
  std::string title;  // of the job in the printer's queue
  bool landscape = false;
};

enum class MessageIcon { none, critical };

enum class SaveAnswer { save, discard, cancel };

/// What the user did. Empty members are not called. Every call arrives on the user-interface thread, from
/// Window::run or Window::processEvents.
struct WindowEvents {
  std::function<void(ControlId)> confirmed;  // number: Enter was pressed or the field was left
  std::function<void(ControlId)> clicked;    // button, colourBox
  std::function<void(ControlId)> changed;    // check, radio (the one now chosen), list
  std::function<void(CommandId)> command;    // menu item or its shortcut
  // A menu item came under the pointer or the keys, or, with kNoCommand, none is any more.
  std::function<void(CommandId)> highlighted;
  std::function<void(ControlId, const MouseEvent&)> mouse;  // picture
  std::function<bool(const KeyEvent&)> key;  // true: taken; asked before the focused control sees it,
                                             // except when an entry field needs the key itself
  std::function<void(ControlId)> resized;    // picture: it has a new, cleared surface
  std::function<void(const std::string&)> fileDropped;
  std::function<bool()> closeQuery;     // true: the window may close
  std::function<void()> started;        // once, right after the window was first shown
  std::function<void(ControlId)> left;  // number: it loses the focus; `confirmed` follows, before all else
  // A number with the focus is to change: 1 and -1 for Up and Down, 10 and -10 for Page Up and Page Down
  // (each without Shift, Ctrl and Alt), and as many as the notches that the wheel was turned over it. The
  // field itself does nothing with them, and `key` is not asked for them.
  std::function<void(ControlId, int)> stepped;
  std::function<void(ControlId)> escaped;  // number: Escape was pressed in it, and `key` did not take it
  std::function<void()> coloursChanged;    // faceColour() and textColour() are others
  // The pointer came over a control, be it disabled, or the user gave it the focus; for a label it is the
  // control that it names. -1: the pointer left it for a large picture or for nothing.
  std::function<void(ControlId)> pointed;
};

struct WindowSpec {
  std::span<const ControlSpec> controls;
  std::span<const CommandSpec> commands;
  std::string title;
};

struct WindowPlace {
  int left = 0, top = 0, width = 0, height = 0;  // outer frame, device pixels
};

/// A program's only window. Setting a value, and moving the focus, from code raises no event.
class Window {
 public:
  virtual ~Window() = default;

  virtual void setTitle(const std::string& title) = 0;
  virtual void setStatus(const std::string& text) = 0;
  /// The normal frame, also while the window is maximised or minimised.
  virtual WindowPlace place() const = 0;
  virtual void moveTo(int left, int top) = 0;
  /// Gives the frame another size, as far as the screen has room for it, and moves it back onto the screen;
  /// never below the window's smallest size. Nothing happens while the window is maximised.
  virtual void resizeTo(int width, int height) = 0;
  virtual bool maximised() const = 0;
  virtual void setMaximised(bool on) = 0;
  /// Size of the screen that the window is on, device pixels.
  virtual WindowPlace screen() const = 0;
  /// Device pixels per 96-dpi pixel: 1, 1.25, 2 ...
  virtual double scaling() const = 0;
  /// The window's own background and the colour of the texts on it; see WindowEvents::coloursChanged.
  virtual Colour faceColour() const = 0;
  virtual Colour textColour() const = 0;
  virtual void show() = 0;
  /// Handles events until the window closes.
  virtual void run() = 0;
  /// Handles the events that wait, then returns. False when the window was closed meanwhile.
  virtual bool processEvents() = 0;
  /// Closes the window after asking closeQuery.
  virtual void close() = 0;

  virtual std::string text(ControlId control) const = 0;
  virtual void setText(ControlId control,
                       const std::string& text) = 0;  // also captions of buttons and labels
  virtual bool checked(ControlId control) const = 0;  // check, radio
  virtual void setChecked(ControlId control, bool on) = 0;
  virtual void setItems(ControlId list, const std::vector<std::string>& items) = 0;
  /// Pictures beside the items, as many as there are, or none. They are scaled to the height of a line.
  virtual void setItemPictures(ControlId list, const std::vector<ItemPicture>& pictures) = 0;
  virtual int selected(ControlId list) const = 0;  // -1: none
  virtual void select(ControlId list, int index) = 0;
  /// Gives a control the focus, and its entry is selected as a whole. Nothing happens when it cannot be used.
  virtual void focus(ControlId control) = 0;
  /// The control with the focus; -1 when none has it.
  virtual ControlId focused() const = 0;
  /// What loses the focus by being disabled or hidden leaves it to the large picture, where Space and Enter
  /// press nothing.
  virtual void setEnabled(ControlId control, bool on) = 0;
  virtual bool enabled(ControlId control) const = 0;
  virtual void setVisible(ControlId control, bool on) = 0;
  virtual bool visible(ControlId control) const = 0;
  /// Background and text colour of a number, text or colourBox control.
  virtual void setColours(ControlId control, Colour background, Colour text) = 0;

  virtual void setCommandEnabled(CommandId command, bool on) = 0;
  virtual bool commandEnabled(CommandId command) const = 0;
  virtual void setCommandChecked(CommandId command, bool on) = 0;
  virtual bool commandChecked(CommandId command) const = 0;
  /// "&" before the mnemonic letter; the shortcut stays beside it.
  virtual void setCommandText(CommandId command, const std::string& text) = 0;
  /// What is not visible cannot be chosen by its shortcut either. Separators with nothing between them are
  /// shown as one, and none at a menu's ends.
  virtual void setCommandVisible(CommandId command, bool on) = 0;

  /// The picture's memory surface, in device pixels, always 5 wide to 4 high for the large pictures. What is
  /// drawn on it stays and is shown at the next refresh of the surface or return to the event loop.
  virtual Surface& surface(ControlId picture) = 0;
  virtual void setPointer(ControlId picture, PointerShape shape) = 0;
  /// The hourglass over the whole window while `on`.
  virtual void setBusy(bool on) = 0;

  // Modal dialogs.
  virtual void message(const std::string& text, const std::string& title, MessageIcon icon) = 0;
  virtual bool confirm(const std::string& text, const std::string& title) = 0;  // OK: true, Cancel: false
  /// "&Save", "&Don't save", "Cancel".
  virtual SaveAnswer askToSave(const std::string& text, const std::string& title) = 0;
  /// Full path of the chosen file, or an empty text when the user cancelled.
  virtual std::string chooseFile(const FileDialogSpec& dialog) = 0;
  virtual std::optional<Colour> chooseColour(Colour initial) = 0;
  /// The lines as the user left them, or nothing when the user cancelled.
  virtual std::optional<std::vector<OptionLine>> chooseOptions(const OptionDialogSpec& dialog) = 0;
  /// The text entered, or an empty text when the user cancelled.
  virtual std::string inputBox(const std::string& prompt, const std::string& title,
                               const std::string& initial) = 0;
  /// Asks for a printer and prints what `draw` draws on its page. False when the user cancelled; nothing is
  /// printed then, nor when `draw` fails, whose error is passed on.
  virtual Result<bool> print(const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw) = 0;
};

}  // namespace lorivan
