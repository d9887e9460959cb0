#include <vector>

#include "base/result.h"
#include "custom/shape_file.h"
#include "design/parameters.h"
#include "graph/standard_grids.h"
#include "tools/manual/texts.h"

namespace lorivan {
namespace {

/// A content that is looked for: "0" stands for any digit, everything else for itself.
struct Pattern {
  std::string value, mask;

  Pattern& add(std::string_view text) {
    for (const char c : text) {
      value += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
      mask += c == '0' ? "f0" : "ff";  // ":" to "?" pass as digits, which does no harm here
    }
    return *this;
  }
  std::string match(std::size_t offset, const std::string& inside = {}) const {
    const std::string element = "<match type=\"string\" offset=\"" + std::to_string(offset) + "\" value=\"" +
                                value + "\" mask=\"0x" + mask + '"';
    return inside.empty() ? element + "/>\n" : element + ">\n" + inside + "</match>\n";
  }
};

/// "0", "00" ... for whole numbers up to this one.
std::vector<std::string> digits(std::size_t most) {
  std::vector<std::string> all;
  for (std::size_t count = 1; count <= most; ++count) all.emplace_back(count, '0');
  return all;
}

std::size_t longest(Param field) { return parameterSpec(field).max.size(); }

/// A knot file begins with "cell size,shape" on a line of its own, and at least eight fields on the next. Of
/// these three numbers are looked at: a table of other programs has as many columns in every line.
std::string knotMatches() {
  std::vector<std::string> scales = digits(longest(Param::Scale));
  for (const std::string& whole : digits(longest(Param::Scale))) scales.push_back(whole + ".0");
  std::string all;
  for (const std::string& cell : digits(longest(Param::Scale)))
    for (const std::string& shape : digits(std::to_string(kShapeCount - 1).size())) {
      const std::string line = cell + ',' + shape + "\r\n";
      std::string next;
      for (const std::string& scale : scales)
        for (const std::string& across : digits(longest(Param::XNo)))
          for (const std::string& up : digits(longest(Param::YNo)))
            next += Pattern().add(scale + ',' + across + ',' + up + ',').match(line.size());
      all += Pattern().add(line).match(0, next);
    }
  return all;
}

/// A shape file begins with the size of its sheet, which has as many digits in all of them.
std::string shapeMatches() {
  const std::string text = writeShapeText(CustomShape());
  return Pattern().add(text.substr(0, text.find('\n') + 1)).match(0);
}

std::string type(const std::string& name, const std::string& comment, const std::string& german,
                 std::string_view extension, const std::string& matches) {
  return "<mime-type type=\"application/x-lorivan-" + name + "\">\n<comment>" + comment +
         "</comment>\n<comment xml:lang=\"de\">" + german +
         "</comment>\n<icon name=\"application-x-lorivan-" + name +
         "\"/>\n<sub-class-of type=\"text/plain\"/>\n<magic priority=\"60\">\n" + matches +
         "</magic>\n<glob pattern=\"*." + std::string(extension) + "\"/>\n</mime-type>\n";
}

}  // namespace

std::string fileTypes() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!-- Written by lorivan_package_texts from the program's tables; do not edit. -->\n"
         "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n" +
         type("knot", "Lorivan knot", "Lorivan-Knoten", "qzd", knotMatches()) +
         type("shape", "Lorivan shape", "Lorivan-Form", kShapeFileExtension, shapeMatches()) +
         "</mime-info>\n";
}

}  // namespace lorivan
