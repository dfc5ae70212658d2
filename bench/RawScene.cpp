#include "bench/RawScene.h"

#include <utility>

#include "support/ForeignBounds_win.h"
// After windows.h:
#include <psapi.h>

namespace zyn::bench {

using test::makeForeign;

namespace {

constexpr double kMargin = 0.05;
constexpr double kOrbitStep = 7;  ///< degrees

}  // namespace

RawScene::RawScene(std::function<void()> drawRaw, const test::Bounds& bounds)
    : drawRaw_(std::move(drawRaw)), object_(makeForeign<test::ForeignObject>()) {
  object_->onDraw3D = [this](int) {
    draw();
    return S_OK;
  };
  object_->onGetBox3D = [b = bounds](IDispatch** out) {
    const auto box = makeForeign<test::ForeignBox>(b.xMin, b.xMax, b.yMin, b.yMax, b.zMin, b.zMax);
    return test::handOut(box, out);
  };
}

void RawScene::draw() {
  if (isForgotten_) {
    glDeleteLists(std::exchange(list_, 0), 1);
    isForgotten_ = false;
    return;
  }
  if (list_ == 0) {
    list_ = glGenLists(1);
    glNewList(list_, GL_COMPILE);
    drawRaw_();
    glEndList();
  }
  glCallList(list_);
}

void showAll(const test::View3DHost& view) {
  test::require(view->initView(kMargin), "initView");
  test::require(view->VueXYp(kMargin), "VueXYp");
}

void show(const test::View3DHost& view, IDispatch* object) {
  test::require(view->Add(object, 0), "Add");
  showAll(view);
}

double residentBytes() {
  PROCESS_MEMORY_COUNTERS memory = {};
  memory.cb = sizeof memory;
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  return static_cast<double>(memory.WorkingSetSize);
}

void drawOrbitFrame(const test::View3DHost& view) {
  test::require(view->RotateH(kOrbitStep), "RotateH");
  view.paint();
}

}  // namespace zyn::bench
