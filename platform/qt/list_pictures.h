// The small pictures beside the items of drop-down lists.
#pragma once

#include <QComboBox>
#include <map>
#include <vector>

#include "platform/window.h"

namespace lorivan {

class ListPictures {
 public:
  /// One picture for each item; shown with the next fit().
  void set(QComboBox& list, const std::vector<ItemPicture>& pictures) { pictures_[&list] = pictures; }
  /// As high as a line of the list's font, in its colours of now.
  void fit(QComboBox& list) const;

 private:
  std::map<const QComboBox*, std::vector<ItemPicture>> pictures_;
};

}  // namespace lorivan
