#include "base/system_files.h"

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <system_error>

namespace lorivan {

struct OutputFile::State {
  int handle = -1;
  std::string path;
  bool scrap = false;  // in the list of scraps
  State* next = nullptr;
  State* previous = nullptr;
};

namespace {

using File = OutputFile::State;

constexpr std::array kEnds = {SIGHUP, SIGINT, SIGQUIT, SIGABRT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

// Whoever holds the list has its signals blocked, so that a handler never waits for its own thread.
File* firstScrap = nullptr;
std::atomic_flag listIsHeld = ATOMIC_FLAG_INIT;
thread_local int holds = 0;
thread_local sigset_t formerMask;

void lockList() {
  while (listIsHeld.test_and_set(std::memory_order_acquire)) {
  }
}

void addScrap(File& file) {
  const EndHeldBack held;
  file.scrap = true;
  file.next = firstScrap;
  if (firstScrap != nullptr) firstScrap->previous = &file;
  firstScrap = &file;
}

void takeFromScraps(File& file) {
  const EndHeldBack held;
  if (!file.scrap) return;
  (file.previous != nullptr ? file.previous->next : firstScrap) = file.next;
  if (file.next != nullptr) file.next->previous = file.previous;
  file.scrap = false;
}

/// Calls nothing that a handler may not call. Returning with the signal raised again ends the program.
void endWithoutScraps(int signal) {
  lockList();
  for (const File* file = firstScrap; file != nullptr; file = file->next) unlink(file->path.c_str());
  struct sigaction byDefault = {};
  byDefault.sa_handler = SIG_DFL;
  sigaction(signal, &byDefault, nullptr);
  raise(signal);
}

sigset_t endingSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : kEnds) sigaddset(&set, signal);
  return set;
}

Status outcome(bool done) { return done ? Status() : unwritable(std::generic_category().message(errno)); }

int openFile(const std::string& path, int flags, mode_t rights) {
  int handle = -1;
  do {
    handle = open(path.c_str(), flags | O_WRONLY | O_CLOEXEC, rights);
  } while (handle < 0 && errno == EINTR);
  return handle;
}

/// Nobody who could not read the former file is to read the new one.
void takeRights(int handle, const struct stat& like) {
  mode_t rights = like.st_mode & 0777;
  if (fchown(handle, like.st_uid, like.st_gid) != 0 &&
      fchown(handle, static_cast<uid_t>(-1), like.st_gid) != 0)
    rights = (rights & 0707) | (rights & 07) << 3;
  if (fchmod(handle, rights) != 0) return;  // a file system without rights has nothing to lose
}

}  // namespace

OutputFile::OutputFile() : state_(std::make_unique<State>()) {}

OutputFile::~OutputFile() {
  static_cast<void>(close());
  if (state_->scrap) unlink(state_->path.c_str());
  keep();
}

Status OutputFile::create(const std::string& path, const std::string& like) {
  struct stat former = {};
  const bool replaces = stat(like.c_str(), &former) == 0;
  const EndHeldBack held;
  state_->path = path;
  state_->handle = openFile(path, O_CREAT | O_EXCL, replaces ? 0600 : 0666);
  if (state_->handle < 0) return outcome(false);
  addScrap(*state_);
  if (replaces) takeRights(state_->handle, former);
  return {};
}

Status OutputFile::openInPlace(const std::string& path) {
  state_->handle = openFile(path, O_APPEND, 0);
  return outcome(state_->handle >= 0);
}

Status OutputFile::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(state_->handle, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return outcome(false);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return {};
}

Status OutputFile::flushToDisk() {
  // What cannot be flushed says that its argument is invalid.
  return outcome(fsync(state_->handle) == 0 || errno == EINVAL || errno == ENOTSUP);
}

Status OutputFile::close() {
  if (state_->handle < 0) return {};
  const int handle = std::exchange(state_->handle, -1);
  return outcome(::close(handle) == 0 || errno == EINTR);
}

void OutputFile::keep() { takeFromScraps(*state_); }

void removeScrapsAtEnd() {
  struct sigaction action = {}, former = {};
  action.sa_handler = endWithoutScraps;
  action.sa_mask = endingSignals();
  for (const int signal : kEnds)
    if (sigaction(signal, nullptr, &former) == 0 && former.sa_handler != SIG_IGN)
      sigaction(signal, &action, nullptr);
}

EndHeldBack::EndHeldBack() {
  if (holds++ > 0) return;
  const sigset_t ends = endingSignals();
  pthread_sigmask(SIG_BLOCK, &ends, &formerMask);
  lockList();
}

EndHeldBack::~EndHeldBack() {
  if (--holds > 0) return;
  listIsHeld.clear(std::memory_order_release);
  pthread_sigmask(SIG_SETMASK, &formerMask, nullptr);
}

void flushFolder(const std::string& path) {
  const int handle = open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  fsync(handle);
  ::close(handle);
}

std::int64_t ownProcess() { return getpid(); }

bool processRuns(std::int64_t process) { return kill(static_cast<pid_t>(process), 0) == 0 || errno != ESRCH; }

std::string machineName() {
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string();
}

}  // namespace lorivan
