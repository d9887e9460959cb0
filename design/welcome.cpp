#include "design/welcome.h"

#include "design/edits.h"
#include "design/presets.h"

namespace lorivan {

Document welcomeDocument() {
  Document document;
  document.fields.shape = Shape::Circular;
  for (const auto& [p, text] : {std::pair{Param::XNo, "8"}, {Param::YNo, "2"}, {Param::Scale, "40"}})
    document = withField(document, p, text);
  document = withCheck(document, Check::ShowGrid, false);
  auto made = newGrid(withStyle(document, *findPreset("Illuminated")));
  return made ? *made : Document();
}

}  // namespace lorivan
