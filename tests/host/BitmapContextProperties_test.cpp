// The members that hold values in both bitmap contexts: by vtable and by name.
#include "support/LateBinding_win.h"
#include "support/OffscreenContext_win.h"

namespace zyn::test {
namespace {

class PropertyTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  std::vector<double> backColor() const {
    _variant_t value;
    EXPECT_EQ(context_->get_BackColor(&value), S_OK);
    return doublesIn(value);
  }

  std::unique_ptr<OffscreenContext> context_ = GetParam().makeBare();
};

// --- background colour ---------------------------------------------------------------------------

TEST_P(PropertyTest, BackColorIsFourDoubles) { EXPECT_EQ(backColor().size(), 4u); }

TEST_P(PropertyTest, BackColorOfThreeValuesHasAlphaZero) {
  EXPECT_EQ(context_->put_BackColor(doubleArray({1, 1, 1, 1})), S_OK);
  EXPECT_EQ(context_->put_BackColor(doubleArray({0.2, 0.4, 0.6})), S_OK);
  const std::vector<double> colour = backColor();
  ASSERT_EQ(colour.size(), 4u);
  EXPECT_FLOAT_EQ(static_cast<float>(colour[0]), 0.2f);
  EXPECT_FLOAT_EQ(static_cast<float>(colour[1]), 0.4f);
  EXPECT_FLOAT_EQ(static_cast<float>(colour[2]), 0.6f);
  EXPECT_EQ(colour[3], 0.0);
}

TEST_P(PropertyTest, BackColorOfFourValuesIsTakenWhole) {
  EXPECT_EQ(context_->put_BackColor(doubleArray({0.25, 0.5, 0.75, 0.125})), S_OK);
  EXPECT_EQ(backColor(), (std::vector<double>{0.25, 0.5, 0.75, 0.125}));
}

TEST_P(PropertyTest, BackColorOfAnyOtherCountIsIgnored) {
  context_->put_BackColor(doubleArray({0.25, 0.5, 0.75, 1}));
  const std::vector<double> before = backColor();
  for (size_t count : {0u, 1u, 2u, 5u, 16u}) {
    EXPECT_EQ(context_->put_BackColor(doubleArray(std::vector<double>(count, 0.9))), S_OK);
    EXPECT_EQ(backColor(), before) << count;
  }
}

TEST_P(PropertyTest, BackColorReadsEveryNumericForm) {
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

TEST_P(PropertyTest, BackColorIgnoresWhatIsNoNumericArray) {
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
                              _variant_t(static_cast<IUnknown*>(context_->dispatch()))};
  for (const _variant_t& form : forms) {
    EXPECT_EQ(context_->put_BackColor(form), S_OK);
    EXPECT_EQ(backColor(), before) << V_VT(&form);
  }
}

TEST_P(PropertyTest, BackColorByName) {
  ASSERT_EQ(putProperty(context_->dispatch(), L"BackColor", variantArray({0.5, 1L, 0.25})).code(),
            S_OK);
  const auto got = getProperty(context_->dispatch(), L"BackColor");
  ASSERT_EQ(got.code(), S_OK);
  EXPECT_EQ(doublesIn(got.value), (std::vector<double>{0.5, 1, 0.25, 0}));
}

TEST_P(PropertyTest, EachGetGivesAnArrayOfItsOwn) {
  context_->put_BackColor(doubleArray({0.25, 0.5, 0.75, 1}));
  _variant_t value;
  context_->get_BackColor(&value);
  LONG first = 0;
  double changed = 9;
  SafeArrayPutElement(V_ARRAY(&value), &first, &changed);
  EXPECT_EQ(backColor()[0], 0.25);
}

// --- resolution ----------------------------------------------------------------------------------

TEST_P(PropertyTest, ResolutionIsStoredAsGiven) {
  for (double put : {300.0, 72.5, 1e-3, 1e6}) {
    double got = 0;
    EXPECT_EQ(context_->put_DPIResolution(put), S_OK);
    EXPECT_EQ(context_->get_DPIResolution(&got), S_OK);
    EXPECT_EQ(got, put);
  }
  ASSERT_EQ(putProperty(context_->dispatch(), L"DPIResolution", 600L).code(), S_OK);
  const auto got = getProperty(context_->dispatch(), L"DPIResolution");
  ASSERT_EQ(V_VT(&got.value), VT_R8);
  EXPECT_EQ(V_R8(&got.value), 600);
}

TEST_P(PropertyTest, ResolutionIsTheScreensAtFirst) {
  HDC screen = GetDC(nullptr);
  const double dpi = (GetDeviceCaps(screen, LOGPIXELSX) + GetDeviceCaps(screen, LOGPIXELSY)) / 2.0;
  ReleaseDC(nullptr, screen);
  double got = 0;
  context_->get_DPIResolution(&got);
  EXPECT_EQ(got, dpi);
}

// --- arguments -----------------------------------------------------------------------------------

TEST_P(PropertyTest, NullOutputsDoNoHarm) {
  for (HRESULT answer : {context_->get_BackColor(nullptr), context_->get_DPIResolution(nullptr),
                         context_->GetPictureDisp(nullptr), context_->create(8, 8, nullptr)}) {
    EXPECT_TRUE(answer == S_OK || answer == E_POINTER) << answer;
  }
}

TEST_P(PropertyTest, WrongNumberOfArgumentsIsRefused) {
  EXPECT_EQ(callMethod(context_->dispatch(), L"GetPictureDisp", {1L, 2L}).code(),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(context_->dispatch(), L"CreateBitmap").code(), DISP_E_BADPARAMCOUNT);
}

TEST_P(PropertyTest, EveryMemberWorksWithoutASurface) {
  ComPtr<IPictureDisp> picture;
  EXPECT_EQ(context_->GetPictureDisp(&picture), S_OK);
  EXPECT_FALSE(picture);
  EXPECT_EQ(context_->CreateBitmap(bstr(context_->folder().file(L"a.bmp"))), S_OK);
  EXPECT_TRUE(context_->folder().empty());
}

INSTANTIATE_TEST_SUITE_P(Both, PropertyTest, testing::ValuesIn(offscreenClasses()), nameOf);

}  // namespace
}  // namespace zyn::test
