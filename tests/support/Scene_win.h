#pragma once

#include <array>
#include <vector>

#include "support/ArrayVariant_win.h"
#include "support/HostSession_win.h"
#include "support/Image.h"
#include "support/LightModel.h"
#include "support/OffscreenContext_win.h"

namespace zyn::test {

constexpr Rgb kRed = {255, 0, 0};
constexpr Rgb kGreen = {0, 255, 0};
constexpr Rgb kBlue = {0, 0, 255};
constexpr Rgb kYellow = {255, 255, 0};
constexpr Rgb kWhite = {255, 255, 255};
constexpr Rgb kBlack = {0, 0, 0};
/// Background of the test scenes: no other colour of a scene comes near it.
constexpr Rgb kBackground = {0, 51, 102};

/// A triangle whose normals all point along +Z.
ComPtr<IZYNGLTriangle> makeTriangle(const Vec& a, const Vec& b, const Vec& c);

void setNormals(IZYNGLTriangle* triangle, const Vec& normal);

/// Gives the triangle exactly this colour on the screen, whatever the lights: only emission.
void setFlatColour(IZYNGLTriangle* triangle, const Rgb& colour, double alpha = 1.0);

ComPtr<IZYNGLTriangle> makeFlatTriangle(const Vec& a, const Vec& b, const Vec& c, const Rgb& colour,
                                        double alpha = 1.0);

/// A mesh of triangles: x, y, z of each point, the numbers of three points for each face.
ComPtr<IZYNGLMaillage> makeMesh(const std::vector<double>& points,
                                const std::vector<double>& faces);

/// The two triangles of a rectangle parallel to the XY plane, facing +Z.
std::array<ComPtr<IZYNGLTriangle>, 2> makeRectangle(double xMin, double xMax, double yMin,
                                                    double yMax, double z, const Rgb& colour,
                                                    double alpha = 1.0);

struct Bounds {
  double xMin, xMax, yMin, yMax, zMin, zMax;
  Vec centre() const { return {(xMin + xMax) / 2, (yMin + yMax) / 2, (zMin + zMax) / 2}; }
};

/// The twelve triangles of a cuboid, facing outwards.
std::vector<ComPtr<IZYNGLTriangle>> makeCuboid(const Bounds& bounds, const Rgb& colour);

/// How a camera looks: along forward, with up on the screen's vertical.
struct ViewAxes {
  Vec forward;
  Vec up;
  Vec right() const { return cross(forward, up); }
};

/// The 16 values that describe such a view to ViewParams.
std::vector<double> frameOf(const ViewAxes& axes);

/// A 3D bitmap context with a background of kBackground and a surface of the given size.
class OffscreenScene : public OffscreenContextOf<IZYN3DGLBitmapContext> {
 public:
  OffscreenScene(int width, int height);
  /// Without a surface, the background as it comes.
  OffscreenScene() : OffscreenContextOf(kContextProgId) {}

  /// Looks along the axes at the whole scene, or at the box when one is given.
  void look(const ViewAxes& axes, double surplus, IDispatch* box = nullptr);
};

/// Background for BackColor.
_variant_t colourArray(const Rgb& colour);

}  // namespace zyn::test
