// Boxes sorted into cells, so that those that meet are found without comparing all of them.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

#include "strands/band_loop.h"

namespace lorivan {

struct Box {
  double left, top, right, bottom;
  void add(Vec p) {
    left = std::min(left, p.x);
    right = std::max(right, p.x);
    top = std::min(top, p.y);
    bottom = std::max(bottom, p.y);
  }
  bool meets(const Box& o) const {
    return left <= o.right && o.left <= right && top <= o.bottom && o.top <= bottom;
  }
};

/// Square cells about as large as the boxes are. Laid out again and again they keep their memory.
class BoxCells {
 public:
  /// To fill, with one box at least, before they are laid out.
  std::vector<Box>& boxes() { return boxes_; }
  const Box& box(std::size_t number) const { return boxes_[number]; }
  /// `most`: cells across and down, however small the boxes.
  void lay(double most);

  /// Calls use(one, two) with the numbers of all boxes that meet, each pair once, and each with itself: cell
  /// by cell, the smaller number first.
  template <class Use>
  void eachMeeting(Use&& use) {
    for (std::size_t cell = 0; cell + 1 < starts_.size(); ++cell)
      for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i) {
        const std::uint32_t one = entries_[i].number;
        for (const std::uint32_t two : mayMeet(i, starts_[cell + 1]))
          if (meetFirst(one, two, cell)) use(static_cast<std::size_t>(one), static_cast<std::size_t>(two));
      }
  }

 private:
  /// What a cell knows of a box, lying side by side: most pairs are told apart by it.
  struct Entry {
    Entry() = default;
    Entry(std::uint32_t box, const Box& its)
        : number(box),
          left(below(its.left)),
          top(below(its.top)),
          right(-below(-its.right)),
          bottom(-below(-its.bottom)) {}
    bool mayMeet(const Entry& o) const {  // all asked: which one says no cannot be foretold
      return (left <= o.right) & (o.left <= right) & (top <= o.bottom) & (o.top <= bottom);
    }
    /// What rounding may have added is taken off.
    static float below(double v) { return static_cast<float>(v - std::fabs(v) * 1e-6); }

    std::uint32_t number = 0;
    float left = 0, top = 0, right = 0, bottom = 0;
  };
  struct Cells {
    int column0, row0, column1, row1;
  };

  /// Those of the entries from one on that may meet it.
  std::span<const std::uint32_t> mayMeet(std::size_t first, std::size_t end) {
    if (near_.size() < end - first) near_.resize(end - first);
    const Entry one = entries_[first];
    std::size_t count = 0;
    for (std::size_t i = first; i < end; ++i) {
      near_[count] = entries_[i].number;
      count += one.mayMeet(entries_[i]) ? 1 : 0;
    }
    return {near_.data(), count};
  }

  /// Whether two boxes meet, and this is the first cell that both touch.
  bool meetFirst(std::uint32_t one, std::uint32_t two, std::size_t cell) const {
    const Cells &a = cells_[one], &b = cells_[two];
    return boxes_[one].meets(boxes_[two]) &&
           cell == cellAt(std::max(a.column0, b.column0), std::max(a.row0, b.row0));
  }
  std::size_t cellAt(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column);
  }
  template <class Use>
  void eachCell(const Cells& of, Use&& use) const {
    for (int row = of.row0; row <= of.row1; ++row)
      for (int column = of.column0; column <= of.column1; ++column) use(cellAt(column, row));
  }

  std::vector<Box> boxes_;
  std::vector<Cells> cells_;                // of each box
  std::vector<std::size_t> starts_, next_;  // of each cell
  std::vector<Entry> entries_;
  std::vector<std::uint32_t> near_;
  int columns_ = 0;
};

}  // namespace lorivan
