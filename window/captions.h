// Captions that buttons have for a while.
#pragma once

#include <string_view>

#include "base/texts.h"

namespace lorivan {

/// Create 2D, while an animation runs.
inline std::string stopCaption() { return tr("Stop"); }
inline std::string waitCaption() { return tr("wait..."); }

}  // namespace lorivan
