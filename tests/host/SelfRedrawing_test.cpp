// RedessinAuto: views that ask for a repaint whenever what they show has changed, and those that
// leave it to their host.
#include <functional>

#include "support/LateBinding_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

ComPtr<IDispatch> objectOf(const wchar_t* progId) { return createObject<IDispatch>(progId); }

/// Calls a member by name, which must succeed.
void call(const ComPtr<IDispatch>& object, const wchar_t* name,
          const std::vector<_variant_t>& arguments) {
  ASSERT_EQ(callMethod(object.Get(), name, arguments).code(), S_OK);
}
void put(const ComPtr<IDispatch>& object, const wchar_t* name, const _variant_t& value) {
  ASSERT_EQ(putProperty(object.Get(), name, value).code(), S_OK);
}

/// A change that a view shows, made by name.
struct Change {
  const char* name;
  std::function<void(const ComPtr<IDispatch>& object)> make;
};

template <class Host>
class SelfRedrawing : public HostTest {
 protected:
  SelfRedrawing() { show(); }

  void show() { host.paint(); }
  bool asksForPaint() const { return GetUpdateRect(host.window(), nullptr, FALSE) != FALSE; }
  ComPtr<IDispatch> view() const { return ComPtr<IDispatch>(host.get()); }

  /// What is asked for after each change of `object`, which is or is in the view.
  void expectRepaintAfter(const ComPtr<IDispatch>& object, const std::vector<Change>& changes) {
    for (const bool isAutomatic : {false, true}) {
      put(view(), L"RedessinAuto", isAutomatic);
      for (const Change& change : changes) {
        show();
        ASSERT_FALSE(asksForPaint());
        change.make(object);
        EXPECT_EQ(asksForPaint(), isAutomatic) << change.name;
      }
    }
  }

  Host host;
};

using Views = testing::Types<View2DHost, View3DHost>;
template <class Host>
class SelfRedrawingOfBoth : public SelfRedrawing<Host> {};
TYPED_TEST_SUITE(SelfRedrawingOfBoth, Views);

TYPED_TEST(SelfRedrawingOfBoth, IsOffAtFirstAndRepaintsWhenItIsSwitchedOn) {
  EXPECT_FALSE(static_cast<bool>(getProperty(this->view().Get(), L"RedessinAuto").value));
  ASSERT_FALSE(this->asksForPaint());
  put(this->view(), L"RedessinAuto", short{1});
  EXPECT_TRUE(static_cast<bool>(getProperty(this->view().Get(), L"RedessinAuto").value));
  EXPECT_TRUE(this->asksForPaint());
}

TYPED_TEST(SelfRedrawingOfBoth, FollowsTriangles) {
  const auto triangle = objectOf(L"ZYNVue.ZYNGLTriangle");
  ASSERT_EQ(this->host->Add(triangle.Get(), 0), S_OK);
  this->expectRepaintAfter(
      triangle, {{"setPoint",
                  [](const auto& o) {
                    call(o, L"setPoint", {0L, 1.0, 2.0, 3.0});
                  }},
                 {"setNormale",
                  [](const auto& o) {
                    call(o, L"setNormale", {0L, 0.0, 1.0, 0.0});
                  }},
                 {"setColor",
                  [](const auto& o) {
                    call(o, L"setColor", {1.0, 0.0, 0.0, 1.0});
                  }},
                 {"setMaterial", [](const auto& o) {
                    call(o, L"setMaterial", {1.0, 0.0, 0.0, 1.0, 0.1, 0.2, 0.3, 4.0, 0.0});
                  }}});
}

TYPED_TEST(SelfRedrawingOfBoth, FollowsTexts) {
  const auto text = objectOf(L"ZYNVue.ZYNGLTexte");
  ASSERT_EQ(this->host->Add(text.Get(), 0), S_OK);
  this->expectRepaintAfter(text,
                           {{"Texte", [](const auto& o) { put(o, L"Texte", L"bore"); }},
                            {"setPosition",
                             [](const auto& o) {
                               call(o, L"setPosition", {1.0, 2.0, 3.0, 1L});
                             }},
                            {"setColor",
                             [](const auto& o) {
                               call(o, L"setColor", {1.0, 0.0, 0.0, 1.0});
                             }},
                            {"HauteurPixels", [](const auto& o) { put(o, L"HauteurPixels", 30L); }},
                            {"Value", [](const auto& o) { put(o, L"Value", 1.5); }},
                            {"IsNumeric", [](const auto& o) { put(o, L"IsNumeric", true); }},
                            {"TypeCotation", [](const auto& o) { put(o, L"TypeCotation", 1L); }},
                            {"Unicode", [](const auto& o) { put(o, L"Unicode", true); }},
                            {"Police", [](const auto& o) { put(o, L"Police", L"Tahoma"); }},
                            {"Gras", [](const auto& o) { put(o, L"Gras", false); }},
                            {"Italique", [](const auto& o) { put(o, L"Italique", true); }},
                            {"Fond", [](const auto& o) { put(o, L"Fond", true); }},
                            {"setCouleurFond",
                             [](const auto& o) {
                               call(o, L"setCouleurFond", {1.0, 0.0, 0.0, 1.0});
                             }},
                            {"Cadre", [](const auto& o) { put(o, L"Cadre", true); }}});
}

TYPED_TEST(SelfRedrawingOfBoth, FollowsSprites) {
  const auto sprite = objectOf(L"ZYNVue.ZYNGLBitmap");
  ASSERT_EQ(this->host->Add(sprite.Get(), 0), S_OK);
  this->expectRepaintAfter(sprite,
                           {{"setPosition",
                             [](const auto& o) {
                               call(o, L"setPosition", {1.0, 2.0, 3.0});
                             }},
                            {"setOrigine",
                             [](const auto& o) {
                               call(o, L"setOrigine", {1.0, 2.0});
                             }},
                            {"Transparent", [](const auto& o) { put(o, L"Transparent", true); }},
                            {"setTransparentColor", [](const auto& o) {
                               call(o, L"setTransparentColor", {1L, 2L, 3L});
                             }}});
}

TYPED_TEST(SelfRedrawingOfBoth, FollowsTraces) {
  const auto trace = objectOf(L"ZYNModeleGeom.Polyligne");
  ASSERT_EQ(this->host->Add(trace.Get(), 0), S_OK);
  this->expectRepaintAfter(trace,
                           {{"setColor",
                             [](const auto& o) {
                               call(o, L"setColor", {1.0, 0.0, 0.0, 1.0});
                             }},
                            {"Epaisseur", [](const auto& o) { put(o, L"Epaisseur", 3.0); }}});
}

TYPED_TEST(SelfRedrawingOfBoth, LetsGoOfWhatIsNoLongerShown) {
  const auto triangle = objectOf(L"ZYNVue.ZYNGLTriangle");
  ASSERT_EQ(this->host->Add(triangle.Get(), 0), S_OK);
  ASSERT_EQ(this->host->AddSelection(triangle.Get()), S_OK);
  put(this->view(), L"RedessinAuto", short{1});
  ASSERT_EQ(this->host->Remove(triangle.Get()), S_OK);
  EXPECT_TRUE(this->asksForPaint());
  this->show();
  call(triangle, L"setColor", {1.0, 0.0, 0.0, 1.0});
  EXPECT_FALSE(this->asksForPaint());
}

using SelfRedrawing3D = SelfRedrawing<View3DHost>;

TEST_F(SelfRedrawing3D, FollowsTheView) {
  const auto triangle = objectOf(L"ZYNVue.ZYNGLTriangle");
  this->expectRepaintAfter(
      view(), {{"setBackground",
                [](const auto& o) {
                  call(o, L"setBackground", {0.5f, 0.5f, 0.5f});
                }},
               {"GradientBackground", [](const auto& o) { put(o, L"GradientBackground", false); }},
               {"setGradientColor",
                [](const auto& o) {
                  call(o, L"setGradientColor", {0.5f, 0.5f, 0.5f});
                }},
               {"DrawCoordSys", [](const auto& o) { put(o, L"DrawCoordSys", true); }},
               {"DrawLights", [](const auto& o) { put(o, L"DrawLights", 1L); }},
               {"Add",
                [&](const auto& o) {
                  call(o, L"Add", {triangle.Get(), 0L});
                }},
               {"Remove", [&](const auto& o) { call(o, L"Remove", {triangle.Get()}); }}});
}

using SelfRedrawing2D = SelfRedrawing<View2DHost>;

TEST_F(SelfRedrawing2D, FollowsTheView) {
  this->expectRepaintAfter(
      view(), {{"setBackground",
                [](const auto& o) {
                  call(o, L"setBackground", {0.5f, 0.5f, 0.5f});
                }},
               {"setGrille",
                [](const auto& o) {
                  call(o, L"setGrille", {1.0, 2.0});
                }},
               {"setGrilleColor",
                [](const auto& o) {
                  call(o, L"setGrilleColor", {0.5f, 0.5f, 0.5f});
                }},
               {"GrilleVisible", [](const auto& o) { put(o, L"GrilleVisible", true); }},
               {"ViewRect", [](const auto& o) {
                  call(o, L"ViewRect", {0.0, 1.0, 0.0, 1.0});
                }}});
}

}  // namespace
}  // namespace zyn::test
