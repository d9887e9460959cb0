// The Windows platform object and its user for the tests that all back ends share.
#include "unit/platform_contract/back_end.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <thread>
#include <utility>
#include <vector>

#include "gui_objects.h"
#include "own_windows.h"
#include "platform/win32/identifiers.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/text.h"
#include "scratch_folder.h"
#include "window/form_table.h"

#include <dlgs.h>  // behind the system's other headers
#include <shlobj.h>

namespace lorivan::contract {
namespace {

using namespace win32;

constexpr const char* kApplication = "Lorivan test";
constexpr const wchar_t* kKey = L"Software\\Lorivan test";

/// Waits, in a thread of its own, until a dialog is open and has filled itself; nullptr if none opens.
HWND openDialog() {
  for (int waited = 0; waited < kPatience; waited += 20, Sleep(20)) {
    const HWND dialog = findOwnWindow(L"#32770");
    if (dialog == nullptr || !IsWindowVisible(dialog)) continue;
    Sleep(100);
    return dialog;
  }
  ADD_FAILURE() << "no dialog";
  return nullptr;
}

void answerDialog(bool agree, const std::wstring& text) {
  const HWND dialog = openDialog();
  constexpr int kInput = 100;
  for (const int entry : {static_cast<int>(cmb13), static_cast<int>(edt1), kInput})
    if (!text.empty() && GetDlgItem(dialog, entry) != nullptr) {
      SetDlgItemTextW(dialog, entry, text.c_str());
      break;
    }
  PostMessageW(dialog, WM_COMMAND, agree ? IDOK : IDCANCEL, 0);
}

/// Presses one of a message box's buttons; an empty label closes the box.
void pressInBox(const std::wstring& label) {
  const HWND box = openDialog();
  const HWND button = FindWindowExW(box, nullptr, L"Button", label.c_str());
  if (label.empty()) return void(PostMessageW(box, WM_CLOSE, 0, 0));
  if (button != nullptr) return void(PostMessageW(button, BM_CLICK, 0, 0));
  PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
  ADD_FAILURE() << "no such button";
}

/// The window's and the texts' colours of the whole desktop, with which others must be able to live on.
void setDesktopColours(COLORREF face, COLORREF text) {
  const int elements[] = {COLOR_BTNFACE, COLOR_BTNTEXT};
  const COLORREF colours[] = {face, text};
  SetSysColors(2, elements, colours);
}

/// Bytes in use on all heaps. The working set has the holes between them, too, and Wine 8 splits the hole
/// that was made last, however large: with the same blocks in use its heaps take ever more room.
std::size_t bytesInUse() {
  std::array<HANDLE, 64> heaps{};
  const auto capacity = static_cast<DWORD>(heaps.size());
  const DWORD count = std::min(GetProcessHeaps(capacity, heaps.data()), capacity);
  std::size_t bytes = 0;
  for (DWORD i = 0; i < count; ++i) {
    PROCESS_HEAP_ENTRY entry{};
    if (!HeapLock(heaps[i])) continue;
    while (HeapWalk(heaps[i], &entry))
      if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
    HeapUnlock(heaps[i]);
  }
  return bytes;
}

class Win32User final : public User {
 public:
  explicit Win32User(Window& window) : window_(window), main_(findOwnWindow(L"LorivanWindow")) {}

  void focus(ControlId control) override {
    SetFocus(child(control));
    settle();
  }
  bool hasFocus(ControlId control) const override { return GetFocus() == child(control); }
  void type(const char* text) override {
    for (; *text != '\0'; ++text) PostMessageW(GetFocus(), WM_CHAR, static_cast<WPARAM>(*text), 0);
    settle();
  }
  void press(const std::string& keys) override {
    constexpr std::pair<const char*, WPARAM> names[] = {
        {"Return", VK_RETURN}, {"Tab", VK_TAB},       {"Up", VK_UP},          {"Down", VK_DOWN},
        {"Left", VK_LEFT},     {"Escape", VK_ESCAPE}, {"F1", VK_F1},          {"F11", VK_F11},
        {"F12", VK_F12},       {"PgUp", VK_PRIOR},    {"PgDn", VK_NEXT},      {"Space", VK_SPACE},
        {"Right", VK_RIGHT},   {"Plus", VK_ADD},      {"Minus", VK_SUBTRACT}, {"Del", VK_DELETE}};
    const std::string key = keys.substr(keys.rfind('+') + 1);
    const auto named = std::ranges::find(names, key, [](const auto& n) { return std::string(n.first); });
    const auto code = named != std::end(names) ? named->second : static_cast<WPARAM>(keys.back());
    if (keys.starts_with("Alt+")) {
      PostMessageW(GetFocus(), WM_SYSCHAR, code | 0x20, 1 << 29);
      return settle();
    }
    holdKeys(keys.find("Shift+") != std::string::npos, keys.find("Ctrl+") != std::string::npos);
    PostMessageW(GetFocus(), WM_KEYDOWN, code, 1);
    PostMessageW(GetFocus(), WM_KEYUP, code, 1);  // a button is pressed by Space's release
    settle();
    holdKeys(false, false);
  }
  void holdKeys(bool shift, bool ctrl) override {
    BYTE state[256] = {};
    state[VK_CONTROL] = ctrl ? 0x80 : 0;
    state[VK_SHIFT] = shift ? 0x80 : 0;
    SetKeyboardState(state);
  }
  void highlight(CommandId command) override {
    const bool none = command == kNoCommand;
    PostMessageW(main_, WM_MENUSELECT, none ? MAKEWPARAM(0, 0xFFFF) : MAKEWPARAM(kFirstCommand + command, 0),
                 0);
    settle();
  }
  void point(ControlId control) override {
    const ControlId from = std::exchange(pointed_, control);
    if (control >= 0)
      PostMessageW(child(control), WM_MOUSEMOVE, 0, MAKELPARAM(3, 3));
    else if (from >= 0)
      PostMessageW(child(from), WM_MOUSELEAVE, 0, 0);
    settle();
  }
  void click(ControlId control) override {
    if (!IsWindowEnabled(child(control))) return;  // posted messages would come through
    PostMessageW(child(control), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageW(child(control), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    settle();
  }
  void hold(ControlId control) override {
    PostMessageW(child(control), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
  }
  void letGo(ControlId control, bool inside) override {
    PostMessageW(child(control), WM_LBUTTONUP, 0, MAKELPARAM(inside ? 3 : -3, 3));
  }
  void pick(CommandId command) override {
    PostMessageW(main_, WM_COMMAND, static_cast<WPARAM>(kFirstCommand + command), 0);
    settle();
  }
  std::string menuText(CommandId command) const override {
    return textIn(GetMenu(main_), static_cast<UINT>(kFirstCommand + command));
  }
  void wheel(ControlId control, int by) override {
    RECT box{};
    GetWindowRect(child(control), &box);
    PostMessageW(child(control), WM_MOUSEWHEEL, static_cast<WPARAM>(MAKELONG(0, by)),
                 MAKELPARAM(box.left + 3, box.top + 3));
    settle();
  }
  void recolour(bool other) override {
    if (!other) return setDesktopColours(usualFace_, usualText_);
    usualFace_ = GetSysColor(COLOR_BTNFACE);
    usualText_ = GetSysColor(COLOR_BTNTEXT);
    setDesktopColours(0x303030, 0xEEEEEE);
  }
  void pressNext(const std::string& label) override {
    answer_ = std::jthread([label = widen(label)] { pressInBox(label); });
  }
  void mouse(ControlId picture, MouseAction action, int button, int x, int y) override {
    if (action == MouseAction::leave) ReleaseCapture();  // as when another window takes it
    constexpr UINT messages[][3] = {{WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN},
                                    {WM_MOUSEMOVE, WM_MOUSEMOVE, WM_MOUSEMOVE},
                                    {WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONUP},
                                    {WM_NULL, WM_NULL, WM_NULL},
                                    {WM_NULL, WM_NULL, WM_NULL},
                                    {WM_LBUTTONDBLCLK, WM_RBUTTONDBLCLK, WM_MBUTTONDBLCLK}};
    PostMessageW(child(picture), messages[static_cast<int>(action)][std::max(0, button - 1)], 0,
                 MAKELPARAM(x, y));
    settle();
  }
  void enlarge(int width, int height) override {
    RECT box{};
    GetWindowRect(main_, &box);
    SetWindowPos(main_, nullptr, 0, 0, box.right - box.left + width, box.bottom - box.top + height,
                 SWP_NOMOVE | SWP_NOZORDER);
    settle();
  }
  void drop(const std::string& path) override {
    const std::wstring name = widen(path);
    std::vector<char> block(sizeof(DROPFILES) + (name.size() + 2) * sizeof(wchar_t));
    DROPFILES head{};
    head.pFiles = sizeof head;
    head.fWide = TRUE;
    std::memcpy(block.data(), &head, sizeof head);
    std::memcpy(block.data() + sizeof head, name.data(), name.size() * sizeof(wchar_t));
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, block.size());
    std::memcpy(GlobalLock(memory), block.data(), block.size());
    GlobalUnlock(memory);
    PostMessageW(main_, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    settle();
  }
  void close() override { PostMessageW(main_, WM_CLOSE, 0, 0); }
  void answerNext(bool agree, const std::string& text) override {
    answer_ = std::jthread([agree, text = widen(text)] { answerDialog(agree, text); });
  }

 private:
  HWND child(ControlId control) const { return GetDlgItem(main_, kFirstControl + control); }
  /// Of an item in a menu or in one that can be opened from it.
  static std::string textIn(HMENU menu, UINT item) {
    std::string text;
    for (int i = 0; i < GetMenuItemCount(menu) && text.empty(); ++i) {
      const bool opens = (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_GRAYED) == 0;
      wchar_t own[200] = {};
      if (GetMenuItemID(menu, i) == item) GetMenuStringW(menu, item, own, 200, MF_BYCOMMAND);
      const HMENU submenu = GetSubMenu(menu, i);
      text = submenu != nullptr && opens ? textIn(submenu, item) : narrow(own);
    }
    return text.substr(0, text.find('\t'));
  }
  void settle() { window_.processEvents(); }

  Window& window_;
  HWND main_;
  std::jthread answer_;
  COLORREF usualFace_ = 0, usualText_ = 0;
  ControlId pointed_ = -1;
};

}  // namespace

std::unique_ptr<Platform> makePlatform(bool fresh) {
  if (fresh) RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
  return std::make_unique<PlatformWin32>(kApplication);
}
std::unique_ptr<User> makeUser(Window& window) { return std::make_unique<Win32User>(window); }
std::string scrapFile(const std::string& name) {
  static const Folder folder;
  return folder.file(name);
}
Held held() {
  const ObjectCounts counts = countGuiObjects();
  DWORD handles = 0;
  GetProcessHandleCount(GetCurrentProcess(), &handles);
  return {counts.graphics, counts.windows, static_cast<long>(handles),
          static_cast<long>(bytesInUse() / 1024)};
}
int clipboardWidth() {
  BITMAPINFOHEADER header{};
  if (!OpenClipboard(nullptr)) return -1;
  if (const HANDLE memory = GetClipboardData(CF_DIB); memory != nullptr) {
    std::memcpy(&header, GlobalLock(memory), sizeof header);
    GlobalUnlock(memory);
  }
  CloseClipboard();
  return header.biWidth;
}
std::string clipboardSvg() {
  std::string text;
  if (!OpenClipboard(nullptr)) return "?";
  const HANDLE memory = GetClipboardData(RegisterClipboardFormatW(L"image/svg+xml"));
  if (memory != nullptr) {
    text.assign(static_cast<const char*>(GlobalLock(memory)), GlobalSize(memory));
    GlobalUnlock(memory);
    EXPECT_NE(GetClipboardData(CF_ENHMETAFILE), nullptr);
  }
  CloseClipboard();
  return text;
}

}  // namespace lorivan::contract
