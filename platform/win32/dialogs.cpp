#include "platform/win32/dialogs.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "base/texts.h"
#include "platform/common/text_helpers.h"
#include "platform/win32/monitor.h"
#include "platform/win32/text.h"

namespace lorivan::win32 {
namespace {

constexpr std::size_t kLongestPath = 32768;  // UTF-16 units, with the final zero

/// A box without a title carries the program's name.
std::wstring titleText(const std::string& title) { return title.empty() ? L"Lorivan" : widen(title); }

/// Labels and patterns, each with a zero behind it, and a zero at the end.
std::wstring filterFor(const FileDialogSpec& dialog) {
  std::wstring filter;
  const auto add = [&](const std::string& label, const std::string& extensions) {
    for (const std::string& text : {label, filePatterns(extensions, ";")}) {
      filter += widen(text);
      filter += L'\0';
    }
  };
  add(dialog.filterLabel, dialog.extensions);
  for (const FileFilter& more : dialog.more) add(more.label, more.extensions);
  return filter;
}

std::wstring systemPath(std::string_view path) {
  std::wstring text = widen(path);
  std::replace(text.begin(), text.end(), L'/', L'\\');
  return text;
}

/// A folder that is gone, or that no system would take for one, is not worth a failed dialog.
bool isFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

DWORD flagsFor(const FileDialogSpec& dialog) {
  DWORD flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!dialog.save) flags |= OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
  if (dialog.overwritePrompt) flags |= OFN_OVERWRITEPROMPT;
  return flags;
}

/// A dialog template in memory, as the system reads it: words in a row, each item on a border of four bytes.
class DialogTemplate {
 public:
  DialogTemplate(const std::wstring& title, short width, short height, WORD items) {
    DLGTEMPLATE head{};
    head.style = DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU;
    head.cdit = items;
    head.cx = width;
    head.cy = height;
    append(head);
    words_.insert(words_.end(), {0, 0});  // no menu, the usual class
    append(title);
    words_.push_back(9);
    append(std::wstring(L"MS Shell Dlg 2"));
  }

  void item(WORD classAtom, WORD identifier, DWORD style, SMALL_RECT box, const std::wstring& text) {
    if (words_.size() % 2 != 0) words_.push_back(0);
    DLGITEMTEMPLATE head{};
    head.style = style | WS_CHILD | WS_VISIBLE;
    head.x = box.Left;
    head.y = box.Top;
    head.cx = static_cast<short>(box.Right - box.Left);
    head.cy = static_cast<short>(box.Bottom - box.Top);
    head.id = identifier;
    append(head);
    words_.insert(words_.end(), {0xFFFF, classAtom});
    append(text);
    words_.push_back(0);  // no more data
  }

  const DLGTEMPLATE* get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

 private:
  template <class Record>
  void append(const Record& record) {
    const std::size_t place = words_.size();
    words_.resize(place + sizeof(Record) / sizeof(WORD));
    std::memcpy(&words_[place], &record, sizeof(Record));
  }
  void append(const std::wstring& text) {
    for (const wchar_t c : text) words_.push_back(static_cast<WORD>(c));
    words_.push_back(0);
  }

  std::vector<WORD> words_;
};

constexpr WORD kButtonClass = 0x0080, kEditClass = 0x0081, kStaticClass = 0x0082;
constexpr WORD kEntry = 100, kHint = 90;

/// In the middle of the window that asks, where the user looks, and on its screen.
void centreOnOwner(HWND dialog) {
  const HWND window = GetWindow(dialog, GW_OWNER);
  RECT owner{}, own{};
  if (window == nullptr || !GetWindowRect(window, &owner) || !GetWindowRect(dialog, &own)) return;
  const RECT room = monitorOf(window).rcWork;
  const LONG width = own.right - own.left, height = own.bottom - own.top;
  const auto place = [](LONG middle, LONG size, LONG from, LONG to) {
    return static_cast<int>(std::clamp(middle - size / 2, from, std::max(from, to - size)));
  };
  SetWindowPos(dialog, nullptr, place((owner.left + owner.right) / 2, width, room.left, room.right),
               place((owner.top + owner.bottom) / 2, height, room.top, room.bottom), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

struct TextQuestion {
  std::wstring initial;
  std::string answer;
};

void startTextQuestion(HWND dialog, TextQuestion* question) {
  SetWindowLongPtrW(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(question));
  SetDlgItemTextW(dialog, kEntry, question->initial.c_str());
  SendDlgItemMessageW(dialog, kEntry, EM_SETSEL, 0, -1);
}

std::string enteredText(HWND dialog, int identifier) {
  const HWND entry = GetDlgItem(dialog, identifier);
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(entry)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(entry, text.data(), static_cast<int>(text.size()))));
  return narrow(text);
}

void endTextQuestion(HWND dialog, int button) {
  auto* question = reinterpret_cast<TextQuestion*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (question != nullptr && button == IDOK) question->answer = enteredText(dialog, kEntry);
  EndDialog(dialog, button);
}

INT_PTR CALLBACK textQuestionProcedure(HWND dialog, UINT message, WPARAM wide, LPARAM argument) {
  if (message == WM_INITDIALOG) {
    centreOnOwner(dialog);
    startTextQuestion(dialog, reinterpret_cast<TextQuestion*>(argument));
    return TRUE;
  }
  if (message != WM_COMMAND || (LOWORD(wide) != IDOK && LOWORD(wide) != IDCANCEL)) return FALSE;
  endTextQuestion(dialog, LOWORD(wide));
  return TRUE;
}

struct OptionQuestion {
  const OptionDialogSpec& spec;
  std::vector<OptionLine> lines;
};

void startOptions(HWND dialog, OptionQuestion* question) {
  SetWindowLongPtrW(dialog, DWLP_USER, reinterpret_cast<LONG_PTR>(question));
  for (std::size_t i = 0; i < question->lines.size(); ++i) {
    const OptionLine& line = question->lines[i];
    const int identifier = kEntry + static_cast<int>(i);
    if (line.isBox)
      CheckDlgButton(dialog, identifier, line.on ? BST_CHECKED : BST_UNCHECKED);
    else
      SetDlgItemTextW(dialog, identifier, widen(line.text).c_str());
  }
}

/// False while a line is wrong, which is shown.
bool takeOptions(HWND dialog) {
  auto* question = reinterpret_cast<OptionQuestion*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (question == nullptr) return true;
  for (std::size_t i = 0; i < question->lines.size(); ++i) {
    OptionLine& line = question->lines[i];
    const int identifier = kEntry + static_cast<int>(i);
    if (line.isBox)
      line.on = IsDlgButtonChecked(dialog, identifier) == BST_CHECKED;
    else
      line.text = enteredText(dialog, identifier);
  }
  const auto wrong = question->spec.check ? question->spec.check(question->lines) : std::nullopt;
  if (!wrong) return true;
  SetDlgItemTextW(dialog, kHint, widen(wrong->why).c_str());
  const HWND entry = GetDlgItem(dialog, kEntry + static_cast<int>(wrong->place));
  SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(entry), TRUE);
  SendMessageW(entry, EM_SETSEL, 0, -1);
  MessageBeep(MB_ICONWARNING);
  return false;
}

INT_PTR CALLBACK optionsProcedure(HWND dialog, UINT message, WPARAM wide, LPARAM argument) {
  if (message == WM_INITDIALOG) {
    centreOnOwner(dialog);
    startOptions(dialog, reinterpret_cast<OptionQuestion*>(argument));
    return TRUE;
  }
  if (message != WM_COMMAND || (LOWORD(wide) != IDOK && LOWORD(wide) != IDCANCEL)) return FALSE;
  if (LOWORD(wide) == IDOK && !takeOptions(dialog)) return TRUE;
  EndDialog(dialog, LOWORD(wide));
  return TRUE;
}

/// While it lives, a message box of this thread that asks yes or no asks whether to save instead.
class SaveLabels {
 public:
  SaveLabels() : hook_(SetWindowsHookExW(WH_CBT, relabel, nullptr, GetCurrentThreadId())) {}
  SaveLabels(const SaveLabels&) = delete;
  SaveLabels& operator=(const SaveLabels&) = delete;
  ~SaveLabels() { UnhookWindowsHookEx(hook_); }

 private:
  static LRESULT CALLBACK relabel(int code, WPARAM wide, LPARAM argument) {
    const auto box = reinterpret_cast<HWND>(wide);
    if (code == HCBT_ACTIVATE && GetDlgItem(box, IDYES) != nullptr && GetDlgItem(box, IDNO) != nullptr) {
      SetDlgItemTextW(box, IDYES, widen(tr("&Save")).c_str());
      SetDlgItemTextW(box, IDNO, widen(tr("&Don't save")).c_str());
      SetDlgItemTextW(box, IDCANCEL, widen(tr("Cancel")).c_str());
    }
    return CallNextHookEx(nullptr, code, wide, argument);
  }

  HHOOK hook_;
};

}  // namespace

void showMessage(HWND owner, const std::string& text, const std::string& title, MessageIcon icon) {
  const UINT sign = icon == MessageIcon::critical ? MB_ICONERROR : 0U;
  MessageBoxW(owner, widen(text).c_str(), titleText(title).c_str(), MB_OK | sign);
}

bool askConfirmation(HWND owner, const std::string& text, const std::string& title) {
  return MessageBoxW(owner, widen(text).c_str(), titleText(title).c_str(), MB_OKCANCEL) == IDOK;
}

SaveAnswer askWhetherToSave(HWND owner, const std::string& text, const std::string& title) {
  const SaveLabels labels;
  const int button = MessageBoxW(owner, widen(text).c_str(), titleText(title).c_str(), MB_YESNOCANCEL);
  if (button == IDYES) return SaveAnswer::save;
  return button == IDNO ? SaveAnswer::discard : SaveAnswer::cancel;
}

std::string askFile(HWND owner, const FileDialogSpec& dialog) {
  const InitialName initial = splitInitialName(dialog.initialName);
  const std::wstring title = widen(dialog.title), folder = systemPath(initial.folder);
  const std::wstring filter = filterFor(dialog), extension = widen(dialog.defaultExtension);
  std::wstring path = systemPath(initial.name);
  path.resize(kLongestPath, L'\0');
  OPENFILENAMEW question{};
  question.lStructSize = sizeof question;
  question.hwndOwner = owner;
  question.lpstrFilter = filter.c_str();
  question.lpstrFile = path.data();
  question.nMaxFile = static_cast<DWORD>(path.size());
  question.lpstrInitialDir = isFolder(folder) ? folder.c_str() : nullptr;
  question.lpstrTitle = title.empty() ? nullptr : title.c_str();
  question.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  question.Flags = flagsFor(dialog);
  const BOOL chosen = dialog.save ? GetSaveFileNameW(&question) : GetOpenFileNameW(&question);
  return chosen ? narrow(path.c_str()) : std::string();
}

std::optional<std::vector<OptionLine>> askOptions(HWND owner, const OptionDialogSpec& spec) {
  constexpr short kWidth = 265, kLineHeight = 17, kFirst = 32, kMargin = 7, kButton = 50;
  const auto count = static_cast<short>(spec.lines.size());
  const auto end = static_cast<short>(kFirst + count * kLineHeight);
  WORD items = 3;
  for (const OptionLine& line : spec.lines) items = static_cast<WORD>(items + (line.isBox ? 1 : 2));
  DialogTemplate form(titleText(spec.title), kWidth, static_cast<short>(end + 25), items);
  form.item(kStaticClass, kHint, SS_LEFT, {kMargin, kMargin, kWidth - kMargin, kFirst - 3}, widen(spec.hint));
  for (short i = 0; i < count; ++i) {
    const OptionLine& line = spec.lines[i];
    const auto top = static_cast<short>(kFirst + i * kLineHeight);
    const auto identifier = static_cast<WORD>(kEntry + i);
    if (line.isBox) {
      form.item(kButtonClass, identifier, BS_AUTOCHECKBOX | WS_TABSTOP,
                {kMargin, top, kWidth - kMargin, static_cast<short>(top + 12)}, widen(line.label));
      continue;
    }
    form.item(kStaticClass, static_cast<WORD>(50 + i), SS_LEFT,
              {kMargin, static_cast<short>(top + 2), 145, static_cast<short>(top + 12)}, widen(line.label));
    form.item(kEditClass, identifier, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL,
              {150, top, kWidth - kMargin, static_cast<short>(top + 13)}, L"");
  }
  const auto top = static_cast<short>(end + 4), bottom = static_cast<short>(end + 18);
  form.item(kButtonClass, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP,
            {kWidth - kMargin - 2 * kButton - 4, top, kWidth - kMargin - kButton - 4, bottom}, L"OK");
  form.item(kButtonClass, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP,
            {kWidth - kMargin - kButton, top, kWidth - kMargin, bottom}, widen(tr("Cancel")));
  OptionQuestion question{spec, spec.lines};
  const INT_PTR button = DialogBoxIndirectParamW(GetModuleHandleW(nullptr), form.get(), owner,
                                                 optionsProcedure, reinterpret_cast<LPARAM>(&question));
  if (button != IDOK) return std::nullopt;
  return std::move(question.lines);
}

std::string askText(HWND owner, const std::string& prompt, const std::string& title,
                    const std::string& initial) {
  DialogTemplate form(titleText(title), 240, 70, 4);
  form.item(kStaticClass, 101, SS_LEFT, {7, 7, 233, 27}, widen(prompt));
  form.item(kEditClass, kEntry, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, {7, 29, 233, 43}, L"");
  form.item(kButtonClass, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, {129, 50, 179, 64}, L"OK");
  form.item(kButtonClass, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, {183, 50, 233, 64}, widen(tr("Cancel")));
  TextQuestion question{widen(initial), {}};
  DialogBoxIndirectParamW(GetModuleHandleW(nullptr), form.get(), owner, textQuestionProcedure,
                          reinterpret_cast<LPARAM>(&question));
  return question.answer;
}

std::optional<Colour> ColourDialog::ask(HWND owner, Colour initial) {
  CHOOSECOLORW question{};
  question.lStructSize = sizeof question;
  question.hwndOwner = owner;
  question.rgbResult = initial & 0xFFFFFF;
  question.lpCustColors = own_.data();
  question.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR;
  if (!ChooseColorW(&question)) return std::nullopt;
  return question.rgbResult;
}

}  // namespace lorivan::win32
