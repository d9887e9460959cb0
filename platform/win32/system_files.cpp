#include "base/system_files.h"

#include <array>
#include <list>
#include <mutex>
#include <utility>

#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

namespace lorivan {

struct OutputFile::State {
  HANDLE handle = INVALID_HANDLE_VALUE;
  std::wstring path;
  bool scrap = false;  // in the list of scraps
};

namespace {

using File = OutputFile::State;

// The console's handler runs in a thread of its own.
std::recursive_mutex listMutex;
std::list<File*> scraps;

Error systemError() { return unwritable(win32::systemText(GetLastError())); }
Status outcome(bool done) { return done ? Status() : systemError(); }

/// An open file cannot be removed, and the program is over in a moment.
BOOL WINAPI endWithoutScraps(DWORD) {
  listMutex.lock();
  for (const File* file : scraps) {
    if (file->handle != INVALID_HANDLE_VALUE) CloseHandle(file->handle);
    DeleteFileW(file->path.c_str());
  }
  return FALSE;  // ends the program
}

}  // namespace

OutputFile::OutputFile() : state_(std::make_unique<State>()) {}

OutputFile::~OutputFile() {
  static_cast<void>(close());
  if (state_->scrap) DeleteFileW(state_->path.c_str());
  keep();
}

/// A new file has the rights that its folder hands down, and so had its predecessor.
Status OutputFile::create(const std::string& path, const std::string&) {
  const EndHeldBack held;
  state_->path = win32::widen(path);
  state_->handle = CreateFileW(state_->path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL, nullptr);
  if (state_->handle == INVALID_HANDLE_VALUE) return systemError();
  state_->scrap = true;
  scraps.push_back(state_.get());
  return {};
}

Status OutputFile::openInPlace(const std::string& path) {
  state_->handle = CreateFileW(win32::widen(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  return outcome(state_->handle != INVALID_HANDLE_VALUE);
}

Status OutputFile::write(std::string_view bytes) {
  constexpr std::size_t kMostAtOnce = std::size_t{1} << 24;
  while (!bytes.empty()) {
    DWORD count = 0;
    const auto length = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (!WriteFile(state_->handle, bytes.data(), length, &count, nullptr)) return systemError();
    bytes.remove_prefix(count);
  }
  return {};
}

Status OutputFile::flushToDisk() { return outcome(FlushFileBuffers(state_->handle) != 0); }

Status OutputFile::close() {
  const EndHeldBack held;
  const HANDLE handle = std::exchange(state_->handle, INVALID_HANDLE_VALUE);
  return outcome(handle == INVALID_HANDLE_VALUE || CloseHandle(handle));
}

void OutputFile::keep() {
  const EndHeldBack held;
  if (std::exchange(state_->scrap, false)) scraps.remove(state_.get());
}

void removeScrapsAtEnd() { SetConsoleCtrlHandler(endWithoutScraps, TRUE); }

EndHeldBack::EndHeldBack() { listMutex.lock(); }
EndHeldBack::~EndHeldBack() { listMutex.unlock(); }

void flushFolder(const std::string&) {}

std::int64_t ownProcess() { return GetCurrentProcessId(); }

bool processRuns(std::int64_t process) {
  const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process));
  if (handle == nullptr) return GetLastError() != ERROR_INVALID_PARAMETER;
  const bool runs = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
  CloseHandle(handle);
  return runs;
}

std::string machineName() {
  std::array<char, MAX_COMPUTERNAME_LENGTH + 1> name{};
  auto length = static_cast<DWORD>(name.size());
  return GetComputerNameA(name.data(), &length) ? std::string(name.data(), length) : std::string();
}

}  // namespace lorivan
