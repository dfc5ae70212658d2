#pragma once

#include <array>
#include <vector>

#include "support/ArrayVariant_win.h"
#include "support/HostSession_win.h"
#include "support/Image.h"
#include "support/LightModel.h"
#include "support/TempFolder_win.h"

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

/// A bitmap context with a background of kBackground and a surface of the given size.
class OffscreenScene {
 public:
  OffscreenScene(int width, int height);

  IZYN3DGLBitmapContext* operator->() const { return context_.Get(); }
  IZYN3DGLBitmapContext* get() const { return context_.Get(); }
  /// Gives the context away: this scene can no longer be used for anything but its folder.
  ComPtr<IZYN3DGLBitmapContext> take() { return std::move(context_); }

  void add(IDispatch* object, int mode = 0);
  template <class Objects>
  void addAll(const Objects& objects, int mode = 0) {
    for (const auto& object : objects) add(object.Get(), mode);
  }
  /// Looks along the axes at the whole scene, or at the box when one is given.
  void look(const ViewAxes& axes, double surplus, IDispatch* box = nullptr);
  void resize(int width, int height);

  /// The picture as a BMP file, its bytes or its pixels.
  Bytes renderBytes();
  Image render();

  const TempFolder& folder() const { return folder_; }

 private:
  TempFolder folder_;
  ComPtr<IZYN3DGLBitmapContext> context_;
};

/// Background for BackColor.
_variant_t colourArray(const Rgb& colour);

}  // namespace zyn::test
