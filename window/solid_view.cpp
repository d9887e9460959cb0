#include "window/solid_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "graph/grid_view.h"
#include "model3d/marks.h"
#include "platform/mouse.h"
#include "window/form_table.h"

namespace lorivan {
namespace {

constexpr float kZoomStep = 1.2F;  // of a notch of the wheel, and of a key

constexpr ControlId kModelPicture = controlId("picKnot"), kRotator = controlId("picNav");

/// The keys' codes as turnByKey takes them.
int keyCode(Key key) {
  switch (key) {
    case Key::left:
      return 37;
    case Key::up:
      return 38;
    case Key::right:
      return 39;
    case Key::down:
      return 40;
    default:
      return 0;
  }
}

/// Degrees as a field shows them, without the noise of single precision: two decimals, below a full turn.
std::string shownDegrees(float degrees) {
  const double rounded = roundHalfEven(static_cast<double>(degrees) * 100) / 100;
  return shortestText(static_cast<float>(rounded >= 360 ? rounded - 360 : rounded));
}

struct AngleText {
  Param field;
  std::string text;
};

std::array<AngleText, 3> shownAngles(const ViewState& view) {
  const AngleFields degrees = anglesInDegrees(view);
  return {{{Param::Theta, shownDegrees(degrees.theta)},
           {Param::Phi, shownDegrees(degrees.phi)},
           {Param::Psi, shownDegrees(degrees.psi)}}};
}

Colour backgroundOf(const Document& document) { return pictureOptions(document.fields).background; }

}  // namespace

SolidView::Inputs SolidView::inputsOf(const Document& document, const KnotStages& stages) {
  return {stages.strands(), tubeSettings(document.fields),
          tubeColours(document.fields, strandColours(document.fields.boxes)), backgroundOf(document),
          document.fields.check(Check::HeightMap)};
}

Status SolidView::build(const Document& document, const KnotStages& stages) {
  const Inputs wanted = inputsOf(document, stages);
  Inputs model = wanted;  // apart from what the model itself is not made from
  if (inputs_) {
    model.background = inputs_->background;
    model.heightMap = inputs_->heightMap;
  }
  if (inputs_ != model)
    if (const Status built =
            model_->build(stages.knot(), document.fields, strandColours(document.fields.boxes));
        !built)
      return built;
  if (inputs_ != model || standIn_.QuadCount == 0) buildStandIn(document, stages);
  marked_.reset();
  markedStandIn_.reset();
  inputs_ = wanted;
  background_ = wanted.background;
  heightMap_ = wanted.heightMap;
  drag_ = {};
  return {};
}

/// With other colours and other values it would be another knot: it is built with the model.
void SolidView::buildStandIn(const Document& document, const KnotStages& stages) {
  standIn_.clear();
  const int quads = model_->built().QuadCount;
  if (quads <= kQuickModel) return;
  const TubeSettings settings = coarserSettings(tubeSettings(document.fields), quads, kQuickModel);
  const SlotColours colours = tubeColours(document.fields, strandColours(document.fields.boxes));
  static_cast<void>(buildTube(stages.knot().strands, settings, colours, standIn_));
}

bool SolidView::current(const Document& document, const KnotStages& stages) const {
  return inputs_ && stages.strands() != 0 && *inputs_ == inputsOf(document, stages);
}

bool SolidView::ofStrands(const KnotStages& stages) const {
  return inputs_ && stages.strands() != 0 && inputs_->strands == stages.strands();
}

bool SolidView::sameColours(const Document& document) const {
  return inputs_ && inputs_->colours == tubeColours(document.fields, strandColours(document.fields.boxes));
}

void SolidView::takeAngles(const Document& document) {
  void (*const take[])(ViewState&, float) = {setTheta, setPhi, setPsi};
  const auto shown = shownAngles(angles_);
  for (std::size_t i = 0; i < shown.size(); ++i)
    if (shown[i].text != document.fields.text(shown[i].field))
      take[i](angles_, document.fields.number(shown[i].field));
}

Document SolidView::withAngles(const Document& document) const {
  Document turned = document;
  for (const AngleText& angle : shownAngles(angles_)) turned.fields.text(angle.field) = angle.text;
  return turned;
}

/// Background and height map are as of the last build.
PictureLook SolidView::look(const Document& document) const {
  PictureLook look = pictureLook(document.fields);
  look.background = background_;
  look.heightMap = heightMap_;
  look.draft = moving_;
  return look;
}

void SolidView::paint(const Document& document) {
  Surface& picture = window_.surface(kModelPicture);
  const TubeModel& shown = shownModel();
  if (!(lens_ == Lens{})) lens_ = keptInSight(shown, angles_, lens_, picture.width(), picture.height());
  const auto polygons = static_cast<float>(std::max(1, model_->built().QuadCount));
  picture.clear(background_);
  const PictureLook shownLook = look(document);
  renderer_.render(shown, lightSettings(document.fields), angles_, lens_, shownLook, picture.lendPixels(),
                   static_cast<float>(shown.QuadCount) / polygons);
  const PixelBlock block = picture.lendPixels();
  unmarked_.clear();
  for (int y = 0; y < block.height && !moving_; ++y) {
    const std::uint32_t* const row = block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride;
    unmarked_.insert(unmarked_.end(), row, row + block.width);
  }
  drawMark(document, block);
  picture.refresh();
}

void SolidView::drawMark(const Document& document, const PixelBlock& block) {
  if (markedStrand_ == 0 || plain_) return;
  mark_.draw(shownModel(), markedStrand_, angles_, lens_, look(document), block);
}

/// Rendering takes most of the time, and clicks may follow each other quickly.
void SolidView::paintMark(const Document& document) {
  Surface& picture = window_.surface(kModelPicture);
  const PixelBlock block = picture.lendPixels();
  const auto width = static_cast<std::size_t>(std::max(0, block.width));
  if (unmarked_.empty() || unmarked_.size() != width * static_cast<std::size_t>(block.height))
    return paint(document);
  for (int y = 0; y < block.height; ++y)
    std::copy_n(unmarked_.begin() + y * static_cast<std::ptrdiff_t>(width), width,
                block.pixels + static_cast<std::ptrdiff_t>(y) * block.stride);
  drawMark(document, block);
  picture.refresh();
}

int SolidView::strandAt(int x, int y) const {
  const Surface& picture = window_.surface(kModelPicture);
  return lorivan::strandAt(shownModel(), angles_, lens_, picture.width(), picture.height(), x, y);
}

void SolidView::mark(std::span<const Vec3> places) {
  marked_ = withMarks(model_->built(), places);
  if (standIn_.QuadCount > 0) markedStandIn_ = withMarks(standIn_, places);
}

void SolidView::paintRotator() {
  window_.setText(controlId("txtRDistance"), shortestText(angles_.ViewDistance));
  Surface& rotator = window_.surface(kRotator);
  drawRotator(rotator, angles_, window_.faceColour(), window_.textColour());
  rotator.refresh();
}

bool SolidView::paintPreview(const Document& document, const KnotStages& stages) {
  if (polygonBudget(stages.knot().strands, tubeSettings(document.fields)) > kLargeModel) return false;
  KnotModel model;
  if (!model.build(stages.knot(), document.fields, strandColours(document.fields.boxes))) return false;
  Surface& picture = window_.surface(kModelPicture);
  PictureLook styled = look(document);
  styled.background = backgroundOf(document);
  unmarked_.clear();
  picture.clear(styled.background);
  renderer_.render(model.built(), lightSettings(document.fields), angles_, lens_, styled,
                   picture.lendPixels());
  picture.refresh();
  return true;
}

void SolidView::takeBackground(const Document& document) {
  background_ = backgroundOf(document);
  if (inputs_) inputs_->background = background_;
}

bool SolidView::dragged(const MouseEvent& event) {
  // A new drag starts where it is, not where the last one ended.
  if (event.action == MouseAction::press) drag_ = {};
  if (event.action != MouseAction::press && event.action != MouseAction::move) return false;
  const float perPixel =
      kReferenceWidth / static_cast<float>(std::max(1, window_.surface(kModelPicture).width()));
  const DragState before = drag_;
  const bool turned = dragView(angles_, drag_, event.button, static_cast<float>(event.x) * perPixel,
                               static_cast<float>(event.y) * perPixel);
  if (!turned || before.LastDragX == DragState{}.LastDragX) return false;
  moving_ = true;
  return true;
}

bool SolidView::rotatorMoved(const MouseEvent& event) {
  if (event.action != MouseAction::press && event.action != MouseAction::move) return false;
  const Surface& rotator = window_.surface(kRotator);
  moving_ = event.button != 0;
  return DrawNav(angles_, navGeometry(rotator.width(), rotator.height()), event.button,
                 static_cast<float>(event.x), static_cast<float>(event.y));
}

bool SolidView::keyPressed(Key key) { return turnByKey(angles_, keyCode(key)); }

PointF SolidView::placeOf(int x, int y) {
  const Surface& picture = window_.surface(kModelPicture);
  const auto width = static_cast<float>(std::max(1, picture.width()));
  return {(static_cast<float>(x) + 0.5F) / width - 0.5F,
          (static_cast<float>(y) + 0.5F - static_cast<float>(picture.height()) / 2) / width};
}

/// What lies at `at` stays there.
void SolidView::zoom(float factor, PointF at) {
  const float zoomed = std::clamp(lens_.zoom * factor, kLeastZoom, kMostZoom);
  const float share = zoomed / lens_.zoom;
  lens_ = {zoomed, {at.x - (at.x - lens_.pan.x) * share, at.y - (at.y - lens_.pan.y) * share}};
}

bool SolidView::lensMoved(const MouseEvent& event) {
  const Lens before = lens_;
  const PointF at = placeOf(event.x, event.y);
  const Surface& picture = window_.surface(kModelPicture);
  if (event.action == MouseAction::wheel)
    zoom(std::pow(kZoomStep, static_cast<float>(std::clamp(event.steps, -10, 10))), at);
  if (event.action == MouseAction::doubleClick && event.button == kLeftButton)
    lens_ = fittedLens(model_->built(), angles_, picture.width(), picture.height());
  if (event.button == kMiddleButton && event.action == MouseAction::move) {
    moving_ = true;
    lens_.pan = {lens_.pan.x + at.x - grip_.x, lens_.pan.y + at.y - grip_.y};
  }
  if (event.button == kMiddleButton) grip_ = at;
  return !(lens_ == before);
}

bool SolidView::lensKey(Key key) {
  if (key != Key::plus && key != Key::minus) return false;
  zoom(key == Key::plus ? kZoomStep : 1 / kZoomStep, {});
  return true;
}

bool SolidView::rest() { return std::exchange(moving_, false); }

Surface* SolidView::picBig(const Document& document) {
  const Surface& shown = window_.surface(kModelPicture);
  const TubeModel& model = model_->built();
  if (model.QuadCount == 0) return nullptr;
  auto made = platform_.createSurface(2 * shown.width(), 2 * shown.height());
  if (!made) return nullptr;
  picBig_ = std::move(*made);
  picBig_->clear(background_);
  PictureLook heights = look(document);
  heights.heightMap = true;
  renderer_.render(model, lightSettings(document.fields), angles_, lens_, heights, picBig_->lendPixels());
  return picBig_.get();
}

}  // namespace lorivan
