#include "custom/shape_file.h"

#include <cmath>

#include "base/numbers.h"
#include "base/sink.h"

namespace lorivan {
namespace {

constexpr double kMostTwips = 1e6;
constexpr double kMostCoordinate = 32767;
constexpr std::string_view kSmoothWord = "smooth";

/// Takes the text apart into numbers; remembers the first fault and the line that it stands in.
class ShapeReader {
 public:
  explicit ShapeReader(std::string_view text) : text_(text) {}

  bool failed() const { return !fault_.empty(); }
  Error error() const { return unreadable(fault_); }

  double number(const std::string& what, double low, double high) {
    const std::string_view word = nextWord();
    if (failed()) return 0;
    if (word.empty()) return fail(tr("the file ends where {1} should be", what));
    const auto value = parseNumber(word);
    if (!value) return fail(tr("{1} is not a number", shown(word)));
    if (*value < low || *value > high) return fail(tr("{1} {2} is out of range", what, shown(word)));
    return *value;
  }

  int wholeNumber(const std::string& what, int low, int high) {
    const double value = number(what, low, high);
    if (!failed() && value != std::floor(value)) fail(tr("{1} is not a whole number", what));
    return failed() ? 0 : static_cast<int>(value);
  }

  /// The next one as it is; empty at the end.
  std::string_view word() { return nextWord(); }

  double fail(const std::string& reason) {
    if (!failed()) fault_ = tr("line {1}: {2}", line_, reason);
    return 0;
  }

 private:
  static bool separates(char c) { return c == ' ' || c == '\t' || c == ',' || c == '\r' || c == '\n'; }

  static std::string shown(std::string_view word) {
    std::string text(word.substr(0, 20));
    for (char& c : text)
      if (c < ' ' || c > '~') c = '?';
    return text;
  }

  std::string_view nextWord() {
    for (; at_ < text_.size() && separates(text_[at_]); ++at_)
      if (text_[at_] == '\n' || (text_[at_] == '\r' && text_.substr(at_ + 1, 1) != "\n")) ++line_;
    const std::size_t begin = at_;
    while (at_ < text_.size() && !separates(text_[at_])) ++at_;
    return text_.substr(begin, at_ - begin);
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int line_ = 1;
  std::string fault_;
};

void readPoints(ShapeReader& reader, CustomShape& shape) {
  const int count = reader.wholeNumber(tr("the number of points"), 0, kMostShapePoints);
  for (int k = 0; k < count && !reader.failed(); ++k) {
    const double x = reader.number(tr("the coordinate"), -kMostCoordinate, kMostCoordinate);
    const double y = reader.number(tr("the coordinate"), -kMostCoordinate, kMostCoordinate);
    shape.addPoint(static_cast<float>(x), static_cast<float>(y));
  }
}

void readLines(ShapeReader& reader, CustomShape& shape) {
  const int deleted = static_cast<int>(kDeletedSlot);
  const int count = reader.wholeNumber(tr("the number of lines"), 0, kMostShapeLines);
  for (int k = 0; k < count && !reader.failed(); ++k) {
    const int a = reader.wholeNumber(tr("the point number"), deleted, shape.ShapePointCount);
    const int b = reader.wholeNumber(tr("the point number"), deleted, shape.ShapePointCount);
    if (a == 0 || b == 0 || (a == deleted) != (b == deleted)) reader.fail(tr("a line needs two points"));
    shape.addLine(a, b);
  }
}

template <class Number>
void appendPair(std::string& out, Number a, Number b) {
  appendPrinted(out, a);
  appendPrinted(out, b);
  out += "\r\n";
}

}  // namespace

std::string writeShapeText(const CustomShape& shape) {
  std::string out;
  appendPair(out, shape.surfaceWidth * kTwipsPerUnit, shape.surfaceHeight * kTwipsPerUnit);
  appendPrinted(out, std::int64_t{shape.ShapePointCount});
  out += "\r\n";
  for (std::size_t k = 1; k <= static_cast<std::size_t>(shape.ShapePointCount); ++k)
    appendPair(out, shape.ShapeX[k], shape.ShapeY[k]);
  appendPrinted(out, std::int64_t{shape.ShapeLineCount});
  out += "\r\n";
  for (std::size_t k = 1; k <= static_cast<std::size_t>(shape.ShapeLineCount); ++k)
    appendPair(out, shape.ShapeLineEnds[0][k], shape.ShapeLineEnds[1][k]);
  if (shape.smooth) out.append(kSmoothWord).append("\r\n");
  return out;
}

Result<CustomShape> readShapeText(std::string_view text) {
  ShapeReader reader(withoutMark(text));
  CustomShape shape;
  shape.surfaceWidth =
      static_cast<float>(reader.number(tr("the width"), kTwipsPerUnit, kMostTwips)) / kTwipsPerUnit;
  shape.surfaceHeight =
      static_cast<float>(reader.number(tr("the height"), kTwipsPerUnit, kMostTwips)) / kTwipsPerUnit;
  readPoints(reader, shape);
  readLines(reader, shape);
  if (reader.failed()) return reader.error();
  shape.smooth = reader.word() == kSmoothWord;
  return shape;
}

Result<CustomShape> loadShapeFile(const std::string& path) {
  const auto named = [&](const std::string& reason) {
    return unreadable("{1}: {2}", fileNameOf(path), reason);
  };
  const Result<std::string> text = readFile(path, kMostShapeFileBytes);
  if (!text) return named(text.error().message);
  Result<CustomShape> shape = readShapeText(*text);
  if (!shape) return named(shape.error().message);
  return shape;
}

Status saveShapeFile(const std::string& path, const CustomShape& shape) {
  return writeFile(path, writeShapeText(shape));
}

}  // namespace lorivan
