// Owners for the system's handles: whatever is made is given back on every path.
#pragma once

#include <utility>

#include "platform/win32/windows_api.h"

namespace lorivan::win32 {

/// Owns one handle; an empty one is null. `Release` is a function object that gives it back.
template <class Handle, class Release>
class Owned {
 public:
  Owned() = default;
  explicit Owned(Handle handle) : handle_(handle) {}
  Owned(Owned&& other) noexcept : handle_(other.release()) {}
  Owned& operator=(Owned&& other) noexcept {
    reset(other.release());
    return *this;
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() { reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != Handle{}; }
  Handle release() { return std::exchange(handle_, Handle{}); }
  void reset(Handle handle = Handle{}) {
    const Handle old = std::exchange(handle_, handle);
    if (old != Handle{}) Release{}(old);
  }
  /// For calls that hand out a handle through a pointer.
  Handle* receive() {
    reset();
    return &handle_;
  }

 private:
  Handle handle_{};
};

struct DeleteGdiObject {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct DeleteMemoryContext {
  void operator()(HDC context) const { DeleteDC(context); }
};
struct DiscardMetafile {
  void operator()(HDC context) const { DeleteEnhMetaFile(CloseEnhMetaFile(context)); }
};
struct DeleteMetafile {
  void operator()(HENHMETAFILE metafile) const { DeleteEnhMetaFile(metafile); }
};
struct DestroyAnyWindow {
  void operator()(HWND window) const { DestroyWindow(window); }
};
struct DestroyAnyMenu {
  void operator()(HMENU menu) const { DestroyMenu(menu); }
};
struct DestroyAccelerators {
  void operator()(HACCEL table) const { DestroyAcceleratorTable(table); }
};
struct CloseRegistryKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
struct FreeGlobalMemory {
  void operator()(HGLOBAL memory) const { GlobalFree(memory); }
};
struct ReleaseComObject {
  void operator()(IUnknown* object) const { object->Release(); }
};

using OwnedPen = Owned<HPEN, DeleteGdiObject>;
using OwnedBrush = Owned<HBRUSH, DeleteGdiObject>;
using OwnedBitmap = Owned<HBITMAP, DeleteGdiObject>;
using OwnedFont = Owned<HFONT, DeleteGdiObject>;
using OwnedMemoryContext = Owned<HDC, DeleteMemoryContext>;
using OwnedMetafileContext = Owned<HDC, DiscardMetafile>;
using OwnedMetafile = Owned<HENHMETAFILE, DeleteMetafile>;
using OwnedWindow = Owned<HWND, DestroyAnyWindow>;
using OwnedMenu = Owned<HMENU, DestroyAnyMenu>;
using OwnedAccelerators = Owned<HACCEL, DestroyAccelerators>;
using OwnedRegistryKey = Owned<HKEY, CloseRegistryKey>;
using OwnedGlobalMemory = Owned<HGLOBAL, FreeGlobalMemory>;
using OwnedStream = Owned<IStream*, ReleaseComObject>;

/// Owns an open file; "no file" is not null in the system's eyes, but is here.
class OwnedFile {
 public:
  explicit OwnedFile(HANDLE file) : file_(file == INVALID_HANDLE_VALUE ? nullptr : file) {}
  explicit operator bool() const { return static_cast<bool>(file_); }

 private:
  struct CloseFile {
    void operator()(HANDLE file) const { CloseHandle(file); }
  };
  Owned<HANDLE, CloseFile> file_;
};

/// Selects an object into a context and puts the former one back.
class Selection {
 public:
  Selection(HDC context, HGDIOBJ object) : context_(context), former_(SelectObject(context, object)) {}
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;
  ~Selection() {
    if (former_ != nullptr) SelectObject(context_, former_);
  }
  explicit operator bool() const { return former_ != nullptr; }

 private:
  HDC context_;
  HGDIOBJ former_;
};

/// A window's own context for the length of a scope.
class WindowContext {
 public:
  explicit WindowContext(HWND window) : window_(window), context_(GetDC(window)) {}
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  ~WindowContext() {
    if (context_ != nullptr) ReleaseDC(window_, context_);
  }
  HDC get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

}  // namespace lorivan::win32
