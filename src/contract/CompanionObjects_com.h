#pragma once

#include <windows.h>
#include <wrl/client.h>

#include "ZYNMODELEGEOM.h"
#include "core/Box3.h"

namespace zyn {

// New objects of the companion library, ZYNModeleGeom. Its classes are found as they are
// registered, or described in the host's manifest; where they are not, in ZYNModeleGeom.dll beside
// our own file. Where that is missing as well, all of these throw, with a description that names
// the library.

/// Hands out a 2D box with the x and y bounds of `bounds`. E_POINTER when `box` is null.
HRESULT makeBox2D(const Box3& bounds, IDispatch** box);

/// The same with a 3D box.
HRESULT makeBox3D(const Box3& bounds, IDispatch** box);

Microsoft::WRL::ComPtr<IZYNRectangle> makeRectangle(double xMin, double xMax, double yMin,
                                                    double yMax);
/// The same, null where there is no companion library: for what goes on without.
Microsoft::WRL::ComPtr<IZYNRectangle> tryMakeRectangle(double xMin, double xMax, double yMin,
                                                       double yMax) noexcept;

Microsoft::WRL::ComPtr<IZYNPoint> makePoint(const Point& at);

/// S_OK when such objects can be made; otherwise why not, with error information. Any thread, in an
/// apartment or not.
HRESULT findCompanion() noexcept;

/// Lets go of the companion's file where it was loaded from beside ours; false while something of
/// it is in use. To be called before our own file is unloaded.
bool releaseCompanion() noexcept;

}  // namespace zyn
