// The modal dialogs.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "platform/win32/windows_api.h"
#include "platform/window.h"

namespace lorivan::win32 {

void showMessage(HWND owner, const std::string& text, const std::string& title, MessageIcon icon);
bool askConfirmation(HWND owner, const std::string& text, const std::string& title);
SaveAnswer askWhetherToSave(HWND owner, const std::string& text, const std::string& title);
std::string askFile(HWND owner, const FileDialogSpec& dialog);
std::optional<std::vector<OptionLine>> askOptions(HWND owner, const OptionDialogSpec& spec);
std::string askText(HWND owner, const std::string& prompt, const std::string& title,
                    const std::string& initial);

/// The colour dialog; it keeps the user's own colours from one call to the next.
class ColourDialog {
 public:
  ColourDialog() { own_.fill(0xFFFFFF); }
  std::optional<Colour> ask(HWND owner, Colour initial);

 private:
  std::array<COLORREF, 16> own_;
};

}  // namespace lorivan::win32
