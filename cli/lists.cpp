#include "cli/lists.h"

#include "design/knot_fields.h"
#include "design/parameters.h"
#include "design/presets.h"
#include "export/formats.h"

namespace lorivan {
namespace {

std::string parameterList() {
  std::string out;
  for (const ParamSpec& spec : parameterTable()) {
    appendColumn(out, spec.field, 20);
    appendColumn(out, std::string(spec.min) + " to " + std::string(spec.max), 16);
    appendColumn(out, correctedText(*findParameter(spec.field), std::string(spec.firstRun)), 8);
    out.append(spec.caption).append(": ").append(spec.about) += '\n';
  }
  for (const CheckSpec& spec : checkTable()) {
    appendColumn(out, spec.field, 20);
    appendColumn(out, "0 or 1", 16);
    appendColumn(out, spec.firstRun ? "1" : "0", 8);
    out.append(spec.caption).append(": ").append(spec.about) += '\n';
  }
  return out;
}

std::string shapeList() {
  std::string out;
  for (int i = 0; i < kShapeCount - 1; ++i) {
    const ShapeSpec& spec = shapeTable()[i];
    appendColumn(out, std::to_string(i), 4);
    appendColumn(out, spec.name, 20);
    out += std::string(spec.about) + '\n';
  }
  return out;
}

std::string presetList() {
  std::string out;
  int number = 0;
  for (const Preset& preset : presetTable()) {
    appendColumn(out, std::to_string(number++), 4);
    appendColumn(out, preset.name, 20);
    out += std::string(preset.about) + '\n';
  }
  return out;
}

}  // namespace

void appendColumn(std::string& out, std::string_view text, std::size_t width) {
  out += text;
  out.append(text.size() < width ? width - text.size() : 1, ' ');
}

std::string listText(const std::string& what) {
  if (what == "parameters") return parameterList();
  if (what == "presets") return presetList();
  return what == "shapes" ? shapeList() : formatList();
}

}  // namespace lorivan
