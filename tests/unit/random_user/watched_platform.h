// A real back end with somebody standing beside it: dialogs are answered by a function, what the program says
// of colours and commands is noted, and settings, clock, help and folders are those of the memory.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/none/none_platform.h"

namespace lorivan {

/// Passes everything on to a window, apart from what it asks the user.
class WatchedWindow final : public Window {
 public:
  using Answerer = std::function<DialogQueue::Answer(const AskedDialog&)>;

  WatchedWindow(const WindowSpec& spec, std::unique_ptr<Window> inner)
      : inner_(std::move(inner)), backgrounds_(spec.controls.size()), visible_(spec.commands.size(), true) {
    for (const CommandSpec& row : spec.commands) texts_.emplace_back(row.text);
  }

  void setTitle(const std::string& title) override { inner_->setTitle(title); }
  void setStatus(const std::string& text) override { inner_->setStatus(text); }
  WindowPlace place() const override { return inner_->place(); }
  void moveTo(int left, int top) override { inner_->moveTo(left, top); }
  void resizeTo(int width, int height) override { inner_->resizeTo(width, height); }
  bool maximised() const override { return inner_->maximised(); }
  void setMaximised(bool on) override { inner_->setMaximised(on); }
  WindowPlace screen() const override { return inner_->screen(); }
  double scaling() const override { return inner_->scaling(); }
  Colour faceColour() const override { return inner_->faceColour(); }
  Colour textColour() const override { return inner_->textColour(); }
  void show() override { inner_->show(); }
  void run() override { inner_->run(); }
  bool processEvents() override {
    if (meanwhile) meanwhile();
    return inner_->processEvents();
  }
  void close() override { inner_->close(); }

  std::string text(ControlId control) const override { return inner_->text(control); }
  void setText(ControlId control, const std::string& text) override { inner_->setText(control, text); }
  bool checked(ControlId control) const override { return inner_->checked(control); }
  void setChecked(ControlId control, bool on) override { inner_->setChecked(control, on); }
  void setItems(ControlId list, const std::vector<std::string>& items) override {
    inner_->setItems(list, items);
  }
  void setItemPictures(ControlId list, const std::vector<ItemPicture>& drawn) override {
    inner_->setItemPictures(list, drawn);
  }
  int selected(ControlId list) const override { return inner_->selected(list); }
  void select(ControlId list, int index) override { inner_->select(list, index); }
  void focus(ControlId control) override { inner_->focus(control); }
  ControlId focused() const override { return inner_->focused(); }
  void setEnabled(ControlId control, bool on) override { inner_->setEnabled(control, on); }
  bool enabled(ControlId control) const override { return inner_->enabled(control); }
  void setVisible(ControlId control, bool on) override { inner_->setVisible(control, on); }
  bool visible(ControlId control) const override { return inner_->visible(control); }
  void setColours(ControlId control, Colour background, Colour text) override {
    backgrounds_[control] = background;
    inner_->setColours(control, background, text);
  }

  void setCommandEnabled(CommandId command, bool on) override { inner_->setCommandEnabled(command, on); }
  bool commandEnabled(CommandId command) const override { return inner_->commandEnabled(command); }
  void setCommandChecked(CommandId command, bool on) override { inner_->setCommandChecked(command, on); }
  bool commandChecked(CommandId command) const override { return inner_->commandChecked(command); }
  void setCommandText(CommandId command, const std::string& text) override {
    texts_[command] = text;
    inner_->setCommandText(command, text);
  }
  void setCommandVisible(CommandId command, bool on) override {
    visible_[command] = on;
    inner_->setCommandVisible(command, on);
  }

  Surface& surface(ControlId picture) override {
    const auto other = pictures.find(picture);
    return other == pictures.end() ? inner_->surface(picture) : *other->second;
  }
  void setPointer(ControlId picture, PointerShape shape) override { inner_->setPointer(picture, shape); }
  void setBusy(bool on) override {
    busy_ = on;
    inner_->setBusy(on);
  }

  void message(const std::string& text, const std::string& title, MessageIcon icon) override {
    answer({DialogKind::message, text, title, {}, icon, {}, 0});
    if (beforeBox && beforeBox(true)) inner_->message(text, title, icon);
  }
  bool confirm(const std::string& text, const std::string& title) override {
    const bool agreed = answer({DialogKind::confirm, text, title, {}, MessageIcon::none, {}, 0}).ok;
    return beforeBox && beforeBox(agreed) ? inner_->confirm(text, title) : agreed;
  }
  SaveAnswer askToSave(const std::string& text, const std::string& title) override {
    return answer({DialogKind::save, text, title, {}, MessageIcon::none, {}, 0}).save;
  }
  std::string chooseFile(const FileDialogSpec& dialog) override {
    return answer({DialogKind::file, {}, dialog.title, dialog.initialName, MessageIcon::none, dialog, 0})
        .text;
  }
  std::optional<Colour> chooseColour(Colour initial) override {
    return answer({DialogKind::colour, {}, "colour", {}, MessageIcon::none, {}, initial}).colour;
  }
  std::optional<std::vector<OptionLine>> chooseOptions(const OptionDialogSpec& dialog) override {
    auto lines =
        answer({DialogKind::options, dialog.hint, dialog.title, {}, MessageIcon::none, {}, 0, dialog.lines})
            .lines;
    if (lines && dialog.check && dialog.check(*lines)) return std::nullopt;  // who is told so gives up
    return lines;
  }
  std::string inputBox(const std::string& prompt, const std::string& title,
                       const std::string& initial) override {
    return answer({DialogKind::input, prompt, title, initial, MessageIcon::none, {}, 0}).text;
  }
  Result<bool> print(const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw) override {
    if (!answer({DialogKind::print, {}, spec.title, {}, MessageIcon::none, {}, 0}).ok) return false;
    NonePage page(spec.landscape);
    if (const Status drawn = draw(page); !drawn) return drawn.error();
    return true;
  }

  Window& inner() { return *inner_; }
  // What the program said last.
  Colour background(ControlId control) const { return backgrounds_[control]; }
  const std::string& commandText(CommandId command) const { return texts_[command]; }
  bool commandVisible(CommandId command) const { return visible_[command]; }
  bool busy() const { return busy_; }

  Answerer answer;
  /// Prepares an agreeing or a refusing user; true when the message box is to be shown after all.
  std::function<bool(bool agrees)> beforeBox;
  /// Called when the program lets the user's events in.
  std::function<void()> meanwhile;
  /// In the place of the window's own.
  std::map<ControlId, std::unique_ptr<Surface>> pictures;

 private:
  std::unique_ptr<Window> inner_;
  std::vector<Colour> backgrounds_;
  std::vector<std::string> texts_;
  std::vector<bool> visible_;
  bool busy_ = false;
};

class WatchedPlatform final : public Platform {
 public:
  explicit WatchedPlatform(std::unique_ptr<Platform> real) : real_(std::move(real)) {}

  Result<std::unique_ptr<Surface>> createSurface(int width, int height) override {
    return real_->createSurface(width, height);
  }
  Result<std::string> encodePicture(Surface& picture, PictureFormat format) override {
    return real_->encodePicture(picture, format);
  }
  Result<std::unique_ptr<Surface>> loadPicture(const std::string& path, int width, int height) override {
    return real_->loadPicture(path, width, height);
  }
  Result<std::unique_ptr<Metafile>> createMetafile(const MetafileSize& size) override {
    return real_->createMetafile(size);
  }
  Clipboard& clipboard() override { return real_->clipboard(); }
  void setLanguage(std::string_view code) override {
    memory.setLanguage(code);
    real_->setLanguage(code);
  }
  Status canOpenWindow() const override { return real_->canOpenWindow(); }
  Result<std::unique_ptr<Window>> createWindow(const WindowSpec& spec, const WindowEvents& events) override {
    auto made = real_->createWindow(spec, events);
    if (!made) return made.error();
    auto watched = std::make_unique<WatchedWindow>(spec, std::move(*made));
    watched->answer = answer;
    window = watched.get();
    return std::unique_ptr<Window>(std::move(watched));
  }

  Settings& settings() override { return memory.settings(); }
  Clock& clock() override { return memory.clock(); }
  Help& help() override { return memory.help(); }
  std::string programFolder() const override { return memory.programFolder(); }
  std::string userFolder() override { return memory.userFolder(); }
  std::string documentsFolder() override { return memory.documentsFolder(); }
  std::unique_ptr<FileClaim> claim(const std::string& path) override { return memory.claim(path); }
  bool errorsGoToTerminal() const override { return false; }
  std::string language() const override { return memory.language(); }

  Platform& real() { return *real_; }
  NonePlatform memory;
  WatchedWindow::Answerer answer;
  WatchedWindow* window = nullptr;  // made last

 private:
  std::unique_ptr<Platform> real_;
};

}  // namespace lorivan
