#include "platform/qt/list_pictures.h"

#include <QAbstractItemView>
#include <QIcon>
#include <QImage>

#include "platform/common/item_picture.h"
#include "platform/qt/convert.h"

namespace lorivan {
namespace {

QPixmap pixmapOf(const ItemPicture& picture, QSize size, double ratio, QColor colour) {
  const QSize pixels = size * ratio;
  std::vector<std::uint32_t> tinted =
      tintedPicture(picture, pixels.width(), pixels.height(), toColour(colour));
  if (tinted.empty()) return {};
  const QImage view(reinterpret_cast<const uchar*>(tinted.data()), pixels.width(), pixels.height(),
                    QImage::Format_ARGB32_Premultiplied);
  QPixmap made = QPixmap::fromImage(view.copy());
  made.setDevicePixelRatio(ratio);
  return made;
}

}  // namespace

void ListPictures::fit(QComboBox& list) const {
  const auto found = pictures_.find(&list);
  if (found == pictures_.end()) return;
  const int height = list.fontMetrics().height() + 3;
  const QSize size(height * 5 / 4, height);
  const double ratio = list.devicePixelRatioF();
  const QPalette& palette = list.palette();
  list.setIconSize(size);
  for (int i = 0; i < std::min(list.count(), static_cast<int>(found->second.size())); ++i) {
    const ItemPicture& picture = found->second[i];
    QIcon icon;
    for (const auto& [mode, group, role] : {std::tuple{QIcon::Normal, QPalette::Active, QPalette::Text},
                                            {QIcon::Selected, QPalette::Active, QPalette::HighlightedText},
                                            {QIcon::Disabled, QPalette::Disabled, QPalette::Text}})
      icon.addPixmap(pixmapOf(picture, size, ratio, palette.color(group, role)), mode);
    list.setItemIcon(i, icon);
  }
}

}  // namespace lorivan
