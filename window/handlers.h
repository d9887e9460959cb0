// A handler for everything the user can do, named after its control and event. Each takes the document,
// applies a function to it and shows what came of it; none calls another.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "design/fit_size.h"
#include "window/workbench.h"

namespace lorivan {

struct ExportFormat;
struct FittedOutline;
struct OutputJob;
using NoteTeller = std::function<void(const std::string&)>;

class Handlers {
 public:
  explicit Handlers(Workbench& bench);

  // --- fields (handlers_fields.cpp) ---
  /// Enter was pressed in the field or it was left: its corrected text becomes the document's.
  void vt_Changed(Param p);
  /// The arrow keys or the wheel over a field that has the focus.
  void vt_Stepped(Param p, int steps);
  void vt_Escaped(Param p);
  void chk_Click(Check c);
  /// Opens the colour dialog for strand colour box 0 to 14.
  void txtCol_Click(int box);
  void lstType_Click();
  void opt_Click();
  void mnuStyle_Click(int style);
  void mnuEditUndo_Click();
  void mnuEditUndoStep_Click();
  void mnuEditRedoStep_Click();

  // --- the grid and the 2-D knot (handlers_knot.cpp) ---
  void cmdNewGrid_Click();
  void mnuFileNewGrid_Click();
  void cmdOldGrid_Click();
  void cmdRandknot_Click();
  void cmd2D_Click();
  void mnuViewFitPicture_Click();
  void mnuViewClassic_Click();
  void mnuViewDrawAtOnce_Click();
  void mnuLanguage_Click(std::string_view code);

  // --- the hand on the 2-D picture (handlers_grid.cpp) ---
  void picGrid_Mouse(const MouseEvent& event);
  void mnuEditLines_Click();
  void mnuSymmetry_Click(const Symmetry& symmetry);
  void mnuSymmetryTurns_Click(std::size_t place);
  void mnuStrands_Click(int strands);
  void mnuStrandsMost_Click();
  void mnuStrandsOther_Click();
  void mnuViewWhole_Click();

  // --- the 3-D view (handlers_solid.cpp) ---
  void cmd3D_Click();
  void cmd2DView_Click();
  void cmd3DView_Click();
  void mnuViewCheckModel_Click();
  void mnuViewFitRadius_Click();
  void picKnot_Mouse(const MouseEvent& event);
  void picNav_Mouse(const MouseEvent& event);
  void mnuViewFront_Click();
  bool frmLorivan_KeyDown(const KeyEvent& key);

  // --- sizes (handlers_sizes.cpp) ---
  /// A drawn knot of a width and a height in millimetres.
  void mnuEditFitFrame_Click();
  /// A ring or bracelet of an inner diameter and a height.
  void mnuEditFitRing_Click();

  // --- the sheet of variations (handlers_variations.cpp) ---
  /// Along the field that has the focus, or random.
  void mnuViewVariations_Click();
  void mnuViewVariationsOf_Click();

  // --- files (handlers_files.cpp) ---
  void mnuFileLoad_Click();
  void mnuFileRecent_Click(std::size_t place);
  /// Both tell whether the document is in its file now.
  bool mnuFileSave_Click();
  bool mnuFileSaveAs_Click();
  void fileDropped(const std::string& path);
  /// A knot, a shape, a drawing or a picture, by its name and what it holds.
  void openFile(const std::string& path);
  void mnuFileExit_Click() { bench_.window.close(); }
  void showHelp(std::string_view page);

  // --- what leaves the program (handlers_outputs.cpp) ---
  void mnuFileSaveBMP_Click();
  void mnuFileSaveEMF_Click();
  void mnuFileSave3D_Click();
  void mnuFileSaveOptions_Click();
  void mnuEditCopy_Click();

  // --- paper, drawings to paste, animations (handlers_paper.cpp) ---
  void mnuEditCopyDrawing_Click();
  void mnuFilePrint_Click();
  void mnuFileSaveAnimation_Click();

  // --- custom shapes (handlers_shape.cpp) ---
  void mnuShapeBlank_Click();
  void mnuShapeView_Click();
  void mnuShapeMakeStandard_Click();
  void mnuShapeLoadPicture_Click();
  void mnuShapeTrace_Click();
  void mnuShapeClear_Click();
  void mnuShapeMakeGrid_Click();
  void mnuShapeAutoGrid_Click();
  void mnuShapeFill_Click();
  void mnuShapeGridOnOff_Click();
  void mnuShapeSnap_Click();
  void mnuSheetSymmetry_Click(const Symmetry& symmetry);
  void mnuSheetTurns_Click(int turns);
  void mnuSheetMirrored_Click();
  void mnuShapeSmooth_Click();
  void mnuShapeUndo_Click();
  void mnuShapeLoadOutline_Click();
  void mnuShapeLoadFile_Click();
  void mnuShapeSaveFile_Click();
  void picShape_Mouse(const MouseEvent& event);

  /// Asks whether unsaved changes are to be saved, and saves them; false when the user wants to go on
  /// working.
  bool mayLeave(const std::string& question);

 private:
  // Handlers do not call each other; what several of them do stands here.
  void applyField(Param p, const std::string& text, const std::string& run, const std::string& note);
  bool scaleRefused(Param p);
  void showHistory(const Document& before, const std::string& what, bool stays = false);
  void chooseColour(int box);
  void tellDropped(const Document& before);
  void hoverLine(int line);
  void clickGrid(const GridHand::Click& click);
  void stepLineKind(int line, int steps);
  After afterLines() const;
  void stroke(const GridHand::Place& at);
  void pickStrand(int slot);
  void recolourStrand(const MouseEvent& event);
  void recolourStrand(int slot);
  void clickModel(const MouseEvent& event);
  bool flatKey(const KeyEvent& key);
  bool solidKey(const KeyEvent& key);
  bool walk(int dx, int dy);
  void setStrands(std::optional<int> strands);
  void makeGridAnew();
  std::optional<TwoLengths> askLengths(const std::string& prompt, const std::string& title,
                                       std::string& initial);
  void adoptSize(const std::string& step, const Result<FittedSize>& fitted, bool solid);
  void variationsMouse(const MouseEvent& event);
  bool variationsKey(Key key);
  void adoptVariation();
  void showModel();
  std::optional<double> askMillimetres(const std::string& prompt, const std::string& title, double initial);
  void mouseRests();
  void loadFile(const std::string& path);
  void loadKnot(const std::string& path);
  void loadShape(const std::string& path);
  void drawIn(const Symmetry& symmetry);
  void loadOutline(const std::string& path);
  void loadTracePicture(const std::string& path);
  void takeOutline(const std::string& name, FittedOutline&& fitted, const std::string& path);
  void fillRegion(PointF at);
  bool saveKnot(const std::string& path);
  std::string knotName() const;
  bool saveAs(const std::string& proposed = {});
  void remember(const std::string& path);
  Result<std::string> pictureFile(const std::string& extension, bool solid, bool curves, std::string& note);
  Result<std::string> shownPicture(const std::string& extension, bool solid);
  Result<std::string> knotOutput(std::string_view extension, bool bare = false,
                                 const NoteTeller& tellNote = {});
  Result<std::string> movingPicture(const OutputJob& job, const std::string& path);
  OutputJob outputJob(const StrandColours& colours) const;
  void tellSaved(const std::string& path, const std::string& more = {});
  const ExportFormat* chosenFormat() const;
  std::shared_ptr<KnotModel> modelFor(const ExportFormat& format);
  void tellNotSaved(const Error& error);
  Status writeModel(const ExportFormat& format, std::shared_ptr<KnotModel> model, const std::string& path,
                    std::string& note);
  void shapeGrid(const std::string& name, const Result<Document>& made, const std::string& remark = "");

  Workbench& bench_;
  std::optional<PointI> pressed_;  // where the left button went down on the model, until it moves away
  // As last asked for: the width of the finished knot, the gap between its strands, and the sizes to fit it
  // to.
  double millimetres_ = 80, gap_ = 0;
  std::string frame_ = "200 x 120", ring_ = "18.2 x 6";
};

}  // namespace lorivan
