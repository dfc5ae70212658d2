#pragma once

#include <string_view>

namespace zyn::shot {

/// How a surface answers light: factors of setMaterial, 0 to 1.
struct Material {
  double ambient = 0.0;
  double diffuse = 0.0;
  double specular = 0.0;
  double shininess = 0.0;
  double emissive = 0.0;

  bool operator==(const Material&) const = default;
};

/// Reads "matte", "plastic", "metal" or "AMBIENT,DIFFUSE,SPECULAR,SHININESS[,EMISSIVE]". Throws
/// UsageError for anything else.
Material parseMaterial(std::string_view text);

}  // namespace zyn::shot
