#include "support/Drawer_win.h"

#include "support/ControlTest_win.h"

namespace zyn::test {
namespace {

constexpr float kRed01 = kBackground.r / 255.0F;
constexpr float kGreen01 = kBackground.g / 255.0F;
constexpr float kBlue01 = kBackground.b / 255.0F;

template <class Host>
class ViewDrawer : public Drawer {
 public:
  ViewDrawer(int width, int height) : host_(SIZE{width, height}) {
    require(host_->setBackground(kRed01, kGreen01, kBlue01), "setBackground");
  }

  IDispatch* dispatch() override { return host_.get(); }
  Image frame() override {
    host_.paint();
    return host_.shown();
  }
  ViewHost* view() override { return &host_; }

 protected:
  Host host_;
};

class View3DDrawer : public ViewDrawer<View3DHost> {
 public:
  View3DDrawer(int width, int height) : ViewDrawer(width, height) {
    require(host_->put_DrawCoordSys(VARIANT_FALSE), "DrawCoordSys");
    // Inverted: on switches the gradient off.
    require(host_->put_GradientBackground(VARIANT_TRUE), "GradientBackground");
  }

  void lookAtPlane() override {
    require(host_->initView(0), "initView");
    require(host_->VueXYp(0), "VueXYp");
  }
};

class View2DDrawer : public ViewDrawer<View2DHost> {
 public:
  View2DDrawer(int width, int height) : ViewDrawer(width, height) {
    host_.look({0, 1.0 * width, 0, 1.0 * height});
  }
};

template <class Context>
class ContextDrawer : public Drawer {
 public:
  ContextDrawer(int width, int height) : context_(width, height) {}

  IDispatch* dispatch() override { return context_.dispatch(); }
  Image frame() override { return context_.render(); }

 protected:
  Context context_;
};

class GraphDrawer : public ContextDrawer<OffscreenGraph> {
 public:
  GraphDrawer(int width, int height) : ContextDrawer(width, height) {
    context_.show(0, width, 0, height);
  }
};

template <class Made>
std::unique_ptr<Drawer> make(int width, int height) {
  return std::make_unique<Made>(width, height);
}

}  // namespace

const std::vector<DrawerClass>& drawerClasses() {
  static const std::vector<DrawerClass> classes = {
      {"View3D", kVue3DProgId, false, true, make<View3DDrawer>},
      {"View2D", kVue2DProgId, true, true, make<View2DDrawer>},
      {"Context3D", kContextProgId, false, false, make<ContextDrawer<OffscreenScene>>},
      {"Context2D", kContext2DProgId, true, false, make<GraphDrawer>}};
  return classes;
}

std::vector<DrawerClass> viewClasses() {
  std::vector<DrawerClass> views = drawerClasses();
  std::erase_if(views, [](const DrawerClass& each) { return !each.isView; });
  return views;
}

}  // namespace zyn::test
