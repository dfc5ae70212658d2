// The light properties of the 3D bitmap context, and what they do to a lit triangle.
#include <cmath>

#include "support/ForeignObject_win.h"
#include "support/GlCanvas_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

using Values = std::vector<double>;

struct LightProperty {
  const wchar_t* name;
  HRESULT (STDMETHODCALLTYPE IZYN3DGLBitmapContext::*get)(VARIANT*);
  HRESULT (STDMETHODCALLTYPE IZYN3DGLBitmapContext::*put)(VARIANT);
  Values defaults;
};

const LightProperty kAmbient = {L"AmbientLightProperty",
                                &IZYN3DGLBitmapContext::get_AmbientLightProperty,
                                &IZYN3DGLBitmapContext::put_AmbientLightProperty,
                                {1, 1, 1, 1, 0.7}};
const LightProperty kLight1 = {L"DirectionLight1Property",
                               &IZYN3DGLBitmapContext::get_DirectionLight1Property,
                               &IZYN3DGLBitmapContext::put_DirectionLight1Property,
                               {1, 1, 1, 1, 0.2, 0.45, 0.69, 0, 0}};
const LightProperty kLight2 = {L"DirectionLight2Property",
                               &IZYN3DGLBitmapContext::get_DirectionLight2Property,
                               &IZYN3DGLBitmapContext::put_DirectionLight2Property,
                               {0, 1, 1, 1, 0.2, 0.45, 0.69, 0, 0}};

/// Each value as the library stores it: in single precision.
Values asFloats(const Values& values) {
  Values narrowed;
  for (double value : values) narrowed.push_back(static_cast<float>(value));
  return narrowed;
}

// --- the values ----------------------------------------------------------------------------------

class LightPropertyTest : public HostTest, public testing::WithParamInterface<LightProperty> {
 protected:
  Values get(const LightProperty& property) const {
    _variant_t value;
    EXPECT_EQ((context_.Get()->*property.get)(&value), S_OK);
    return doublesIn(value);
  }
  Values get() const { return get(GetParam()); }
  void put(const VARIANT& value) const {
    EXPECT_EQ((context_.Get()->*GetParam().put)(value), S_OK);
  }
  size_t count() const { return GetParam().defaults.size(); }
  /// Values that differ from the defaults and from each other; exact in single precision.
  Values ramp(size_t size) const {
    Values values(size);
    for (size_t i = 0; i < size; ++i) values[i] = 0.125 * (static_cast<double>(i) + 1);
    return values;
  }
  ComPtr<IZYN3DGLBitmapContext> context_ = createObject<IZYN3DGLBitmapContext>(kContextProgId);
};

TEST_P(LightPropertyTest, HasItsDefaults) { EXPECT_EQ(get(), asFloats(GetParam().defaults)); }

TEST_P(LightPropertyTest, KeepsWhatIsPutInSinglePrecision) {
  put(doubleArray(ramp(count())));
  EXPECT_EQ(get(), ramp(count()));
  Values odd(count(), 0.1);
  odd[0] = -3;
  odd[1] = 1e30;
  put(doubleArray(odd));
  EXPECT_EQ(get(), asFloats(odd));
}

TEST_P(LightPropertyTest, LeavesTheOtherLights) {
  put(doubleArray(ramp(count())));
  for (const LightProperty& other : {kAmbient, kLight1, kLight2}) {
    if (other.put == GetParam().put) continue;
    EXPECT_EQ(get(other), asFloats(other.defaults));
  }
}

TEST_P(LightPropertyTest, ReadsEveryNumericForm) {
  const Values expected = ramp(count());
  _variant_t doubles = doubleArray(expected);
  std::vector<_variant_t> items;
  for (double value : expected) items.emplace_back(value);
  _variant_t variants = variantArray(items);
  const _variant_t forms[] = {doubles, arrayReference(doubles), variants,
                              variantReference(&doubles), variantReference(&variants)};
  for (const _variant_t& form : forms) {
    put(doubleArray(Values(count(), 0)));
    put(form);
    EXPECT_EQ(get(), expected) << V_VT(&form);
  }
}

TEST_P(LightPropertyTest, WidensIntegersInAVariantArray) {
  std::vector<_variant_t> items(count(), _variant_t(2L));
  items[1] = _variant_t(short{-3});
  items[2] = _variant_t(0.5);
  Values expected(count(), 2);
  expected[1] = -3;
  expected[2] = 0.5;
  put(variantArray(items));
  EXPECT_EQ(get(), expected);
}

TEST_P(LightPropertyTest, IgnoresAnyOtherCount) {
  for (size_t size : {size_t{0}, size_t{1}, size_t{4}, count() - 1, count() + 1, size_t{10},
                      size_t{23}, 14 - count()}) {
    if (size == count()) continue;
    put(doubleArray(ramp(size)));
    EXPECT_EQ(get(), asFloats(GetParam().defaults)) << size;
  }
}

TEST_P(LightPropertyTest, IgnoresWhatItCannotRead) {
  std::vector<_variant_t> withText(count(), _variant_t(0.5));
  withText.back() = L"0.5";
  std::vector<_variant_t> withFloat(count(), _variant_t(0.5));
  withFloat.front() = 0.5f;
  std::vector<_variant_t> withFlag(count(), _variant_t(0.5));
  withFlag.front() = true;
  _variant_t number = 1.0;
  _variant_t inner = doubleArray(ramp(count()));
  _variant_t once = variantReference(&inner);
  const _variant_t forms[] = {_variant_t(),
                              number,
                              variantArray(withText),
                              variantArray(withFloat),
                              variantArray(withFlag),
                              doubleTable(static_cast<ULONG>(count()), 1),
                              doubleTable(1, static_cast<ULONG>(count())),
                              numberArray(VT_I4, ramp(count())),
                              numberArray(VT_R4, ramp(count())),
                              variantReference(&number),
                              variantReference(&once),
                              variantReference(nullptr),
                              nullArray(VT_R8),
                              nullArray(VT_VARIANT)};
  for (const _variant_t& form : forms) {
    put(form);
    EXPECT_EQ(get(), asFloats(GetParam().defaults)) << V_VT(&form);
  }
}

TEST_P(LightPropertyTest, WorksByName) {
  std::vector<_variant_t> items(count(), _variant_t(1L));
  ASSERT_EQ(putProperty(context_.Get(), GetParam().name, variantArray(items)).code(), S_OK);
  const auto got = getProperty(context_.Get(), GetParam().name);
  ASSERT_EQ(got.code(), S_OK);
  EXPECT_EQ(doublesIn(got.value), Values(count(), 1));
}

INSTANTIATE_TEST_SUITE_P(All, LightPropertyTest, testing::Values(kAmbient, kLight1, kLight2),
                         [](const auto& chosen) {
                           const std::wstring name = chosen.param.name;
                           return std::string(name.begin(), name.end());
                         });

// --- the light -----------------------------------------------------------------------------------

constexpr int kSize = 24;

Vec eyeDirection(double azimuth, double elevation) {
  return {std::cos(elevation) * std::sin(azimuth), std::sin(elevation),
          std::cos(elevation) * std::cos(azimuth)};
}

/// What the three properties mean to OpenGL.
LightModel modelOf(const Values& ambient, const Values& first, const Values& second) {
  LightModel model;
  if (ambient[0] != 0) model.globalAmbient = ambient[4] * Vec{ambient[1], ambient[2], ambient[3]};
  for (const Values& v : {first, second}) {
    if (v[0] == 0) continue;
    const Vec colour = {v[1], v[2], v[3]};
    model.lights.push_back({eyeDirection(v[7], v[8]), v[4] * colour, v[5] * colour, v[6] * colour});
  }
  return model;
}

struct Lights {
  Values ambient;
  Values first;
  Values second;
};

class LightingTest : public HostTest {
 protected:
  LightingTest() {
    const Vec c = {0.5, 0.3, 0.2};
    for (auto& triangle : triangles_) {
      triangle->setMaterial(c.x, c.y, c.z, 1, 0.4, 0.8, 0.5, 0.05, 0.1);
    }
    material_ = {0.4 * c, 0.8 * c, {0.5, 0.5, 0.5}, 0.1 * c, 6.4};
    scene_.addAll(triangles_);
  }
  void put(const Lights& lights) {
    scene_->put_AmbientLightProperty(doubleArray(lights.ambient));
    scene_->put_DirectionLight1Property(doubleArray(lights.first));
    scene_->put_DirectionLight2Property(doubleArray(lights.second));
  }
  Rgb centre() { return scene_.render().at(kSize / 2, kSize / 2); }
  /// The centre pixel against the lighting equation; eyeNormal is the normal as the eye sees it.
  void expectLit(const Lights& lights, const Vec& eyeNormal) {
    const Rgb expected = toRgb(
        litColour(modelOf(lights.ambient, lights.first, lights.second), material_, eyeNormal));
    const Rgb seen = centre();
    EXPECT_LE(difference(seen, expected), 1) << seen << " instead of " << expected;
  }

  OffscreenScene scene_{kSize, kSize};
  std::array<ComPtr<IZYNGLTriangle>, 2> triangles_ = makeRectangle(0, 1, 0, 1, 0, kWhite);
  SurfaceMaterial material_;
};

const Lights kDefaults = {kAmbient.defaults, kLight1.defaults, kLight2.defaults};
const Values kOffAmbient = {0, 1, 1, 1, 1};
const Values kOffLight = {0, 1, 1, 1, 1, 1, 1, 0, 0};

TEST_F(LightingTest, DefaultsLightTheScene) { expectLit(kDefaults, {0, 0, 1}); }

TEST_F(LightingTest, DefaultsFollowTheNormal) {
  for (auto& triangle : triangles_) setNormals(triangle.Get(), {0.6, 0, 0.8});
  expectLit(kDefaults, {0.6, 0, 0.8});
}

TEST_F(LightingTest, EachPartLightsByItself) {
  const Lights cases[] = {
      {kOffAmbient, kOffLight, kOffLight},
      {{1, 1, 0.5, 0.25, 0.8}, kOffLight, kOffLight},
      {kOffAmbient, {1, 1, 0.5, 0.25, 0.3, 0.6, 0.2, 0, 0}, kOffLight},
      {kOffAmbient, kOffLight, {1, 0.25, 0.5, 1, 0.3, 0.6, 0.2, 0, 0}},
      {{1, 0.2, 0.2, 0.2, 1},
       {1, 1, 0, 0, 0.1, 0.4, 0.2, 0.5, 0.3},
       {1, 0, 0, 1, 0, 0.9, 0.3, -0.9, -0.4}},
  };
  for (const Lights& lights : cases) {
    put(lights);
    expectLit(lights, {0, 0, 1});
  }
}

TEST_F(LightingTest, AnySwitchButZeroIsOn) {
  const Lights lights = {
      {2, 1, 1, 1, 0.3}, {-0.5, 1, 1, 1, 0.1, 0.4, 0.1, 0, 0}, {7, 0, 1, 0, 0.1, 0.3, 0.1, 0, 0}};
  put(lights);
  expectLit(lights, {0, 0, 1});
}

TEST_F(LightingTest, AzimuthTurnsTowardsTheRightElevationUpwards) {
  const Vec toTheRight = {0.8, 0, 0.6};
  for (auto& triangle : triangles_) setNormals(triangle.Get(), toTheRight);
  const Lights fromTheRight = {kOffAmbient, {1, 1, 1, 1, 0, 0.9, 0, 0.9, 0}, kOffLight};
  put(fromTheRight);
  const Rgb bright = centre();
  expectLit(fromTheRight, toTheRight);
  const Lights fromTheLeft = {kOffAmbient, {1, 1, 1, 1, 0, 0.9, 0, -0.9, 0}, kOffLight};
  put(fromTheLeft);
  expectLit(fromTheLeft, toTheRight);
  EXPECT_GT(bright.r, centre().r + 40);

  const Vec upwards = {0, 0.8, 0.6};
  for (auto& triangle : triangles_) setNormals(triangle.Get(), upwards);
  const Lights fromAbove = {kOffAmbient, kOffLight, {1, 1, 1, 1, 0, 0.9, 0, 0, 0.9}};
  put(fromAbove);
  expectLit(fromAbove, upwards);
  EXPECT_GT(centre().r, 60);
}

TEST_F(LightingTest, LightsTurnWithTheEye) {
  const Lights lights = {{1, 1, 1, 1, 0.1}, {1, 1, 1, 1, 0.1, 0.6, 0.3, 0.7, 0.4}, kOffLight};
  put(lights);
  scene_->RemoveAll();
  // A square in the plane x = 0, facing +X, seen from +X with +Z up: +Y is to the right.
  const Vec a = {0, 0, 0};
  const Vec b = {0, 1, 0};
  const Vec c = {0, 1, 1};
  const Vec d = {0, 0, 1};
  triangles_ = {makeTriangle(a, b, c), makeTriangle(a, c, d)};
  for (auto& triangle : triangles_) {
    triangle->setMaterial(0.5, 0.3, 0.2, 1, 0.4, 0.8, 0.5, 0.05, 0.1);
    setNormals(triangle.Get(), {0.6, 0.8, 0});
  }
  scene_.addAll(triangles_);
  scene_.look({{-1, 0, 0}, {0, 0, 1}}, 0);
  expectLit(lights, {0.8, 0, 0.6});
}

TEST_F(LightingTest, PuttingALightNeedsNoNewSurface) {
  const Rgb before = centre();
  scene_->put_AmbientLightProperty(doubleArray({1, 1, 0, 0, 1}));
  EXPECT_NE(centre(), before);
}

TEST_F(LightingTest, DrawnObjectsFindTheLightsSetAsStated) {
  const Values first = {1, 0.5, 0.25, 1, 0.2, 0.4, 0.8, 0.3, -0.2};
  put({{1, 0.5, 0.25, 1, 0.5}, first, kOffLight});
  auto probe = makeForeign<ForeignObject>();
  GLfloat global[4] = {};
  GLfloat position[4] = {};
  GLfloat ambient[4] = {};
  GLfloat diffuse[4] = {};
  GLfloat specular[4] = {};
  bool enabled[3] = {};
  probe->onDraw3D = [&](int) {
    glGetFloatv(GL_LIGHT_MODEL_AMBIENT, global);
    glGetLightfv(GL_LIGHT0, GL_POSITION, position);
    glGetLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
    glGetLightfv(GL_LIGHT0, GL_DIFFUSE, diffuse);
    glGetLightfv(GL_LIGHT0, GL_SPECULAR, specular);
    enabled[0] = glIsEnabled(GL_LIGHTING);
    enabled[1] = glIsEnabled(GL_LIGHT0);
    enabled[2] = glIsEnabled(GL_LIGHT1);
    return S_OK;
  };
  scene_.add(probe->dispatch());
  scene_.render();
  const Vec towards = eyeDirection(0.3, -0.2);
  const double expectedPosition[4] = {towards.x, towards.y, towards.z, 0};
  const double colour[4] = {0.5, 0.25, 1, 1};
  for (int i = 0; i < 4; ++i) {
    const double alpha = i == 3 ? 1.0 : 0.0;
    EXPECT_NEAR(global[i], i == 3 ? 1.0 : 0.5 * colour[i], 1e-6);
    EXPECT_NEAR(position[i], expectedPosition[i], 1e-6);
    EXPECT_NEAR(ambient[i], alpha + (1 - alpha) * 0.2 * colour[i], 1e-6);
    EXPECT_NEAR(diffuse[i], alpha + (1 - alpha) * 0.4 * colour[i], 1e-6);
    EXPECT_NEAR(specular[i], alpha + (1 - alpha) * 0.8 * colour[i], 1e-6);
  }
  EXPECT_TRUE(enabled[0]);
  EXPECT_TRUE(enabled[1]);
  EXPECT_FALSE(enabled[2]);
}

}  // namespace
}  // namespace zyn::test
