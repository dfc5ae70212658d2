#include "view2d/ObjectItems_com.h"

#include <wrl/client.h>

#include <cmath>
#include <memory>
#include <utility>

#include "glcontext/StateQuery_gl.h"
#include "objects/picture/CZYNGLBitmap_com.h"
#include "view/FeedbackPass_gl.h"
#include "view2d/FeedbackItems.h"

namespace zyn {

namespace {

using Microsoft::WRL::ComPtr;

DrawnTrace traceOf(const TraceShape& shape, const ComPtr<IDispatch>& object,
                   const WindowMapping& mapping, const ListPass& pass) {
  DrawnTrace trace;
  const auto& [r, g, b, alpha] = shape.colour;
  trace.stroke.colour = {r, g, b, alpha * pass.opacity};
  trace.stroke.width = shape.width * pass.texts.pixelScale;
  trace.owner = std::make_shared<ComPtr<IDispatch>>(object);
  trace.points = shape.points;
  trace.boxes = shape.boxes;
  trace.cache = shape.cache;
  trace.mapping = mapping;
  return trace;
}

/// Of a sprite, which draws pixels: OpenGL tells only their place.
std::optional<DrawnImage> imageOf(const DrawElem& element, const WindowMapping& mapping,
                                  const ListPass& pass) {
  const auto* const sprite = dynamic_cast<const CZYNGLBitmap*>(element.own);
  if (!sprite || !sprite->shape().image) {
    return std::nullopt;
  }
  const SpriteShape& shape = sprite->shape();
  const double scale = pass.texts.pixelScale;
  const auto edge = [&](const auto& along, double origin) {
    return std::round(along.at(shape.position.x, shape.position.y, 0) - origin * scale);
  };
  const double left = edge(mapping.x, shape.originX);
  const double bottom = edge(mapping.y, shape.originY);
  return DrawnImage{
      shape.image,
      {left, left + shape.image->width * scale, bottom, bottom + shape.image->height * scale}};
}

/// What is known of an element better than OpenGL's feedback tells it.
std::optional<DrawnItem> itemOf(const DrawElem& element, const WindowMapping& mapping,
                                const ListPass& pass) {
  if (const auto shape = element.own ? element.own->traceShape(pass.logs) : std::nullopt) {
    return traceOf(*shape, element.object, mapping, pass);
  }
  return imageOf(element, mapping, pass);
}

}  // namespace

std::optional<WindowMapping> shownMapping() {
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  auto mapping =
      windowMapping(matrixState(GL_MODELVIEW_MATRIX), matrixState(GL_PROJECTION_MATRIX), viewport);
  if (mapping) {
    mapping->x.z = mapping->y.z = 0;
  }
  return mapping;
}

void appendObjects(CListTrace& list, const ListPass& pass, std::vector<DrawnItem>& items) {
  const auto mapping = shownMapping();
  if (!mapping) {
    return;
  }
  std::vector<DrawnItem> known;
  const std::vector<float> buffer = runColouredFeedbackPass([&] {
    known.clear();
    list.forEach([&](DrawElem& element) {
      if (auto item = itemOf(element, *mapping, pass)) {
        glPassThrough(static_cast<GLfloat>(known.size()));
        known.push_back(std::move(*item));
      } else {
        CListTrace::draw2D(element, pass);
      }
    });
  });
  readFeedback(
      buffer, pass.texts.pixelScale,
      [&](std::size_t number) {
        if (number < known.size()) {
          items.push_back(std::move(known[number]));
        }
      },
      items);
}

}  // namespace zyn
