#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "glcontext/SurfaceState_gl.h"
#include "glcontext/VertexArrays_gl.h"
#include "objects/mesh/MeshLook.h"
#include "objects/mesh/MeshModel.h"
#include "objects/mesh/MeshScale.h"

namespace zyn {

/// What decides, besides the faces, which calls draw them.
struct FaceSetting {
  bool isOutline = false;            ///< closed lines instead of surfaces
  bool isFlat = false;               ///< in the plane z = 0, facing +Z
  bool isPick = false;               ///< only where they are counts
  bool hasColours = false;           ///< of points or faces; else all are drawn in what is set
  const MeshScale* scale = nullptr;  ///< by which they get texture coordinates
  bool absentOnly = false;           ///< those that the scale cannot show, otherwise the others

  /// For colours of points or faces:
  bool throughMaterial = false;  ///< lighting is on and colour material off
  bool setsTransparency = false;
  bool cullFace = false;  ///< as the context has it around the mesh
  bool bothSides = false;
  std::optional<MeshLook::Material> material{};
  double opacity = 1;
};

/// How a colour reflects light on the surface of a mesh.
SurfaceMaterial surfaceMaterialOf(const Float4& colour,
                                  const std::optional<MeshLook::Material>& material);

/// Issues the calls for faces of a mesh, into a display list or to be executed at once.
class FaceEmitter {
 public:
  FaceEmitter(const MeshModel& model, const FaceSetting& setting);

  void emit(std::size_t begin, std::size_t end);

  /// By the colours of points or faces.
  bool isTransparent(std::size_t face) const;

 private:
  using Corners = Triangulation::Triangle;

  using Coordinate = ScaleTexels::Coordinate;

  bool isChosen(std::size_t face) const;
  bool hasCoordinates() const { return setting_.scale && !setting_.absentOnly; }
  void chooseRow(std::size_t face);
  Coordinate coordinateOf(std::uint32_t point) const;

  /// Surfaces in what is set: as arrays.
  void emitArrays(std::size_t begin, std::size_t end);
  /// What a vertex has is known when this is compiled: it takes most of a first frame.
  template <bool kHasNormals, bool kHasCoordinates>
  void collect(std::size_t begin, std::size_t end);
  template <bool kHasNormals, bool kHasCoordinates>
  GLuint vertexOf(std::uint32_t corner);

  /// Anything else.
  void emitCalls(std::size_t begin, std::size_t end);
  void giveOutline(std::size_t face);
  void giveTriangles(std::size_t face);
  void giveCorner(std::size_t face, std::uint32_t corner);
  void open();
  void close();
  Float4 colourOf(std::size_t face, std::uint32_t corner) const;
  void setColour(const Float4& colour);
  void setTransparency(bool isTransparent);
  std::array<GLfloat, 3> positionOf(std::uint32_t point) const;

  const MeshModel& model_;
  const Mesh& mesh_;
  const FaceSetting& setting_;

  std::int32_t row_ = 0;  ///< of the scale's texture, for the face that is being given
  VertexArrays arrays_;
  static constexpr GLuint kNone = 0xFFFFFFFF;
  std::vector<GLuint> firstOfPoint_;   ///< vertex of each point, kNone without one
  std::vector<GLuint> nextOfPoint_;    ///< another vertex with the same point, of each vertex
  std::vector<std::uint32_t> points_;  ///< of each vertex

  bool isOpen_ = false;  ///< between glBegin and glEnd
  std::optional<Float4> colour_;
  std::optional<bool> isTransparent_;
};

}  // namespace zyn
