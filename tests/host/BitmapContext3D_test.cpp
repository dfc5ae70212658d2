// The members of the 3D bitmap context that hold values: by vtable and by name.
#include "support/ArrayVariant_win.h"
#include "support/ImageDecoder_win.h"
#include "support/LateBinding_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

class BitmapContext3DTest : public HostTest {
 protected:
  ComPtr<IZYN3DGLBitmapContext> context_ = createObject<IZYN3DGLBitmapContext>(kContextProgId);
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
}

TEST_F(BitmapContext3DTest, ReportsErrorInformation) {
  auto support = queryFor<ISupportErrorInfo>(context_.Get());
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IZYN3DGLBitmapContext)), S_OK);
}

TEST_F(BitmapContext3DTest, NullOutputsDoNoHarm) {
  IZYN3DGLBitmapContext* context = context_.Get();
  for (HRESULT answer :
       {context->get_AmbientLightProperty(nullptr), context->get_LineAntialiasing(nullptr)}) {
    EXPECT_TRUE(answer == S_OK || answer == E_POINTER) << answer;
  }
}

// --- the temporary name --------------------------------------------------------------------------

TEST_F(BitmapContext3DTest, TemporaryFileIsNeitherMadeNorTouched) {
  const TempFolder folder;
  const auto target = [&](const wchar_t* name) { return bstr(folder.file(name)); };
  long made = 0;
  context_->CreateContext(20, 20, &made);
  for (bool exists : {false, true}) {
    const auto spare = folder.file(L"spare");
    if (exists) writeFile(spare, "mine");
    context_->CreatePNG(bstr(spare), target(L"a.png"));
    context_->CreateGIF(bstr(spare), target(L"a.gif"));
    context_->CreateJPG(bstr(spare), target(L"a.jpg"), 90);
    EXPECT_EQ(std::filesystem::exists(spare), exists);
    EXPECT_EQ(decodeImageFile(folder.file(L"a.png")).format, L"png");
    if (!exists) continue;
    EXPECT_EQ(readFile(spare), (Bytes{'m', 'i', 'n', 'e'}));
  }
}

TEST_F(BitmapContext3DTest, TemporaryNameMayBeMissing) {
  const TempFolder folder;
  long made = 0;
  context_->CreateContext(20, 20, &made);
  context_->CreatePNG(nullptr, bstr(folder.file(L"a.png")));
  context_->CreateGIF(_bstr_t(L""), bstr(folder.file(L"a.gif")));
  context_->CreateJPG(nullptr, bstr(folder.file(L"a.jpg")), 90);
  EXPECT_EQ(decodeImageFile(folder.file(L"a.png")).format, L"png");
  EXPECT_EQ(decodeImageFile(folder.file(L"a.gif")).format, L"gif");
  EXPECT_EQ(decodeImageFile(folder.file(L"a.jpg")).format, L"jpeg");
}

}  // namespace
}  // namespace zyn::test
