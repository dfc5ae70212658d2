#include <algorithm>

#include "com/NumberArray_com.h"
#include "com/NumericArrayVariant_com.h"
#include "com/arguments_com.h"
#include "view/RegionSelection_com.h"
#include "view3d/CZYNVue3D_com.h"
#include "view3d/SurfaceProbe_gl.h"

// What the 3D view shows under a pixel, and which objects lie in a region of it.

namespace zyn {

namespace {

constexpr std::size_t kFewestCorners = 3;

/// A rectangle between two points; its sides are at least a pixel long.
PlaneRegion rectangleBetween(double x1, double y1, double x2, double y2) {
  const double middleX = x1 / 2 + x2 / 2;
  const double middleY = y1 / 2 + y2 / 2;
  const double halfWidth = std::max(std::abs(x2 - x1), 1.0) / 2;
  const double halfHeight = std::max(std::abs(y2 - y1), 1.0) / 2;
  const double left = middleX - halfWidth;
  const double right = middleX + halfWidth;
  const double top = middleY - halfHeight;
  const double bottom = middleY + halfHeight;
  return PlaneRegion({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
}

PlaneRegion lassoThrough(const VARIANT& points) {
  const NumberArray numbers(L"Points", points);
  const std::size_t count = numbers.rows(2);
  if (count < kFewestCorners) {
    throw badArgument(L"Points", std::to_wstring(count) + L" are given, a lasso has at least 3");
  }
  const std::vector<double> xy = numbers.finiteDoubles();
  std::vector<PlanePoint> corners;
  corners.reserve(count);
  for (std::size_t i = 0; i < xy.size(); i += 2) {
    corners.push_back({xy[i], xy[i + 1]});
  }
  return PlaneRegion(std::move(corners));
}

}  // namespace

STDMETHODIMP CZYNVue3D::getPointSurface(int x, int y, VARIANT* Surface) noexcept {
  return automation(*this, [&] {
    if (!Surface) {
      return E_POINTER;
    }
    VariantInit(Surface);
    const auto found = findSurface({x, y});
    tellMissingContext();
    if (!found) {
      return S_OK;
    }
    const auto& [point, normal] = *found;
    return giveNumbers(Surface, {point.x, point.y, point.z, normal.x, normal.y, normal.z});
  });
}

std::optional<CZYNVue3D::SeenSurface> CZYNVue3D::findSurface(PixelPoint at) {
  followExtent();
  const ClientSize client = view_.clientSize();
  const bool isInside = at.x >= 0 && at.y >= 0 && at.x < client.width && at.y < client.height;
  const auto sight = isInside && view_.camera() ? sightThrough(*view_.camera(), at) : std::nullopt;
  std::optional<SurfaceHit> hit;
  const PaintPause pause = pausePainting();  // for what is drawn may ask for a redraw at once
  if (sight) {
    context_.withContext([&] { hit = surfaceAt(*sight, at, pause.isNested()); });
  }
  return hit ? std::optional(SeenSurface{sight->ray.at(hit->distance), hit->normal}) : std::nullopt;
}

/// Within a drawing of the view, whose depths are to stay, only objects of ours are looked at.
std::optional<SurfaceHit> CZYNVue3D::surfaceAt(const Sight& sight, PixelPoint at, bool isDrawing) {
  std::optional<SurfaceHit> drawn;
  if (drawList_.holdsOutside() && !isDrawing) {
    const CParamsVue3D camera(*view_.camera());  // drawn objects may move the view's
    ListPass pass = listPass();
    pass.onlyOutside = true;
    drawn = probeSurface(camera, at, [&] { drawList_.draw3D(pass); });
  }
  const auto own = drawList_.nearestHit(sight.ray);
  const auto nearest = own && (!drawn || own->distance <= drawn->distance) ? own : drawn;
  return nearest && nearest->distance <= sight.length ? nearest : std::nullopt;
}

STDMETHODIMP CZYNVue3D::getSelectionRectangle(double x1, double y1, double x2, double y2,
                                              VARIANT_BOOL Entier, VARIANT* Noms) noexcept {
  return automation(*this, [&] {
    if (!Noms) {
      return E_POINTER;
    }
    VariantInit(Noms);
    const PlaneRegion region = rectangleBetween(finite(L"x1", x1), finite(L"y1", y1),
                                                finite(L"x2", x2), finite(L"y2", y2));
    return giveIntegers(Noms, namesWithin(region, isOn(Entier)));
  });
}

STDMETHODIMP CZYNVue3D::getSelectionLasso(VARIANT Points, VARIANT_BOOL Entier,
                                          VARIANT* Noms) noexcept {
  return automation(*this, [&] {
    if (!Noms) {
      return E_POINTER;
    }
    VariantInit(Noms);
    return giveIntegers(Noms, namesWithin(lassoThrough(Points), isOn(Entier)));
  });
}

std::vector<std::int32_t> CZYNVue3D::namesWithin(const PlaneRegion& region, bool asksForWhole) {
  std::vector<std::int32_t> names;
  followExtent();
  const auto clip =
      hasSelectables() && view_.camera() ? clipMatrixOf(*view_.camera()) : std::nullopt;
  if (!clip) {
    return names;
  }
  const CParamsVue3D camera(*view_.camera());  // drawn objects may move the view's
  const ClientSize client = view_.clientSize();
  const RegionQuery query(region, *clip, client.width, client.height, asksForWhole);
  const RegionView shown{client, [&](const PicturePart& part) { loadCamera(camera, part); },
                         listPass()};
  const PaintPause pause = pausePainting();  // for what is drawn may ask for a redraw at once
  context_.withContext([&] { names = namesInRegion(selection_, query, shown); });
  tellMissingContext();
  return names;
}

}  // namespace zyn
