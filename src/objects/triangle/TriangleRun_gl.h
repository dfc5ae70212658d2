#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "contract/TriangleShape.h"
#include "glcontext/SurfaceState_gl.h"

namespace zyn {

/// What decides, besides the triangles, which calls draw them.
struct TriangleSetting {
  bool isOutline = false;        ///< closed lines instead of surfaces
  bool throughMaterial = false;  ///< lighting is on and colour material off
  bool depthMask = true;         ///< this and the next two as the context has them around the run
  bool cullFace = false;
  GLint twoSide = 0;
  GLfloat frontShininess = 0;  ///< with which a triangle is drawn whose own OpenGL refuses
  GLfloat backShininess = 0;
  double opacity = 1;  ///< by which alpha is multiplied, 0 to 1

  bool operator==(const TriangleSetting&) const = default;

  /// A shininess of 0 gives way to the first other one that is set.
  void passShininess(GLfloat set);

  /// Whether it differs only by what it finds in the context.
  bool looksLike(const TriangleSetting& other) const {
    return isOutline == other.isOutline && opacity == other.opacity;
  }
};

/// What the calls for some triangles rely on and leave behind; to be kept with the display list
/// that they were compiled into.
struct TriangleCalls {
  TriangleSetting setting;        ///< for which they were issued
  bool inheritShininess = false;  ///< some triangles have no shininess that OpenGL takes
  GLfloat firstShininess = 0;     ///< the first that is taken and not 0, if there is one

  /// Whether they are the right ones in this setting.
  bool suit(const TriangleSetting& current) const;
};

/// Issues the calls for triangles one after the other, into a display list or to be executed at
/// once, within a TriangleRun. Reads no state of the context. Nothing else is to be called until
/// finish(), after which depth mask, culling and two-sided lighting are again those of the run.
class TriangleEmitter {
 public:
  explicit TriangleEmitter(const TriangleSetting& setting);

  void add(const TriangleShape& shape);
  TriangleCalls finish();

 private:
  /// What a transparent surface needs otherwise than an opaque one.
  struct Transparency {
    bool depthMask;
    bool cullFace;
    GLint twoSide;
    bool operator==(const Transparency&) const = default;
  };

  /// Which parts of the material are given with the vertices; the others are set before them.
  enum class VertexFormat { kColours, kAllButShininess, kAll };

  static constexpr std::size_t kProperties = 5;
  /// Ambient, diffuse, specular and emission colour, and shininess.
  using Material = std::array<Float4, kProperties>;
  struct FaceMaterials {
    Material front;
    Material back;
  };

  Transparency foundTransparency() const;
  Transparency transparencyOf(const TriangleShape& shape) const;
  void setTransparency(const Transparency& wanted);
  void addAsItIs(const TriangleShape& shape);

  FaceMaterials materialsOf(const TriangleShape& shape);
  void setFormat(const TriangleShape& shape, const FaceMaterials& materials);
  std::size_t vertexProperties() const;
  bool frontDiffers(std::size_t property, const FaceMaterials& materials) const;
  bool backDiffers(std::size_t property, const FaceMaterials& materials) const;
  void setProperty(std::size_t property, const FaceMaterials& materials);
  void setConstants(const FaceMaterials& materials);

  void drawWithMaterial(const TriangleShape& shape);
  void drawWithColour(const TriangleShape& shape);
  void open();
  void giveVertices(const TriangleShape& shape);
  void close();

  /// Keeps what is set next apart from the vertices before it, with a change of state that has no
  /// effect: Mesa would else let it vary with the vertices, and lose lines of the loops before.
  void separate();

  TriangleSetting setting_;  ///< of the next triangle
  TriangleCalls calls_;
  Transparency transparency_;
  VertexFormat format_ = VertexFormat::kColours;
  int formatChanges_ = 0;
  bool bothFaces_ = false;  ///< the back is set as well, from the first transparent triangle on
  bool isOpen_ = false;     ///< between glBegin and glEnd
  std::array<std::optional<Float4>, kProperties> front_;  ///< as last set, where it was set
  std::array<std::optional<Float4>, kProperties> back_;
  std::optional<Float4> colour_;
};

/// Lets triangles be drawn during its lifetime that look as if drawTriangle3D had drawn each of
/// them, and on destruction leaves the state that it would have left: what was found, except that a
/// material shininess of 0 gives way to the first other one. At least one triangle is to be drawn,
/// through a TriangleEmitter, and nothing else drawn or set meanwhile.
///
///   TriangleRun run(isOutline);
///   for (Chunk& chunk : chunks) {
///     if (!chunk.calls || !chunk.calls->suit(run.setting())) {
///       glNewList(chunk.list, GL_COMPILE);
///       TriangleEmitter emitter(run.setting());
///       emitter.add(…);
///       chunk.calls = emitter.finish();
///       glEndList();
///     }
///     run.pass(*chunk.calls);
///   }
///   glCallLists(…);
class TriangleRun {
 public:
  /// `opacity` multiplies the triangles' own.
  explicit TriangleRun(bool isOutline, double opacity = 1);
  ~TriangleRun();
  TriangleRun(const TriangleRun&) = delete;
  TriangleRun& operator=(const TriangleRun&) = delete;

  /// For the triangles that come next.
  const TriangleSetting& setting() const { return setting_; }

  /// To be told of all calls in the order in which they draw, before the setting of the next is
  /// asked for.
  void pass(const TriangleCalls& calls) { setting_.passShininess(calls.firstShininess); }

 private:
  SurfaceState state_;
  TriangleSetting setting_;
  std::array<GLfloat, 3> normal_{};
};

}  // namespace zyn
