#include "base/sink.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <random>
#include <set>
#include <system_error>

#include "base/checksum.h"
#include "base/numbers.h"

namespace lorivan {
namespace fs = std::filesystem;
namespace {

constexpr std::streamsize kReadBlock = std::streamsize{1} << 18;
constexpr std::size_t kWriteBlock = std::size_t{1} << 16;

fs::path toPath(const std::string& utf8) {
  return {std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size())};
}

std::string fromPath(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::string lastReason() {
  return errno != 0 ? std::generic_category().message(errno) : tr("the system gave no reason");
}

Error cannotWrite(const std::string& path, const std::string& reason) {
  return unwritable("cannot write {1}: {2}", path, reason);
}

struct Place {
  std::string path;
  bool inPlace = false;
};

/// Where the bytes for a path go: the file that a chain of links ends at, also when it is not there yet. What
/// is no file, or was opened by whoever started the program, is written in place.
Result<Place> placeOf(const std::string& path) {
  constexpr int longestChain = 40;
  fs::path target = toPath(path);
  std::error_code fault;
  const fs::file_status status = fs::status(target, fault);
  if (fs::is_directory(status)) return unwritable("it is a folder");
  if (fs::exists(status) && !fs::is_regular_file(status)) return Place{path, true};
  for (int links = 0; fs::is_symlink(fs::symlink_status(target, fault)); ++links) {
    if (links == longestChain) return unwritable("its links lead in a circle");
    if (target.native().starts_with(fs::path("/proc/").native())) return Place{path, true};
    const fs::path next = fs::read_symlink(target, fault);
    if (fault) return unwritable(fault.message());
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  return Place{fromPath(target)};
}

std::string folderOf(const std::string& path) {
  return path.substr(0, path.size() - fileNameOf(path).size());
}

constexpr std::string_view kScrapPrefix = ".lorivan-", kScrapSuffix = ".part";
constexpr std::string_view kFormerSuffix = ".old";  // of a file that waits for its successors

std::string hexadecimal(std::uint64_t number) {
  std::array<char, 16> digits{};
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr};
}

/// What the names of this machine's temporary files begin with: a folder may be shared with others.
const std::string& machinePrefix() {
  static const std::string prefix = std::string(kScrapPrefix) + hexadecimal(crc32(machineName())) + '-';
  return prefix;
}

/// A short name in the folder of `path` that nothing else uses: programs that write the same file at the same
/// time must not share it. It tells the process, so that another one can see whether it still runs.
std::string temporaryBeside(const std::string& path, std::string_view suffix) {
  thread_local std::mt19937_64 engine{std::random_device{}()};
  return folderOf(path) + machinePrefix() + hexadecimal(static_cast<std::uint64_t>(ownProcess())) + '-' +
         hexadecimal(engine()) + std::string(suffix);
}

/// Whether the file is a temporary one of this machine whose process is gone. One that waited for its
/// successor may be the last that has the user's bytes.
bool isLeftBehind(const fs::path& path) {
  const std::string name = fromPath(path.filename());
  if (!name.starts_with(machinePrefix())) return false;
  std::error_code fault;
  const bool former = name.ends_with(kFormerSuffix) && fs::hard_link_count(path, fault) > 1 && !fault;
  if (!former && !name.ends_with(kScrapSuffix)) return false;
  std::int64_t process = 0;
  const char* begin = name.data() + machinePrefix().size();
  const auto [end, wrong] = std::from_chars(begin, name.data() + name.size(), process, 16);
  return wrong == std::errc() && *end == '-' && process > 0 && !processRuns(process);
}

/// Removes what killed programs left in a folder. A run that writes many files does not look each time.
void clearScraps(const std::string& folder) {
  using Clock = std::chrono::steady_clock;
  static std::mutex mutex;
  const std::scoped_lock lock(mutex);
  static std::string lastFolder;
  static Clock::time_point last;
  const Clock::time_point now = Clock::now();
  if (last != Clock::time_point() && folder == lastFolder && now - last < std::chrono::seconds(5)) return;
  lastFolder = folder;
  last = now;
  std::error_code fault;
  fs::directory_iterator entry(toPath(folder.empty() ? "." : folder), fault), end;
  for (; !fault && entry != end; entry.increment(fault)) {
    std::error_code kept;
    if (isLeftBehind(entry->path())) fs::remove(entry->path(), kept);
  }
}

/// Renaming works on the folder's rights alone; a file that its owner made read-only is to stay as it is.
bool isWriteProtected(const std::string& path) {
  errno = 0;
  const std::ofstream probe(toPath(path), std::ios::binary | std::ios::app);
  return !probe;
}

}  // namespace

FileSink::FileSink(std::string target, bool inPlace) : target_(std::move(target)) {
  if (!inPlace) temporary_ = temporaryBeside(target_, kScrapSuffix);
}

Status FileSink::open() {
  if (inPlace()) return file_.openInPlace(target_);
  clearScraps(folderOf(target_));
  return file_.create(temporary_, target_);
}

Result<std::unique_ptr<FileSink>> FileSink::create(const std::string& path) {
  if (path.empty()) return unwritable("cannot write a file without a name");
  const auto place = placeOf(path);
  if (!place) return cannotWrite(path, place.error().message);
  if (!place->inPlace && fileExists(place->path) && isWriteProtected(place->path))
    return cannotWrite(path, lastReason());
  std::unique_ptr<FileSink> sink(new FileSink(place->path, place->inPlace));
  if (const Status opened = sink->open(); !opened) return cannotWrite(path, opened.error().message);
  return sink;
}

FileSink::~FileSink() = default;

void FileSink::takeNote(const Status& status) {
  if (!status && failure_.empty()) failure_ = status.error().message;
}

void FileSink::writeOut() {
  if (failure_.empty() && !waiting_.empty()) takeNote(file_.write(waiting_));
  waiting_.clear();
}

bool FileSink::write(std::string_view bytes) {
  if (!failure_.empty() || closed_) return false;
  if (waiting_.size() + bytes.size() > kWriteBlock) writeOut();
  if (bytes.size() >= kWriteBlock) {
    if (failure_.empty()) takeNote(file_.write(bytes));
  } else {
    waiting_.append(bytes);
  }
  return failure_.empty();
}

bool FileSink::readBack(const std::function<bool(std::string_view)>& take) {
  writeOut();
  std::ifstream back(toPath(temporary_), std::ios::binary);
  const auto block = std::make_unique<char[]>(kReadBlock);
  while (back && failure_.empty()) {
    back.read(block.get(), kReadBlock);
    if (!take({block.get(), static_cast<std::size_t>(back.gcount())})) return false;
  }
  return back.eof() && !back.bad() && failure_.empty();
}

Status FileSink::close() {
  if (!closed_) {
    writeOut();
    waiting_.shrink_to_fit();
    if (!inPlace() && failure_.empty()) takeNote(file_.flushToDisk());
    takeNote(file_.close());
    closed_ = true;
  }
  return failure_.empty() ? Status() : cannotWrite(target_, failure_);
}

Status FileSink::takeName() {
  if (!inPlace()) {
    std::error_code fault;
    fs::rename(toPath(temporary_), toPath(target_), fault);
    if (fault) return cannotWrite(target_, fault.message());
    file_.keep();
  }
  committed_ = true;
  return {};
}

Status FileSink::commit() {
  if (const Status closed = close(); !closed) return closed;
  const Status named = [this] {
    const EndHeldBack held;
    return takeName();
  }();
  if (named && !inPlace()) flushFolder(folderOf(target_));
  return named;
}

/// Moves the file that is to be replaced aside, which fails where it could not be replaced either, and lets
/// it have its name as well until then where files can have two. False when it could not be moved.
bool FileSink::keepFormer() {
  std::error_code fault;
  if (inPlace() || !fs::exists(fs::symlink_status(toPath(target_), fault))) return true;
  if (fs::is_directory(toPath(target_), fault)) return false;
  const std::string aside = temporaryBeside(target_, kFormerSuffix);
  fs::rename(toPath(target_), toPath(aside), fault);
  if (fault) return false;
  former_ = aside;
  fs::create_hard_link(toPath(former_), toPath(target_), fault);
  return true;
}

void FileSink::giveNameBack() {
  std::error_code fault;
  if (!former_.empty()) {
    fs::rename(toPath(former_), toPath(target_), fault);
    // Renaming one name of a file to another of its names leaves both.
    if (!fault) fs::remove(toPath(former_), fault);
  } else if (committed_ && !inPlace()) {
    fs::remove(toPath(target_), fault);
  }
}

Status FileSink::commitAll(std::span<const std::unique_ptr<FileSink>> sinks) {
  for (const auto& sink : sinks)
    if (const Status closed = sink->close(); !closed) return closed;
  const Status done = takeNames(sinks);
  std::set<std::string> folders;
  for (const auto& sink : sinks)
    if (done && !sink->inPlace()) folders.insert(folderOf(sink->target_));
  for (const std::string& folder : folders) flushFolder(folder);
  return done;
}

Status FileSink::takeNames(std::span<const std::unique_ptr<FileSink>> sinks) {
  const EndHeldBack held;
  Status done;
  std::size_t reached = 0;
  for (; done && reached < sinks.size(); ++reached) {
    FileSink& sink = *sinks[reached];
    // A single renaming is whole by itself.
    const bool kept = sinks.size() == 1 || sink.keepFormer();
    done = kept ? sink.takeName() : cannotWrite(sink.target_, tr("what is there cannot be replaced"));
  }
  if (!done)
    while (reached > 0) sinks[--reached]->giveNameBack();
  std::error_code fault;
  for (const auto& sink : sinks)
    if (done && !sink->former_.empty()) fs::remove(toPath(sink->former_), fault);
  return done;
}

Status writeFile(const std::string& path, std::string_view bytes) {
  auto sink = FileSink::create(path);
  if (!sink) return sink.error();
  (*sink)->write(bytes);
  return (*sink)->commit();
}

Result<std::string> readFile(const std::string& path, std::size_t limit) {
  std::error_code fault;
  if (fs::is_directory(toPath(path), fault)) return unreadable("it is a folder");
  errno = 0;
  std::ifstream stream(toPath(path), std::ios::binary);
  if (!stream) return unreadable(lastReason());
  std::string bytes;
  std::string block(1 << 16, '\0');
  while (stream) {
    stream.read(block.data(), static_cast<std::streamsize>(block.size()));
    bytes.append(block, 0, static_cast<std::size_t>(stream.gcount()));
    if (bytes.size() > limit) return unreadable("it is larger than {1} bytes", limit);
  }
  if (stream.bad()) return unreadable(lastReason());
  return bytes;
}

Result<std::string> readRegularFile(const std::string& path, std::size_t limit) {
  std::error_code fault;
  const fs::file_status status = fs::status(toPath(path), fault);
  if (fs::exists(status) && !fs::is_regular_file(status)) return unreadable("it is no file");
  return readFile(path, limit);
}

bool fileExists(const std::string& path) {
  std::error_code fault;
  return fs::exists(toPath(path), fault);
}

bool removeFile(const std::string& path) {
  std::error_code fault;
  fs::remove(toPath(path), fault);
  return !fileExists(path);
}

bool moveFile(const std::string& from, const std::string& to) {
  std::error_code fault;
  fs::rename(toPath(from), toPath(to), fault);
  return !fault;
}

std::string absolutePath(const std::string& path) {
  std::error_code fault;
  const fs::path whole = fs::absolute(toPath(path), fault);
  return fault ? path : fromPath(whole.lexically_normal());
}

std::string_view fileNameOf(std::string_view path) {
  const auto cut = path.find_last_of("/\\");
  return cut == std::string_view::npos ? path : path.substr(cut + 1);
}

std::string extensionOf(std::string_view path) {
  const std::string_view name = fileNameOf(path);
  const auto dot = name.rfind('.');
  return dot == std::string_view::npos ? std::string() : lowerCase(name.substr(dot + 1));
}

}  // namespace lorivan
