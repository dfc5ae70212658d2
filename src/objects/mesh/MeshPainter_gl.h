#pragma once

#include <memory>

#include "contract/PickQuery.h"
#include "glcontext/ObjectLists_gl.h"
#include "objects/mesh/MeshLook.h"
#include "objects/mesh/MeshModel.h"
#include "objects/mesh/MeshScale.h"

namespace zyn {

/// How a mesh is to be drawn this time.
struct MeshPass {
  static constexpr int kOutline = 1;

  int mode = 0;                           ///< kOutline, or any other for the look's style
  bool isFlat = false;                    ///< in the plane z = 0
  std::shared_ptr<DisplayLists> lists{};  ///< of the current context; null: none are used
  const PickQuery* query = nullptr;       ///< in a selection where something may be missed
  double opacity = 1;                     ///< by which alpha is multiplied
  bool laysDepth = true;    ///< the surfaces of a hidden-line drawing, of which only depth is drawn
  bool drawsLines = true;   ///< all else
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen
};

/// Draws a mesh into the current context, and leaves its state as triangles do. `scale` colours its
/// values; null without them. In a selection its faces are drawn each under the name of the mesh
/// and their own.
void drawMesh(const MeshModel& model, const MeshLook& look, const MeshScale* scale,
              const MeshPass& pass, ObjectLists& lists);

}  // namespace zyn
