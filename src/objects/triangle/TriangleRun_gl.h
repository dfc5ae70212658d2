#pragma once

#include <array>

#include "glcontext/SurfaceState_gl.h"
#include "objects/triangle/TriangleEmitter_gl.h"

namespace zyn {

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
  explicit TriangleRun(bool isOutline);
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
