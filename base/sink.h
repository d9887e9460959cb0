// Where a writer's bytes go: memory, or a file that appears only when it is complete.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/result.h"
#include "base/system_files.h"

namespace lorivan {

/// Takes bytes in order. After a failed write it ignores the rest; finish-like calls of the owner report it.
class Sink {
 public:
  virtual ~Sink() = default;
  /// False once the bytes can no longer be kept (disk full, say); writers may stop early then.
  virtual bool write(std::string_view bytes) = 0;

  /// Whether readBack() can tell more than the writer knows: a file can, memory and a pipe cannot.
  virtual bool canReadBack() const { return false; }
  /// Hands everything written so far to `take`, in order and in blocks, as it is kept. False when it cannot
  /// be read, and when `take` returns false.
  virtual bool readBack(const std::function<bool(std::string_view)>& take) {
    static_cast<void>(take);
    return false;
  }
};

class MemorySink final : public Sink {
 public:
  bool write(std::string_view more) override {
    bytes.append(more);
    return true;
  }
  std::string bytes;
};

/// A file written under a temporary name beside its target, on the disk before commit() renames it. Without
/// commit() the temporary file is removed and an existing target stays as it was. A target that is a device
/// or a pipe is written in place. A program that was killed leaves its temporary file to the next one that
/// writes into the same folder, which removes it. Paths are UTF-8.
class FileSink final : public Sink {
 public:
  static Result<std::unique_ptr<FileSink>> create(const std::string& path);
  FileSink(const FileSink&) = delete;
  FileSink& operator=(const FileSink&) = delete;
  ~FileSink() override;

  bool write(std::string_view bytes) override;
  bool canReadBack() const override { return !inPlace(); }
  bool readBack(const std::function<bool(std::string_view)>& take) override;
  /// Flushes and closes; the error names the file and the system's reason. Nothing can be written afterwards.
  Status close();
  /// Closes where close() was not called, and renames.
  Status commit();
  /// All of them or none: where one cannot take its name, those that had taken theirs give them back to what
  /// was there before. What went to a device or a pipe stays there.
  static Status commitAll(std::span<const std::unique_ptr<FileSink>> sinks);

 private:
  FileSink(std::string target, bool inPlace);
  Status open();
  void takeNote(const Status& status);
  void writeOut();
  Status takeName();
  bool keepFormer();
  void giveNameBack();
  bool inPlace() const { return temporary_.empty(); }

  OutputFile file_;
  std::string waiting_;    // not yet written
  std::string target_;     // links already followed
  std::string temporary_;  // none for a device or a pipe
  std::string failure_;
  std::string former_;  // the file that had the name, while it is kept aside
  bool closed_ = false;
  bool committed_ = false;
};

/// Writes the whole file through a FileSink.
Status writeFile(const std::string& path, std::string_view bytes);

/// Reads a whole file of at most `limit` bytes. The error is the reason alone ("it is a folder", "Permission
/// denied", "it is larger than ... bytes"), without the file's name.
Result<std::string> readFile(const std::string& path, std::size_t limit);
/// The same for files that the program looks for by itself: it would wait for a pipe or a device for ever.
Result<std::string> readRegularFile(const std::string& path, std::size_t limit);

bool fileExists(const std::string& path);
/// False when it is still there.
bool removeFile(const std::string& path);
/// Gives a file another name; a file of that name is replaced. False when nothing was changed.
bool moveFile(const std::string& from, const std::string& to);

/// The full path of a file that was named from the working folder.
std::string absolutePath(const std::string& path);

/// The part of a path after its last separator ("/" or "\\").
std::string_view fileNameOf(std::string_view path);

/// The extension after the last dot of the file name, lower case, without the dot; empty when there is none.
std::string extensionOf(std::string_view path);

}  // namespace lorivan
