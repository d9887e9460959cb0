// The program's window: the fields, the knot they make, and a handler for everything the user can do.
// Handlers are named after their control and event. The files main_window_*.cpp hold them by concern.
#pragma once

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/command_table.h"
#include "app/form_table.h"
#include "app/knot.h"
#include "app/settings_table.h"
#include "app/shape_desk.h"
#include "app/solid_view.h"
#include "base/random.h"
#include "controls/valid_text.h"
#include "platform/platform.h"

namespace lorivan {

class AnimatedDrawing;
struct ExportFormat;
struct TubeModel;

/// Caption of the Create 2D button while an animation runs.
inline constexpr std::string_view kStopCaption = "Stop";

struct MainWindowOptions {
  std::string knotFile;      // loaded after the first grid; empty: none
  bool stepDisplay = false;  // shows Check1, which follows the tracer step by step
  Rnd random;                // empty: seeded from the clock
  bool drawAtStart = false;  // shows the first grid's knot at once
};

class MainWindow {
 public:
  MainWindow(Platform& platform, MainWindowOptions options);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  /// Makes the window and brings everything to where it was left. The error says why no window can be had.
  Status open();
  /// Shows the window and handles events until it closes. Returns at once on a screen that is too small. The
  /// error says why the settings could not be kept.
  Status run();

  // --- start-up and exit (main_window_start.cpp) ---
  void restoreSettings();
  void saveSettings();
  bool closeQuery();
  void mnuFileExit_Click() { window_->close(); }
  void showHelp(std::string_view page);

  // --- fields (main_window_fields.cpp) ---
  /// Enter was pressed in the field or it was left: correct the text, then the Changed handler.
  void fieldConfirmed(Param p);
  /// The real-change test, then the field's follow-up.
  void fieldChanged(Param p);
  void vtScale_Changed(const std::string& oldText);
  void vtStartColour_Changed();
  void vtPicKnotBackColour_Changed();
  /// Records the texts of the fields that a procedure has just rewritten as acted on.
  void AllOlds();
  void UnDoIt() { UndoLatest(); }
  /// Steps the field that was changed last back by one entry; nothing is redrawn.
  void UndoLatest();
  void mnuEditUndo_Click() { UnDoIt(); }
  /// Opens the colour dialog for strand colour box 0 to 14.
  void txtCol_Click(int box);
  Colour BColor() const;
  void colourBackField();
  void colourStartField();

  // --- the grid (main_window_grid.cpp) ---
  void cmdNewGrid_Click();
  void cmdOldGrid_Click();
  void cmdRandknot_Click();
  void lstType_Click();
  void picGrid_Mouse(const MouseEvent& event);
  void chkShowCrossings_Click() { paintPicture(); }
  void chkShowGrid_Click() { paintPicture(); }

  // --- styles (main_window_styles.cpp) ---
  void highlightedCommand(CommandId command);
  void mnuStyle_Click(int style);

  // --- the 2-D knot and the views (main_window_knot.cpp) ---
  void cmd2D_Click();
  void ClearThread();
  void cmd2DView_Click();
  void cmd3DView_Click();
  void chkAnimate_Click();
  void chkMirror_Click() { styleChanged(); }
  void chkHeightMap_Click() { enable(controlId("cmd3D"), true); }

  // --- the animated drawing (main_window_animation.cpp) ---
  bool CalcAniThread();
  void vtAnimate_Changed();
  /// Speed and loop can be used only while animation is chosen.
  void SortOutAnimation();

  // --- what leaves the program (main_window_pictures.cpp, main_window_export.cpp) ---
  void mnuFileSaveBMP_Click();
  void mnuFileSaveEMF_Click();
  void mnuFileSave3D_Click();
  void mnuEditCopy_Click();

  // --- the 3-D model (main_window_model.cpp) ---
  void cmd3D_Click();
  /// The depth of the 3-D view as greys, at twice the size of picKnot, made for saving it. Null while there
  /// is no model or no memory for the picture.
  Surface* picBig();

  // --- turning and lighting the 3-D view (main_window_view3d.cpp) ---
  void picKnot_Mouse(const MouseEvent& event);
  void picNav_Mouse(const MouseEvent& event);
  bool frmLorivan_KeyDown(const KeyEvent& key);
  void vtAngle_Changed(Param angle);
  void vtLight_Changed();
  /// Shows the angles of the view in their fields and on the rotator.
  void UpdateRotator();

  // --- files (main_window_files.cpp) ---
  void mnuFileLoad_Click();
  void mnuFileSave_Click();
  void fileDropped(const std::string& path);
  /// The dialog for a file to save, "Saving:  Enter your <description> file name"; the full path, or empty
  /// when the user cancelled. Files with one of `moreExtensions` ("png svg") are shown as well.
  std::string NewFname(const std::string& description, const std::string& extension,
                       const std::string& moreExtensions = {});

  // --- shapes of one's own (main_window_shape.cpp, main_window_shape_files.cpp) ---
  void mnuShapeBlank_Click();
  void mnuShapeView_Click();
  void mnuShapeMakeStandard_Click();
  void mnuShapeLoadPicture_Click();
  void mnuShapeClear_Click();
  void mnuShapeMakeGrid_Click();
  void mnuShapeAutoGrid_Click();
  void mnuShapeGridOnOff_Click();
  void mnuShapeSnap_Click();
  void mnuShapeUndo_Click();
  void mnuShapeLoadFile_Click();
  void mnuShapeSaveFile_Click();
  void picShape_Mouse(const MouseEvent& event);
  /// Shows the shape's sheet, or the grid picture again.
  void ShapeVisible(bool on);
  /// Paints the sheet: picture to trace, alignment grid, lines and points.
  void RedrawCustom();
  /// Shows the alignment grid anew if it is to be seen.
  void ToggleGrid();
  void vtGridSize_Changed();

  const CustomShape& customShape() const { return desk_.editor.shape(); }
  const Knot& knot() const { return knot_; }
  bool knotDrawn() const { return knotDrawn_; }
  Window& window() { return *window_; }

 private:
  struct Field {
    ValidText text;
    std::string lastApplied;  // what the change handler acted on last
    std::string typed = {};   // what the user left in it, until it is confirmed; empty: nothing
  };
  enum class Shown { grid, knot, shape };

  /// While it lives, what the user does waits until it is gone (see act); only Stop, closing the window and
  /// the commands that leave the knot alone get through.
  class Working {
   public:
    explicit Working(MainWindow& owner) : owner_(owner) { ++owner_.working_; }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;
    ~Working() { --owner_.working_; }

   private:
    MainWindow& owner_;
  };

  // Events (main_window.cpp).
  WindowEvents makeEvents();
  void onClicked(ControlId control);
  void press(ControlId control);
  void onChanged(ControlId control);
  void onCommand(CommandId command);
  void onMouse(ControlId picture, const MouseEvent& event);
  bool onKey(const KeyEvent& key);
  void onResized(ControlId picture);
  void onStarted();
  /// Confirms fields that hold text typed but not confirmed: menus and shortcuts leave the focus where it is.
  void confirmPending();

  // Short words for the window (main_window.cpp).
  Field& field(Param p) { return fields_[static_cast<std::size_t>(p)]; }
  const Field& field(Param p) const { return fields_[static_cast<std::size_t>(p)]; }
  /// As KnotFields::number() and whole().
  float number(Param p) const;
  int whole(Param p) const;
  /// Sets a field from code: corrected and shown, no follow-up.
  void setField(Param p, std::string_view text);
  /// The same, and the value counts as acted on.
  void setApplied(Param p, std::string_view text);
  bool checked(Check c) const { return window_->checked(checkControl(c)); }
  void enable(ControlId control, bool on) { window_->setEnabled(control, on); }
  void enableCommand(CommandId command, bool on) { window_->setCommandEnabled(command, on); }
  Shape shape() const;
  /// Everything that the fields say now.
  KnotFields knotFields() const;
  void status(const std::string& text) { window_->setStatus(statusText_ = text); }
  /// Adds to what the status line says already.
  void statusToo(const std::string& text) { status(statusText_.empty() ? text : statusText_ + "; " + text); }
  /// A message box with the program's own title.
  void complain(const std::string& text);
  void setCaption(const std::string& file);

  // Start-up and exit.
  void restore(ColourBoxNumber box, const std::string& text);
  void restore(WindowState state, const std::string& text);
  void restore(Param p, const std::string& text);
  void restore(Check c, const std::string& text);
  std::string kept(ColourBoxNumber box) const;
  std::string kept(WindowState state) const;
  std::string kept(Param p) const;
  std::string kept(Check c) const;
  void disableForStart();
  bool screenTooSmall();

  // Fields.
  void followUp(Param p, const std::string& oldText);
  /// The drawn knot no longer fits the fields: it goes, and when it was drawn it is drawn again.
  void styleChanged();

  // Grid and pictures.
  void takeBuiltGrid(const StandardGrid& grid, const KnotFields& asked);
  void showOffsetField();
  void showPicture(Shown shown);
  /// Buttons and menus as they stand while the grid is shown without a knot.
  void gridShown();
  void paintGrid();
  void paintKnot();
  /// Whatever the grid picture holds now, once more.
  void paintPicture();
  void stepLineKind(int line, int step);
  std::string gridSummary() const;
  void previewStyle(int style);
  /// The line whose midpoint is near a pixel of the grid picture, or -1.
  int lineAt(int x, int y) const;

  // The knot.
  /// Traces and draws, animated where that is chosen; false when there is no knot, which the user has been
  /// told.
  bool CalcThread();
  bool drawKnotAtOnce();
  bool traced();
  TraceWatcher stepWatcher();
  bool showStep(const TraceStep& step);
  std::string knotSummary() const;

  // The animated drawing.
  bool play(AnimatedDrawing& animation);
  bool attend(int milliseconds);
  void repaintAnimation();
  /// Does what the user asks for. What comes while work goes on is done after it, in its order, and ends an
  /// animation.
  void act(std::function<void()> deed);
  void userConfirmed(Param p);
  void userMoved(ControlId picture, const MouseEvent& event);
  bool userPressed(const KeyEvent& key);

  // The 3-D model and its view.
  /// After a trace: builds the model of the new knot; the 2-D picture stays.
  void modelFollowsKnot();
  /// False when there is no new model; the user has been told if it has too many polygons.
  bool buildTubes();
  std::string modelSummary() const;
  bool solidShown() const;
  void paintSolid();
  /// After a change of angles, light or size.
  void solidChanged();

  // Files.
  /// A knot or a shape file, by its extension.
  void openFile(const std::string& path);
  std::string chooseSaveFile(FileDialogSpec dialog);
  Result<std::string> pictureFile(const std::string& extension, bool solid, bool curves);
  Result<std::string> knotFile(std::string_view extension);
  ControlId shownPicture() const;
  const ExportFormat* chosenFormat() const;
  const TubeModel* modelFor(const ExportFormat& format, KnotModel& own);
  Status writeModel(const ExportFormat& format, const TubeModel& model, const std::string& path);
  void loadKnotFile(const std::string& path);
  std::string folderFor(std::string_view pattern) const;
  void rememberFolder(const std::string& path);

  // Shapes of one's own.
  bool shapeShown() const;
  void behindShape(const std::function<void()>& change);
  void customGridAsked();
  /// Selects "(Custom)" without any follow-up.
  void chooseCustom();
  void sortOutShapeMenu();
  void keepForUndo();
  std::string shapeSummary() const;
  void pointAt(PointF at);
  void shapeEdited(const ShapeEdit& edit);
  void showNewShape(CustomShape shape);
  FileDialogSpec shapeDialog(bool save) const;
  void loadShape(const std::string& path);
  static bool isPicture(const std::string& path);
  void loadTracePicture(const std::string& path);
  void showCustomGrid(const Status& made, const std::string& name);

  Platform& platform_;
  MainWindowOptions options_;
  WindowEvents events_;
  std::unique_ptr<Window> window_;
  std::vector<Field> fields_;
  Rnd random_;

  Knot knot_;
  GridView view_;  // of the grid picture as painted last
  SolidView solid_;
  ShapeDesk desk_;
  ColourBoxes boxes_ = firstColourBoxes();
  StrandColours colours_;

  std::string statusText_, statusBeforePreview_;
  bool starting_ = true;
  bool tooSmall_ = false;
  Status settingsKept_;
  bool randomKnot_ = false;  // the grid generator varies line kinds
  bool knotDrawn_ = false;
  bool previewing_ = false;                  // the grid picture shows a style that is not chosen
  bool stop_ = false;                        // asked to end an animation
  AnimatedDrawing* animation_ = nullptr;     // the one that runs
  std::deque<std::function<void()>> deeds_;  // asked for by the user, not done yet
  int working_ = 0;
  PointerShape pointer_ = PointerShape::arrow;

  std::string lastFolder_;  // with its separator at the end
};

}  // namespace lorivan
