#pragma once

#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

/// What a triangle looks like: mid grey, opaque and without extent until it is filled.
struct TriangleShape {
  Point vertices[3];
  Vecteur normals[3];  ///< one a vertex, used as given

  double r = 0.5;  ///< colour components and alpha, 0 to 1
  double g = 0.5;
  double b = 0.5;
  double alpha = 1.0;

  double ambient = 0.0;  ///< material factors, 0 to 1, of use with `hasMaterial` only
  double diffuse = 0.0;
  double specular = 0.0;
  double shininess = 0.0;
  double emissive = 0.0;
  bool hasMaterial = false;
};

}  // namespace zyn
