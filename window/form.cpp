#include "window/form.h"

#include <algorithm>
#include <cstdlib>

#include "base/numbers.h"
#include "base/texts.h"
#include "design/names.h"
#include "design/shape_pictures.h"

namespace lorivan {
namespace {

constexpr Colour kWhite = QBColor(15), kBlack = QBColor(0);

/// White or black, whichever stands out more from a background.
Colour textOn(Colour background) { return relativeLuminance(background) > 0.18 ? kBlack : kWhite; }

}  // namespace

Form::Form(Window& window, Platform& platform) : window_(window) {
  const Clock& clock = platform.clock();
  fields_.reserve(kParamCount);
  for (const ParamSpec& spec : parameterTable()) {
    ValidTextLimits limits{std::string(spec.min), std::string(spec.max), std::string(spec.fallback), "0.0"};
    fields_.push_back(
        {ValidText(std::move(limits), std::string(spec.value), [&clock] { return clock.secondsOfDay(); })});
  }
  std::vector<std::string> shapes;
  for (int i = 0; i < kShapeCount; ++i) shapes.push_back(shapeName(static_cast<Shape>(i)));
  window_.setItems(controlId("lstType"), shapes);
  window_.setItemPictures(controlId("lstType"), shapePictures(platform));
}

void Form::show(const Document& document, bool record) {
  shown_ = document.fields;
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    field(p).typed.clear();
    field(p).text.setUnDoing(!record);
    if (text(p) != shown_.text(p) || window_.text(fieldControl(p)) != shown_.text(p))
      setText(p, shown_.text(p));
    field(p).text.setUnDoing(false);
  }
  for (int i = 0; i < kCheckCount; ++i) {
    const auto c = static_cast<Check>(i);
    if (checked(c) != shown_.check(c)) window_.setChecked(checkControl(c), shown_.check(c));
  }
  if (shape() != shown_.shape || window_.selected(controlId("lstType")) < 0)
    window_.select(controlId("lstType"), static_cast<int>(shown_.shape));
  showColours();
  showOffset();
  showAnimation();
  showWrap();
}

KnotFields Form::read() const {
  KnotFields fields = shown_;
  for (int i = 0; i < kParamCount; ++i) fields.text(static_cast<Param>(i)) = text(static_cast<Param>(i));
  for (int i = 0; i < kCheckCount; ++i) fields.check(static_cast<Check>(i)) = checked(static_cast<Check>(i));
  fields.shape = shape();
  return fields;
}

void Form::startHistories() {
  for (Field& f : fields_) f.text.start(f.text.Value());
}

Form::Confirmed Form::confirm(Param p) {
  Field& f = field(p);
  const std::string shown = window_.text(fieldControl(p));
  const std::string typed = f.typed.empty() ? shown : std::exchange(f.typed, {});
  // The history gets the whole number, not what it was made from.
  f.text.type(ChkNum(shown) == kNotANumber ? shown : correctedText(p, shown));
  f.text.pressEnter();
  window_.setText(fieldControl(p), text(p));
  Confirmed confirmed{text(p), {}, text(p) != shown_.text(p)};
  const ParamSpec& spec = parameterSpec(p);
  if (typed != text(p) && ChkNum(typed) != ChkNum(text(p)))
    confirmed.correction =
        tr("{1}: \"{2}\" became {3} ({4} to {5})", fieldName(p), typed, text(p), spec.min, spec.max);
  return confirmed;
}

void Form::left(Param p) {
  field(p).typed = window_.text(fieldControl(p));
  setText(p, correctedText(p, field(p).typed));
}

std::vector<Param> Form::pending(bool undone) const {
  std::vector<Param> waiting;
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    if (window_.text(fieldControl(p)) != text(p) || (undone && text(p) != shown_.text(p)))
      waiting.push_back(p);
  }
  return waiting;
}

bool Form::isNew(Param p) const {
  return window_.text(fieldControl(p)) != text(p) || text(p) != shown_.text(p);
}

void Form::forgetLatest(Param p) {
  ValidText& value = field(p).text;
  // A text that was never confirmed, as while stepping, is in no history; the latest entry is the document's.
  if (text(p) == shown_.text(p)) return;
  if (value.UndoLevel() > 0 && value.UndoText() == value.Value()) value.setUndoLevel(value.UndoLevel() - 1);
}

void Form::restore(Param p) {
  field(p).typed.clear();
  field(p).text.setUnDoing(true);
  setText(p, shown_.text(p));
  field(p).text.setUnDoing(false);
  showColours();
}

std::string Form::stepped(Param p, int steps) const {
  const ParamSpec& spec = parameterSpec(p);
  const double step = parseNumber(spec.step).value_or(1);
  const double now = parseNumber(correctedText(p, window_.text(fieldControl(p)))).value_or(0);
  // On the step's own grid, so that 0.1 added ten times is 1.
  const double next = roundHalfEven((now + steps * step) / step * 1000) / 1000 * step;
  return correctedText(p, shortestText(static_cast<float>(next)));
}

std::optional<Param> Form::undoLatest() {
  std::optional<Param> latest;
  float best = 0;
  for (ControlId control = 0; control < static_cast<ControlId>(formTable().size()); ++control) {
    const auto p = parameterOf(control);
    if (!p || field(*p).text.UndoLevel() <= 0 || !(field(*p).text.UndoTime() > best)) continue;
    latest = p;
    best = field(*p).text.UndoTime();
  }
  if (!latest) return latest;
  ValidText& value = field(*latest).text;
  value.setUnDoing(true);
  value.setUndoTime(-value.UndoTime());
  value.setUndoLevel(value.UndoLevel() - 1);
  setText(*latest, std::string(value.UndoText()));
  value.setUnDoing(false);
  showColours();
  return latest;
}

Shape Form::shape() const {
  return static_cast<Shape>(std::clamp(window_.selected(controlId("lstType")), 0, kShapeCount - 1));
}

void Form::setText(Param p, const std::string& text) {
  field(p).text.setValue(text);
  window_.setText(fieldControl(p), field(p).text.Value());
}

void Form::showColours() {
  for (int box = 0; box < kColourBoxes; ++box)
    window_.setColours(kFirstColourBox + box, shown_.boxes[box], kBlack);
  const KnotFields now = read();  // a field may show another number than the document has
  const int back = now.whole(Param::PicKnotBackColour);
  const Colour background = BColor(shown_.boxes, back);
  window_.setColours(fieldControl(Param::PicKnotBackColour), background, textOn(background));
  const int start = std::abs(now.whole(Param::StartColour));
  const Colour first = strandColours(shown_.boxes).display[start];
  window_.setColours(fieldControl(Param::StartColour), first, textOn(first));
}

/// The offset field is there for the shapes that have one.
void Form::showOffset() {
  const std::string_view label = shapeTable()[static_cast<std::size_t>(shown_.shape)].offsetLabel;
  window_.setVisible(controlId("lblXF"), !label.empty());
  window_.setVisible(fieldControl(Param::CrossOffset), !label.empty());
  if (!label.empty()) window_.setText(controlId("lblXF"), translated(kShortContext, label));
}

/// It has its place where other shapes have their offset.
void Form::showWrap() {
  const ControlId box = checkControl(Check::Wrap);
  window_.setVisible(box, shapeTable()[static_cast<std::size_t>(shown_.shape)].offsetLabel.empty());
  window_.setEnabled(box, canWrap(shown_.shape));
}

/// Speed and loop can be used only while animation is chosen.
void Form::showAnimation() {
  const bool on = shown_.check(Check::Animate);
  window_.setEnabled(controlId("chkLoop"), on);
  window_.setEnabled(controlId("lblAnimate"), on);
  window_.setEnabled(fieldControl(Param::Animate), on);
}

}  // namespace lorivan
