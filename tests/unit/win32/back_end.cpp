// The Windows platform object and its user for the tests that all back ends share.
#include "unit/platform_contract/back_end.h"

#include <atomic>
#include <cstring>
#include <filesystem>
#include <thread>
#include <vector>

#include "app/command_table.h"
#include "app/form_table.h"
#include "own_windows.h"
#include "platform/win32/identifiers.h"
#include "platform/win32/platform_win32.h"
#include "platform/win32/text.h"

#include <dlgs.h>  // behind the system's other headers
#include <shlobj.h>

namespace lorivan::contract {
namespace {

using namespace win32;

constexpr const char* kApplication = "Lorivan test";
constexpr const wchar_t* kKey = L"Software\\Lorivan test";

/// Waits in a thread of its own for a dialog and answers it.
void answerDialog(bool agree, const std::wstring& text) {
  for (int i = 0; i < 500; ++i, Sleep(20)) {
    const HWND dialog = findOwnWindow(L"#32770");
    if (dialog == nullptr || !IsWindowVisible(dialog)) continue;
    Sleep(100);  // until it has filled itself
    constexpr int kInput = 100;
    for (const int entry : {static_cast<int>(cmb13), static_cast<int>(edt1), kInput})
      if (!text.empty() && GetDlgItem(dialog, entry) != nullptr) {
        SetDlgItemTextW(dialog, entry, text.c_str());
        break;
      }
    PostMessageW(dialog, WM_COMMAND, agree ? IDOK : IDCANCEL, 0);
    return;
  }
  ADD_FAILURE() << "no dialog";
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
    constexpr std::pair<const char*, WPARAM> names[] = {{"Return", VK_RETURN}, {"Tab", VK_TAB},
                                                        {"Up", VK_UP},         {"Down", VK_DOWN},
                                                        {"Left", VK_LEFT},     {"F1", VK_F1}};
    const auto named = std::ranges::find(names, keys, [](const auto& n) { return std::string(n.first); });
    const auto letter = static_cast<WPARAM>(keys.back());
    if (keys.starts_with("Alt+")) PostMessageW(GetFocus(), WM_SYSCHAR, letter | 0x20, 1 << 29);
    if (keys.starts_with("Ctrl+")) return pressWithControl(letter);
    if (named != std::end(names)) PostMessageW(GetFocus(), WM_KEYDOWN, named->second, 1);
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
  void mouse(ControlId picture, MouseAction action, int button, int x, int y) override {
    if (action == MouseAction::leave) ReleaseCapture();  // as when another window takes it
    constexpr UINT messages[][2] = {{WM_LBUTTONDOWN, WM_RBUTTONDOWN},
                                    {WM_MOUSEMOVE, WM_MOUSEMOVE},
                                    {WM_LBUTTONUP, WM_RBUTTONUP},
                                    {WM_NULL, WM_NULL}};
    PostMessageW(child(picture), messages[static_cast<int>(action)][button - 1], 0, MAKELPARAM(x, y));
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
  void settle() { window_.processEvents(); }
  void pressWithControl(WPARAM letter) {
    BYTE state[256] = {};
    state[VK_CONTROL] = 0x80;
    SetKeyboardState(state);
    PostMessageW(GetFocus(), WM_KEYDOWN, letter, 1);
    settle();
    state[VK_CONTROL] = 0;
    SetKeyboardState(state);
  }

  Window& window_;
  HWND main_;
  std::jthread answer_;
};

}  // namespace

std::unique_ptr<Platform> makePlatform(bool fresh) {
  if (fresh) RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
  return std::make_unique<PlatformWin32>(kApplication);
}
std::unique_ptr<User> makeUser(Window& window) { return std::make_unique<Win32User>(window); }
std::string scrapFile(const std::string& name) {
  static const std::filesystem::path folder = [] {
    const auto path = std::filesystem::temp_directory_path() / "Lorivan test";
    std::filesystem::remove_all(path);  // an old file would be asked for before it is overwritten
    std::filesystem::create_directories(path);
    return path;
  }();
  return narrow((folder / widen(name)).wstring());
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

}  // namespace lorivan::contract
