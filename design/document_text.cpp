#include "design/document_text.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/numbers.h"
#include "custom/shape_file.h"

namespace lorivan {
namespace {

constexpr std::string_view kOutlineName = "picShape", kAheadName = "outlineAhead", kFillName = "fitPicture",
                           kBandName = "bandShare", kEdgeName = "edgeShare", kColourName = "txtCol";

/// Takes a text apart line by line and counts the lines.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(withoutMark(text)) {}

  bool atEnd() const { return rest_.empty(); }
  bool onlyBlankLinesLeft() const { return rest_.find_first_not_of(" \t\r\n") == std::string_view::npos; }
  int number() const { return number_; }
  std::string_view next() {
    ++number_;
    const auto end = rest_.find_first_of("\r\n");
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(line.size());
    rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : rest_.empty() ? 0 : 1);
    return line;
  }

 private:
  std::string_view rest_;
  int number_ = 0;
};

Error faultAt(int line, const std::string& reason) { return unreadable("line {1}: {2}", line, reason); }

/// A sentence about a text of one line, without that line's number.
std::string withoutLine(const std::string& sentence) {
  const std::string number = tr("line {1}: {2}", 1, "");
  return sentence.starts_with(number) ? sentence.substr(number.size()) : sentence;
}

/// Splits at commas into exactly `Count` 16-bit whole numbers; otherwise says why not.
template <std::size_t Count>
Result<std::array<std::int16_t, Count>> readNumbers(std::string_view line, int lineNumber) {
  std::array<std::int16_t, Count> values{};
  for (std::size_t i = 0; i < Count; ++i) {
    const auto comma = line.find(',');
    if (i + 1 < Count && comma == std::string_view::npos)
      return faultAt(lineNumber, tr("ends after {1} of {2} values", i + 1, Count));
    const std::string_view text = line.substr(0, comma);
    const auto value = parseInteger(text, -32768, 32767);
    if (!value)
      return faultAt(lineNumber, tr("{1} is not a whole number from -32768 to 32767", quoted(text)));
    values[i] = static_cast<std::int16_t>(*value);
    line = comma == std::string_view::npos ? std::string_view() : line.substr(comma + 1);
    if (i + 1 == Count && comma != std::string_view::npos)
      return faultAt(lineNumber, tr("has more than {1} values", Count));
  }
  return values;
}

/// Fills a document from a text.
class DocumentReader {
 public:
  DocumentReader(std::string_view text, const Document& before) : lines_(text), before_(before) {}

  Result<ReadDocument> read() {
    Status state = readHead();
    if (state) state = readFields();
    if (state) state = readLines();
    if (!state) return state.error();
    return std::move(made_);
  }

 private:
  Status readHead();
  Status readFields();
  Status readField(Param p, std::string_view text);
  Status readNamed(std::string_view pair);
  Status readColour(std::string_view box, std::string_view text);
  Status readLines();
  static Error badValue(std::string_view name, std::string_view text, const std::string& wanted) {
    return faultAt(2, tr("{1} is not {2} for {3}", quoted(text), wanted, name));
  }

  LineReader lines_;
  const Document& before_;
  ReadDocument made_;
};

Status DocumentReader::readHead() {
  if (lines_.atEnd()) return faultAt(1, tr("the file is empty"));
  const auto values = readNumbers<2>(lines_.next(), 1);
  if (!values) return values.error();
  const auto [cellSize, shape] = *values;
  if (shape < 0 || shape >= kShapeCount) return faultAt(1, tr("there is no shape number {1}", shape));
  made_.document.CellSize = cellSize;
  made_.document.fields.shape = static_cast<Shape>(shape);
  return {};
}

/// The fields from the left, each up to the next comma. From the third on, a field without a comma behind it
/// takes the rest and those after it stay, as older files have fewer.
Status DocumentReader::readFields() {
  if (lines_.atEnd()) return unreadable("line 2 is missing");
  std::string_view line = lines_.next();
  for (const Param p : kKnotFileFields) made_.document.fields.text(p) = before_.fields.text(p);
  std::size_t place = 0;
  for (bool more = true; more; ++place) {
    const auto comma = line.find(',');
    more = comma != std::string_view::npos;
    if (!more && place < 2) return faultAt(2, tr("has fewer than three values"));
    const std::string_view text = line.substr(0, comma);
    const Status taken =
        place < kKnotFileFields.size() ? readField(kKnotFileFields[place], text) : readNamed(text);
    if (!taken) return taken;
    if (more) line.remove_prefix(comma + 1);
  }
  return {};
}

Status DocumentReader::readField(Param p, std::string_view text) {
  const std::string name(parameterSpec(p).field);
  if (!parseNumber(text)) return badValue(name, text, tr("a number"));
  std::string& field = made_.document.fields.text(p);
  // The fall-back may lie beyond the limits, and is then what the field showed all the same.
  field = text == parameterSpec(p).fallback ? std::string(text) : correctedText(p, std::string(text));
  if (parseNumber(field) != parseNumber(text))
    made_.corrections.push_back(tr("{1} {2} corrected to {3}", name, quoted(text), field));
  return {};
}

/// A name that nobody knows may be that of a later version and is passed over.
Status DocumentReader::readNamed(std::string_view pair) {
  const auto equals = pair.find('=');
  if (equals == std::string_view::npos) return {};
  const std::string_view name = trimmed(pair.substr(0, equals)), text = pair.substr(equals + 1);
  Document& document = made_.document;
  if (const auto p = findParameter(name)) return readField(*p, text);
  if (const auto c = findCheck(name)) {
    const auto on = parseInteger(text, 0, 1);
    if (!on) return badValue(name, text, tr("0 or 1"));
    document.fields.check(*c) = *on == 1;
  } else if (name == kAheadName || name == kFillName) {
    const auto on = parseInteger(text, 0, 1);
    if (!on) return badValue(name, text, tr("0 or 1"));
    (name == kAheadName ? document.outlineAhead : document.fields.fitPicture) = *on == 1;
  } else if (name == kBandName || name == kEdgeName) {
    const auto share = parseNumber(text);
    if (!share || *share < 0 || *share > 1) return badValue(name, text, tr("a share from 0 to 1"));
    (name == kBandName ? document.bands.band : document.bands.edge) = static_cast<float>(*share);
  } else if (name.starts_with(kColourName)) {
    return readColour(name.substr(kColourName.size()), text);
  } else if (name == kOutlineName) {
    auto shape = readShapeText(text);
    if (!shape) return faultAt(2, std::string(kOutlineName) + ": " + withoutLine(shape.error().message));
    document.outline = Shared(std::move(*shape));
  }
  return {};
}

Status DocumentReader::readColour(std::string_view box, std::string_view text) {
  const auto number = parseInteger(box, 0, kColourBoxes - 1);
  const auto colour = parseInteger(text, 0, 0xFFFFFF);
  if (!number) return {};
  if (!colour) return badValue("txtCol" + std::string(box), text, tr("a colour"));
  made_.document.fields.boxes[*number] = static_cast<Colour>(*colour);
  return {};
}

KnotLine lineFrom(const std::array<std::int16_t, 8>& v) {
  return {v[0], v[1], v[2],
          v[3], v[4], v[5],
          v[6], v[7], lineAngle(static_cast<float>(v[0] - v[2]), static_cast<float>(v[1] - v[3]))};
}

Status DocumentReader::readLines() {
  KnotLines lines;
  const Wrap wrap = wrapOf(made_.document);
  while (!lines_.atEnd()) {
    const std::string_view text = lines_.next();
    if (trimmed(text).empty() && lines_.onlyBlankLinesLeft()) break;
    if (trimmed(text).empty()) return faultAt(lines_.number(), tr("is empty"));
    if (lines.size() >= kMostLines)
      return faultAt(lines_.number(), tr("a knot has at most {1} lines", kMostLines));
    const auto values = readNumbers<8>(text, lines_.number());
    if (!values) return values.error();
    lines.push_back(lineFrom(*values));
    if (wrap.laps(lines.back().X1, lines.back().X2) > kMostLaps)
      return faultAt(lines_.number(), tr("leads more than {1} times round the cylinder", kMostLaps));
  }
  lines.shrink_to_fit();
  made_.document.lines = Shared(std::move(lines));
  return {};
}

/// A shape's records on one line, without commas.
std::string outlineText(const CustomShape& shape) {
  std::string text = writeShapeText(shape);
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == ','; }, ' ');
  return std::string(trimmed(text));
}

bool isKnotFileField(Param p) {
  return std::find(kKnotFileFields.begin(), kKnotFileFields.end(), p) != kKnotFileFields.end();
}

/// ",name=value" for everything that is not as at a first start.
std::string namedFields(const Document& document) {
  static const Document first;
  std::string text;
  const auto add = [&](std::string_view name, const std::string& value) {
    text.append(",").append(name).append("=").append(value);
  };
  for (int i = 0; i < kParamCount; ++i) {
    const auto p = static_cast<Param>(i);
    if (!isKnotFileField(p) && document.fields.text(p) != first.fields.text(p))
      add(parameterSpec(p).field, document.fields.text(p));
  }
  for (int i = 0; i < kCheckCount; ++i) {
    const auto c = static_cast<Check>(i);
    if (document.fields.check(c) != first.fields.check(c))
      add(checkSpec(c).field, document.fields.check(c) ? "1" : "0");
  }
  for (std::size_t k = 0; k < document.fields.boxes.size(); ++k)
    if (document.fields.boxes[k] != first.fields.boxes[k])
      add(std::string(kColourName) + std::to_string(k), std::to_string(document.fields.boxes[k]));
  if (document.fields.fitPicture) add(kFillName, "1");
  if (document.bands.band != first.bands.band) add(kBandName, shortestText(document.bands.band));
  if (document.bands.edge != first.bands.edge) add(kEdgeName, shortestText(document.bands.edge));
  if (document.outlineAhead) add(kAheadName, "1");
  if (document.outline) add(kOutlineName, outlineText(*document.outline));
  return text;
}

}  // namespace

std::string documentText(const Document& document) {
  std::string text = std::to_string(document.CellSize) + ',' +
                     std::to_string(static_cast<int>(document.fields.shape)) + "\r\n";
  for (std::size_t i = 0; i < kKnotFileFields.size(); ++i) {
    if (i > 0) text += ',';
    text += document.fields.text(kKnotFileFields[i]);
  }
  text += namedFields(document) + "\r\n";
  if (!document.lines) return text;
  for (const KnotLine& line : *document.lines) {
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

Result<ReadDocument> readDocument(std::string_view text, const Document& before) {
  return DocumentReader(text, before).read();
}

}  // namespace lorivan
