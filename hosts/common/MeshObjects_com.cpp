#include "common/MeshObjects_com.h"

#include "ZYNMODELEGEOM.h"

namespace zyn::host {

using Microsoft::WRL::ComPtr;

ComPtr<IZYNGLTriangle> makeTriangle(const ClassObject& factory, const mesh::Triangle& facet) {
  ComPtr<IZYNGLTriangle> object = factory.create<IZYNGLTriangle>();
  for (LONG i = 0; i < 3; ++i) {
    const mesh::Vector& p = facet.vertices[i];
    const mesh::Vector& n = facet.normals[i];
    check(object->setPoint(i, p.x, p.y, p.z), L"setPoint");
    check(object->setNormale(i, n.x, n.y, n.z), L"setNormale");
  }
  return object;
}

ComPtr<IDispatch> makeBox(const mesh::Bounds& bounds) {
  const auto box = ClassObject(L"ZYNModeleGeom.Box3D").create<IZYNBox3D>();
  const auto& [least, most] = bounds;
  check(box->put_XMin(least.x), L"XMin");
  check(box->put_XMax(most.x), L"XMax");
  check(box->put_YMin(least.y), L"YMin");
  check(box->put_YMax(most.y), L"YMax");
  check(box->put_ZMin(least.z), L"ZMin");
  check(box->put_ZMax(most.z), L"ZMax");
  return box;
}

}  // namespace zyn::host
