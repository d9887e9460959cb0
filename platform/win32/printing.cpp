#include "platform/win32/printing.h"

#include "platform/win32/checked.h"
#include "platform/win32/handles.h"
#include "platform/win32/text.h"

#include <cderr.h>  // behind the system's other headers

namespace lorivan::win32 {
namespace {

/// What the dialog hands out; all of it is given back.
struct PrintChoice {
  OwnedGlobalMemory mode, names;
  OwnedMemoryContext context;
};

/// No error code: the user cancelled.
Status failed(DWORD code) {
  if (code == PDERR_NODEFAULTPRN || code == PDERR_NODEVICES || code == PDERR_PRINTERNOTFOUND)
    return unwritable("There is no printer to print on");
  return unwritable("The printing dialog could not be shown: error {1}", code);
}

bool ask(PRINTDLGW& dialog, PrintChoice& choice) {
  dialog.hDevMode = choice.mode.release();
  dialog.hDevNames = choice.names.release();
  const bool agreed = PrintDlgW(&dialog) != 0;
  choice.mode.reset(dialog.hDevMode);
  choice.names.reset(dialog.hDevNames);
  choice.context.reset(dialog.hDC);
  return agreed;
}

void setOrientation(HGLOBAL mode, bool landscape) {
  auto* const settings = static_cast<DEVMODEW*>(GlobalLock(mode));
  if (settings == nullptr) return;
  settings->dmFields |= DM_ORIENTATION;
  settings->dmOrientation = landscape ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
  GlobalUnlock(mode);
}

/// False when the user cancelled.
Result<bool> choosePrinter(HWND owner, bool landscape, PrintChoice& choice) {
  PRINTDLGW dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner;
  dialog.Flags = PD_RETURNDEFAULT;
  if (!ask(dialog, choice)) return failed(CommDlgExtendedError()).error();
  if (choice.mode) setOrientation(choice.mode.get(), landscape);
  dialog.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_USEDEVMODECOPIESANDCOLLATE;
  dialog.nCopies = 1;
  if (ask(dialog, choice)) return true;
  const DWORD code = CommDlgExtendedError();
  if (code != 0) return failed(code).error();
  return false;
}

Status printPage(HDC context, const std::string& title, const std::function<Status(PrintPage&)>& draw) {
  const std::wstring name = widen(title);
  DOCINFOW job{};
  job.cbSize = sizeof job;
  job.lpszDocName = name.c_str();
  if (StartDocW(context, &job) <= 0) return unwritable(systemFault("StartDoc"));
  Status done = checked(StartPage(context) > 0, "StartPage");
  if (done) {
    PaperPage page(context);
    done = draw(page);
    if (const std::string fault = page.surface().fault(); done && !fault.empty()) done = unwritable(fault);
  }
  if (done) done = checked(EndPage(context) > 0, "EndPage");
  if (done) return checked(EndDoc(context) > 0, "EndDoc");
  AbortDoc(context);
  return done;
}

int unitsDown(HDC context) {
  return MulDiv(GetDeviceCaps(context, VERTRES), GetDeviceCaps(context, LOGPIXELSX),
                std::max(1, GetDeviceCaps(context, LOGPIXELSY)));
}

}  // namespace

PaperPage::PaperPage(HDC context)
    : context_(context), surface_(context, GetDeviceCaps(context, HORZRES), unitsDown(context)) {
  const int across = GetDeviceCaps(context, LOGPIXELSX), down = GetDeviceCaps(context, LOGPIXELSY);
  if (across == down) return;
  SetMapMode(context, MM_ANISOTROPIC);
  SetWindowExtEx(context, across, across, nullptr);
  SetViewportExtEx(context, across, down, nullptr);
}

double PaperPage::dotsPerMillimetre() const { return GetDeviceCaps(context_, LOGPIXELSX) / 25.4; }

Status PaperPage::place(Surface& picture, PointI corner, int width, int height) {
  const PixelBlock block = picture.lendPixels();
  if (block.pixels == nullptr) return unwritable("this picture has no pixels to print");
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = block.stride;
  info.bmiHeader.biHeight = -block.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  SetStretchBltMode(context_, HALFTONE);
  SetBrushOrgEx(context_, 0, 0, nullptr);
  const int rows = StretchDIBits(context_, corner.x, corner.y, width, height, 0, 0, block.width, block.height,
                                 block.pixels, &info, DIB_RGB_COLORS, SRCCOPY);
  return checked(rows > 0, "StretchDIBits");
}

Result<bool> printOnPaper(HWND owner, const PrintSpec& spec, const std::function<Status(PrintPage&)>& draw) {
  PrintChoice choice;
  const auto chosen = choosePrinter(owner, spec.landscape, choice);
  if (!chosen || !*chosen) return chosen;
  const Status printed = printPage(choice.context.get(), spec.title, draw);
  if (!printed) return printed.error();
  return true;
}

}  // namespace lorivan::win32
