// Contact sheets: all knots of a run in one picture.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/sink.h"
#include "design/contact_sheet.h"
#include "strands/svg_surface.h"

namespace lorivan {

class SheetFiles {
 public:
  /// Room for `count` knots in `columns` columns, or as many as look good where that is 0.
  SheetFiles(Platform& platform, const OutputOptions& options, int count, int columns)
      : platform_(platform), options_(options), count_(count), columns_(columns) {}

  /// One more file, a picture or an SVG by its extension.
  void add(const std::string& name) { sheets_.push_back({name, nullptr, nullptr, {}}); }
  bool empty() const { return sheets_.empty(); }

  /// Draws a knot into its place. The first one gives the sheets their colour.
  Status draw(int place, const OutputJob& job);
  void setCaption(int place, const std::string& caption);

  /// The finished files' bytes, one for each name; nothing while no knot was drawn.
  bool drawn() const { return !sheets_.empty() && sheets_.front().surface != nullptr; }
  std::size_t size() const { return sheets_.size(); }
  const std::string& name(std::size_t sheet) const { return sheets_[sheet].name; }
  Result<std::string> finish(std::size_t sheet);

 private:
  struct Sheet {
    std::string name;
    std::unique_ptr<Surface> surface;
    SvgSurface* vector = nullptr;  // the same surface, where it is one
    SheetLayout layout;
  };
  Status open(Sheet& sheet) const;

  Platform& platform_;
  const OutputOptions& options_;
  int count_, columns_;
  Colour ground_ = 0xFFFFFF;
  std::vector<Sheet> sheets_;
  std::vector<std::pair<int, std::string>> captions_;
};

}  // namespace lorivan
