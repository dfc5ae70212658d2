#pragma once

#include <array>
#include <vector>

#include "support/Scene_win.h"

namespace zyn::bench {

/// How the triangles of a mesh look.
enum class Look { kColours, kSomeTransparent, kMaterials };

/// One triangle as a host describes it to the library.
struct MeshTriangle {
  std::array<test::Vec, 3> points;
  std::array<test::Vec, 3> normals;
  double r, g, b, alpha;
  bool hasMaterial;
  double ambient, diffuse, specular, shininess, emissive;
};

using Mesh = std::vector<MeshTriangle>;
using Triangles = std::vector<test::ComPtr<IZYNGLTriangle>>;

/// A torus of so many triangles, each with a colour of its own, the same at every call.
Mesh makeTorus(int count, Look look);

test::Bounds boundsOf(const Mesh& mesh);

/// The mesh as new objects of the library.
Triangles createTriangles(const Mesh& mesh);

/// Draws the mesh with plain OpenGL calls, as few as its look allows, in the state that the library
/// hands to the objects of a 3D view; leaves that state.
void drawRaw(const Mesh& mesh);

}  // namespace zyn::bench
