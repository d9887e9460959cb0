// The program's window on Qt Widgets.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/window.h"

namespace lorivan {

/// The tables and the events must outlive the window. Needs a QApplication.
std::unique_ptr<Window> makeWindowQt(const WindowSpec& spec, const WindowEvents& events);

}  // namespace lorivan
