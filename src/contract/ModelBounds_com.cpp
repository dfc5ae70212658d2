#include "contract/ModelBounds_com.h"

#include <wrl/client.h>

#include "com/askFor_com.h"
#include "com/errors_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

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

Box3 readBox2D(IZYNBox2D& box) {
  return Box3{readSide(box, &IZYNBox2D::get_XMin), readSide(box, &IZYNBox2D::get_XMax),
              readSide(box, &IZYNBox2D::get_YMin), readSide(box, &IZYNBox2D::get_YMax)};
}

Box3 readBox3D(IZYNBox3D& box) {
  return Box3{readSide(box, &IZYNBox3D::get_XMin), readSide(box, &IZYNBox3D::get_XMax),
              readSide(box, &IZYNBox3D::get_YMin), readSide(box, &IZYNBox3D::get_YMax),
              readSide(box, &IZYNBox3D::get_ZMin), readSide(box, &IZYNBox3D::get_ZMax)};
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
