#include "app/knot_file.h"

#include "base/numbers.h"

namespace lorivan {
namespace {

/// Takes a text apart line by line and counts the lines.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  bool onlyBlankLinesLeft() const { return rest_.find_first_not_of(" \t\r\n") == std::string_view::npos; }
  int number() const { return number_; }
  std::string_view next() {
    ++number_;
    const auto end = rest_.find('\n');
    std::string_view line = rest_.substr(0, end);
    rest_ = end == std::string_view::npos ? std::string_view() : rest_.substr(end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
  }

 private:
  std::string_view rest_;
  int number_ = 0;
};

Error faultAt(int line, const std::string& reason) {
  return Error{"line " + std::to_string(line) + ": " + reason};
}

/// Splits at commas into exactly `Count` 16-bit whole numbers; otherwise says why not.
template <std::size_t Count>
Result<std::array<std::int16_t, Count>> readNumbers(std::string_view line, int lineNumber) {
  std::array<std::int16_t, Count> values{};
  for (std::size_t i = 0; i < Count; ++i) {
    const auto comma = line.find(',');
    if (i + 1 < Count && comma == std::string_view::npos)
      return faultAt(lineNumber,
                     "ends after " + std::to_string(i + 1) + " of " + std::to_string(Count) + " values");
    const std::string_view text = line.substr(0, comma);
    const auto value = parseInteger(text, -32768, 32767);
    if (!value) return faultAt(lineNumber, quoted(text) + " is not a whole number from -32768 to 32767");
    values[i] = static_cast<std::int16_t>(*value);
    line = comma == std::string_view::npos ? std::string_view() : line.substr(comma + 1);
    if (i + 1 == Count && comma != std::string_view::npos)
      return faultAt(lineNumber, "has more than " + std::to_string(Count) + " values");
  }
  return values;
}

Status readHead(KnotFile& file, LineReader& reader) {
  if (reader.atEnd()) return faultAt(1, "the file is empty");
  const auto values = readNumbers<2>(reader.next(), 1);
  if (!values) return values.error();
  file.CellSize = (*values)[0];
  if ((*values)[1] < 0 || (*values)[1] >= kShapeCount)
    return faultAt(1, "there is no shape number " + std::to_string((*values)[1]));
  file.shape = static_cast<Shape>((*values)[1]);
  return {};
}

/// The fields from the left, each up to the next comma. From the third on, a field without a comma behind it
/// takes the rest and those after it stay unset, as older files have fewer.
Status readFields(KnotFile& file, LineReader& reader) {
  if (reader.atEnd()) return Error{"line 2 is missing"};
  std::string_view line = reader.next();
  for (std::size_t i = 0; i < file.fields.size(); ++i) {
    const auto comma = line.find(',');
    if (comma == std::string_view::npos && i < 2) return faultAt(2, "has fewer than three values");
    file.fields[i] = std::string(line.substr(0, comma));
    if (comma == std::string_view::npos) break;
    line.remove_prefix(comma + 1);
  }
  return {};
}

GridLine lineFrom(const std::array<std::int16_t, 8>& v) {
  GridLine line;
  line.X1 = v[0];
  line.Y1 = v[1];
  line.X2 = v[2];
  line.Y2 = v[3];
  line.MidX = v[4];
  line.MidY = v[5];
  line.Kind = v[6];
  line.Passes = v[7];
  line.Angle = lineAngle(static_cast<float>(v[0] - v[2]), static_cast<float>(v[1] - v[3]));
  return line;
}

Status readLines(KnotFile& file, LineReader& reader) {
  while (!reader.atEnd()) {
    const std::string_view text = reader.next();
    if (trimmed(text).empty() && reader.onlyBlankLinesLeft()) break;
    if (trimmed(text).empty()) return faultAt(reader.number(), "is empty");
    if (file.lines.size() >= kMostLines)
      return faultAt(reader.number(), "a knot has at most " + std::to_string(kMostLines) + " lines");
    const auto values = readNumbers<8>(text, reader.number());
    if (!values) return values.error();
    file.lines.push_back(lineFrom(*values));
  }
  return {};
}

}  // namespace

KnotFile parseKnotFile(std::string_view text) {
  KnotFile file;
  LineReader reader(text);
  Status state = readHead(file, reader);
  if (state) state = readFields(file, reader);
  if (state) state = readLines(file, reader);
  if (!state) file.fault = state.error();
  return file;
}

Status takeLines(KnotGraph& graph, const KnotFile& file) {
  startLines(graph);
  for (const GridLine& line : file.lines) graph.Lines[static_cast<std::size_t>(graph.NextLine++)] = line;
  graph.NoGrid = false;
  if (const Status made = finishLines(graph); !made) return made;
  return collectPoints(graph);
}

std::string writeKnotFile(const KnotFields& fields, const KnotGraph& graph) {
  std::string text =
      std::to_string(graph.CellSize) + ',' + std::to_string(static_cast<int>(fields.shape)) + "\r\n";
  for (std::size_t i = 0; i < kKnotFileFields.size(); ++i) {
    if (i > 0) text += ',';
    text += fields.text(kKnotFileFields[i]);
  }
  text += "\r\n";
  for (int j = 0; j <= graph.LastLine; ++j) {
    const GridLine& line = graph.Lines[static_cast<std::size_t>(j)];
    const char* separator = "";
    for (const std::int16_t value :
         {line.X1, line.Y1, line.X2, line.Y2, line.MidX, line.MidY, line.Kind, line.Passes}) {
      text += separator;
      text += std::to_string(value);
      separator = ",";
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace lorivan
