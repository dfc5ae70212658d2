// The members of the 3D bitmap context that hold values: by vtable and by name.
#include "support/ArrayVariant_win.h"
#include "support/LateBinding_win.h"

namespace zyn::test {
namespace {

class BitmapContext3DTest : public HostTest {
 protected:
  ComPtr<IZYN3DGLBitmapContext> context_ = createObject<IZYN3DGLBitmapContext>(kContextProgId);

  std::vector<double> backColor() const {
    _variant_t value;
    EXPECT_EQ(context_->get_BackColor(&value), S_OK);
    return doublesIn(value);
  }
};

TEST_F(BitmapContext3DTest, ProgIdHasALowerCaseD) {
  LPOLESTR progId = nullptr;
  ASSERT_EQ(ProgIDFromCLSID(classOf(kContextProgId), &progId), S_OK);
  EXPECT_STREQ(progId, L"ZYNVue.ZYN3dGLBitmapContext.1");
  CoTaskMemFree(progId);
}

// --- switches ------------------------------------------------------------------------------------

struct Switch {
  const wchar_t* name;
  HRESULT (STDMETHODCALLTYPE IZYN3DGLBitmapContext::*get)(VARIANT_BOOL*);
  HRESULT (STDMETHODCALLTYPE IZYN3DGLBitmapContext::*put)(VARIANT_BOOL);
};

const Switch kSwitches[] = {
    {L"LineAntialiasing", &IZYN3DGLBitmapContext::get_LineAntialiasing,
     &IZYN3DGLBitmapContext::put_LineAntialiasing},
    {L"PointAntialiasing", &IZYN3DGLBitmapContext::get_PointAntialiasing,
     &IZYN3DGLBitmapContext::put_PointAntialiasing},
    {L"MultiSampleAntialiasing", &IZYN3DGLBitmapContext::get_MultiSampleAntialiasing,
     &IZYN3DGLBitmapContext::put_MultiSampleAntialiasing},
    {L"GradientBackground", &IZYN3DGLBitmapContext::get_GradientBackground,
     &IZYN3DGLBitmapContext::put_GradientBackground},
};

class BitmapContext3DSwitchTest : public BitmapContext3DTest,
                                  public testing::WithParamInterface<Switch> {
 protected:
  VARIANT_BOOL get() const {
    VARIANT_BOOL value = 99;
    EXPECT_EQ((context_.Get()->*GetParam().get)(&value), S_OK);
    return value;
  }
  void put(VARIANT_BOOL value) const { EXPECT_EQ((context_.Get()->*GetParam().put)(value), S_OK); }
};

TEST_P(BitmapContext3DSwitchTest, IsOffAtFirst) { EXPECT_EQ(get(), VARIANT_FALSE); }

TEST_P(BitmapContext3DSwitchTest, OnlyVariantTrueSwitchesOn) {
  put(VARIANT_TRUE);
  EXPECT_EQ(get(), VARIANT_TRUE);
  for (int other : {0, 1, 2, -2, 255, 32767, -32768}) {
    put(VARIANT_TRUE);
    put(static_cast<VARIANT_BOOL>(other));
    EXPECT_EQ(get(), VARIANT_FALSE) << other;
  }
}

TEST_P(BitmapContext3DSwitchTest, WorksByName) {
  ASSERT_EQ(putProperty(context_.Get(), GetParam().name, true).code(), S_OK);
  const auto on = getProperty(context_.Get(), GetParam().name);
  ASSERT_EQ(on.code(), S_OK);
  ASSERT_EQ(V_VT(&on.value), VT_BOOL);
  EXPECT_EQ(V_BOOL(&on.value), VARIANT_TRUE);
  ASSERT_EQ(putProperty(context_.Get(), GetParam().name, false).code(), S_OK);
  EXPECT_EQ(get(), VARIANT_FALSE);
}

TEST_P(BitmapContext3DSwitchTest, IsIndependentOfTheOthers) {
  put(VARIANT_TRUE);
  for (const Switch& other : kSwitches) {
    VARIANT_BOOL value = 99;
    (context_.Get()->*other.get)(&value);
    EXPECT_EQ(value, other.get == GetParam().get ? VARIANT_TRUE : VARIANT_FALSE);
  }
}

INSTANTIATE_TEST_SUITE_P(All, BitmapContext3DSwitchTest, testing::ValuesIn(kSwitches),
                         [](const auto& chosen) {
                           const std::wstring name = chosen.param.name;
                           return std::string(name.begin(), name.end());
                         });

// --- background colour ---------------------------------------------------------------------------

TEST_F(BitmapContext3DTest, BackColorIsFourDoubles) { EXPECT_EQ(backColor().size(), 4u); }

TEST_F(BitmapContext3DTest, BackColorOfThreeValuesHasAlphaZero) {
  EXPECT_EQ(context_->put_BackColor(doubleArray({1, 1, 1, 1})), S_OK);
  EXPECT_EQ(context_->put_BackColor(doubleArray({0.2, 0.4, 0.6})), S_OK);
  const std::vector<double> colour = backColor();
  ASSERT_EQ(colour.size(), 4u);
  EXPECT_FLOAT_EQ(static_cast<float>(colour[0]), 0.2f);
  EXPECT_FLOAT_EQ(static_cast<float>(colour[1]), 0.4f);
  EXPECT_FLOAT_EQ(static_cast<float>(colour[2]), 0.6f);
  EXPECT_EQ(colour[3], 0.0);
}

TEST_F(BitmapContext3DTest, BackColorOfFourValuesIsTakenWhole) {
  EXPECT_EQ(context_->put_BackColor(doubleArray({0.25, 0.5, 0.75, 0.125})), S_OK);
  EXPECT_EQ(backColor(), (std::vector<double>{0.25, 0.5, 0.75, 0.125}));
}

TEST_F(BitmapContext3DTest, BackColorOfAnyOtherCountIsIgnored) {
  context_->put_BackColor(doubleArray({0.25, 0.5, 0.75, 1}));
  const std::vector<double> before = backColor();
  for (size_t count : {0u, 1u, 2u, 5u, 16u}) {
    EXPECT_EQ(context_->put_BackColor(doubleArray(std::vector<double>(count, 0.9))), S_OK);
    EXPECT_EQ(backColor(), before) << count;
  }
}

TEST_F(BitmapContext3DTest, BackColorReadsEveryNumericForm) {
  const std::vector<double> red = {1, 0, 0, 1};
  const std::vector<double> black = {0, 0, 0, 0};
  _variant_t doubles = doubleArray(red);
  _variant_t variants = variantArray({1L, _variant_t(short{0}), 0.0, 1L});
  const _variant_t forms[] = {doubles, variants, arrayReference(doubles),
                              variantReference(&doubles), variantReference(&variants)};
  for (const _variant_t& form : forms) {
    context_->put_BackColor(doubleArray(black));
    EXPECT_EQ(context_->put_BackColor(form), S_OK);
    EXPECT_EQ(backColor(), red) << V_VT(&form);
  }
}

TEST_F(BitmapContext3DTest, BackColorIgnoresWhatIsNoNumericArray) {
  context_->put_BackColor(doubleArray({0.25, 0.5, 0.75, 1}));
  const std::vector<double> before = backColor();
  _variant_t text = L"red";
  _variant_t inner = variantReference(&text);
  const _variant_t forms[] = {_variant_t(),
                              _variant_t(7L),
                              text,
                              doubleTable(3, 1),
                              doubleTable(1, 4),
                              numberArray(VT_I4, {1, 1, 1}),
                              numberArray(VT_R4, {1, 1, 1, 1}),
                              variantArray({1.0, 1.0, L"1"}),
                              variantArray({1.0, 1.0, _variant_t()}),
                              variantReference(&text),
                              variantReference(&inner),
                              variantReference(nullptr),
                              nullArray(VT_R8),
                              nullArray(VT_VARIANT),
                              _variant_t(static_cast<IUnknown*>(context_.Get()))};
  for (const _variant_t& form : forms) {
    EXPECT_EQ(context_->put_BackColor(form), S_OK);
    EXPECT_EQ(backColor(), before) << V_VT(&form);
  }
}

TEST_F(BitmapContext3DTest, BackColorByName) {
  ASSERT_EQ(putProperty(context_.Get(), L"BackColor", variantArray({0.5, 1L, 0.25})).code(), S_OK);
  const auto got = getProperty(context_.Get(), L"BackColor");
  ASSERT_EQ(got.code(), S_OK);
  EXPECT_EQ(doublesIn(got.value), (std::vector<double>{0.5, 1, 0.25, 0}));
}

TEST_F(BitmapContext3DTest, EachGetGivesAnArrayOfItsOwn) {
  context_->put_BackColor(doubleArray({0.25, 0.5, 0.75, 1}));
  _variant_t value;
  context_->get_BackColor(&value);
  LONG first = 0;
  double changed = 9;
  SafeArrayPutElement(V_ARRAY(&value), &first, &changed);
  EXPECT_EQ(backColor()[0], 0.25);
}

// --- resolution ----------------------------------------------------------------------------------

TEST_F(BitmapContext3DTest, ResolutionIsStoredAsGiven) {
  for (double put : {300.0, 72.5, 1e-3, 1e6}) {
    double got = 0;
    EXPECT_EQ(context_->put_DPIResolution(put), S_OK);
    EXPECT_EQ(context_->get_DPIResolution(&got), S_OK);
    EXPECT_EQ(got, put);
  }
  ASSERT_EQ(putProperty(context_.Get(), L"DPIResolution", 600L).code(), S_OK);
  const auto got = getProperty(context_.Get(), L"DPIResolution");
  ASSERT_EQ(V_VT(&got.value), VT_R8);
  EXPECT_EQ(V_R8(&got.value), 600);
}

// --- names and numbers ---------------------------------------------------------------------------

TEST_F(BitmapContext3DTest, MembersHaveTheirPublishedNumbers) {
  const struct {
    const wchar_t* name;
    DISPID id;
  } members[] = {{L"Add", 1},
                 {L"CreateBitmap", 2},
                 {L"CreateContext", 3},
                 {L"CreateJPG", 4},
                 {L"ViewParams", 5},
                 {L"CreateGIF", 6},
                 {L"CreatePNG", 7},
                 {L"GetPictureDisp", 8},
                 {L"LineAntialiasing", 9},
                 {L"PointAntialiasing", 10},
                 {L"MultiSampleAntialiasing", 11},
                 {L"AmbientLightProperty", 12},
                 {L"DirectionLight1Property", 13},
                 {L"DirectionLight2Property", 14},
                 {L"BackColor", 15},
                 {L"RemoveAll", 16},
                 {L"GradientBackground", 17},
                 {L"setGradientColor", 18},
                 {L"DPIResolution", 19}};
  for (const auto& [name, id] : members) EXPECT_EQ(dispidOf(context_.Get(), name), id) << name;
}

TEST_F(BitmapContext3DTest, CreateContextAnswersOneByName) {
  const auto made = callMethod(context_.Get(), L"CreateContext", {32L, 16L});
  ASSERT_EQ(made.code(), S_OK);
  ASSERT_EQ(V_VT(&made.value), VT_I4);
  EXPECT_EQ(V_I4(&made.value), 1);
}

TEST_F(BitmapContext3DTest, MethodsWorkByName) {
  EXPECT_EQ(callMethod(context_.Get(), L"setGradientColor", {0.5, 1L, 0.25}).code(), S_OK);
  EXPECT_EQ(callMethod(context_.Get(), L"RemoveAll").code(), S_OK);
  auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  EXPECT_EQ(callMethod(context_.Get(), L"Add", {triangle.Get(), 1L}).code(), S_OK);
  EXPECT_EQ(referencesOf(triangle.Get()), 2u);
  EXPECT_EQ(callMethod(context_.Get(), L"RemoveAll").code(), S_OK);
  EXPECT_EQ(referencesOf(triangle.Get()), 1u);
}

TEST_F(BitmapContext3DTest, WrongNumberOfArgumentsIsRefused) {
  EXPECT_EQ(callMethod(context_.Get(), L"RemoveAll", {1L}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(context_.Get(), L"CreateContext", {1L}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(context_.Get(), L"GetPictureDisp", {1L, 2L}).code(), DISP_E_BADPARAMCOUNT);
}

TEST_F(BitmapContext3DTest, ReportsErrorInformation) {
  auto support = queryFor<ISupportErrorInfo>(context_.Get());
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IZYN3DGLBitmapContext)), S_OK);
}

TEST_F(BitmapContext3DTest, NullOutputsDoNoHarm) {
  IZYN3DGLBitmapContext* context = context_.Get();
  for (HRESULT answer :
       {context->get_BackColor(nullptr), context->get_AmbientLightProperty(nullptr),
        context->get_LineAntialiasing(nullptr), context->get_DPIResolution(nullptr),
        context->GetPictureDisp(nullptr), context->CreateContext(8, 8, nullptr)}) {
    EXPECT_TRUE(answer == S_OK || answer == E_POINTER) << answer;
  }
}

}  // namespace
}  // namespace zyn::test
