// What the window holds: one document with its history, and the views that show it. Handlers change the
// document and say how the pictures follow; everything else is derived here, so that what is shown is what
// the document says.
#pragma once

#include <string>
#include <string_view>

#include "base/random.h"
#include "base/texts.h"
#include "design/output_options.h"
#include "window/action_queue.h"
#include "window/file_chooser.h"
#include "window/flat_view.h"
#include "window/form.h"
#include "window/grid_hand.h"
#include "window/grid_symmetry.h"
#include "window/session.h"
#include "window/shape_sheet.h"
#include "window/solid_view.h"
#include "window/variation_view.h"

namespace lorivan {

struct MainWindowOptions {
  std::string knotFile;      // loaded after the first grid; empty: none
  bool stepDisplay = false;  // shows Check1, which follows the tracer step by step
  Rnd random;                // empty: seeded from the clock
  bool welcome = false;      // a start without settings shows the welcome knot
};

/// The picture that is in front.
enum class Picture { flat, solid, sheet, variations };

/// How the pictures follow a step.
enum class After {
  same,    // a drawn knot is drawn again, the picture in front stays
  all,     // the same, and the model is built anew where it is another one
  grid,    // the grid is shown in 2-D, its knot only where knots are drawn at once
  draw,    // the knot is shown in 2-D
  view,    // the knot is the same, seen otherwise
  sheet,   // the shape's sheet comes to the front
  nothing  // the pictures stay as they are
};

class Workbench {
 public:
  Workbench(Platform& platform, Window& window, Document floor, MainWindowOptions options);

  const Document& document() const { return session.document(); }
  const Knot& knot() const { return stages_.knot(); }
  bool knotDrawn() const { return drawn_; }
  bool hasGrid() const { return static_cast<bool>(document().lines); }
  /// Another picture lies over the flat one.
  bool flatIsBehind() const { return picture_ == Picture::sheet ? drawn_ : picture_ != Picture::flat; }
  Picture picture() const { return picture_; }

  // --- steps ---
  /// Takes a step, shows it, and tells what the picture holds. An error is told and changes nothing; false
  /// then.
  bool step(const std::string& name, const Result<Document>& next, After after = After::same,
            std::string_view run = {});
  /// The same for a step to another knot, see Session::begin.
  bool begin(const std::string& name, const Result<Document>& next, After after,
             const std::string& path = {});
  /// Shows the document, whatever led to it.
  void show(After after, bool record = true);

  // --- the 2-D knot ---
  /// Traces and draws, animated where that is chosen. `asked`: the user wants just this, so that what goes
  /// wrong is told in a box; `modelAsked`: the same for the model that is built with the knot. False when
  /// there is no knot.
  bool drawKnot(bool asked, bool modelAsked = false);
  /// The grid without its knot.
  void showGrid();
  /// Whatever the flat picture holds now, once more.
  void paintFlat();
  /// Lays the marks of pointer and keyboard over it.
  void showMarks();
  /// Outlines a strand of the drawn knot in both pictures; 0: none.
  void markStrand(int slot);
  /// Lends a picture as it leaves the program: the flat one whole, both without marks; a `bare` one without
  /// the grid behind the knot, too.
  template <class Use>
  auto lendPicture(Use use, bool bare = false) {
    const bool flatOne = !solidShown();
    const bool altered = flatOne ? !actions.animating() && (bare || flat.altered()) : solid.altered();
    const auto paintPlain = [&](bool plain) {
      flat.setPlain(plain, plain && bare);
      solid.setPlain(plain);
      if (altered) flatOne ? paintFlat() : paintSolid();
    };
    paintPlain(true);
    auto done = use(window.surface(flatOne ? controlId("picGrid") : controlId("picKnot")));
    paintPlain(false);
    return done;
  }

  // --- the 3-D model ---
  /// Builds the model of the drawn knot; false when there is none, which the user has been told.
  bool buildModel(bool asked);
  bool modelCurrent() const { return drawn_ && solid.current(document(), stages_); }
  /// Whether there is a model of the strands that are drawn, perhaps with other 3-D values.
  bool modelOfStrands() const { return drawn_ && solid.ofStrands(stages_) && solid.model().QuadCount > 0; }
  /// Whether the grid is made from the shape that is drawn now.
  bool gridIsCurrent() const {
    return document().lines && !(document().outlineAhead && document().fields.shape == Shape::Custom);
  }
  bool canCreate3D() const { return document().lines && (drawn_ ? !modelCurrent() : modelFieldsTouched_); }
  /// A field that models are made from was changed.
  void modelFieldChanged();
  bool solidShown() const { return picture_ == Picture::solid; }
  void paintSolid();
  /// The view was turned with the mouse or the keys: its angles are the document's from now on.
  void viewTurned();

  // --- variations ---
  /// Shows them in the place of the picture. `step` as VariationView takes it. Nothing but a sentence when
  /// there are none.
  void showVariations(std::vector<Variation> sheet, const std::string& step);
  /// The picture that was there before comes back.
  void leaveVariations();

  // --- pictures and states ---
  void bringToFront(Picture picture);
  /// Draws the picture in front in a style that is not chosen yet; -1: as the document says.
  void preview(int style);
  /// Enables and checks every command and control as things stand.
  void sortOut();
  void showCaption();
  void resized(ControlId picture);

  /// Confirms fields that hold text typed but not confirmed: menus and shortcuts leave the focus where it is.
  void confirmPending(bool undone);
  /// Applies what was confirmed in a field; installed by the handlers.
  std::function<void(Param)> fieldConfirmed;

  void status(const std::string& text);
  /// Shown while the pointer is somewhere; an empty one brings the status back.
  void hint(const std::string& text) { window.setStatus(text.empty() ? status_ : text); }
  /// The pointer or the focus came to a control: it is explained, unless something else has just been told.
  void pointed(ControlId control);
  const std::string& statusText() const { return status_; }
  /// Adds to what the status line says already.
  void statusToo(const std::string& text) { status(status_.empty() ? text : tr("{1}; {2}", status_, text)); }
  /// What the picture in front holds, for the status line.
  std::string summary() const;
  /// A message box with the program's own title.
  void complain(const std::string& text) { window.message(text, "Lorivan", MessageIcon::none); }
  void tell(const Error& error);

  Platform& platform;
  Window& window;
  const MainWindowOptions options;
  Session session;
  Form form;
  FileChooser files;
  ActionQueue actions;
  FlatView flat;
  SolidView solid;
  ShapeSheet sheet;
  GridHand hand;
  GridSymmetry symmetry;
  VariationView variations;
  Rnd random;
  bool drawAtOnce = true;
  std::string language;       // code of the one chosen for the next start; empty: the system's
  std::string spoken = "en";  // code of the one that the window speaks
  OutputOptions saveOptions;  // of files that are saved from the window
  std::vector<std::string> recentFiles;

 private:
  bool showTaken(const Result<Document>& next, After after);
  bool trace(bool asked);
  TraceWatcher stepWatcher();
  bool play();
  void showSame(bool model);
  void follow(After after);

  KnotStages stages_;
  KnotStages previewStages_;
  Picture picture_ = Picture::flat;
  Picture beforeVariations_ = Picture::flat;
  bool drawn_ = false;               // the flat picture holds a knot
  int markedStrands_ = 0;            // the strands that one may be marked of, see KnotStages::strands()
  bool modelFieldsTouched_ = false;  // since the grid was shown without a knot
  bool previewing_ = false;
  std::string status_, statusBeforePreview_;
  std::int64_t statusTime_ = 0;  // of the clock
};

}  // namespace lorivan
