#include "view3d/SelectionRectangle.h"

#include <utility>

namespace zyn {

namespace {

float normalisedX(int x, ClientSize client) {
  const auto width = static_cast<float>(client.width);
  return (static_cast<float>(x) - width / 2.0F) / width;
}

float normalisedY(int y, ClientSize client) {
  const auto height = static_cast<float>(client.height);
  return -(static_cast<float>(y) - height / 2.0F) / height;
}

/// Sorts a pair and tells whether it was in order.
float sortAxis(float& minimum, float& maximum) {
  if (minimum <= maximum) {
    return 1.0F;
  }
  std::swap(minimum, maximum);
  return -1.0F;
}

double mean(float a, float b) { return (static_cast<double>(a) + static_cast<double>(b)) / 2; }

}  // namespace

std::optional<SelectionRectangle> SelectionRectangle::between(PixelPoint press, PixelPoint release,
                                                              ClientSize client) {
  if (client.isEmpty() || press.x == release.x || press.y == release.y) {
    return std::nullopt;
  }
  SelectionRectangle rectangle{normalisedX(press.x, client), normalisedX(release.x, client),
                               normalisedY(press.y, client), normalisedY(release.y, client)};
  rectangle.directionX = sortAxis(rectangle.xMin, rectangle.xMax);
  rectangle.directionY = sortAxis(rectangle.yMin, rectangle.yMax);
  return rectangle;
}

PickRegion SelectionRectangle::region(ClientSize client) const {
  PickRegion moved = centredRegion(client);
  moved.centreX += mean(xMin, xMax) * client.width;
  moved.centreY -= mean(yMin, yMax) * client.height;
  return moved;
}

CParamsVue3D SelectionRectangle::centred(const CParamsVue3D& camera) const {
  CParamsVue3D moved(camera);
  moved.translateH(mean(xMin, xMax) * camera.width());
  moved.translateV(mean(yMin, yMax) * camera.height());
  return moved;
}

PickRegion SelectionRectangle::centredRegion(ClientSize client) const {
  const double width = client.width;
  const double height = client.height;
  return {width / 2, height / 2, (static_cast<double>(xMax) - static_cast<double>(xMin)) * width,
          (static_cast<double>(yMax) - static_cast<double>(yMin)) * height};
}

}  // namespace zyn
