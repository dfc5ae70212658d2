#pragma once

#include <wrl/client.h>

#include "ZYNVUE.h"
#include "common/ClassObject_com.h"
#include "mesh/Mesh.h"

namespace zyn::host {

/// A new triangle object of `factory` with the vertices and normals of `facet`.
Microsoft::WRL::ComPtr<IZYNGLTriangle> makeTriangle(const ClassObject& factory,
                                                    const mesh::Triangle& facet);

/// A new box object around `bounds`.
Microsoft::WRL::ComPtr<IDispatch> makeBox(const mesh::Bounds& bounds);

}  // namespace zyn::host
