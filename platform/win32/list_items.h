// The items of a drop-down list with their small pictures.
#pragma once

#include <vector>

#include "platform/win32/windows_api.h"
#include "platform/window.h"

namespace lorivan::win32 {

/// WM_DRAWITEM of a list that keeps its own texts. An item without a picture begins with its text.
void drawListItem(const DRAWITEMSTRUCT& item, const std::vector<ItemPicture>& pictures);

}  // namespace lorivan::win32
