#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <optional>

#include "ZYNMODELEGEOM.h"
#include "contract/ISceneObject_com.h"
#include "core/Box3.h"

namespace zyn {

/// Hands out a new 2D box object of the geometry library with the x and y bounds of `bounds`.
/// E_POINTER when `box` is null; S_OK and a null box when the geometry library cannot be reached.
HRESULT makeBox2D(const Box3& bounds, IDispatch** box);

/// The same with a 3D box object.
HRESULT makeBox3D(const Box3& bounds, IDispatch** box);

/// A new rectangle object of the geometry library; null when the library cannot be reached.
Microsoft::WRL::ComPtr<IZYNRectangle> makeRectangle(double xMin, double xMax, double yMin,
                                                    double yMax);

/// The same with a point object.
Microsoft::WRL::ComPtr<IZYNPoint> makePoint(const Point& at);

/// The bounds that a box object holds, flat ones at z = 0. Throws _com_error when the object fails.
Box3 readBox2D(IZYNBox2D& box);
Box3 readBox3D(IZYNBox3D& box);

/// What `object` is among our own scene objects, alive as long as `object`; null for an object of
/// another component, also one that stands in front of ours or holds it as a part.
ISceneObject* ownObject(IDispatch* object);

/// The bounds of what a drawable shows in 2D; none when it has no box or cannot tell it.
std::optional<Box3> planeBoundsOf(IGLDraw& drawable);

/// The same in 3D; none when it has no box or cannot tell it.
std::optional<Box3> boundsOf(IGLDraw& drawable);

}  // namespace zyn
