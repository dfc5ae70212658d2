#include "core/NumericArray.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace zyn {
namespace {

TEST(NumericArrayTest, FormsOfArgument) {
  EXPECT_EQ(numericForm(8197), NumericForm::kDoubles);              // VT_ARRAY | VT_R8
  EXPECT_EQ(numericForm(24581), NumericForm::kDoublesByReference);  // VT_ARRAY | VT_R8 | VT_BYREF
  EXPECT_EQ(numericForm(8204), NumericForm::kVariants);             // VT_ARRAY | VT_VARIANT
  EXPECT_EQ(numericForm(16396), NumericForm::kVariantByReference);  // VT_VARIANT | VT_BYREF
}

TEST(NumericArrayTest, FormsBehindAReference) {
  EXPECT_EQ(referencedNumericForm(8197), NumericForm::kDoubles);
  EXPECT_EQ(referencedNumericForm(8204), NumericForm::kVariants);
  EXPECT_EQ(referencedNumericForm(24581), NumericForm::kNone);
  EXPECT_EQ(referencedNumericForm(16396), NumericForm::kNone);
}

TEST(NumericArrayTest, EveryOtherTypeIsNoArray) {
  int forms = 0;
  int referencedForms = 0;
  for (int type = 0; type <= std::numeric_limits<std::uint16_t>::max(); ++type) {
    forms += numericForm(static_cast<std::uint16_t>(type)) != NumericForm::kNone;
    referencedForms +=
        referencedNumericForm(static_cast<std::uint16_t>(type)) != NumericForm::kNone;
  }
  EXPECT_EQ(forms, 4);
  EXPECT_EQ(referencedForms, 2);
  EXPECT_EQ(numericForm(0x2000 | 0x4000 | 12),
            NumericForm::kNone);  // array of VARIANTs by reference
}

TEST(NumericArrayTest, DoublesAreTakenAsTheyAre) {
  const NumericArray read = readDoubles(1, std::vector<double>{1.5, -2.0, 1e300});
  EXPECT_EQ(read.values, (std::vector<double>{1.5, -2.0, 1e300}));
  EXPECT_EQ(read.count, 3);
}

TEST(NumericArrayTest, AnEmptyArrayHasNoValues) {
  EXPECT_EQ(readDoubles(1, {}).count, 0);
  EXPECT_EQ(readElements(1, {}).count, 0);
}

TEST(NumericArrayTest, SeveralDimensionsAreRefused) {
  for (const std::uint32_t dimensions : {2U, 3U, 60U}) {
    const NumericArray doubles = readDoubles(dimensions, std::vector<double>{1, 2});
    EXPECT_EQ(doubles.count, -3);
    EXPECT_TRUE(doubles.values.empty());
    const NumericArray elements = readElements(dimensions, std::vector<NumericElement>{1.0, 2.0});
    EXPECT_EQ(elements.count, -3);
    EXPECT_TRUE(elements.values.empty());
  }
}

TEST(NumericArrayTest, ElementsAreWidened) {
  const std::vector<NumericElement> elements{0.25, std::int32_t{-2147483647 - 1},
                                             std::int16_t{-32768}, std::int32_t{2147483647}};
  const NumericArray read = readElements(1, elements);
  EXPECT_EQ(read.values, (std::vector<double>{0.25, -2147483648.0, -32768.0, 2147483647.0}));
  EXPECT_EQ(read.count, 4);
}

TEST(NumericArrayTest, OneElementThatIsNoNumberSpoilsTheArray) {
  const NumericElement text = std::monostate();
  for (const auto& elements :
       {std::vector<NumericElement>{text, 1.0}, std::vector<NumericElement>{1.0, text},
        std::vector<NumericElement>{text}}) {
    const NumericArray read = readElements(1, elements);
    EXPECT_EQ(read.count, 0);
    EXPECT_TRUE(read.values.empty());
  }
}

}  // namespace
}  // namespace zyn
