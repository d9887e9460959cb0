// A picture on the window: a child that shows its memory surface and tells what the mouse does on it.
#pragma once

#include <functional>
#include <memory>

#include "platform/win32/dib_surface.h"
#include "platform/window.h"

namespace lorivan::win32 {

class PictureView {
 public:
  using MouseHandler = std::function<void(const MouseEvent&)>;

  static Result<std::unique_ptr<PictureView>> create(HWND parent, int id, MouseHandler onMouse);
  PictureView(const PictureView&) = delete;
  PictureView& operator=(const PictureView&) = delete;
  ~PictureView();

  HWND handle() const { return handle_; }
  /// The same object as long as the view lives, also after the window is gone.
  DibSurface& surface() { return *surface_; }
  /// Fits the surface to the size; true when it is another size now.
  bool fitSurface(int width, int height);
  void setPointer(PointerShape shape);
  /// Has what was drawn since the last call painted soon.
  void showDrawn();

 private:
  PictureView(std::unique_ptr<DibSurface> surface, MouseHandler onMouse);
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wide, LPARAM argument);
  LRESULT handle(UINT message, WPARAM wide, LPARAM argument);
  void refresh();
  void paint();
  void press(int button, LPARAM where, bool second);
  void turnWheel(int turn, LPARAM where);
  void move(LPARAM where);
  void release(int button, LPARAM where);
  void captureLost();
  void releaseLost();
  void leave();
  void tell(MouseAction action, int button, int steps = 0);
  void rememberPlace(LPARAM where);

  HWND handle_ = nullptr;
  std::unique_ptr<DibSurface> surface_;
  MouseHandler onMouse_;
  PointerShape pointer_ = PointerShape::arrow;
  int pressed_ = 0;  // the button whose release is awaited
  int x_ = 0, y_ = 0;
  int turned_ = 0;       // of the wheel, less than a notch
  bool inside_ = false;  // the pointer's leaving is being watched
  DWORD shownAt_ = 0;    // when refresh() last painted, milliseconds
};

HCURSOR systemPointer(PointerShape shape);

}  // namespace lorivan::win32
