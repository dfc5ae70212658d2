#include "support/View2DHost_win.h"

#include "support/ArrayVariant_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {

namespace {

ComPtr<IZYNBox2D> makeBox(const Area& area) {
  auto box = createObject<IZYNBox2D>(L"ZYNModeleGeom.Box2D");
  box->put_XMin(area.xMin);
  box->put_XMax(area.xMax);
  box->put_YMin(area.yMin);
  box->put_YMax(area.yMax);
  return box;
}

void fill(const Area& area, const Rgb& colour) {
  glPushAttrib(GL_CURRENT_BIT);
  glColor3ub(static_cast<GLubyte>(colour.r), static_cast<GLubyte>(colour.g),
             static_cast<GLubyte>(colour.b));
  glBegin(GL_QUADS);
  glVertex2d(area.xMin, area.yMin);
  glVertex2d(area.xMax, area.yMin);
  glVertex2d(area.xMax, area.yMax);
  glVertex2d(area.xMin, area.yMax);
  glEnd();
  glPopAttrib();
}

}  // namespace

ComPtr<IZYNRectangle> makeArea(const Area& area) {
  auto rectangle = createObject<IZYNRectangle>(L"ZYNModeleGeom.Rectangle");
  rectangle->setBornes(area.xMin, area.xMax, area.yMin, area.yMax);
  return rectangle;
}

View2DHost::View2DHost(SIZE size) : ViewHostOf(L"ZYNVue.ZYNVue2D", DIID__IZYNVue2DEvents, size) {}

VueParams View2DHost::params() const {
  _variant_t value;
  require(get()->getVueParams(&value), "getVueParams");
  const auto p = doublesIn(value);
  if (p.size() != 7) throw std::runtime_error("getVueParams gave another number of values");
  return {p[0], p[1], p[2], p[3], p[4], p[5], p[6]};
}

void View2DHost::look(const Area& area) const {
  require(get()->View(makeArea(area).Get(), 0), "View");
}

std::array<double, 2> View2DHost::pointOf(int left, int top) const {
  std::array<double, 2> point = {};
  require(get()->getPoint(top, left, &point[0], &point[1]), "getPoint");
  return point;
}

std::array<int, 2> View2DHost::pixelOf(double x, double y) const {
  std::array<int, 2> pixel = {};
  require(get()->getPixelPoint(x, y, &pixel[1], &pixel[0]), "getPixelPoint");
  return pixel;
}

long View2DHost::mode() const {
  long mode = 0;
  require(get()->get_Mode(&mode), "Mode");
  return mode;
}

ComPtr<ForeignObject> View2DHost::addBox(const Area& area) const {
  auto object = makeForeign<ForeignObject>();
  object->onGetBox2D = [area](IDispatch** out) { return handOut(makeBox(area), out); };
  require(get()->Add(object->dispatch(), 0), "Add");
  return object;
}

ComPtr<ForeignObject> makePlate(const Area& area, const Rgb& colour,
                                const std::vector<unsigned>& names) {
  auto object = makeForeign<ForeignObject>();
  object->onDraw2D = [=](int) {
    for (const GLuint name : names) glPushName(name);
    fill(area, colour);
    for (size_t i = 0; i < names.size(); ++i) glPopName();
    return S_OK;
  };
  object->onGetBox2D = [area](IDispatch** out) { return handOut(makeBox(area), out); };
  return object;
}

}  // namespace zyn::test
