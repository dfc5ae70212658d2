#include "view2d/ObjectItems_com.h"

#include <wrl/client.h>

#include <memory>
#include <utility>

#include "glcontext/StateQuery_gl.h"
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
  std::vector<DrawnTrace> traces;
  const std::vector<float> buffer = runColouredFeedbackPass([&] {
    traces.clear();
    list.forEach([&](DrawElem& element) {
      const auto shape = element.own ? element.own->traceShape(pass.logs) : std::nullopt;
      if (shape) {
        glPassThrough(static_cast<GLfloat>(traces.size()));
        traces.push_back(traceOf(*shape, element.object, *mapping, pass));
      } else {
        CListTrace::draw2D(element, pass);
      }
    });
  });
  readFeedback(
      buffer, pass.texts.pixelScale,
      [&](std::size_t number) {
        if (number < traces.size()) {
          items.emplace_back(std::move(traces[number]));
        }
      },
      items);
}

}  // namespace zyn
