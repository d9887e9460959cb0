// A window without a screen: the state of every control of its tables, and a user that a driver plays.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/none/recording_surface.h"
#include "platform/window.h"

namespace lorivan {

enum class DialogKind { message, confirm, save, file, colour, input, options, print };

/// A dialog that was shown.
struct AskedDialog {
  DialogKind kind = DialogKind::message;
  std::string text, title, initial;
  MessageIcon icon = MessageIcon::none;
  FileDialogSpec file;
  Colour colour = 0;
  std::vector<OptionLine> lines = {};
};

/// Answers waiting for the dialogs to come, in order, and what was asked so far. A dialog that finds no
/// answer of its kind at the front throws std::logic_error: nobody is there to answer it.
class DialogQueue {
 public:
  void answerMessage() { answers_.push_back({DialogKind::message, {}, {}, false}); }
  void answerConfirm(bool ok) { answers_.push_back({DialogKind::confirm, {}, {}, ok}); }
  void answerSave(SaveAnswer answer) { answers_.push_back({DialogKind::save, {}, {}, false, answer}); }
  /// A full path; empty: cancelled.
  void answerFile(std::string path) { answers_.push_back({DialogKind::file, std::move(path), {}, false}); }
  void answerColour(std::optional<Colour> c) { answers_.push_back({DialogKind::colour, {}, c, false}); }
  void answerPrint(bool ok) { answers_.push_back({DialogKind::print, {}, {}, ok}); }
  void answerInput(std::string text) { answers_.push_back({DialogKind::input, std::move(text), {}, false}); }
  /// What is typed into the entries and what the boxes become, in order; nothing: cancelled.
  void answerOptions(std::optional<std::vector<OptionLine>> lines) {
    answers_.push_back({DialogKind::options, {}, {}, false, SaveAnswer::cancel, std::move(lines)});
  }

  struct Answer {
    DialogKind kind = DialogKind::message;
    std::string text;
    std::optional<Colour> colour;
    bool ok = false;
    SaveAnswer save = SaveAnswer::cancel;
    std::optional<std::vector<OptionLine>> lines = {};
  };
  /// Answers the dialogs that come while no answer waits.
  std::function<Answer(const AskedDialog&)> otherwise;

  /// Dialogs shown since the queue was made or forget() was called.
  const std::vector<AskedDialog>& asked() const { return asked_; }
  void forget() { asked_.clear(); }
  bool allAnswersUsed() const { return answers_.empty(); }

 private:
  friend class NoneWindow;
  Answer take(AskedDialog asked);

  std::deque<Answer> answers_;
  std::vector<AskedDialog> asked_;
};

/// An A4 page on its way to paper: what was drawn on it, and where pictures were placed.
class NonePage final : public PrintPage {
 public:
  explicit NonePage(bool landscape)
      : surface_(landscape ? kLong : kShort, landscape ? kShort : kLong, false) {}
  RecordingSurface& surface() override { return surface_; }
  const RecordingSurface& drawn() const { return surface_; }
  double dotsPerMillimetre() const override { return 4; }
  Status place(Surface& picture, PointI corner, int width, int height) override;

  struct Placed {
    int pixels = 0;  // across
    PointI corner;
    int width = 0, height = 0;
  };
  std::vector<Placed> placed;

 private:
  static constexpr int kLong = 277 * 4, kShort = 190 * 4;  // with margins of 10 millimetres
  RecordingSurface surface_;
};

/// Pictures outside of groups are the large ones; userResizes() sets their width. The user's actions throw
/// std::logic_error when no person could do them: a click on a disabled button, a choice outside the list.
class NoneWindow final : public Window {
 public:
  NoneWindow(const WindowSpec& spec, const WindowEvents& events, DialogQueue& dialogs, WindowPlace screen);
  ~NoneWindow() override;

  void setTitle(const std::string& title) override { title_ = title; }
  void setStatus(const std::string& text) override { status_ = text; }
  WindowPlace place() const override { return place_; }
  void moveTo(int left, int top) override;
  void resizeTo(int width, int height) override;
  bool maximised() const override { return maximised_; }
  void setMaximised(bool on) override { maximised_ = on; }
  WindowPlace screen() const override { return screen_; }
  double scaling() const override { return 1; }
  Colour faceColour() const override { return face_; }
  Colour textColour() const override { return ink_; }
  void show() override;
  /// Handles what waits; returns when nothing more does, since no more user comes.
  void run() override { processEvents(); }
  bool processEvents() override;
  void close() override;

  std::string text(ControlId control) const override;
  void setText(ControlId control, const std::string& text) override { at(control).text = text; }
  bool checked(ControlId control) const override { return at(control).on; }
  void setChecked(ControlId control, bool on) override;
  void setItems(ControlId list, const std::vector<std::string>& items) override;
  void setItemPictures(ControlId list, const std::vector<ItemPicture>& pictures) override {
    at(list).pictures = pictures;
  }
  int selected(ControlId list) const override { return at(list).selected; }
  void select(ControlId list, int index) override;
  void focus(ControlId control) override;
  ControlId focused() const override { return focus_; }
  void setEnabled(ControlId control, bool on) override;
  bool enabled(ControlId control) const override { return at(control).enabled; }
  void setVisible(ControlId control, bool on) override;
  bool visible(ControlId control) const override { return at(control).visible; }
  void setColours(ControlId control, Colour background, Colour text) override;
  void setCommandEnabled(CommandId command, bool on) override { command_(command).enabled = on; }
  bool commandEnabled(CommandId command) const override { return command_(command).enabled; }
  void setCommandChecked(CommandId command, bool on) override { command_(command).on = on; }
  bool commandChecked(CommandId command) const override { return command_(command).on; }
  void setCommandText(CommandId command, const std::string& text) override { command_(command).text = text; }
  void setCommandVisible(CommandId command, bool on) override { command_(command).visible = on; }

  RecordingSurface& surface(ControlId picture) override;
  void setPointer(ControlId picture, PointerShape shape) override { at(picture).pointer = shape; }
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

  // What a driver sees.
  const std::string& title() const { return title_; }
  const std::string& status() const { return status_; }
  bool shown() const { return shown_; }
  bool closed() const { return closed_; }
  bool busy() const { return busy_; }
  /// How often the hourglass was shown.
  int busyTimes() const { return busyTimes_; }
  Colour background(ControlId control) const { return at(control).background; }
  Colour textColour(ControlId control) const { return at(control).textColour; }
  PointerShape pointer(ControlId picture) const { return at(picture).pointer; }
  const std::string& commandText(CommandId command) const { return command_(command).text; }
  bool commandVisible(CommandId command) const { return command_(command).visible; }
  const std::vector<std::string>& items(ControlId list) const { return at(list).items; }
  const std::vector<ItemPicture>& itemPictures(ControlId list) const { return at(list).pictures; }
  /// The page printed last; null when there is none.
  const NonePage* printed() const { return printed_.get(); }
  /// Row of a name in the tables; throws when there is none.
  ControlId control(std::string_view name) const;
  CommandId command(std::string_view name) const;

  // What the user does. Everything but focus changes and typing raises the event at once.
  /// Moves the focus; a number field that loses it is confirmed.
  void userFocuses(ControlId control);
  /// Replaces the text of a number field, which gets the focus. Not confirmed yet.
  void userTypes(ControlId control, const std::string& text);
  void userPressesEnter();
  /// Up, Down, Page Up, Page Down or the wheel, in a number field, which gets the focus.
  void userSteps(ControlId control, int by);
  /// Escape, to what has the focus.
  void userEscapes();
  /// Types and presses Enter.
  void userEnters(ControlId control, const std::string& text);
  /// A button, colour box, check box or radio.
  void userClicks(ControlId control);
  void userChooses(ControlId list, int index);
  void userPicks(CommandId command);
  /// The pointer came over a menu item, or, with kNoCommand, left the menu.
  void userHighlights(CommandId command);
  /// The pointer came over a control, or, with -1, left it.
  void userPoints(ControlId control);
  bool userPresses(const KeyEvent& key);
  void userMouse(ControlId picture, const MouseEvent& event);
  /// Press and release of a button at one place.
  void userClicksAt(ControlId picture, int button, int x, int y);
  void userDrops(const std::string& path);
  void userCloses() { close(); }
  /// The large pictures become `width` pixels wide.
  void userResizes(int width);
  /// The desktop becomes dark, or light again.
  void userColours(Colour face, Colour text);
  /// Something to happen at the next processEvents() or run().
  void later(std::function<void()> action) { waiting_.push_back(std::move(action)); }

  /// Called at the beginning of every processEvents() and run(), for actions at a certain time.
  std::function<void()> onEvents;
  /// Called when the window is destroyed.
  std::function<void()> onDestroyed;

 private:
  struct Control {
    std::string text;
    bool on = false, enabled = true, visible = true;
    std::vector<std::string> items;
    std::vector<ItemPicture> pictures;
    int selected = -1;
    Colour background = 0xFFFFFF, textColour = 0;
    PointerShape pointer = PointerShape::arrow;
    std::unique_ptr<RecordingSurface> surface;
  };
  struct Command {
    std::string text;
    bool enabled = true, on = false, visible = true;
  };

  Control& at(ControlId control);
  const Control& at(ControlId control) const;
  Command& command_(CommandId command);
  const Command& command_(CommandId command) const;
  const ControlSpec& spec(ControlId control) const;
  bool usable(ControlId control) const;
  void passFocusOn();
  /// Throws unless a person could use the control now.
  void reach(ControlId control) const;
  void chooseRadio(ControlId control);

  std::vector<ControlSpec> controlSpecs_;
  std::vector<CommandSpec> commandSpecs_;
  WindowEvents events_;
  DialogQueue& dialogs_;
  std::vector<Control> controls_;
  std::vector<Command> commands_;
  std::string title_, status_;
  WindowPlace place_, screen_;
  std::deque<std::function<void()>> waiting_;
  std::unique_ptr<NonePage> printed_;
  ControlId focus_ = -1;
  Colour face_ = 0xF5F3F2, ink_ = 0x28231F;
  bool shown_ = false, closed_ = false, busy_ = false, maximised_ = false;
  int busyTimes_ = 0;
};

}  // namespace lorivan
