#include "contract/ModelBox_com.h"

#include <wrl/client.h>

#include "com/askFor_com.h"
#include "com/errors_com.h"
#include "platform/ActivationContext_win.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

template <class Interface>
ComPtr<Interface> createGeometry(REFCLSID classId) {
  const LibraryActivation activation;
  ComPtr<Interface> object;
  CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object));
  return object;
}

template <class Box>
void putPlaneBounds(Box& box, const Box3& bounds) {
  box.put_XMin(bounds.xMin);
  box.put_XMax(bounds.xMax);
  box.put_YMin(bounds.yMin);
  box.put_YMax(bounds.yMax);
}

template <class Box>
double readSide(Box& box, HRESULT (STDMETHODCALLTYPE Box::*getter)(double*)) {
  double value = 0.0;
  throwIfFailed((box.*getter)(&value), &box, __uuidof(Box));
  return value;
}

using BoxGetter = HRESULT (STDMETHODCALLTYPE IGLDraw::*)(IDispatch**);

/// What a drawable answers for its box; null when it has none or cannot tell it.
template <class Box>
ComPtr<Box> boxOf(IGLDraw& drawable, BoxGetter getter) {
  ComPtr<IDispatch> object;
  return SUCCEEDED((drawable.*getter)(&object)) ? askFor<Box>(object.Get()) : nullptr;
}

}  // namespace

HRESULT makeBox2D(const Box3& bounds, IDispatch** box) {
  if (!box) {
    return E_POINTER;
  }
  auto made = createGeometry<IZYNBox2D>(CLSID_Box2DGeom);
  if (made) {
    putPlaneBounds(*made.Get(), bounds);
  }
  *box = made.Detach();
  return S_OK;
}

HRESULT makeBox3D(const Box3& bounds, IDispatch** box) {
  if (!box) {
    return E_POINTER;
  }
  auto made = createGeometry<IZYNBox3D>(CLSID_Box3DGeom);
  if (made) {
    putPlaneBounds(*made.Get(), bounds);
    made->put_ZMin(bounds.zMin);
    made->put_ZMax(bounds.zMax);
  }
  *box = made.Detach();
  return S_OK;
}

ComPtr<IZYNRectangle> makeRectangle(double xMin, double xMax, double yMin, double yMax) {
  auto made = createGeometry<IZYNRectangle>(CLSID_RectangleGeom);
  if (made) {
    made->setBornes(xMin, xMax, yMin, yMax);
  }
  return made;
}

ComPtr<IZYNPoint> makePoint(const Point& at) {
  auto made = createGeometry<IZYNPoint>(CLSID_PointGeom);
  if (made) {
    made->setCoordonnees(at.x, at.y, at.z);
  }
  return made;
}

Box3 readBox2D(IZYNBox2D& box) {
  return Box3{readSide(box, &IZYNBox2D::get_XMin), readSide(box, &IZYNBox2D::get_XMax),
              readSide(box, &IZYNBox2D::get_YMin), readSide(box, &IZYNBox2D::get_YMax)};
}

Box3 readBox3D(IZYNBox3D& box) {
  return Box3{readSide(box, &IZYNBox3D::get_XMin), readSide(box, &IZYNBox3D::get_XMax),
              readSide(box, &IZYNBox3D::get_YMin), readSide(box, &IZYNBox3D::get_YMax),
              readSide(box, &IZYNBox3D::get_ZMin), readSide(box, &IZYNBox3D::get_ZMax)};
}

ISceneObject* ownObject(IDispatch* object) {
  const auto own = askFor<ISceneObject>(object);
  return own && own->hostInterface() == object ? own.Get() : nullptr;
}

std::optional<Box3> planeBoundsOf(IGLDraw& drawable) {
  const auto box = boxOf<IZYNBox2D>(drawable, &IGLDraw::GetBox2D);
  return box ? std::optional(readBox2D(*box.Get())) : std::nullopt;
}

std::optional<Box3> boundsOf(IGLDraw& drawable) {
  const auto box = boxOf<IZYNBox3D>(drawable, &IGLDraw::GetBox3D);
  return box ? std::optional(readBox3D(*box.Get())) : std::nullopt;
}

}  // namespace zyn
