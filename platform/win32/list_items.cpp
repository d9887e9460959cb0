#include "platform/win32/list_items.h"

#include <string>

#include "platform/common/item_picture.h"
#include "platform/common/pixels.h"
#include "platform/win32/handles.h"

namespace lorivan::win32 {
namespace {

/// The colours of an item in its state.
struct ItemColours {
  explicit ItemColours(UINT state) {
    const bool selected = (state & ODS_SELECTED) != 0, disabled = (state & ODS_DISABLED) != 0;
    ground = GetSysColor(disabled ? COLOR_BTNFACE : selected ? COLOR_HIGHLIGHT : COLOR_WINDOW);
    text = GetSysColor(disabled ? COLOR_GRAYTEXT : selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
  }
  Colour ground, text;
};

std::wstring textOf(const DRAWITEMSTRUCT& item) {
  const LRESULT length = SendMessageW(item.hwndItem, CB_GETLBTEXTLEN, item.itemID, 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  SendMessageW(item.hwndItem, CB_GETLBTEXT, item.itemID, reinterpret_cast<LPARAM>(text.data()));
  text.pop_back();
  return text;
}

/// `premultiplied` over an opaque ground.
std::uint32_t over(std::uint32_t premultiplied, Colour ground) {
  const std::uint32_t rest = 255 - (premultiplied >> 24);
  const auto mix = [&](int shift, int under) {
    return std::min(255U,
                    (premultiplied >> shift & 0xFF) + (static_cast<std::uint32_t>(under) * rest + 127) / 255);
  };
  return 0xFF000000U | mix(16, redOf(ground)) << 16 | mix(8, greenOf(ground)) << 8 | mix(0, blueOf(ground));
}

void drawPicture(HDC context, const ItemPicture& picture, POINT corner, SIZE size,
                 const ItemColours& colours) {
  std::vector<std::uint32_t> pixels =
      tintedPicture(picture, static_cast<int>(size.cx), static_cast<int>(size.cy), colours.text);
  if (pixels.empty()) return;
  for (std::uint32_t& pixel : pixels) pixel = over(pixel, colours.ground);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.cx;
  info.bmiHeader.biHeight = -size.cy;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  SetDIBitsToDevice(context, corner.x, corner.y, static_cast<DWORD>(size.cx), static_cast<DWORD>(size.cy), 0,
                    0, 0, static_cast<UINT>(size.cy), pixels.data(), &info, DIB_RGB_COLORS);
}

}  // namespace

void drawListItem(const DRAWITEMSTRUCT& item, const std::vector<ItemPicture>& pictures) {
  const ItemColours colours(item.itemState);
  RECT box = item.rcItem;
  SetBkColor(item.hDC, colours.ground);
  SetTextColor(item.hDC, colours.text);
  ExtTextOutW(item.hDC, 0, 0, ETO_OPAQUE, &box, nullptr, 0, nullptr);
  if (item.itemID != static_cast<UINT>(-1)) {
    const LONG high = box.bottom - box.top, gap = 3;
    RECT text = box;
    text.left += gap;
    if (item.itemID < pictures.size()) {
      const SIZE size = {high * 5 / 4, high};
      drawPicture(item.hDC, pictures[item.itemID], {text.left, box.top}, size, colours);
      text.left += size.cx + 2 * gap;
    }
    const std::wstring words = textOf(item);
    DrawTextW(item.hDC, words.c_str(), static_cast<int>(words.size()), &text,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
  if ((item.itemState & (ODS_FOCUS | ODS_NOFOCUSRECT)) == ODS_FOCUS) DrawFocusRect(item.hDC, &box);
}

}  // namespace lorivan::win32
