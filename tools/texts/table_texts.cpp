// Prints every text that the program's tables bring into the window, each with its context before a tab, for
// tools/texts/texts.
#include <iostream>
#include <set>
#include <string>

#include "design/materials.h"
#include "design/model_check.h"
#include "design/names.h"
#include "design/presets.h"
#include "export/formats.h"
#include "window/commands.h"
#include "window/form_table.h"
#include "window/save_options.h"

namespace lorivan {
namespace {

class Texts {
 public:
  void add(std::string_view text, std::string_view context = {}) {
    if (!text.empty()) lines_.insert(std::string(context) + '\t' + std::string(text));
  }
  void print() const {
    for (const std::string& line : lines_) std::cout << line << '\n';
  }

 private:
  std::set<std::string> lines_;
};

template <class Spec>
void addField(Texts& texts, const Spec& spec) {
  texts.add(spec.caption);
  texts.add(spec.shortName, kShortContext);
  texts.add(spec.tooltip);
  texts.add(spec.about);
}

void addWindow(Texts& texts) {
  for (const ControlSpec& control : formTable()) {
    texts.add(control.caption);
    texts.add(control.tooltip);
  }
  for (const CommandSpec& command : commandTable()) {
    texts.add(command.menu);
    texts.add(command.submenu);
    texts.add(command.text);
  }
  for (const OptionLine& line : saveOptionsDialog({}).lines) texts.add(line.label);
}

void addDesign(Texts& texts) {
  for (const ParamSpec& spec : parameterTable()) addField(texts, spec);
  for (const CheckSpec& spec : checkTable()) addField(texts, spec);
  for (const ShapeSpec& shape : shapeTable()) {
    texts.add(shape.name, kShapeContext);
    texts.add(shape.offsetLabel, kShortContext);
  }
  for (const Preset& style : presetTable()) {
    texts.add(style.name, kStyleContext);
    texts.add(style.about);
  }
  for (const ExportFormat& format : exportFormats())
    if (!format.option.empty()) texts.add(format.summary);
  for (const std::string_view name : kCheckNames) texts.add(name, kCheckContext);
  for (const Material& material : kMaterials) texts.add(material.name, kMaterialContext);
}

}  // namespace
}  // namespace lorivan

int main() {
  lorivan::Texts texts;
  lorivan::addWindow(texts);
  lorivan::addDesign(texts);
  texts.print();
}
