#include "platform/win32/services.h"

#include <array>
#include <cstring>

#include "platform/win32/checked.h"
#include "platform/win32/dib_surface.h"
#include "platform/win32/handles.h"
#include "platform/win32/pictures.h"
#include "platform/win32/text.h"

#include <shlobj.h>  // behind the system's other headers

namespace lorivan::win32 {
namespace {

/// The clipboard, open and ours. It needs an owner: a window that lives as long as the object is enough.
class OpenClipboardScope {
 public:
  OpenClipboardScope()
      : owner_(
            CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
    constexpr int kTries = 10;
    // Another program may be looking at it just now.
    for (int i = 0; i < kTries && !open_; ++i) {
      if (i > 0) Sleep(20);
      open_ = OpenClipboard(owner_.get()) != 0;
    }
    if (!open_)
      status_ = unwritable(systemFault("OpenClipboard"));
    else
      status_ = checked(EmptyClipboard(), "EmptyClipboard");
  }
  OpenClipboardScope(const OpenClipboardScope&) = delete;
  OpenClipboardScope& operator=(const OpenClipboardScope&) = delete;
  ~OpenClipboardScope() {
    if (open_) CloseClipboard();
  }
  const Status& status() const { return status_; }
  /// Hands a handle over; the clipboard owns it afterwards.
  template <class Handle>
  Status put(UINT format, Handle& handle) const {
    if (!status_) return status_;
    if (!handle) return unwritable(systemFault("GlobalAlloc"));
    if (SetClipboardData(format, handle.get()) == nullptr) return unwritable(systemFault("SetClipboardData"));
    static_cast<void>(handle.release());
    return {};
  }

 private:
  OwnedWindow owner_;
  bool open_ = false;
  Status status_;
};

OwnedGlobalMemory globalCopy(const std::string& bytes) {
  OwnedGlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, bytes.size()));
  void* place = memory ? GlobalLock(memory.get()) : nullptr;
  if (place == nullptr) return {};
  std::memcpy(place, bytes.data(), bytes.size());
  GlobalUnlock(memory.get());
  return memory;
}

std::wstring browserFor(const wchar_t* extension) {
  std::array<wchar_t, 1024> program{};
  DWORD length = static_cast<DWORD>(program.size());
  if (FAILED(
          AssocQueryStringW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, extension, L"open", program.data(), &length)))
    return {};
  return program.data();
}

std::wstring fileUrl(const std::wstring& path) {
  std::array<wchar_t, 2048> url{};
  DWORD length = static_cast<DWORD>(url.size());
  if (FAILED(UrlCreateFromPathW(path.c_str(), url.data(), &length, 0))) return {};
  return url.data();
}

/// The shell may hand a file over to an extension that lives in COM.
class ComScope {
 public:
  ComScope() : code_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
  ComScope(const ComScope&) = delete;
  ComScope& operator=(const ComScope&) = delete;
  ~ComScope() {
    if (SUCCEEDED(code_)) CoUninitialize();
  }

 private:
  HRESULT code_;
};

/// A return value above 32 is this call's way to say that it worked.
Status shellOpen(const std::wstring& file, const std::wstring& arguments) {
  const ComScope com;
  const HINSTANCE code =
      ShellExecuteW(nullptr, L"open", file.c_str(), arguments.empty() ? nullptr : arguments.c_str(), nullptr,
                    SW_SHOWNORMAL);
  const auto number = reinterpret_cast<INT_PTR>(code);
  if (number > 32) return {};
  return unwritable(systemFault("ShellExecute", static_cast<DWORD>(number)));
}

std::wstring localDataFolder() {
  std::array<wchar_t, MAX_PATH> path{};
  const DWORD length = GetEnvironmentVariableW(L"LOCALAPPDATA", path.data(), static_cast<DWORD>(path.size()));
  if (length > 0 && length < path.size()) return path.data();
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path.data())))
    return {};
  return path.data();
}

class OpenFileClaim final : public FileClaim {
 public:
  explicit OpenFileClaim(OwnedFile file) : file_(std::move(file)) {}

 private:
  OwnedFile file_;
};

}  // namespace

void SystemClipboard::clear() { const OpenClipboardScope emptied; }

Status SystemClipboard::putPicture(Surface& picture) { return putDrawing({}, picture); }

/// Programs take the first format that they know.
Status SystemClipboard::putDrawing(const ClipboardDrawing& drawing, Surface& picture) {
  const auto* surface = dynamic_cast<const DibSurface*>(&picture);
  if (surface == nullptr) return unwritable("this picture cannot be copied");
  OwnedGlobalMemory memory = globalCopy(deviceIndependentBitmap(*surface));
  const OpenClipboardScope clipboard;
  if (!drawing.metafile.empty()) {
    OwnedMetafile metafile(SetEnhMetaFileBits(static_cast<UINT>(drawing.metafile.size()),
                                              reinterpret_cast<const BYTE*>(drawing.metafile.data())));
    if (const Status put = clipboard.put(CF_ENHMETAFILE, metafile); !put) return put;
  }
  if (!drawing.svg.empty()) {
    OwnedGlobalMemory text = globalCopy(drawing.svg);
    if (const Status put = clipboard.put(RegisterClipboardFormatW(L"image/svg+xml"), text); !put) return put;
  }
  return clipboard.put(CF_DIB, memory);
}

std::int64_t SystemClock::milliseconds() const {
  const std::uint32_t now = timeGetTime();
  if (now < last_) ++turns_;
  last_ = now;
  return turns_ << 32 | now;
}

void SystemClock::sleep(int milliseconds) {
  if (milliseconds <= 0) return;
  timeBeginPeriod(1);  // otherwise a short sleep takes up to 16 ms
  Sleep(static_cast<DWORD>(milliseconds));
  timeEndPeriod(1);
}

float SystemClock::secondsOfDay() const {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return static_cast<float>((now.wHour * 60 + now.wMinute) * 60 + now.wSecond) +
         static_cast<float>(now.wMilliseconds) / 1000;
}

std::uint64_t SystemClock::seed() const {
  LARGE_INTEGER counter{};
  QueryPerformanceCounter(&counter);
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  const std::uint64_t time = static_cast<std::uint64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
  return time * 0x9E3779B97F4A7C15ULL ^ static_cast<std::uint64_t>(counter.QuadPart) ^
         static_cast<std::uint64_t>(GetCurrentProcessId()) << 48;
}

Status BrowserHelp::open(const std::string& page) {
  const std::size_t cut = page.find('#');
  std::wstring path = widen(folder_ + "/" + page.substr(0, cut));
  std::replace(path.begin(), path.end(), L'/', L'\\');
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
    return unreadable("Help is missing: there is no {1}", narrow(path));
  const std::wstring browser = browserFor(L".html"), url = fileUrl(path);
  const bool bare = cut == std::string::npos || browser.empty() || url.empty();
  // The shell drops a topic behind a file's name, the browser itself takes it.
  const Status opened =
      bare ? shellOpen(path, L"") : shellOpen(browser, L"\"" + url + widen(page.substr(cut)) + L"\"");
  return opened ? opened : unwritable("No browser could be started to show {1}", narrow(path));
}

std::string userLanguage() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
  LCIDToLocaleName(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), name, LOCALE_NAME_MAX_LENGTH, 0);
  return narrow(name);
}

std::string makeUserFolder(std::string_view application) {
  const std::wstring data = localDataFolder();
  if (data.empty()) return {};
  const std::wstring folder = data + L'\\' + widen(application);
  CreateDirectoryW(folder.c_str(), nullptr);  // fails harmlessly when it is there
  const DWORD attributes = GetFileAttributesW(folder.c_str());
  const bool isThere = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return isThere ? narrow(folder) : std::string();
}

std::string documentsFolder() {
  std::array<wchar_t, MAX_PATH> path{};
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path.data()))) return {};
  return narrow(path.data());
}

std::unique_ptr<FileClaim> claimFile(const std::string& path) {
  // The system closes and deletes it when the process ends.
  OwnedFile file(CreateFileW(widen(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  if (!file) return nullptr;
  return std::make_unique<OpenFileClaim>(std::move(file));
}

std::string folderOfProgram() {
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = 0;
  while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) == path.size())
    path.resize(path.size() * 2);
  path.resize(length);
  const std::size_t cut = path.find_last_of(L"\\/");
  return cut == std::wstring::npos ? "." : narrow(std::wstring_view(path).substr(0, cut));
}

}  // namespace lorivan::win32
