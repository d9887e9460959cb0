#include "platform/win32/form.h"

#include <algorithm>
#include <cmath>

#include "platform/win32/checked.h"
#include "platform/win32/list_items.h"
#include "platform/win32/text.h"

namespace lorivan::win32 {
namespace {

constexpr WPARAM kLongestEntry = 64;
constexpr int kOverhang = 2;  // pixels that a font may draw a word wider than it says

/// What the system needs to know to make one kind of control.
struct NativeKind {
  const wchar_t* className;
  DWORD style, extendedStyle;
};

NativeKind nativeKind(ControlKind kind) {
  switch (kind) {
    case ControlKind::group:
      return {WC_BUTTONW, BS_GROUPBOX, WS_EX_TRANSPARENT};
    case ControlKind::label:
      return {WC_STATICW, SS_OWNERDRAW, 0};
    case ControlKind::number:
      return {WC_EDITW, WS_TABSTOP | ES_AUTOHSCROLL | ES_RIGHT, WS_EX_CLIENTEDGE};
    case ControlKind::text:
      return {WC_EDITW, ES_AUTOHSCROLL | ES_RIGHT | ES_READONLY, WS_EX_CLIENTEDGE};
    case ControlKind::check:
      return {WC_BUTTONW, WS_TABSTOP | BS_AUTOCHECKBOX, 0};
    case ControlKind::radio:
      return {WC_BUTTONW, BS_AUTORADIOBUTTON, 0};
    case ControlKind::list:
      return {WC_COMBOBOXW, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS,
              0};
    case ControlKind::button:
      return {WC_BUTTONW, WS_TABSTOP | BS_PUSHBUTTON, 0};
    case ControlKind::colourBox:
      return {WC_BUTTONW, WS_TABSTOP | BS_OWNERDRAW, 0};
    case ControlKind::picture:
      break;
  }
  return {WC_STATICW, 0, 0};
}

int scaled(double pixels, const LayoutMetrics& metrics) {
  return static_cast<int>(std::lround(pixels * metrics.scale));
}

Colour mixed(Colour from, Colour to, double share) {
  const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
  return makeColour(mix(redOf(from), redOf(to)), mix(greenOf(from), greenOf(to)),
                    mix(blueOf(from), blueOf(to)));
}

/// With the context's own brush selected.
void fillBox(HDC context, const RECT& box, Colour colour) {
  SetDCBrushColor(context, colour);
  PatBlt(context, box.left, box.top, box.right - box.left, box.bottom - box.top, PATCOPY);
}

/// A height that a control should not pass, in the middle of its line.
LayoutRect centred(LayoutRect rect, int height) {
  if (rect.height > height) {
    rect.top += (rect.height - height) / 2;
    rect.height = height;
  }
  return rect;
}

}  // namespace

ControlId Form::groupOf(const ControlSpec& control) const {
  if (control.group.empty()) return -1;
  const auto found = std::find_if(specs_.begin(), specs_.end(),
                                  [&](const ControlSpec& spec) { return spec.name == control.group; });
  return found == specs_.end() ? -1 : static_cast<ControlId>(found - specs_.begin());
}

Status Form::create(HWND parent, const MouseHandler& onMouse) {
  parent_ = parent;
  for (ControlId control = 0; control < static_cast<ControlId>(specs_.size()); ++control)
    if (const Status made = makeControl(control, parent, onMouse); !made) return made;
  makeTips(parent);
  return {};
}

Status Form::makeControl(ControlId control, HWND parent, const MouseHandler& onMouse) {
  const ControlSpec& spec = specs_[control];
  State& state = at(control);
  state.group = groupOf(spec);
  if (spec.kind == ControlKind::picture) {
    auto view = PictureView::create(parent, kFirstControl + control,
                                    [onMouse, control](const MouseEvent& event) { onMouse(control, event); });
    if (!view) return view.error();
    state.picture = std::move(*view);
    state.handle = state.picture->handle();
    SetWindowTextW(state.handle, widen(spec.tooltip).c_str());  // not shown, but read out
    return {};
  }
  const NativeKind kind = nativeKind(spec.kind);
  DWORD style = WS_CHILD | WS_CLIPSIBLINGS | kind.style;
  // Radios of one group follow each other; the first one starts the arrow keys' circle and is the Tab stop.
  const bool follows = spec.kind == ControlKind::radio && control > 0 &&
                       this->kind(control - 1) == ControlKind::radio &&
                       specs_[control - 1].group == spec.group;
  if (!follows) style |= WS_GROUP | (spec.kind == ControlKind::radio ? WS_TABSTOP : 0U);
  const auto identifier = reinterpret_cast<HMENU>(static_cast<INT_PTR>(kFirstControl + control));
  state.handle = CreateWindowExW(kind.extendedStyle, kind.className, widen(spec.caption).c_str(), style, 0, 0,
                                 0, 0, parent, identifier, GetModuleHandleW(nullptr), nullptr);
  if (state.handle == nullptr) return unwritable(systemFault("CreateWindowEx"));
  // Drawn without a text, but read out with it.
  if (spec.kind == ControlKind::colourBox) SetWindowTextW(state.handle, widen(spec.tooltip).c_str());
  if (spec.kind == ControlKind::number) SendMessageW(state.handle, EM_LIMITTEXT, kLongestEntry, 0);
  return {};
}

void Form::forgetHandles() {
  for (State& state : states_) state.handle = nullptr;
  parent_ = tips_ = nullptr;
}

ControlId Form::find(HWND window) const {
  const auto found = std::find_if(states_.begin(), states_.end(), [&](const State& state) {
    return state.handle != nullptr && state.handle == window;
  });
  return found == states_.end() ? -1 : static_cast<ControlId>(found - states_.begin());
}

// ---- Places ----

bool Form::isPlaced(ControlId control) const {
  const CellPlace& place = specs_[control].place;
  return place.columns > 0 && place.rows > 0;
}

std::vector<ControlId> Form::place(int clientWidth, int clientHeight, HFONT font,
                                   const LayoutMetrics& metrics) {
  const FormLayout layout = computeLayout(specs_, clientWidth, clientHeight, metrics);
  largePicture_ = layout.picture;
  SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, scaled(400, metrics));
  std::vector<ControlId> resized;
  for (ControlId control = 0; control < static_cast<ControlId>(specs_.size()); ++control) {
    const LayoutRect& rect = layout.controls[control];
    takeFont(control, font, metrics);
    at(control).place = rect;
    placeControl(control, rect, metrics);
    placeTip(control);
    showState(control);
    PictureView* view = picture(control);
    if (view != nullptr && !rect.isEmpty() && view->fitSurface(rect.width, rect.height))
      resized.push_back(control);
  }
  RedrawWindow(parent_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
  return resized;
}

void Form::takeFont(ControlId control, HFONT font, const LayoutMetrics& metrics) {
  SendMessageW(handle(control), WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  if (kind(control) != ControlKind::number && kind(control) != ControlKind::text) return;
  // A font brings margins that would take the place of a digit.
  const int margin = scaled(2, metrics);
  SendMessageW(handle(control), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, margin));
}

void Form::placeControl(ControlId control, const LayoutRect& rect, const LayoutMetrics& metrics) {
  LayoutRect place = rect;
  switch (kind(control)) {
    case ControlKind::number:
    case ControlKind::text:
      // An entry keeps its line at its top: any taller, and the text stands above that of its label.
      place = centred(rect, metrics.lineHeight + 2 * GetSystemMetrics(SM_CYEDGE) + 2);
      break;
    case ControlKind::list:
      place = placeList(control, rect, metrics);
      break;
    case ControlKind::button:
      place = centred(rect, metrics.lineHeight + scaled(12, metrics));
      break;
    case ControlKind::label:
      place.width += kOverhang;
      break;
    default:
      break;
  }
  SetWindowPos(handle(control), nullptr, place.left, place.top, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
}

/// The height given to a drop-down list is that of its open list; its own follows from its line, which is as
/// high as a picture needs where there is room.
LayoutRect Form::placeList(ControlId control, const LayoutRect& rect, const LayoutMetrics& metrics) {
  const auto heightWith = [&](int line) {
    SendMessageW(handle(control), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), line);
    RECT box{};
    GetWindowRect(handle(control), &box);
    return static_cast<int>(box.bottom - box.top);
  };
  const int most = metrics.lineHeight + scaled(4, metrics), item = most + scaled(4, metrics);
  const int over = std::max(0, heightWith(most) - rect.height);
  const int height = heightWith(std::max(metrics.lineHeight, most - over));
  SendMessageW(handle(control), CB_SETITEMHEIGHT, 0, item);
  LayoutRect place = rect;
  place.top += (rect.height - height) / 2;
  place.height = height + 14 * item;
  return place;
}

// ---- Tooltips ----

void Form::makeTips(HWND parent) {
  tips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                          CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr,
                          GetModuleHandleW(nullptr), nullptr);
  for (ControlId control = 0; control < static_cast<ControlId>(specs_.size()); ++control) {
    std::wstring text = widen(tipOf(control));
    if (text.empty()) continue;
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = parent;
    tool.lpszText = text.data();
    tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
    tool.uId = reinterpret_cast<UINT_PTR>(handle(control));
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    // A disabled control sees no mouse, the window behind it does: there the tip stands on the place itself.
    tool.uFlags = TTF_SUBCLASS;
    tool.uId = static_cast<UINT_PTR>(control);
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

/// A label without a tip has that of the control it stands before. A large picture has none: it would cover
/// what is pointed at.
std::string_view Form::tipOf(ControlId control) const {
  const auto index = static_cast<std::size_t>(control);
  if (kind(control) == ControlKind::picture && specs_[index].group.empty()) return {};
  const bool borrows =
      kind(control) == ControlKind::label && specs_[index].tooltip.empty() && index + 1 < specs_.size();
  return specs_[borrows ? index + 1 : index].tooltip;
}

void Form::placeTip(ControlId control) {
  const LayoutRect& rect = at(control).place;
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.hwnd = parent_;
  tool.uId = static_cast<UINT_PTR>(control);
  if (shown(control)) tool.rect = {rect.left, rect.top, rect.left + rect.width, rect.top + rect.height};
  SendMessageW(tips_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
}

// ---- States ----

bool Form::shown(ControlId control) const {
  const State& state = at(control);
  return isPlaced(control) && state.visible && (state.group < 0 || at(state.group).visible);
}

bool Form::enabled(ControlId control) const {
  const State& state = at(control);
  return state.enabled && (state.group < 0 || at(state.group).enabled);
}

void Form::showState(ControlId control) {
  const HWND window = handle(control);
  if (window == nullptr) return;
  const bool on = enabled(control), seen = shown(control);
  if (GetFocus() == window && !(on && seen)) focusPicture();
  if ((IsWindowEnabled(window) != 0) != on) EnableWindow(window, on);
  const bool isSeen = (GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) != 0;
  if (isSeen == seen) return;
  ShowWindow(window, seen ? SW_SHOWNA : SW_HIDE);
  placeTip(control);
}

void Form::focus(ControlId control) {
  if (handle(control) == nullptr || !enabled(control) || !shown(control)) return;
  moveFocus(handle(control));
}

void Form::focusPicture() {
  const ControlId picture = pictureInUse(specs_, [this](ControlId id) { return enabled(id) && shown(id); });
  moveFocus(picture >= 0 ? handle(picture) : parent_);
}

void Form::moveFocus(HWND window) {
  movingFocus_ = true;
  movedTo_ = window;
  SetFocus(window);
  movingFocus_ = false;
}

ControlId Form::controlAt(POINT point) const {
  for (ControlId control = 0; control < static_cast<ControlId>(specs_.size()); ++control) {
    const LayoutRect& place = at(control).place;
    const RECT box = {place.left, place.top, place.left + place.width, place.top + place.height};
    const ControlKind kind = this->kind(control);
    const bool large = kind == ControlKind::picture && at(control).group < 0;
    if (kind == ControlKind::group || large || !shown(control) || !PtInRect(&box, point)) continue;
    return kind == ControlKind::label ? control + 1 : control;
  }
  return -1;
}

void Form::forMembers(ControlId group, void (Form::*act)(ControlId)) {
  for (ControlId control = 0; control < static_cast<ControlId>(specs_.size()); ++control)
    if (at(control).group == group) (this->*act)(control);
}

void Form::setEnabled(ControlId control, bool on) {
  at(control).enabled = on;
  showState(control);
  if (kind(control) == ControlKind::group) forMembers(control, &Form::showState);
}

void Form::setVisible(ControlId control, bool on) {
  at(control).visible = on;
  showState(control);
  if (kind(control) == ControlKind::group) forMembers(control, &Form::showState);
}

std::string Form::text(ControlId control) const {
  const HWND window = handle(control);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  return narrow(std::wstring_view(text).substr(0, static_cast<std::size_t>(std::max(0, length))));
}

void Form::setText(ControlId control, const std::string& text) {
  if (this->text(control) == text) return;  // spares a flicker, and keeps the selection
  SetWindowTextW(handle(control), widen(text).c_str());
  if (kind(control) == ControlKind::number && GetFocus() == handle(control))
    SendMessageW(handle(control), EM_SETSEL, 0, -1);
}

bool Form::checked(ControlId control) const {
  return SendMessageW(handle(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void Form::setChecked(ControlId control, bool on) {
  if (on && kind(control) == ControlKind::radio) {
    const std::string_view group = specs_[control].group;
    for (ControlId other = 0; other < static_cast<ControlId>(specs_.size()); ++other)
      if (other != control && kind(other) == ControlKind::radio && specs_[other].group == group)
        setChecked(other, false);
  }
  SendMessageW(handle(control), BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
  at(control).wasChecked = on;
}

bool Form::takeToggled(ControlId control) {
  const bool on = checked(control);
  if (on == at(control).wasChecked) return false;
  if (kind(control) == ControlKind::radio)
    setChecked(control, on);  // the others of its group are off now
  else
    at(control).wasChecked = on;
  return true;
}

void Form::setItems(ControlId list, const std::vector<std::string>& items) {
  SendMessageW(handle(list), CB_RESETCONTENT, 0, 0);
  for (const std::string& item : items)
    SendMessageW(handle(list), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(widen(item).c_str()));
}

void Form::setItemPictures(ControlId list, const std::vector<ItemPicture>& pictures) {
  at(list).pictures = pictures;
  if (handle(list) != nullptr) InvalidateRect(handle(list), nullptr, TRUE);
}

void Form::drawItem(const DRAWITEMSTRUCT& item) const {
  const ControlId list = find(item.hwndItem);
  if (list >= 0) drawListItem(item, at(list).pictures);
}

int Form::selected(ControlId list) const {
  return static_cast<int>(SendMessageW(handle(list), CB_GETCURSEL, 0, 0));
}

void Form::select(ControlId list, int index) {
  SendMessageW(handle(list), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

// ---- Colours and pictures ----

void Form::setColours(ControlId control, Colour background, Colour text) {
  at(control).colours = Colours{background, text, OwnedBrush(CreateSolidBrush(background))};
  // Without a window that call would mean all windows of the desktop.
  if (handle(control) != nullptr) InvalidateRect(handle(control), nullptr, TRUE);
}

HBRUSH Form::brushFor(HWND window, HDC context) const {
  const ControlId control = find(window);
  if (control < 0 || !at(control).colours || !enabled(control)) return nullptr;
  const Colours& colours = *at(control).colours;
  SetTextColor(context, colours.text);
  SetBkColor(context, colours.background);
  return colours.brush.get();
}

void Form::drawColourBox(const DRAWITEMSTRUCT& item) const {
  const ControlId control = find(item.hwndItem);
  if (control < 0) return;
  const Colour face = GetSysColor(COLOR_BTNFACE);
  Colour fill = at(control).colours ? at(control).colours->background : face;
  if ((item.itemState & ODS_DISABLED) != 0) fill = mixed(fill, face, 0.6);
  const bool marked = (item.itemState & (ODS_FOCUS | ODS_SELECTED)) != 0;
  const Selection brush(item.hDC, GetStockObject(DC_BRUSH));
  RECT box = item.rcItem;
  fillBox(item.hDC, box,
          marked ? GetSysColor(COLOR_HIGHLIGHT) : mixed(fill, GetSysColor(COLOR_BTNTEXT), 0.35));
  const int edge = marked ? 2 : 1;
  InflateRect(&box, -edge, -edge);
  if (marked) {
    fillBox(item.hDC, box, face);
    InflateRect(&box, -1, -1);
  }
  fillBox(item.hDC, box, fill);
}

void Form::drawLabel(const DRAWITEMSTRUCT& item) const {
  const ControlId control = find(item.hwndItem);
  if (control < 0) return;
  const bool grey = (item.itemState & ODS_DISABLED) != 0;
  const bool plain = (SendMessageW(item.hwndItem, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(item.hwndItem, WM_GETFONT, 0, 0));
  const Selection selected(item.hDC, font != nullptr ? font : GetStockObject(DEFAULT_GUI_FONT));
  RECT box = item.rcItem;
  FillRect(item.hDC, &box, GetSysColorBrush(COLOR_BTNFACE));
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, GetSysColor(grey ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
  box.right -= kOverhang;
  DrawTextW(item.hDC, widen(text(control)).c_str(), -1, &box,
            DT_RIGHT | DT_VCENTER | DT_SINGLELINE | DT_NOCLIP | (plain ? DT_HIDEPREFIX : 0U));
}

void Form::showDrawnPictures() {
  for (State& state : states_)
    if (state.picture) state.picture->showDrawn();
}

}  // namespace lorivan::win32
