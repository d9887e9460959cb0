#include "base/sink.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <random>
#include <system_error>

#include "base/numbers.h"

namespace lorivan {
namespace fs = std::filesystem;
namespace {

constexpr std::streamsize kReadBlock = std::streamsize{1} << 18;

fs::path toPath(const std::string& utf8) {
  return {std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size())};
}

std::string fromPath(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::string lastReason() {
  return errno != 0 ? std::generic_category().message(errno) : std::string("the system gave no reason");
}

Error cannotWrite(const std::string& path, const std::string& reason) {
  return unwritable("cannot write " + path + ": " + reason);
}

/// The file that a chain of links ends at, also when it is not there yet; the path itself when it is no link.
Result<std::string> linkTarget(const std::string& path) {
  constexpr int longestChain = 40;
  fs::path target = toPath(path);
  std::error_code fault;
  for (int links = 0; fs::is_symlink(fs::symlink_status(target, fault)); ++links) {
    if (links == longestChain) return unwritable("its links lead in a circle");
    const fs::path next = fs::read_symlink(target, fault);
    if (fault) return unwritable(fault.message());
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  return fromPath(target);
}

/// A short name in the folder of `path` that nothing else uses: programs that write the same file at the same
/// time must not share it.
std::string temporaryBeside(const std::string& path) {
  thread_local std::mt19937_64 engine{std::random_device{}()};
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), engine(), 16).ptr;
  return path.substr(0, path.size() - fileNameOf(path).size()) + ".lorivan-" +
         std::string(digits.data(), end) + ".part";
}

std::atomic<bool> interrupted{false};

/// A new file made by renaming should keep the rights that its predecessor had.
void copyRights(const std::string& from, const std::string& to) {
  std::error_code fault;
  const fs::file_status status = fs::status(toPath(from), fault);
  if (!fault && fs::exists(status)) fs::permissions(toPath(to), status.permissions(), fault);
}

/// Renaming works on the folder's rights alone; a file that its owner made read-only is to stay as it is.
bool isWriteProtected(const std::string& path) {
  errno = 0;
  const std::ofstream probe(toPath(path), std::ios::binary | std::ios::app);
  return !probe;
}

}  // namespace

FileSink::FileSink(std::string target, std::string temporary)
    : target_(std::move(target)), temporary_(std::move(temporary)) {
  errno = 0;
  stream_.open(toPath(temporary_), std::ios::binary | std::ios::out | std::ios::trunc);
  if (!stream_) fail();
}

Result<std::unique_ptr<FileSink>> FileSink::create(const std::string& path) {
  if (path.empty()) return unwritable("cannot write a file without a name");
  const auto followed = linkTarget(path);
  if (!followed) return cannotWrite(path, followed.error().message);
  const std::string& target = *followed;
  std::error_code fault;
  const fs::file_status status = fs::status(toPath(target), fault);
  if (fs::is_directory(status)) return cannotWrite(path, "it is a folder");
  const bool exists = fs::exists(status);
  const bool inPlace = exists && !fs::is_regular_file(status);
  if (exists && !inPlace && isWriteProtected(target)) return cannotWrite(path, lastReason());
  std::unique_ptr<FileSink> sink(new FileSink(target, inPlace ? target : temporaryBeside(target)));
  if (!sink->failure_.empty()) return cannotWrite(path, sink->failure_);
  return sink;
}

FileSink::~FileSink() {
  if (committed_ || inPlace()) return;
  stream_.close();  // a second close does no harm
  std::error_code fault;
  fs::remove(toPath(temporary_), fault);
}

void FileSink::fail() {
  if (failure_.empty()) failure_ = lastReason();
}

bool FileSink::write(std::string_view bytes) {
  if (interrupted && failure_.empty()) failure_ = "it was interrupted";
  if (!failure_.empty() || closed_) return false;
  errno = 0;
  stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream_) fail();
  return failure_.empty();
}

bool FileSink::readBack(const std::function<bool(std::string_view)>& take) {
  stream_.flush();
  if (!stream_) fail();
  std::ifstream back(toPath(temporary_), std::ios::binary);
  const auto block = std::make_unique<char[]>(kReadBlock);
  while (back && failure_.empty()) {
    back.read(block.get(), kReadBlock);
    if (!take({block.get(), static_cast<std::size_t>(back.gcount())})) return false;
  }
  return back.eof() && !back.bad() && failure_.empty();
}

Status FileSink::close() {
  if (!closed_ && failure_.empty()) {
    errno = 0;
    stream_.close();
    if (!stream_) fail();
    closed_ = true;
  }
  return failure_.empty() ? Status() : cannotWrite(target_, failure_);
}

void FileSink::interruptAll() { interrupted = true; }

Status FileSink::takeName() {
  if (!inPlace()) {
    copyRights(target_, temporary_);
    std::error_code fault;
    fs::rename(toPath(temporary_), toPath(target_), fault);
    if (fault) return cannotWrite(target_, fault.message());
  }
  committed_ = true;
  return {};
}

Status FileSink::commit() {
  if (interrupted && failure_.empty()) failure_ = "it was interrupted";
  if (const Status closed = close(); !closed) return closed;
  return takeName();
}

/// Moves the file that is to be replaced aside, which fails where it could not be replaced either, and lets
/// it have its name as well until then where files can have two. False when it could not be moved.
bool FileSink::keepFormer() {
  std::error_code fault;
  if (inPlace() || !fs::exists(fs::symlink_status(toPath(target_), fault))) return true;
  if (fs::is_directory(toPath(target_), fault)) return false;
  const std::string aside = temporaryBeside(target_);
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
  for (const auto& sink : sinks) {
    if (interrupted && sink->failure_.empty()) sink->failure_ = "it was interrupted";
    if (const Status closed = sink->close(); !closed) return closed;
  }
  Status done;
  std::size_t reached = 0;
  for (; done && reached < sinks.size(); ++reached) {
    FileSink& sink = *sinks[reached];
    // A single renaming is whole by itself.
    const bool kept = sinks.size() == 1 || sink.keepFormer();
    done = kept ? sink.takeName() : cannotWrite(sink.target_, "what is there cannot be replaced");
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
    if (bytes.size() > limit) return unreadable("it is larger than " + std::to_string(limit) + " bytes");
  }
  if (stream.bad()) return unreadable(lastReason());
  return bytes;
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
