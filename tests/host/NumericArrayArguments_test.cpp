// Unusual arrays as arguments: lower bounds, locks, references, elements of a wrong size.
#include <memory>

#include "support/ArrayVariant_win.h"

namespace zyn::test {
namespace {

struct DestroyArray {
  void operator()(SAFEARRAY* array) const { SafeArrayDestroy(array); }
};
using OwnedArray = std::unique_ptr<SAFEARRAY, DestroyArray>;

/// The array (0.25, 0.5, 0.75, 1) with this lower bound.
OwnedArray colourFrom(LONG lowerBound) {
  SAFEARRAYBOUND bound{4, lowerBound};
  OwnedArray array(SafeArrayCreate(VT_R8, 1, &bound));
  for (LONG i = 0; i < 4; ++i) {
    LONG index = lowerBound + i;
    double value = 0.25 * (i + 1);
    require(SafeArrayPutElement(array.get(), &index, &value), "SafeArrayPutElement");
  }
  return array;
}

/// A VARIANT that borrows the array.
VARIANT borrowing(VARTYPE type, SAFEARRAY* array) {
  VARIANT value;
  VariantInit(&value);
  V_VT(&value) = type;
  V_ARRAY(&value) = array;
  return value;
}

class NumericArrayArgumentsTest : public HostTest {
 protected:
  /// Whether the argument was read as the colour (0.25, 0.5, 0.75, 1).
  bool isRead(const VARIANT& argument) {
    const std::vector<double> before{0, 0, 0, 0};
    EXPECT_EQ(context_->put_BackColor(doubleArray(before)), S_OK);
    EXPECT_EQ(context_->put_BackColor(argument), S_OK);
    _variant_t value;
    EXPECT_EQ(context_->get_BackColor(&value), S_OK);
    const std::vector<double> after = doublesIn(value);
    EXPECT_TRUE(after == before || after == (std::vector<double>{0.25, 0.5, 0.75, 1}));
    return after != before;
  }

  ComPtr<IZYN3DGLBitmapContext> context_ = createObject<IZYN3DGLBitmapContext>(kContextProgId);
};

TEST_F(NumericArrayArgumentsTest, ElementsAreReadFromTheFirstWhateverTheLowerBound) {
  for (const LONG lowerBound : {0L, 1L, -3L, 100000L}) {
    const OwnedArray array = colourFrom(lowerBound);
    EXPECT_TRUE(isRead(borrowing(VT_ARRAY | VT_R8, array.get()))) << lowerBound;
  }
}

TEST_F(NumericArrayArgumentsTest, ALockedArrayIsReadAndStaysAsLocked) {
  const OwnedArray array = colourFrom(0);
  SafeArrayLock(array.get());
  SafeArrayLock(array.get());
  EXPECT_TRUE(isRead(borrowing(VT_ARRAY | VT_R8, array.get())));
  EXPECT_EQ(array->cLocks, 2u);
  SafeArrayUnlock(array.get());
  SafeArrayUnlock(array.get());
}

TEST_F(NumericArrayArgumentsTest, ElementsOfAnotherSizeAreNotRead) {
  SAFEARRAYBOUND bound{4, 0};
  const OwnedArray integers(SafeArrayCreate(VT_I4, 1, &bound));
  EXPECT_FALSE(isRead(borrowing(VT_ARRAY | VT_R8, integers.get())));
  EXPECT_FALSE(isRead(borrowing(VT_ARRAY | VT_VARIANT, integers.get())));
}

TEST_F(NumericArrayArgumentsTest, ReferencesAreFollowedOnce) {
  const OwnedArray owner = colourFrom(0);
  SAFEARRAY* array = owner.get();
  VARIANT direct = borrowing(VT_ARRAY | VT_R8, array);
  VARIANT byReference = borrowing(VT_ARRAY | VT_R8 | VT_BYREF, nullptr);
  V_ARRAYREF(&byReference) = &array;
  EXPECT_TRUE(isRead(byReference));
  EXPECT_TRUE(isRead(variantReference(&direct)));
  EXPECT_FALSE(isRead(variantReference(&byReference)));
  array = nullptr;
  EXPECT_FALSE(isRead(byReference));
  V_ARRAYREF(&byReference) = nullptr;
  EXPECT_FALSE(isRead(byReference));
}

TEST_F(NumericArrayArgumentsTest, AnArrayOfVariantsByReferenceIsNotRead) {
  const _variant_t values = variantArray({0.25, 0.5, 0.75, 1L});
  EXPECT_TRUE(isRead(values));
  SAFEARRAY* array = V_ARRAY(&values);
  VARIANT byReference = borrowing(VT_ARRAY | VT_VARIANT | VT_BYREF, nullptr);
  V_ARRAYREF(&byReference) = &array;
  EXPECT_FALSE(isRead(byReference));
}

}  // namespace
}  // namespace zyn::test
