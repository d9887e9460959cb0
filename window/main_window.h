// The program's window: makes the workbench and the handlers, and leads every event to the handler that a
// table names.
#pragma once

#include <memory>
#include <string>

#include "window/handlers.h"
#include "window/shown_tables.h"
#include "window/workbench.h"

namespace lorivan {

class MainWindow {
 public:
  MainWindow(Platform& platform, MainWindowOptions options);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  /// Creates the window and restores its saved state. The error says why no window can be had.
  Status open();
  /// Shows the window and handles events until it closes. Returns at once on a screen that is too small. The
  /// error says why the settings could not be kept, or that memory ran out (ErrorKind::limit): the knot is
  /// then kept aside for the next start.
  Status run();

  Workbench& bench() { return *bench_; }
  Handlers& handlers() { return *handlers_; }

 private:
  std::string chooseLanguage();
  WindowEvents makeEvents();
  void fieldEvents(WindowEvents& events);
  void onStarted();
  void onConfirmed(Param p);
  void onClicked(ControlId control);
  void onChanged(ControlId control);
  void onCommand(CommandId command);
  void onMouse(ControlId picture, const MouseEvent& event);
  bool onKey(const KeyEvent& key);
  bool closeQuery();
  bool screenTooSmall();
  /// The document that the start shows, which no undo goes behind.
  Document floor() const;
  void offerRecovered();
  void keepLastKnot();
  void endForLackOfMemory();

  Platform& platform_;
  MainWindowOptions options_;
  WindowEvents events_;
  std::unique_ptr<ShownTables> tables_;  // the window refers to it
  std::unique_ptr<Window> window_;
  std::unique_ptr<Workbench> bench_;
  std::unique_ptr<Handlers> handlers_;
  bool tooSmall_ = false;
  bool outOfMemory_ = false;
  Status ended_;
};

}  // namespace lorivan
