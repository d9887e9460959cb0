#include "strands/box_cells.h"

namespace lorivan {

void BoxCells::lay(double most) {
  Box all = boxes_.front();
  double sizes = 0;
  for (const Box& b : boxes_) {
    all.add({b.left, b.top});
    all.add({b.right, b.bottom});
    sizes += std::max(b.right - b.left, b.bottom - b.top);
  }
  const double extent = std::max(all.right - all.left, all.bottom - all.top);
  const double size = std::max({sizes / static_cast<double>(boxes_.size()), extent / most, 1e-9});
  columns_ = static_cast<int>((all.right - all.left) / size) + 1;
  const int rows = static_cast<int>((all.bottom - all.top) / size) + 1;
  starts_.assign(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows) + 1, 0);
  cells_.clear();
  for (const Box& b : boxes_) {
    cells_.push_back(
        {static_cast<int>((b.left - all.left) / size), static_cast<int>((b.top - all.top) / size),
         static_cast<int>((b.right - all.left) / size), static_cast<int>((b.bottom - all.top) / size)});
    eachCell(cells_.back(), [&](std::size_t cell) { ++starts_[cell + 1]; });
  }
  for (std::size_t i = 1; i < starts_.size(); ++i) starts_[i] += starts_[i - 1];
  entries_.resize(starts_.back());
  next_.assign(starts_.begin(), starts_.end() - 1);
  for (std::size_t i = 0; i < boxes_.size(); ++i)
    eachCell(cells_[i], [&](std::size_t cell) {
      entries_[next_[cell]++] = {static_cast<std::uint32_t>(i), boxes_[i]};
    });
}

}  // namespace lorivan
