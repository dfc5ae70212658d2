#pragma once

#include <cstdint>
#include <optional>

namespace zyn {

/// How a mesh is drawn, apart from what belongs to its points and faces.
struct MeshLook {
  enum Style : std::int32_t { kSurfaces, kEdges, kSurfacesAndFeatures, kHiddenLine, kPoints };

  struct Colour {
    double r, g, b, alpha;
  };
  /// Factors of the colour, and shininess, 0 to 1.
  struct Material {
    double ambient, diffuse, specular, shininess, emissive;
  };

  Colour colour{0.5, 0.5, 0.5, 1};
  std::optional<Material> material;
  bool bothSides = true;  ///< backs are drawn and lit as well

  std::int32_t style = kSurfaces;
  double featureAngle = 30;  ///< degrees
  Colour edgeColour{0, 0, 0, 1};
  double edgeWidth = 1;  ///< pixels of a screen, of lines and points

  std::int32_t name = 0;  ///< in selections; below 0 the mesh takes no part
};

}  // namespace zyn
