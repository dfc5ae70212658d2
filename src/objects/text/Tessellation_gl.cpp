#include "objects/text/Tessellation_gl.h"

#include <array>
#include <cstddef>
#include <deque>
#include <memory>
#include <new>

#include "glcontext/gl_api.h"

namespace zyn {

namespace {

struct DeleteTessellator {
  void operator()(GLUtesselator* tessellator) const { gluDeleteTess(tessellator); }
};
using UniqueTessellator = std::unique_ptr<GLUtesselator, DeleteTessellator>;

using Vertex = std::array<GLdouble, 3>;

/// What the callbacks work on.
struct Work {
  std::deque<Vertex> vertices;  ///< the tessellator points to them
  Triangles result;
  bool isOutOfMemory = false;

  GLdouble* add(GLdouble x, GLdouble y) { return vertices.emplace_back(Vertex{x, y, 0}).data(); }

  /// Nothing may be thrown through the tessellator.
  template <class Body>
  void guarded(Body body) noexcept {
    try {
      body();
    } catch (const std::bad_alloc&) {
      isOutOfMemory = true;
    }
  }
};

Work& workOf(void* data) { return *static_cast<Work*>(data); }

void takeVertex(void* vertex, void* data) {
  Work& work = workOf(data);
  const auto* at = static_cast<const GLdouble*>(vertex);
  work.guarded([&] { work.result.push_back({at[0], at[1]}); });
}

void combine(const GLdouble at[3], void* const[4], const GLfloat[4], void** vertex, void* data) {
  Work& work = workOf(data);
  *vertex = work.vertices.front().data();  // any, where there is no memory for the right one
  work.guarded([&] { *vertex = work.add(at[0], at[1]); });
}

/// Set so that single triangles come, not strips and fans.
void ignoreEdgeFlag(GLboolean, void*) {}

template <class Function>
void setCallback(GLUtesselator* tessellator, GLenum which, Function* function) {
  gluTessCallback(tessellator, which, reinterpret_cast<void (*)()>(function));
}

void tessellate(GLUtesselator* tessellator, const std::vector<Contour>& contours, Work& work) {
  gluTessBeginPolygon(tessellator, &work);
  for (const Contour& contour : contours) {
    gluTessBeginContour(tessellator);
    for (const PlanePoint& point : contour) {
      GLdouble* vertex = work.add(point.x, point.y);
      gluTessVertex(tessellator, vertex, vertex);
    }
    gluTessEndContour(tessellator);
  }
  gluTessEndPolygon(tessellator);
}

}  // namespace

Triangles tessellate(const std::vector<Contour>& contours) {
  const UniqueTessellator tessellator(gluNewTess());
  if (!tessellator) {
    throw std::bad_alloc();
  }
  gluTessProperty(tessellator.get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
  gluTessNormal(tessellator.get(), 0, 0, 1);
  setCallback(tessellator.get(), GLU_TESS_VERTEX_DATA, takeVertex);
  setCallback(tessellator.get(), GLU_TESS_COMBINE_DATA, combine);
  setCallback(tessellator.get(), GLU_TESS_EDGE_FLAG_DATA, ignoreEdgeFlag);
  Work work;
  tessellate(tessellator.get(), contours, work);
  if (work.isOutOfMemory) {
    throw std::bad_alloc();
  }
  return work.result;
}

}  // namespace zyn
