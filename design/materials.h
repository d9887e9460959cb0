// What knots are made of.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/numbers.h"

namespace lorivan {

/// Tells translators what a word names.
inline constexpr std::string_view kMaterialContext = "material";

/// Densities and linear shrinkages are usual values of the trade; a founder's own may differ a little.
struct Material {
  std::string_view name;
  double density;    // grams for a cubic centimetre
  double shrinkage;  // per cent of a casting's length, from pattern to finished piece; 0: not cast
  double thinnest;   // wall that still comes out, millimetres
  double narrowest;  // gap that stays open, millimetres
};

inline constexpr std::array<Material, 8> kMaterials = {{
    {"resin", 1.15, 0, 0.5, 0.2},
    {"pla", 1.24, 0, 0.8, 0.4},
    {"nylon", 1.01, 0, 0.8, 0.4},
    {"brass", 8.5, 1.6, 0.8, 0.3},
    {"bronze", 8.8, 1.5, 0.8, 0.3},
    {"silver", 10.36, 1.7, 0.8, 0.3},
    {"gold14k", 13.1, 1.4, 0.8, 0.3},
    {"gold18k", 15.5, 1.3, 0.8, 0.3},
}};

/// The material of this name, whatever its case; null when there is none.
inline const Material* findMaterial(std::string_view name) {
  for (const Material& material : kMaterials)
    if (material.name == lowerCase(name)) return &material;
  return nullptr;
}

/// "resin, pla, ..."
inline std::string materialNames() {
  std::string names;
  for (const Material& material : kMaterials) names.append(names.empty() ? "" : ", ").append(material.name);
  return names;
}

}  // namespace lorivan
