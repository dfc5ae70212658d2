// Groups as hosts see them: what they hold, what they refuse, the numbers that they take. Every
// form of array that further members take is tried here, at Transformation and setRepere.
#include <cmath>
#include <limits>

#include "support/ArrayVariant_win.h"
#include "support/ForeignObject_win.h"
#include "support/Groups_win.h"
#include "support/LateBinding_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Whole numbers that every type of array holds.
const std::vector<double> kPlace = {2, 0, 0, 0, 0, 3, 0, 0, 1, 0, 4, 0, 5, 6, 7, 1};

class GroupeTest : public HostTest {
 protected:
  using Objects = std::vector<IDispatch*>;

  static ComPtr<IDispatch> makeObject() {
    return queryFor<IDispatch>(createObject<IZYNGLTriangle>(kTriangleProgId).Get());
  }

  Objects held() const {
    Objects objects;
    LONG count = -1;
    EXPECT_EQ(group_->get_Count(&count), S_OK);
    for (LONG i = 0; i < count; ++i) {
      ComPtr<IDispatch> object;
      EXPECT_EQ(group_->Item(i, &object), S_OK);
      objects.push_back(object.Get());
    }
    return objects;
  }
  static ComPtr<IEnumVARIANT> enumerate(IZYNGroupe* group) {
    ComPtr<IUnknown> enumerator;
    require(group->get__NewEnum(&enumerator), "_NewEnum");
    return queryFor<IEnumVARIANT>(enumerator.Get());
  }
  static Objects rest(IEnumVARIANT* enumerator) {
    Objects objects;
    for (_variant_t item; enumerator->Next(1, &item, nullptr) == S_OK; item.Clear()) {
      EXPECT_EQ(item.vt, VT_DISPATCH);
      objects.push_back(item.pdispVal);
    }
    return objects;
  }

  std::vector<double> place() const {
    _variant_t numbers;
    require(group_->get_Transformation(&numbers), "get_Transformation");
    return doublesIn(numbers);
  }
  CallResult put(const wchar_t* name, const _variant_t& value) const {
    return putProperty(group_.Get(), name, value);
  }
  void expectTaken(const _variant_t& matrix, const std::vector<double>& expected = kPlace) const {
    require(group_->put_Transformation(doubleArray({kUnmoved.begin(), kUnmoved.end()})), "put");
    EXPECT_EQ(group_->put_Transformation(matrix), S_OK);
    EXPECT_EQ(place(), expected);
  }
  /// With this text, and without a change.
  void expectRefused(const _variant_t& matrix, const std::wstring& what) const {
    const std::vector<double> before = place();
    const CallResult result = put(L"Transformation", matrix);
    EXPECT_EQ(result.code(), E_INVALIDARG);
    EXPECT_EQ(result.description, L"Transformation: " + what);
    EXPECT_EQ(place(), before);
  }
  static void expectRefused(const CallResult& result, const std::wstring& text) {
    EXPECT_EQ(result.code(), E_INVALIDARG);
    EXPECT_EQ(result.description, text);
    EXPECT_EQ(result.source, L"ZYNVue.ZYNGroupe");
  }
  CallResult setFrame(const _variant_t& origin, const _variant_t& x, const _variant_t& y) const {
    return callMethod(group_.Get(), L"setRepere", {origin, x, y});
  }

  ComPtr<IZYNGroupe> group_ = createObject<IZYNGroupe>(kGroupProgId);
};

// --- what it holds -------------------------------------------------------------------------------

TEST_F(GroupeTest, HoldsObjectsInTheirOrderTheSameOneSeveralTimes) {
  const auto a = makeObject();
  const auto b = makeObject();
  const auto foreign = makeForeign<ForeignObject>();
  for (const auto& object : {a, ComPtr<IDispatch>(foreign->dispatch()), b, a}) {
    ASSERT_EQ(group_->Add(object.Get(), 0), S_OK);
  }
  EXPECT_EQ(held(), (Objects{a.Get(), foreign->dispatch(), b.Get(), a.Get()}));
  EXPECT_EQ(group_->Remove(a.Get()), S_OK);
  EXPECT_EQ(held(), (Objects{foreign->dispatch(), b.Get(), a.Get()})) << "the first goes";
  EXPECT_EQ(group_->RemoveAll(), S_OK);
  EXPECT_EQ(held(), Objects{});
  EXPECT_EQ(group_->RemoveAll(), S_OK);
}

TEST_F(GroupeTest, ItemFindsEachPlaceInAnyOrder) {
  Objects expected;
  std::vector<ComPtr<IDispatch>> objects;
  for (int i = 0; i < 1300; ++i) {
    objects.push_back(i % 100 == 7 ? ComPtr<IDispatch>(makeForeign<ForeignObject>()->dispatch())
                                   : makeObject());
    expected.push_back(objects.back().Get());
    addTo(group_.Get(), objects.back().Get());
  }
  EXPECT_EQ(held(), expected);
  for (const long index : {1299L, 0L, 640L, 639L, 1L, 1200L, 3L}) {
    ComPtr<IDispatch> object;
    ASSERT_EQ(group_->Item(index, &object), S_OK);
    EXPECT_EQ(object.Get(), expected[static_cast<std::size_t>(index)]) << index;
  }
  for (const std::size_t gone : {std::size_t{700}, std::size_t{2}}) {
    require(group_->Remove(expected[gone]), "Remove");
    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(gone));
    ComPtr<IDispatch> object;
    ASSERT_EQ(group_->Item(650, &object), S_OK);
    EXPECT_EQ(object.Get(), expected[650]);
  }
}

TEST_F(GroupeTest, RefusesWhatItCannotHoldOrFind) {
  const auto member = [&](const wchar_t* name, const std::vector<_variant_t>& arguments) {
    return callMethod(group_.Get(), name, arguments);
  };
  const _variant_t nothing(static_cast<IDispatch*>(nullptr));
  expectRefused(member(L"Add", {nothing, 0L}), L"Objet: an object is wanted");
  expectRefused(member(L"Remove", {nothing}), L"Objet: an object is wanted");
  expectRefused(member(L"Remove", {_variant_t(makeObject().Get())}),
                L"Objet: it is not in the group");
  expectRefused(member(L"Item", {0L}), L"Index: 0, there are 0 objects");
  addTo(group_.Get(), makeObject().Get());
  expectRefused(member(L"Item", {-1L}), L"Index: -1, there are 1 objects");
  expectRefused(member(L"Item", {1L}), L"Index: 1, there are 1 objects");
  EXPECT_EQ(group_->Item(0, nullptr), E_POINTER);
  EXPECT_EQ(group_->get__NewEnum(nullptr), E_POINTER);
}

TEST_F(GroupeTest, AnObjectThatCannotTellItsNumberStaysOutside) {
  const auto failing = makeForeign<ForeignObject>();
  failing->onAttribut = [](IDispatch**) { return DISP_E_OVERFLOW; };
  EXPECT_EQ(group_->Add(failing->dispatch(), 0), DISP_E_OVERFLOW);
  EXPECT_EQ(held(), Objects{});
}

TEST_F(GroupeTest, AnEnumeratorKeepsWhatWasThere) {
  const auto a = makeObject();
  const auto b = makeObject();
  addTo(group_.Get(), a.Get());
  addTo(group_.Get(), b.Get());
  const auto enumerator = enumerate(group_.Get());
  _variant_t first;
  ASSERT_EQ(enumerator->Next(1, &first, nullptr), S_OK);
  EXPECT_EQ(first.pdispVal, a.Get());
  require(group_->RemoveAll(), "RemoveAll");
  addTo(group_.Get(), makeObject().Get());
  EXPECT_EQ(rest(enumerator.Get()), Objects{b.Get()});
  ASSERT_EQ(enumerator->Reset(), S_OK);
  EXPECT_EQ(rest(enumerator.Get()), (Objects{a.Get(), b.Get()}));
}

TEST_F(GroupeTest, AGroupIsMarkedAsASingleObject) {
  EXPECT_TRUE(queryFor<IZYNObjet>(group_.Get()));
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IZYNObjet>(group_.Get()).Get()),
            queryFor<IUnknown>(group_.Get()));
}

// --- groups in groups ----------------------------------------------------------------------------

TEST_F(GroupeTest, NoGroupHoldsItselfAtAnyDepth) {
  const auto add = [](const ComPtr<IZYNGroupe>& to, const ComPtr<IZYNGroupe>& object) {
    return callMethod(to.Get(), L"Add", {_variant_t(static_cast<IDispatch*>(object.Get())), 0L});
  };
  constexpr const wchar_t* kText = L"Objet: the group would hold itself";
  expectRefused(add(group_, group_), kText);
  const auto middle = makeGroup();
  const auto inner = makeGroup();
  const auto beside = makeGroup();
  EXPECT_EQ(add(group_, middle).code(), S_OK);
  EXPECT_EQ(add(middle, inner).code(), S_OK);
  EXPECT_EQ(add(middle, beside).code(), S_OK);
  EXPECT_EQ(add(beside, inner).code(), S_OK) << "by two ways is no circle";
  expectRefused(add(inner, middle), kText);
  expectRefused(add(inner, group_), kText);
  expectRefused(add(inner, beside), kText);
  EXPECT_EQ(middle->Remove(inner.Get()), S_OK);
  expectRefused(add(inner, middle), kText);
  EXPECT_EQ(beside->Remove(inner.Get()), S_OK);
  EXPECT_EQ(add(inner, middle).code(), S_OK) << "no circle any more";
}

TEST_F(GroupeTest, AsManyLevelsAsAreAllowedAndNoMore) {
  std::vector<ComPtr<IZYNGroupe>> chain = {group_};
  while (chain.size() < 256) {
    chain.push_back(makeGroup());
    addTo(chain[chain.size() - 2].Get(), chain.back().Get());
  }
  const std::wstring text = L"Objet: there would be more than 256 groups in one another";
  const auto add = [](const ComPtr<IZYNGroupe>& to, const ComPtr<IZYNGroupe>& object) {
    return callMethod(to.Get(), L"Add", {_variant_t(static_cast<IDispatch*>(object.Get())), 0L});
  };
  expectRefused(add(chain.back(), makeGroup()), text);
  expectRefused(add(makeGroup(), group_), text);
  EXPECT_EQ(add(chain[254], makeGroup()).code(), S_OK);
  MovedObjects one;
  one.triangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
  addTo(chain.back().Get(), one.all()[0].Get());
  ComPtr<IDispatch> box;
  EXPECT_EQ(queryFor<IGLDraw>(group_.Get())->GetBox3D(&box), S_OK);
  EXPECT_TRUE(box);
}

// --- its properties ------------------------------------------------------------------------------

TEST_F(GroupeTest, Defaults) {
  EXPECT_TRUE(static_cast<bool>(getProperty(group_.Get(), L"Visible").value));
  EXPECT_EQ(static_cast<double>(getProperty(group_.Get(), L"Opacite").value), 1.0);
  EXPECT_EQ(static_cast<long>(getProperty(group_.Get(), L"NomSelection").value), -1L);
  EXPECT_EQ(static_cast<long>(getProperty(group_.Get(), L"Count").value), 0L);
  EXPECT_EQ(_bstr_t(getProperty(group_.Get(), L"Nom").value), _bstr_t(L""));
  EXPECT_EQ(place(), std::vector<double>(kUnmoved.begin(), kUnmoved.end()));
}

TEST_F(GroupeTest, KeepsWhatIsPut) {
  ASSERT_EQ(put(L"Nom",
                L"pi\xE8"
                L"ce \x4E2D")
                .code(),
            S_OK);
  EXPECT_EQ(_bstr_t(getProperty(group_.Get(), L"Nom").value), _bstr_t(L"pi\xE8"
                                                                      L"ce \x4E2D"));
  EXPECT_EQ(group_->put_Nom(nullptr), S_OK);
  EXPECT_EQ(_bstr_t(getProperty(group_.Get(), L"Nom").value), _bstr_t(L""));
  ASSERT_EQ(put(L"NomSelection", 17L).code(), S_OK);
  EXPECT_EQ(static_cast<long>(getProperty(group_.Get(), L"NomSelection").value), 17L);
  EXPECT_EQ(group_->put_Visible(VARIANT_FALSE), S_OK);
  EXPECT_FALSE(static_cast<bool>(getProperty(group_.Get(), L"Visible").value));
  EXPECT_EQ(group_->put_Visible(1), S_OK);
  EXPECT_TRUE(static_cast<bool>(getProperty(group_.Get(), L"Visible").value));
}

TEST_F(GroupeTest, OpacityLiesBetween0And1) {
  ASSERT_EQ(put(L"Opacite", 0.25).code(), S_OK);
  for (const auto& [value, text] :
       {std::pair{-0.01, L"-0.01"}, std::pair{1.5, L"1.5"}, std::pair{kInfinity, L"inf"}}) {
    expectRefused(put(L"Opacite", value),
                  L"Opacite: " + std::wstring(text) + L" is not between 0 and 1");
  }
  EXPECT_EQ(put(L"Opacite", kNaN).code(), E_INVALIDARG);
  EXPECT_EQ(static_cast<double>(getProperty(group_.Get(), L"Opacite").value), 0.25);
  EXPECT_EQ(put(L"Opacite", 0.0).code(), S_OK);
  EXPECT_EQ(put(L"Opacite", 1.0).code(), S_OK);
}

// --- arrays --------------------------------------------------------------------------------------

/// An array of this type with any bounds, filled column after column.
template <class Number>
_variant_t arrayOf(VARTYPE type, const std::vector<double>& values,
                   std::vector<SAFEARRAYBOUND> bounds) {
  SAFEARRAY* const array = SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data());
  void* data = nullptr;
  require(SafeArrayAccessData(array, &data), "SafeArrayAccessData");
  for (std::size_t i = 0; i < values.size(); ++i) {
    static_cast<Number*>(data)[i] = static_cast<Number>(values[i]);
  }
  SafeArrayUnaccessData(array);
  _variant_t variant;
  variant.vt = static_cast<VARTYPE>(VT_ARRAY | type);
  variant.parray = array;
  return variant;
}
template <class Number>
_variant_t vectorOf(VARTYPE type, const std::vector<double>& values, LONG first = 0) {
  return arrayOf<Number>(type, values, {{static_cast<ULONG>(values.size()), first}});
}

TEST_F(GroupeTest, TakesNumbersOfEveryType) {
  expectTaken(vectorOf<double>(VT_R8, kPlace));
  expectTaken(vectorOf<float>(VT_R4, kPlace));
  expectTaken(vectorOf<std::int64_t>(VT_I8, kPlace));
  expectTaken(vectorOf<std::uint64_t>(VT_UI8, kPlace));
  expectTaken(vectorOf<std::int32_t>(VT_I4, kPlace));
  expectTaken(vectorOf<std::uint32_t>(VT_UI4, kPlace));
  expectTaken(vectorOf<std::int32_t>(VT_INT, kPlace));
  expectTaken(vectorOf<std::uint32_t>(VT_UINT, kPlace));
  expectTaken(vectorOf<std::int16_t>(VT_I2, kPlace));
  expectTaken(vectorOf<std::uint16_t>(VT_UI2, kPlace));
  expectTaken(vectorOf<std::int8_t>(VT_I1, kPlace));
  expectTaken(vectorOf<std::uint8_t>(VT_UI1, kPlace));
}

TEST_F(GroupeTest, TakesNegativeNumbersOfEverySignedType) {
  std::vector<double> numbers = kPlace;
  numbers[12] = -5;
  expectTaken(vectorOf<std::int64_t>(VT_I8, numbers), numbers);
  expectTaken(vectorOf<std::int32_t>(VT_I4, numbers), numbers);
  expectTaken(vectorOf<std::int16_t>(VT_I2, numbers), numbers);
  expectTaken(vectorOf<std::int8_t>(VT_I1, numbers), numbers);
  expectTaken(vectorOf<float>(VT_R4, numbers), numbers);
}

TEST_F(GroupeTest, TakesVariantsOfEveryType) {
  std::vector<_variant_t> variants;
  for (const double number : kPlace) variants.emplace_back(number);
  expectTaken(variantArray(variants));
  const auto as = [&](VARTYPE type) {
    std::vector<_variant_t> changed;
    for (const double number : kPlace) {
      _variant_t value(number);
      value.ChangeType(type);
      changed.push_back(value);
    }
    return variantArray(changed);
  };
  for (const VARTYPE type : {VT_R4, VT_I8, VT_UI8, VT_I4, VT_UI4, VT_INT, VT_UINT, VT_I2, VT_UI2,
                             VT_I1, VT_UI1, VT_CY, VT_DECIMAL}) {
    expectTaken(as(type));
  }
}

TEST_F(GroupeTest, TakesArraysByReferenceAndWithAnyLowerBound) {
  _variant_t plain = doubleArray(kPlace);
  expectTaken(arrayReference(plain));
  expectTaken(variantReference(&plain));
  _variant_t once = variantReference(&plain);
  expectTaken(variantReference(&once));
  expectTaken(vectorOf<double>(VT_R8, kPlace, 1));
  expectTaken(vectorOf<double>(VT_R8, kPlace, -7));
  _variant_t variants = variantArray(std::vector<_variant_t>(kPlace.begin(), kPlace.end()));
  expectTaken(arrayReference(variants));
}

TEST_F(GroupeTest, ATableIsByRowAndColumn) {
  // In memory one column follows the other, in OpenGL as well.
  expectTaken(arrayOf<double>(VT_R8, kPlace, {{4, 0}, {4, 0}}));
  expectTaken(arrayOf<std::int32_t>(VT_I4, kPlace, {{4, 1}, {4, 1}}));
  _variant_t table = doubleTable(4, 4);
  for (LONG row = 0; row < 4; ++row) {
    for (LONG column = 0; column < 4; ++column) {
      LONG at[] = {row, column};
      double number = kPlace[static_cast<std::size_t>(4 * column + row)];
      require(SafeArrayPutElement(table.parray, at, &number), "SafeArrayPutElement");
    }
  }
  expectTaken(table);
  expectTaken(arrayReference(table));
}

TEST_F(GroupeTest, RefusesOtherThingsThanNumbers) {
  constexpr const wchar_t* kNoArray = L"an array of numbers is wanted";
  for (const _variant_t& value :
       {_variant_t(1.0), _variant_t(16L), _variant_t(L"1 0 0"), _variant_t(true)}) {
    expectRefused(value, kNoArray);
  }
  expectRefused(_variant_t(static_cast<IDispatch*>(nullptr)), kNoArray);
  expectRefused(_variant_t(static_cast<IDispatch*>(group_.Get())),
                L"an array of numbers is wanted, this is another object");
  for (const VARTYPE type : {VT_BSTR, VT_BOOL, VT_DATE, VT_CY, VT_UNKNOWN}) {
    _variant_t array;
    array.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    array.parray = SafeArrayCreateVector(type, 0, 16);
    expectRefused(array, L"an array of numbers is wanted, these are of another type");
  }
  std::vector<_variant_t> mixed(kPlace.begin(), kPlace.end());
  mixed[5] = L"3";
  expectRefused(variantArray(mixed), L"element 5 is no number");
  mixed[5] = true;
  expectRefused(variantArray(mixed), L"element 5 is no number");
  mixed[5].Clear();
  expectRefused(variantArray(mixed), L"element 5 is no number");
}

TEST_F(GroupeTest, RefusesOtherCountsAndShapes) {
  expectRefused(_variant_t(), L"16 numbers are wanted, these are 0");
  EXPECT_EQ(group_->put_Transformation(_variant_t(DISP_E_PARAMNOTFOUND, VT_ERROR)), E_INVALIDARG);
  expectRefused(nullArray(VT_R8), L"16 numbers are wanted, these are 0");
  expectRefused(doubleArray({}), L"16 numbers are wanted, these are 0");
  expectRefused(doubleArray(std::vector<double>(15, 1)), L"16 numbers are wanted, these are 15");
  expectRefused(doubleArray(std::vector<double>(17, 1)), L"16 numbers are wanted, these are 17");
  expectRefused(doubleTable(3, 4), L"16 numbers are wanted, these are 12");
  expectRefused(doubleTable(2, 8), L"each row has 8 numbers, 4 are wanted");
  expectRefused(doubleTable(16, 1), L"each row has 1 numbers, 4 are wanted");
  expectRefused(arrayOf<double>(VT_R8, kPlace, {{4, 0}, {2, 0}, {2, 0}}),
                L"an array with one or two dimensions is wanted");
}

TEST_F(GroupeTest, RefusesMatricesThatMoveNothing) {
  const auto with = [](std::size_t place, double value) {
    std::vector<double> numbers = kPlace;
    numbers[place] = value;
    return doubleArray(numbers);
  };
  expectRefused(with(13, kNaN), L"element 13 is nan, no finite number");
  expectRefused(with(13, std::copysign(kNaN, -1.0)), L"element 13 is nan, no finite number");
  expectRefused(with(0, -kInfinity), L"element 0 is -inf, no finite number");
  for (const std::size_t last : {std::size_t{3}, std::size_t{7}, std::size_t{11}}) {
    expectRefused(with(last, 1e-30), L"the last row is not 0 0 0 1");
  }
  expectRefused(with(15, 2), L"the last row is not 0 0 0 1");
  constexpr const wchar_t* kSingular = L"the matrix has no inverse";
  expectRefused(with(5, 0), kSingular);
  expectRefused(doubleArray({1, 2, 3, 0, 2, 4, 6, 0, 0, 0, 1, 0, 0, 0, 0, 1}), kSingular);
  expectRefused(doubleArray({1, 0, 0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1}), kSingular);
  expectRefused(doubleArray({1e-320, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}), kSingular);
  for (const double small : {1e-30, 1e-3, 1e30}) {
    const std::vector<double> even = {small, 0, 0, 0, 0, small, 0, 0, 0, 0, small, 0, 0, 0, 0, 1};
    expectTaken(doubleArray(even), even);
  }
}

TEST_F(GroupeTest, AFrameIsMadeOrthonormal) {
  ASSERT_EQ(setFrame(doubleArray({1, 2, 3}), doubleArray({0, 5, 0}), numberArray(VT_I2, {-2, 7, 0}))
                .code(),
            S_OK);
  EXPECT_EQ(place(), (std::vector<double>{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
  ASSERT_EQ(
      setFrame(doubleArray({0, 0, 0}), doubleArray({1e200, 1e200, 0}), doubleArray({0, 0, -1e-200}))
          .code(),
      S_OK);
  const double half = std::sqrt(0.5);
  const std::vector<double> expected = {half,  half, 0, 0, 0, 0, -1, 0,
                                        -half, half, 0, 0, 0, 0, 0,  1};
  for (std::size_t i = 0; i < 16; ++i) EXPECT_NEAR(place()[i], expected[i], 1e-15) << i;
}

TEST_F(GroupeTest, RefusesFramesThatAreNone) {
  const std::vector<double> before = place();
  const _variant_t o = doubleArray({0, 0, 0});
  const _variant_t x = doubleArray({1, 0, 0});
  expectRefused(setFrame(doubleArray({1, 2}), x, x), L"Origine: 3 numbers are wanted, these are 2");
  expectRefused(setFrame(doubleArray({kNaN, 2, 1}), x, x),
                L"Origine: element 0 is nan, no finite number");
  expectRefused(setFrame(_variant_t(3L), x, x), L"Origine: an array of numbers is wanted");
  expectRefused(setFrame(o, o, x), L"X: the axis has no length");
  expectRefused(setFrame(o, x, o), L"Y: the axis has no length");
  expectRefused(setFrame(o, x, doubleArray({-3, 0, 0})), L"Y: it is parallel to X");
  expectRefused(setFrame(o, x, doubleArray({1, 2, 3, 4})), L"Y: 3 numbers are wanted, these are 4");
  EXPECT_EQ(place(), before);
}

}  // namespace
}  // namespace zyn::test
