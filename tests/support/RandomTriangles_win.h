#pragma once

#include "support/ForeignObject_win.h"
#include "support/Random.h"

namespace zyn::test {

/// Where the random triangles lie: a cube of this half side around the origin.
inline constexpr double kRandomReach = 10;

/// Each changes one thing; now and then to a value that no sensible host would give: not a number,
/// infinite, huge, out of range.
void reshape(IZYNGLTriangle* triangle, Random& rng);
void recolour(IZYNGLTriangle* triangle, Random& rng);
void turnNormal(IZYNGLTriangle* triangle, Random& rng);

/// Makes many triangles quickly, as a host does that keeps the class object.
class TriangleMaker {
 public:
  TriangleMaker();
  ComPtr<IZYNGLTriangle> makeRandom(Random& rng) const;
  /// A triangle as part of this object; its own IUnknown.
  ComPtr<IUnknown> makePartOf(IUnknown* outer) const;

 private:
  ComPtr<IClassFactory> factory_;
};

/// The object as another component's: it is drawn, but nothing else is known of it, no box either.
ComPtr<ForeignObject> makeOutside(IUnknown* object);

}  // namespace zyn::test
