#pragma once

#include <optional>

#include "core/Point.h"
#include "glcontext/gl_api.h"
#include "objects/text/CGLFontContext_gl.h"
#include "view2d/Graph.h"

namespace zyn {

/// The frame of a graph as a display list: axes, arrows, graduations with labels, titles. It is
/// laid out for one placement in the window; what later views show of it moves and grows with the
/// plane, labels and pictures keeping their size. The list belongs to the context in which it is
/// compiled, which has to be current at both ends of the object's life.
class GraphFrame {
 public:
  /// Compile a frame with the fonts of the current context, which must be built; when they are
  /// built again, so must be the frame, which calls their lists. Where OpenGL has no list to give,
  /// the frame is empty.
  GraphFrame(const LinearGraph& graph, const GraphPlacement& placement,
             const CGLFontContext& fonts);
  GraphFrame(const LogLogGraph& graph, const GraphPlacement& placement,
             const CGLFontContext& fonts);
  ~GraphFrame();
  GraphFrame(const GraphFrame&) = delete;
  GraphFrame& operator=(const GraphFrame&) = delete;

  bool isEmpty() const { return list_ == 0; }

  /// The model point that the list is drawn relative to.
  const Point& origin() const { return origin_; }

  /// Draws the frame under a model-view matrix that puts the model's origin at origin(). Leaves
  /// the state as it was.
  void draw() const;

 private:
  GLuint list_;
  Point origin_;
};

}  // namespace zyn
