#include "view2d/PlotPass_com.h"

#include <algorithm>
#include <cmath>

#include "plot/DrawingPainter_gl.h"
#include "plotview/DrawableItem_com.h"
#include "view2d/ObjectItems_com.h"
#include "view2d/ViewMatrices_gl.h"

namespace zyn {

namespace {

/// Null for what is no object.
template <class Entry>
DrawableItem* drawableOf(const Entry& entry) {
  return dynamic_cast<DrawableItem*>(entry.item.get());
}

PlanePoint sizeOf(const PlotFrame& frame) { return {frame.page().width, frame.page().height}; }

Float4 clearColourOf(PlotThemeKind theme) {
  const DrawColour colour = themeOf(theme).background;
  return {static_cast<float>(colour.r), static_cast<float>(colour.g), static_cast<float>(colour.b),
          0.0F};
}

/// Lets nothing be drawn outside of a box of the picture for a scope.
class Scissor {
 public:
  Scissor(const PixelBox& box, const PlanePoint& picture, const PicturePart& part) {
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    const auto x = [&](double pixel) {
      return viewport[0] + (pixel / picture.x - part.left) / (part.right - part.left) * viewport[2];
    };
    const auto y = [&](double pixel) {
      return viewport[1] +
             (pixel / picture.y - part.bottom) / (part.top - part.bottom) * viewport[3];
    };
    const int left = static_cast<int>(std::lround(x(box.left)));
    const int bottom = static_cast<int>(std::lround(y(box.bottom)));
    glEnable(GL_SCISSOR_TEST);
    glScissor(left, bottom, std::max(0, static_cast<int>(std::lround(x(box.right))) - left),
              std::max(0, static_cast<int>(std::lround(y(box.top))) - bottom));
  }

 private:
  PushedAttributes saved_{GL_SCISSOR_BIT};
};

/// Where drawable objects meet the axes of a place: plotting units are pixels.
ScaledView plotViewOf(const PlanePoint& size, const PlotPlace& place) {
  const auto mapping = place.mapping();
  if (!mapping) {
    return {};
  }
  const double x = size.x / 2 - mapping->x.constant;
  const double y = size.y / 2 - mapping->y.constant;
  ScaledView view{{}, mapping->x.x, mapping->y.y};
  view.view.fit(Rect2{x - size.x / 2, x + size.x / 2, y - size.y / 2, y + size.y / 2}, {}, 0.0F);
  return view;
}

void drawObjects(CListTrace& list, const PlanePoint& size, const PlotPlace& place,
                 const PlotPass& pass) {
  if (list.count() == 0) {
    return;
  }
  const Scissor scissor(place.area, size, pass.part);
  const PushedMatrix projection(GL_PROJECTION);
  const PushedMatrix modelview(GL_MODELVIEW);
  loadView(plotViewOf(size, place), pass.part);
  const BalancedStacks stacks;
  ListPass objects = pass.list;
  objects.texts.viewHeight = size.y;
  objects.logs = place.logs();
  objects.isInGraph = true;
  list.draw2D(objects);
}

DrawnLayer objectLayer(CListTrace& list, const PlanePoint& size, const PlotPlace& place,
                       const ListPass& pass) {
  DrawnLayer layer{place.area, {}};
  if (list.count() != 0) {
    const PushedMatrix projection(GL_PROJECTION);
    const PushedMatrix modelview(GL_MODELVIEW);
    loadView(plotViewOf(size, place));
    ListPass objects = pass;
    objects.texts.viewHeight = size.y;
    objects.logs = place.logs();
    objects.isInGraph = true;
    appendObjects(list, objects, layer.items);
  }
  return layer;
}

/// The ground is the first layer.
Drawing withoutGround(const Drawing& behind) {
  return {behind.begin() + (behind.empty() ? 0 : 1), behind.end()};
}

PlotPlace mainPlace(const Plot& plot, const PlotFrame& frame) {
  return frame.placeOf({nullptr, plot.axis(AxisSide::kBottom), plot.axis(AxisSide::kLeft)});
}

}  // namespace

ScaledView mainPlotView(const Plot& plot, const PlotFrame& frame) {
  return plotViewOf(sizeOf(frame), mainPlace(plot, frame));
}

bool holdsTexts(const Plot& plot) {
  return std::any_of(plot.entries().begin(), plot.entries().end(), [](const Plot::Entry& entry) {
    DrawableItem* const drawable = drawableOf(entry);
    return drawable && drawable->list().mayHoldText();
  });
}

void drawPlotCursor(const Plot& plot, const PlotFrame& frame, const CursorGlyph& glyph,
                    const std::array<double, 2>& position) {
  const PlotPlace place = mainPlace(plot, frame);
  if (!place.x.canShow(position[0]) || !place.y.canShow(position[1])) {
    return;
  }
  const PushedMatrix projection(GL_PROJECTION);
  const PushedMatrix modelview(GL_MODELVIEW);
  loadViewAt({place.x.coordinateOf(position[0]), place.y.coordinateOf(position[1]), 0},
             plotViewOf(sizeOf(frame), place));
  const DrawColour& colour = themeOf(plot.theme).text;
  glyph.draw(
      0, 0, 0, frame.page().pixelScale,
      {static_cast<float>(colour.r), static_cast<float>(colour.g), static_cast<float>(colour.b)});
}

PlotPicture::PlotPicture(const Plot& plot, const PlotFrame& frame)
    : size(sizeOf(frame)),
      theme(plot.theme),
      layout(frame.kept()),
      entries(frame.plan()),
      place(mainPlace(plot, frame)),
      cursors(frame.drawCursors()) {}

void drawPlot(const PlotPicture& picture, CListTrace& drawList, const PlotPass& pass) {
  const AutoGLClearColor background(pass.flat ? *pass.flat : clearColourOf(picture.theme));
  const bool hasObjects =
      drawList.count() != 0 || std::ranges::any_of(picture.entries, [](const PlannedEntry& entry) {
        return drawableOf(entry) != nullptr;
      });
  glClear(hasObjects ? GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT : GL_COLOR_BUFFER_BIT);
  PlotPass objects = pass;
  objects.list.texts.isOnDark = picture.theme == PlotThemeKind::kDark;
  const Drawing& behind = picture.layout->behind;
  if (pass.flat) {
    paintDrawing(withoutGround(behind), picture.size, pass.part);
  } else {
    paintDrawing(behind, picture.size, pass.part);
  }
  Drawing next;
  const auto paint = [&] {
    paintDrawing(next, picture.size, pass.part);
    next.clear();
  };
  for (const PlannedEntry& entry : picture.entries) {
    if (DrawableItem* const drawable = drawableOf(entry)) {
      paint();
      drawObjects(drawable->list(), picture.size, entry.place, objects);
    } else {
      next.push_back(entry.layer());
    }
  }
  paint();
  drawObjects(drawList, picture.size, picture.place, objects);
  paintDrawing(picture.layout->inFront, picture.size, pass.part);
  paintDrawing(picture.cursors, picture.size, pass.part);
}

void drawPlotNames(const PlotFrame& frame,
                   const std::function<std::int32_t(const PlotItem&)>& nameOf,
                   const PicturePart& part) {
  for (const PlannedEntry& entry : frame.plan()) {
    const std::int32_t name = nameOf(*entry.item);
    if (name >= 0) {
      glPushName(static_cast<GLuint>(name));
      paintDrawing(Drawing{entry.layer()}, sizeOf(frame), part);
      glPopName();
    }
  }
}

bool showsObjects(const Plot& plot, const CListTrace& drawList) {
  return drawList.count() != 0 ||
         std::any_of(plot.entries().begin(), plot.entries().end(),
                     [](const Plot::Entry& entry) { return drawableOf(entry) != nullptr; });
}

Drawing drawingOf(const PlotPicture& picture, CListTrace& drawList, const ListPass& objects) {
  Drawing drawing = picture.layout->behind;
  for (const PlannedEntry& entry : picture.entries) {
    DrawableItem* const drawable = drawableOf(entry);
    drawing.push_back(drawable ? objectLayer(drawable->list(), picture.size, entry.place, objects)
                               : entry.layer());
  }
  drawing.push_back(objectLayer(drawList, picture.size, picture.place, objects));
  const Drawing& inFront = picture.layout->inFront;
  drawing.insert(drawing.end(), inFront.begin(), inFront.end());
  drawing.insert(drawing.end(), picture.cursors.begin(), picture.cursors.end());
  return drawing;
}

}  // namespace zyn
