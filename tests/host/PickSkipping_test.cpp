// Picks leave out objects that cannot be hit. What they find, and what the objects tell afterwards,
// is the same as if each had been drawn: as for objects that are parts of another component's.
#include <random>

#include "support/ArrayVariant_win.h"
#include "support/Outer_win.h"
#include "support/Pickable_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr const wchar_t* kTraceProgId = L"ZYNModeleGeom.Polyligne";
constexpr int kObjects = 80;
constexpr int kCameras = 8;
constexpr int kPicks = 15;
constexpr SIZE kSize = {400, 200};

class PickSkipping : public HostTest {
 protected:
  using Names = std::vector<long>;

  double any(double low, double high) { return std::uniform_real_distribution(low, high)(random_); }
  int anyInt(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }
  VARIANT_BOOL anyFlag() { return anyInt(0, 1) == 0 ? VARIANT_FALSE : VARIANT_TRUE; }
  double anyX() { return any(-12, 12); }
  double anyY() { return any(-6, 6); }

  /// An object of the class, and one inside an object of another component, both treated alike.
  template <class Interface, class Fill>
  void addPair(const wchar_t* progId, Fill fill) {
    const auto plain = createObject<Interface>(progId);
    const auto outer = makeForeign<Outer>();
    require(CoCreateInstance(classOf(progId), outer->dispatch(), CLSCTX_INPROC_SERVER, IID_IUnknown,
                             reinterpret_cast<void**>(outer->inner.GetAddressOf())),
            "CoCreateInstance");
    const auto inside = queryFor<Interface>(outer.Get());
    const auto random = random_;
    fill(plain.Get());
    random_ = random;
    fill(inside.Get());
    plain_.push_back(queryFor<IDispatch>(plain.Get()));
    inside_.push_back(outer->dispatch());
  }

  void fill(IZYNGLTexte* label) {
    setText(label, std::wstring(static_cast<std::size_t>(anyInt(0, 8)), L'A'));
    label->put_HauteurPixels(anyInt(0, 30));
    label->put_IsNumeric(anyFlag());
    label->put_Value(any(-1e4, 1e4));
    label->put_UseNumericSize(anyFlag());
    label->put_ToujoursLisible(anyFlag());
    label->setPosition(anyX(), anyY(), any(-5, 5), anyInt(0, 9));
    label->put_NomSelection(anyInt(-1, 1000));
    label->put_TypeSelection(anyInt(0, 10));
    label->put_PushTypeSelection(anyFlag());
    label->put_TypeCotation(anyInt(0, 12));
    label->setPointsCotation(anyX(), anyY(), 0, anyX(), anyY(), 0);
    label->put_DecalageCotation(any(-1, 1));
  }

  void addLabel() {
    addPair<IZYNGLTexte>(kTextProgId, [&](IZYNGLTexte* label) { fill(label); });
  }
  void addSprite() {
    addPair<IZYNGLBitmap>(kSpriteProgId, [&](IZYNGLBitmap* sprite) {
      sprite->putref_Picture(picture_.Get());
      sprite->setPosition(anyX(), anyY(), any(-5, 5));
      sprite->setOrigine(any(-10, 30), any(-10, 30));
    });
  }
  void addTriangle() {
    addPair<IZYNGLTriangle>(kTriangleProgId, [&](IZYNGLTriangle* triangle) {
      const double x = anyX();
      const double y = anyY();
      for (long i = 0; i < 3; ++i) {
        triangle->setPoint(i, x + any(-1, 1), y + any(-1, 1), any(-5, 5));
      }
    });
  }
  void addTrace() {
    addPair<IZYNPolyligne>(kTraceProgId, [&](IZYNPolyligne* trace) {
      std::vector<double> x(1, anyX());
      std::vector<double> y(1, anyY());
      std::vector<double> z(1, any(-5, 5));
      for (int i = anyInt(0, 8); i > 0; --i) {
        x.push_back(x.back() + any(-1, 1));
        y.push_back(y.back() + any(-1, 1));
        z.push_back(z.back() + any(-1, 1));
      }
      trace->setPoints3D(doubleArray(x), doubleArray(y), doubleArray(z));
      trace->put_Numero(anyInt(-1, 1000));
    });
  }

  /// Mostly labels and traces, which have names.
  void fillScene() {
    for (int i = 0; i < kObjects; ++i) {
      switch (anyInt(0, 9)) {
        case 0:
          addSprite();
          break;
        case 1:
          addTriangle();
          break;
        case 2:
        case 3:
          addTrace();
          break;
        default:
          addLabel();
      }
    }
  }

  /// The second half under a name that an object of another component leaves on the stack.
  template <class View>
  static void select(const View& view, const std::vector<ComPtr<IDispatch>>& objects) {
    const auto opener = makeForeign<ForeignObject>();
    opener->onDraw3D = opener->onDraw2D = [](int) {
      glPushName(5000);
      return S_OK;
    };
    const auto closer = makeForeign<ForeignObject>();
    closer->onDraw3D = closer->onDraw2D = [](int) {
      glPopName();
      return S_OK;
    };
    for (std::size_t i = 0; i < objects.size(); ++i) {
      if (i == objects.size() / 2) require(view->AddSelection(opener->dispatch()), "AddSelection");
      require(view->AddSelection(objects[i].Get()), "AddSelection");
    }
    require(view->AddSelection(closer->dispatch()), "AddSelection");
  }

  /// What labels tell of themselves.
  void expectSameLabels() {
    for (std::size_t i = 0; i < plain_.size(); ++i) {
      ComPtr<IZYNGLTexte> label;
      if (FAILED(plain_[i].As(&label))) continue;
      const auto other = queryFor<IZYNGLTexte>(inside_[i].Get());
      EXPECT_EQ(pixelRect(label.Get()), pixelRect(other.Get()));
      EXPECT_EQ(placeOf(label.Get()), placeOf(other.Get()));
    }
  }

  static std::array<double, 4> placeOf(IZYNGLTexte* label) {
    std::array<double, 4> place{};
    long reference = 0;
    require(label->getPosition(&place[0], &place[1], &place[2], &reference), "getPosition");
    place[3] = static_cast<double>(reference);
    return place;
  }

  double anyPickSize() { return anyInt(0, 3) == 0 ? any(0.1, 60) : 1; }

  std::mt19937 random_{1};
  ComPtr<IPictureDisp> picture_ = pictureOfBitmap24(makeQuarters(20, 12));
  std::vector<ComPtr<IDispatch>> plain_;
  std::vector<ComPtr<IDispatch>> inside_;
  int found_ = 0;
};

TEST_F(PickSkipping, In3DView) {
  const View3DHost plain(kSize);
  const View3DHost inside(kSize);
  fillScene();
  select(plain, plain_);
  select(inside, inside_);
  const auto both = [&](const auto& action) {
    action(plain);
    action(inside);
  };
  both([](const View3DHost& view) {
    view.addBox({-10, 10, -5, 5, -5, 5});
    require(view->initView(0), "initView");
  });
  const auto pick = [](const View3DHost& view, int x, int y) {
    _variant_t names;
    EXPECT_EQ(view->getSelectionUnderMouse(x, y, &names), S_OK);
    return std::pair(names.vt, namesIn(names));
  };
  for (int camera = 0; camera < kCameras; ++camera) {
    const double turn = any(-180, 180);
    const double zoom = any(0.3, 3);
    const double step = any(-2, 2);
    const double size = anyPickSize();
    both([&](const View3DHost& view) {
      view->VueXYp(0);
      view->RotateH(camera % 2 == 0 ? 0 : turn);
      view->RotateV(camera % 3 == 0 ? 0 : turn / 3);
      view->Zoom(zoom);
      view->TranslateH(step);
      view->put_PickSize(size);
    });
    for (int i = 0; i < kPicks; ++i) {
      const int x = anyInt(-2, 402);
      const int y = anyInt(-2, 202);
      const auto names = pick(plain, x, y);
      EXPECT_EQ(names, pick(inside, x, y)) << x << ", " << y;
      found_ += names.second.empty() ? 0 : 1;
    }
    expectSameLabels();
  }
  EXPECT_GT(found_, kCameras * kPicks / 10);
}

TEST_F(PickSkipping, In2DView) {
  View2DHost plain(kSize);
  View2DHost inside(kSize);
  fillScene();
  select(plain, plain_);
  select(inside, inside_);
  const auto both = [&](const auto& action) {
    action(plain);
    action(inside);
  };
  both([](View2DHost& view) {
    view->put_Mode(-1);
    view->put_SelectSuperpose(VARIANT_TRUE);
  });
  const auto pick = [](View2DHost& view, int x, int y) {
    view.forgetEvents();
    view.send(WM_LBUTTONDOWN, x, y, MK_LBUTTON);
    view.send(WM_LBUTTONUP, x, y);
    const auto selected = view.events(GraphEvent::MouseSelection);
    EXPECT_EQ(selected.size(), 1U);
    return selected.empty() ? Names() : namesIn(selected[0].arguments[0]);
  };
  for (int camera = 0; camera < kCameras; ++camera) {
    const double half = any(1, 12);
    const double x = any(-5, 5);
    const double y = any(-3, 3);
    const double size = anyPickSize();
    both([&](View2DHost& view) {
      view.look({x - half, x + half, y - half / 2, y + half / 2});
      view->put_PickSize(size);
    });
    for (int i = 0; i < kPicks; ++i) {
      const int left = anyInt(0, 399);
      const int top = anyInt(0, 199);
      const Names names = pick(plain, left, top);
      EXPECT_EQ(names, pick(inside, left, top)) << left << ", " << top;
      found_ += names.empty() ? 0 : 1;
    }
    expectSameLabels();
  }
  EXPECT_GT(found_, kCameras * kPicks / 10);
}

}  // namespace
}  // namespace zyn::test
