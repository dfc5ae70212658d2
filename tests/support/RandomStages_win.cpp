#include "support/RandomStages_win.h"

#include <cmath>
#include <string>

#include "support/ArrayVariant_win.h"
#include "support/OffscreenContext_win.h"
#include "support/Pickable_win.h"
#include "support/RandomTriangles_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr SIZE kSize = {96, 72};

SIZE anySize(Random& rng) {
  return {static_cast<LONG>(64 + 16 * rng.below(4)), static_cast<LONG>(48 + 16 * rng.below(3))};
}

float unit(Random& rng) { return static_cast<float>(rng.between(0, 1)); }

_variant_t anyAmbient(Random& rng) {
  return doubleArray({double(rng.below(2)), unit(rng), unit(rng), unit(rng), 1});
}

_variant_t anyLight(Random& rng) {
  return doubleArray({double(rng.below(2)), unit(rng), unit(rng), unit(rng), unit(rng), unit(rng),
                      unit(rng), rng.between(0, 6), rng.between(-1, 1)});
}

VARIANT_BOOL anyFlag(Random& rng) { return rng.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE; }

/// Around the triangles, whatever they do to the scene's own box.
ComPtr<IZYNBox3D> wholeBox() {
  auto box = createObject<IZYNBox3D>(kBox3DProgId);
  box->put_XMin(-kRandomReach);
  box->put_XMax(kRandomReach);
  box->put_YMin(-kRandomReach);
  box->put_YMax(kRandomReach);
  box->put_ZMin(-kRandomReach);
  box->put_ZMax(kRandomReach);
  return box;
}

std::string textOf(const auto& numbers) {
  std::string text;
  for (const auto number : numbers) text += " " + std::to_string(number);
  return text;
}

template <class View>
class ViewStage : public Stage {
 public:
  void add(IDispatch* object, int mode) override {
    require(host_->Add(object, mode), "Add");
    require(host_->AddSelection(object), "AddSelection");
  }
  bool remove(IDispatch* object) override {
    require(host_->Remove(object), "Remove");
    require(host_->RemoveSelection(object), "RemoveSelection");
    return true;
  }
  void removeAll() override {
    require(host_->RemoveAll(), "RemoveAll");
    require(host_->RemoveAllSelection(), "RemoveAllSelection");
  }
  void draw() override { host_.paint(); }

 protected:
  void renewWindow() {
    host_.deactivate();
    host_.activate();
  }

  View host_{kSize};
};

class Stage3D final : public ViewStage<View3DHost> {
 public:
  std::string answers() override {
    _variant_t frame;
    double scale = 0;
    require(host_->XFormView(&frame), "XFormView");
    require(host_->getWindowScale(&scale), "getWindowScale");
    std::string text = "scale " + std::to_string(scale) + " frame" + textOf(doublesIn(frame));
    const SIZE size = host_.clientSize();
    for (int i = 1; i < 4; ++i) {
      _variant_t names;
      require(host_->getSelectionUnderMouse(size.cx * i / 4, size.cy * i / 4, &names),
              "getSelectionUnderMouse");
      text += " picked" + textOf(namesIn(names));
    }
    return text;
  }

  Stage3D() {
    host_.addBox(
        {-kRandomReach, kRandomReach, -kRandomReach, kRandomReach, -kRandomReach, kRandomReach});
    require(host_->initView(0), "initView");
  }

  void vary(Random& rng) override {
    switch (rng.below(15)) {
      case 0:
      case 1:
        return turn(rng);
      case 2:
        return lookAlongAxis(rng);
      case 3:
        return void(host_->Zoom(rng.between(0.5, 2)));
      case 4:
        return void(host_->TranslateH(rng.between(-3, 3)));
      case 5:
        return void(host_->put_AmbientLightProperty(anyAmbient(rng)));
      case 6:
        return void(host_->put_DirectionLight1Property(anyLight(rng)));
      case 7:
        return void(host_->put_DirectionLight2Property(anyLight(rng)));
      case 8:
        return void(host_->setBackground(unit(rng), unit(rng), unit(rng)));
      case 9:
        return void(host_->put_GradientBackground(anyFlag(rng)));
      case 10:
        return void(host_->put_LineAntialiasing(anyFlag(rng)));
      case 11:
        return void(host_->put_DrawCoordSys(anyFlag(rng)));
      case 12:
        return host_.resize(anySize(rng));
      case 13:
        return void(host_->LastView());
      default:
        if (rng.oneIn(4)) renewWindow();
    }
  }

 private:
  void turn(Random& rng) {
    host_->RotateH(rng.between(-90, 90));
    host_->RotateV(rng.between(-90, 90));
    host_->RotateA(rng.between(-90, 90));
  }
  void lookAlongAxis(Random& rng) {
    require(host_->setViewBox(wholeBox_.Get()), "setViewBox");
    rng.oneIn(2) ? host_->VueXYp(0) : host_->VueYZm(0.2);
  }

  ComPtr<IZYNBox3D> wholeBox_ = wholeBox();
};

class Stage2D final : public ViewStage<View2DHost> {
 public:
  std::string answers() override {
    _variant_t shown;
    double pixel = 0;
    require(host_->getVueParams(&shown), "getVueParams");
    require(host_->get_PixelSize(&pixel), "PixelSize");
    return "pixel " + std::to_string(pixel) + " shown" + textOf(doublesIn(shown));
  }

  Stage2D() { lookAt(0, 0, 1.25 * kRandomReach); }

  bool removesEvery() const override { return true; }
  void add(IDispatch* object, int mode) override {
    ViewStage::add(object, mode);
    LONG count = 0;
    require(host_->Count(&count), "Count");
    if (count == 1) lookAt(0, 0, 1.25 * kRandomReach);  // away from its home view
  }
  void vary(Random& rng) override {
    switch (rng.below(6)) {
      case 0:
      case 1: {
        const double x = rng.between(-5, 5);
        return lookAt(x, rng.between(-5, 5), rng.between(3, 15));
      }
      case 2:
        return void(host_->setBackground(unit(rng), unit(rng), unit(rng)));
      case 3:
        return void(host_->put_PointAntialiasing(anyFlag(rng)));
      case 4:
        return host_.resize(anySize(rng));
      default:
        if (rng.oneIn(4)) renewWindow();
    }
  }

 private:
  void lookAt(double x, double y, double reach) const {
    host_.look({x - reach, x + reach, y - reach, y + reach});
  }
};

/// Tells the bytes of every file that it writes.
template <class Context>
class BitmapStage : public Stage {
 public:
  void add(IDispatch* object, int mode) override { context_->add(object, mode); }
  bool remove(IDispatch*) override { return false; }
  void draw() override {
    ComPtr<IPictureDisp> picture;
    require(context_->GetPictureDisp(picture.GetAddressOf()), "GetPictureDisp");
  }

 protected:
  void resize(Random& rng) {
    const SIZE size = anySize(rng);
    context_->resize(size.cx, size.cy);
  }

  std::unique_ptr<Context> context_ = std::make_unique<Context>(kSize.cx, kSize.cy);
};

class BitmapStage3D final : public BitmapStage<OffscreenScene> {
 public:
  BitmapStage3D() { context_->look({{0, 0, -1}, {0, 1, 0}}, 0.1, wholeBox_.Get()); }

  void removeAll() override { require((*context_)->RemoveAll(), "RemoveAll"); }
  void vary(Random& rng) override {
    switch (rng.below(8)) {
      case 0:
      case 1: {
        const double angle = rng.between(0, 6);
        return context_->look({{std::cos(angle), std::sin(angle), 0}, {0, 0, 1}},
                              rng.between(-0.2, 0.5), wholeBox_.Get());
      }
      case 2:
        return void((*context_)->put_AmbientLightProperty(anyAmbient(rng)));
      case 3:
        return void((*context_)->put_DirectionLight1Property(anyLight(rng)));
      case 4:
        return void((*context_)->put_GradientBackground(anyFlag(rng)));
      case 5:
        return void((*context_)->put_LineAntialiasing(anyFlag(rng)));
      default:
        return resize(rng);
    }
  }

 private:
  ComPtr<IZYNBox3D> wholeBox_ = wholeBox();
};

/// Begins anew where all is to go: there is no other way.
class BitmapStage2D final : public BitmapStage<OffscreenGraph> {
 public:
  BitmapStage2D() { show(1.25 * kRandomReach); }

  double textScale() const override { return resolution() / screenResolution_; }
  void removeAll() override {
    context_ = std::make_unique<OffscreenGraph>(kSize.cx, kSize.cy);
    show(1.25 * kRandomReach);
  }
  void vary(Random& rng) override {
    switch (rng.below(4)) {
      case 0:
        return show(rng.between(3, 15));
      case 1:
        return void((*context_)->put_BackColor(doubleArray({unit(rng), unit(rng), unit(rng)})));
      case 2:
        return void((*context_)->put_DPIResolution(rng.between(50, 300)));
      default:
        return resize(rng);
    }
  }

 private:
  void show(double reach) { context_->show(-reach, reach, -reach, reach); }
  double resolution() const {
    double value = 0;
    require((*context_)->get_DPIResolution(&value), "get_DPIResolution");
    return value;
  }

  double screenResolution_ = resolution();
};

}  // namespace

std::unique_ptr<Stage> makeStage3D() { return std::make_unique<Stage3D>(); }
std::unique_ptr<Stage> makeStage2D() { return std::make_unique<Stage2D>(); }
std::unique_ptr<Stage> makeBitmapStage3D() { return std::make_unique<BitmapStage3D>(); }
std::unique_ptr<Stage> makeBitmapStage2D() { return std::make_unique<BitmapStage2D>(); }

}  // namespace zyn::test
