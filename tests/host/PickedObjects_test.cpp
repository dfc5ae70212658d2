// Picks may leave out what cannot be hit. Nobody must see it: selection lists of triangles, labels,
// sprites and outside objects answer as the same lists in which every object is inside an outside
// one, which cannot be left out.
//
// ZYN_COUNT: how many scenes; ZYN_SEED: the first.
#include <array>
#include <cmath>
#include <limits>

#include "support/Pickable_win.h"
#include "support/Pictures_win.h"
#include "support/RandomTriangles_win.h"
#include "support/SoakRun.h"
#include "support/Texts_win.h"
#include "support/View3DHost_win.h"
// After windows.h:
#include "contract/ISceneObject_com.h"

namespace zyn::test {
namespace {

constexpr SIZE kSize = {120, 90};

/// An object inside another component's, which only takes the fonts and measures of a view for it.
class Veil final : public ForeignBase<Veil, IZYNObjet, IGLDraw> {
 public:
  explicit Veil(IUnknown* object) : object_(object), drawn_(queryFor<IGLDraw>(object)) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    return iid == __uuidof(ITextView) ? object_->QueryInterface(iid, out)
                                      : ForeignBase::QueryInterface(iid, out);
  }
  STDMETHODIMP Draw3D(int mode) override { return drawn_->Draw3D(mode); }
  STDMETHODIMP Draw2D(int mode) override { return drawn_->Draw2D(mode); }
  STDMETHODIMP GetBox2D(IDispatch** box) override { return drawn_->GetBox2D(box); }
  STDMETHODIMP GetBox3D(IDispatch** box) override { return drawn_->GetBox3D(box); }
  STDMETHODIMP GetParam(IDispatch* point, double* value) override {
    return drawn_->GetParam(point, value);
  }

 private:
  ~Veil() override = default;
  friend ForeignBase;
  ComPtr<IUnknown> object_;
  ComPtr<IGLDraw> drawn_;
};

/// Mostly near the origin, now and then far away or nowhere.
double coordinate(Random& rng) {
  static constexpr std::array kOdd = {0.0,    10.0,
                                      -10.0,  1e4,
                                      -1e9,   1e30,
                                      1e300,  std::numeric_limits<double>::infinity(),
                                      -1e300, std::numeric_limits<double>::quiet_NaN()};
  return rng.oneIn(60) ? rng.pick(kOdd) : rng.between(-10, 10);
}

std::array<double, 3> anyPoint(Random& rng) {
  const double x = coordinate(rng);
  const double y = coordinate(rng);
  return {x, y, coordinate(rng)};
}

/// Makes the next objects answer to this number, as long as nothing else is loaded.
ComPtr<ForeignObject> makeNaming(GLuint name) {
  auto object = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  object->onDraw3D = [name](int) {
    GLint depth = 0;
    glGetIntegerv(GL_NAME_STACK_DEPTH, &depth);
    depth == 0 ? glPushName(name) : glLoadName(name);
    return S_OK;
  };
  return object;
}

/// Moves what comes next.
ComPtr<ForeignObject> makeMoving(Random& rng) {
  auto object = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  object->onDraw3D = [x = rng.between(-2, 2), scale = rng.between(0.5, 1.5)](int) {
    glTranslated(x, -x, x / 2);
    glScaled(scale, scale, scale);
    return S_OK;
  };
  return object;
}

class Scene {
 public:
  explicit Scene(bool isVeiled) : isVeiled_(isVeiled) {
    view_->put_DrawCoordSys(VARIANT_FALSE);
    require(view_->initView(0), "initView");
    view_.camera();
  }

  void start(Random rng, std::size_t objects) {
    require(view_->RemoveAllSelection(), "RemoveAllSelection");
    corners_.clear();
    triangles_.clear();
    add(makeNaming(1)->dispatch());
    for (std::size_t i = 0; i < objects; ++i) make(rng, static_cast<GLuint>(i + 2));
  }

  void look(Random rng) {
    switch (rng.below(6)) {
      case 0:
        view_->setViewBox(box_.Get());
        view_->VueXYp(0);
        break;
      case 1:
        view_->setViewBox(box_.Get());
        view_->VueYZm(0);
        break;
      case 2:
        view_->Zoom(rng.oneIn(3) ? rng.between(5, 50) : rng.between(0.3, 3));
        break;
      case 3:
        view_->TranslateP(rng.between(-15, 15));
        break;
      default:
        view_->RotateH(rng.between(-90, 90));
        view_->RotateV(rng.between(-90, 90));
    }
    view_->put_PickSize(rng.pick(std::array{1.0, 1.0, 0.3, 3.0, 8.0, 50.0, 1000.0}));
    camera_ = view_.camera();
  }

  void change(Random rng) {
    if (triangles_.empty()) return;
    const auto& triangle = triangles_[rng.below(triangles_.size())];
    reshape(triangle.Get(), rng);
  }

  /// At a random pixel, or at a corner of a triangle.
  std::vector<long> pick(Random rng) {
    int x = static_cast<int>(rng.below(kSize.cx + 20)) - 10;
    int y = static_cast<int>(rng.below(kSize.cy + 20)) - 10;
    if (!corners_.empty() && rng.oneIn(2)) {
      const auto pixel = camera_.pixelOf(corners_[rng.below(corners_.size())]);
      if (std::abs(pixel[0]) < 500 && std::abs(pixel[1]) < 500) {
        x = static_cast<int>(std::floor(pixel[0]));
        y = static_cast<int>(std::floor(pixel[1]));
      }
    }
    _variant_t found;
    require(view_->getSelectionUnderMouse(x, y, &found), "getSelectionUnderMouse");
    // Something without a name is not nothing.
    return found.vt == VT_EMPTY ? std::vector<long>{-1} : namesIn(found);
  }

 private:
  void add(IDispatch* object) {
    const auto seen = isVeiled_ ? makeForeign<Veil>(object) : ComPtr<Veil>();
    require(view_->AddSelection(seen ? seen->dispatch() : object), "AddSelection");
  }
  void make(Random& rng, GLuint name) {
    switch (rng.below(12)) {
      case 0:
        return add(makeNaming(name)->dispatch());
      case 1:
        return rng.oneIn(4) ? add(makeMoving(rng).Get()->dispatch()) : addPlate(rng, name);
      case 2:
      case 3:
      case 4:
        return addLabel(rng, name);
      case 5:
        return addSprite(rng);
      default:
        return addTriangle(rng);
    }
  }
  void addTriangle(Random& rng) {
    const auto triangle = maker_.makeRandom(rng);
    if (rng.oneIn(8)) {
      // Degenerate: a line or a point.
      const auto at = anyPoint(rng);
      triangle->setPoint(1, at[0], at[1], at[2]);
      triangle->setPoint(2, at[0], at[1], at[2]);
      if (rng.oneIn(2)) triangle->setPoint(0, at[0], at[1], at[2]);
    }
    Vec corner;
    triangle->getPoint(static_cast<LONG>(rng.below(3)), &corner.x, &corner.y, &corner.z);
    corners_.push_back(corner);
    triangles_.push_back(triangle);
    add(triangle.Get());
  }
  void addPlate(Random& rng, GLuint name) {
    const auto at = anyPoint(rng);
    add(makePickable({name, name + 1}, {at[0], at[0] + 2, at[1], at[1] + 1, at[2]})->dispatch());
  }
  void addLabel(Random& rng, GLuint name) {
    const auto label =
        makeText(rng.oneIn(4) ? L"" : L"Label 42", 6 + static_cast<long>(rng.below(20)));
    const auto at = anyPoint(rng);
    label->setPosition(at[0], at[1], at[2], static_cast<long>(rng.below(11)));
    label->put_ToujoursLisible(rng.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE);
    label->put_NomSelection(rng.oneIn(8) ? -1 : static_cast<long>(name));
    label->put_TypeSelection(7);
    label->put_PushTypeSelection(rng.oneIn(3) ? VARIANT_TRUE : VARIANT_FALSE);
    if (rng.oneIn(6)) {
      label->put_TypeCotation(static_cast<long>(rng.below(4)));
      label->setPointsCotation(rng.between(-5, 5), 1, 2, rng.between(-5, 5), 4, 5);
    }
    add(label.Get());
  }
  void addSprite(Random& rng) {
    const auto sprite = createObject<IZYNGLBitmap>(kSpriteProgId);
    sprite->putref_Picture(picture_.Get());
    const auto at = anyPoint(rng);
    sprite->setPosition(at[0], at[1], at[2]);
    add(sprite.Get());
  }

  static ComPtr<IZYNBox3D> makeBox() {
    auto box = createObject<IZYNBox3D>(kBox3DProgId);
    box->put_XMin(-8);
    box->put_XMax(8);
    box->put_YMin(-8);
    box->put_YMax(8);
    box->put_ZMin(-8);
    box->put_ZMax(8);
    return box;
  }

  bool isVeiled_;
  View3DHost view_{kSize};
  TriangleMaker maker_;
  ComPtr<IZYNBox3D> box_ = makeBox();
  ComPtr<IPictureDisp> picture_ = pictureOfBitmap24(makeQuarters(8, 6));
  DrawnCamera camera_;
  std::vector<Vec> corners_;
  std::vector<ComPtr<IZYNGLTriangle>> triangles_;
};

class PickedObjects : public HostTest {
 protected:
  /// Both scenes do the same and answer the same.
  void play(std::uint64_t seed, std::size_t objects, int picks) {
    SCOPED_TRACE("ZYN_SEED=" + std::to_string(seed));
    Random rng(seed);
    both(rng.fork(), [&](Scene& scene, Random same) { scene.start(same, objects); });
    both(rng.fork(), [](Scene& scene, Random same) { scene.look(same); });
    for (int i = 0; i < picks && !HasFailure(); ++i) {
      if (rng.oneIn(4)) both(rng.fork(), [](Scene& scene, Random same) { scene.look(same); });
      if (rng.oneIn(4)) both(rng.fork(), [](Scene& scene, Random same) { scene.change(same); });
      const Random numbers = rng.fork();
      const auto expected = veiled_.pick(numbers);
      EXPECT_EQ(plain_.pick(numbers), expected) << "pick " << i;
      hits_ += expected == std::vector<long>{-1} ? 0 : 1;
    }
  }
  template <class Action>
  void both(Random same, const Action& action) {
    action(plain_, same);
    action(veiled_, same);
  }

  Scene plain_{false};
  Scene veiled_{true};
  int hits_ = 0;
};

TEST_F(PickedObjects, AreThoseThatCannotBeLeftOut) {
  const SoakRun run(50);
  for (std::uint64_t i = 0; i < run.count && !HasFailure(); ++i) {
    play(run.seed + i, 3 + (run.seed + i) * 7 % 60, 20);
  }
  EXPECT_GT(hits_, static_cast<int>(run.count)) << "hardly anything was hit";
}

TEST_F(PickedObjects, AreThoseThatCannotBeLeftOutOfThousands) { play(1, 3000, 15); }

}  // namespace
}  // namespace zyn::test
