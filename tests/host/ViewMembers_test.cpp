// The members that both views have alike.
#include <filesystem>
#include <limits>

#include "support/LateBinding_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

/// A property of a view, as its interface has it.
template <class View, class Value>
struct Property {
  const wchar_t* name;
  HRESULT (STDMETHODCALLTYPE View::Interface::*get)(Value*);
  HRESULT (STDMETHODCALLTYPE View::Interface::*put)(Value);
  Value initial;
};
std::string narrow(const wchar_t* name) { return std::filesystem::path(name).string(); }
template <class View, class Value>
void PrintTo(const Property<View, Value>& property, std::ostream* out) {
  *out << narrow(property.name);
}

template <class View>
using Flag = Property<View, VARIANT_BOOL>;

/// The flags that only VARIANT_TRUE switches on.
template <class View>
std::vector<Flag<View>> flagsOfBoth(VARIANT_BOOL smoothing, VARIANT_BOOL middleButton) {
  using I = typename View::Interface;
  return {
      {L"LineAntialiasing", &I::get_LineAntialiasing, &I::put_LineAntialiasing, smoothing},
      {L"PointAntialiasing", &I::get_PointAntialiasing, &I::put_PointAntialiasing, smoothing},
      {L"DrawCursor", &I::get_DrawCursor, &I::put_DrawCursor, VARIANT_FALSE},
      {L"MiddleButtonActive", &I::get_MiddleButtonActive, &I::put_MiddleButtonActive, middleButton},
      {L"MiddleButtonInverse", &I::get_MiddleButtonInverse, &I::put_MiddleButtonInverse,
       VARIANT_FALSE},
      {L"SelectSuperpose", &I::get_SelectSuperpose, &I::put_SelectSuperpose, VARIANT_FALSE},
      {L"WindowSelection", &I::get_WindowSelection, &I::put_WindowSelection, VARIANT_FALSE}};
}

/// What is particular to each view.
template <class View>
struct Particulars;

template <>
struct Particulars<View2DHost> {
  using I = IZYNVue2D;
  static constexpr const char* kName = "View2D";
  static constexpr Property<View2DHost, long> kMode = {L"Mode", &I::get_Mode, &I::put_Mode, 3};
  static std::vector<Flag<View2DHost>> flags() {
    auto flags = flagsOfBoth<View2DHost>(VARIANT_TRUE, VARIANT_FALSE);
    flags.push_back(
        {L"GrilleVisible", &I::get_GrilleVisible, &I::put_GrilleVisible, VARIANT_FALSE});
    flags.push_back({L"MaintainWindowZoom", &I::get_MaintainWindowZoom, &I::put_MaintainWindowZoom,
                     VARIANT_FALSE});
    return flags;
  }
  static std::vector<Property<View2DHost, double>> numbers() { return {}; }
};

template <>
struct Particulars<View3DHost> {
  using I = IZYNVue3D;
  static constexpr const char* kName = "View3D";
  static constexpr Property<View3DHost, short> kMode = {L"MouseMode", &I::get_MouseMode,
                                                        &I::put_MouseMode, 2};
  static std::vector<Flag<View3DHost>> flags() {
    return flagsOfBoth<View3DHost>(VARIANT_FALSE, VARIANT_TRUE);
  }
  static std::vector<Property<View3DHost, double>> numbers() {
    return {{L"ProfondeurDessin", &I::get_ProfondeurDessin, &I::put_ProfondeurDessin, 0}};
  }
};

template <class View>
class ViewFlags : public HostTest, public testing::WithParamInterface<Flag<View>> {
 protected:
  VARIANT_BOOL get() const {
    VARIANT_BOOL value = 77;
    EXPECT_EQ((host.get()->*flag.get)(&value), S_OK);
    return value;
  }
  void put(int value) const {
    EXPECT_EQ((host.get()->*flag.put)(static_cast<VARIANT_BOOL>(value)), S_OK);
  }

  void expectOnlyTheTrueOfAutomationToSwitchItOn() const {
    for (const int other : {1, 0, 2, -2, 0x7fff}) {
      put(VARIANT_TRUE);
      EXPECT_EQ(get(), VARIANT_TRUE);
      put(other);
      EXPECT_EQ(get(), VARIANT_FALSE) << other;
    }
  }
  void expectToWorkByName() const {
    for (const bool on : {true, false}) {
      EXPECT_EQ(putProperty(host.get(), flag.name, _variant_t(on)).code(), S_OK);
      EXPECT_EQ(getProperty(host.get(), flag.name).value, _variant_t(on));
    }
  }
  void expectNullOutToBeRefused() const { EXPECT_EQ((host.get()->*flag.get)(nullptr), E_POINTER); }

  const Flag<View> flag = this->GetParam();
  View host;
};

const auto nameOfFlag = [](const auto& tested) { return narrow(tested.param.name); };

using View2DFlags = ViewFlags<View2DHost>;
TEST_P(View2DFlags, StartsAsPublished) { EXPECT_EQ(get(), flag.initial); }
TEST_P(View2DFlags, OnlyTheTrueOfAutomationSwitchesItOn) {
  expectOnlyTheTrueOfAutomationToSwitchItOn();
}
TEST_P(View2DFlags, WorksByName) { expectToWorkByName(); }
TEST_P(View2DFlags, NullOutIsRefused) { expectNullOutToBeRefused(); }
INSTANTIATE_TEST_SUITE_P(All, View2DFlags, testing::ValuesIn(Particulars<View2DHost>::flags()),
                         nameOfFlag);

using View3DFlags = ViewFlags<View3DHost>;
TEST_P(View3DFlags, StartsAsPublished) { EXPECT_EQ(get(), flag.initial); }
TEST_P(View3DFlags, OnlyTheTrueOfAutomationSwitchesItOn) {
  expectOnlyTheTrueOfAutomationToSwitchItOn();
}
TEST_P(View3DFlags, WorksByName) { expectToWorkByName(); }
TEST_P(View3DFlags, NullOutIsRefused) { expectNullOutToBeRefused(); }
INSTANTIATE_TEST_SUITE_P(All, View3DFlags, testing::ValuesIn(Particulars<View3DHost>::flags()),
                         nameOfFlag);

template <class View>
class ViewMembers : public HostTest {
 protected:
  long count() const {
    long value = -1;
    EXPECT_EQ(host->Count(&value), S_OK);
    return value;
  }
  /// The property starts as published, keeps each of these values and refuses a null.
  template <class Value>
  void expectToStore(const Property<View, Value>& property,
                     const std::vector<std::type_identity_t<Value>>& values) const {
    SCOPED_TRACE(narrow(property.name));
    Value value = -77;
    EXPECT_EQ((host.get()->*property.get)(&value), S_OK);
    EXPECT_EQ(value, property.initial);
    for (const Value put : values) {
      EXPECT_EQ((host.get()->*property.put)(put), S_OK);
      EXPECT_EQ((host.get()->*property.get)(&value), S_OK);
      EXPECT_EQ(value, put);
    }
    EXPECT_EQ((host.get()->*property.get)(nullptr), E_POINTER);
  }

  View host;
};

struct Names {
  template <class View>
  static std::string GetName(int) {
    return Particulars<View>::kName;
  }
};
using Views = testing::Types<View2DHost, View3DHost>;
TYPED_TEST_SUITE(ViewMembers, Views, Names);

TYPED_TEST(ViewMembers, ModeTakesAnyValue) {
  constexpr auto kMode = Particulars<TypeParam>::kMode;
  using Mode = std::remove_const_t<decltype(kMode.initial)>;
  this->expectToStore(kMode, {1, 2, 3, 4, -1, -2, 99, std::numeric_limits<Mode>::min()});
}

TYPED_TEST(ViewMembers, NumbersAreStoredAsGiven) {
  using I = typename TypeParam::Interface;
  auto numbers = Particulars<TypeParam>::numbers();
  numbers.push_back({L"PickSize", &I::get_PickSize, &I::put_PickSize, 1});
  numbers.push_back({L"MiddleButtonAcceleration", &I::get_MiddleButtonAcceleration,
                     &I::put_MiddleButtonAcceleration, 1});
  for (const auto& number : numbers) {
    this->expectToStore(number, {2.5, 0.0, -3.0, 1e300, std::numeric_limits<double>::infinity()});
  }
}

TYPED_TEST(ViewMembers, CountFollowsTheList) {
  EXPECT_EQ(this->count(), 0);
  const auto object = makeForeign<ForeignObject>();
  const ULONG before = referencesOf(object.Get());
  for (const long mode : {1L, 2L, 3L}) {
    EXPECT_EQ(this->host->Add(object->dispatch(), mode), S_OK);
    EXPECT_EQ(this->count(), mode);
  }
  EXPECT_EQ(this->host->RemoveAll(), S_OK);
  EXPECT_EQ(this->count(), 0);
  EXPECT_EQ(referencesOf(object.Get()), before);
}

TYPED_TEST(ViewMembers, NothingIsIgnoredInTheLists) {
  EXPECT_EQ(this->host->Add(nullptr, 0), S_OK);
  EXPECT_EQ(this->host->AddSelection(nullptr), S_OK);
  EXPECT_EQ(this->host->Remove(nullptr), S_OK);
  EXPECT_EQ(this->host->RemoveSelection(nullptr), S_OK);
  EXPECT_EQ(this->count(), 0);
}

TYPED_TEST(ViewMembers, SelectionListIsAListOfItsOwn) {
  const auto object = makeForeign<ForeignObject>();
  const ULONG before = referencesOf(object.Get());
  this->host->AddSelection(object->dispatch());
  const ULONG once = referencesOf(object.Get());
  EXPECT_GT(once, before);
  this->host->AddSelection(object->dispatch());
  EXPECT_EQ(this->count(), 0);
  const ULONG held = referencesOf(object.Get());
  EXPECT_GT(held, once);
  EXPECT_EQ(this->host->Remove(object->dispatch()), S_OK);
  EXPECT_EQ(this->host->RemoveAll(), S_OK);
  EXPECT_EQ(referencesOf(object.Get()), held);
  EXPECT_EQ(this->host->RemoveSelection(object->dispatch()), S_OK);
  EXPECT_EQ(referencesOf(object.Get()), once) << "one occurrence is left";
  EXPECT_EQ(this->host->RemoveAllSelection(), S_OK);
  EXPECT_EQ(referencesOf(object.Get()), before);
}

TYPED_TEST(ViewMembers, ARepaintIsOfTheWholeWindow) {
  this->host.paint();
  this->host->Repaint();
  RECT asked = {};
  EXPECT_TRUE(GetUpdateRect(this->host.window(), &asked, FALSE));
  EXPECT_EQ(asked.right, 400);
  EXPECT_EQ(asked.bottom, 200);
}

TYPED_TEST(ViewMembers, WindowHandleIsItsSignExtendedNumber) {
  long handle = 0;
  EXPECT_EQ(this->host->get_hWnd(&handle), S_OK);
  ASSERT_TRUE(IsWindow(static_cast<HWND>(LongToHandle(handle))));
  EXPECT_EQ(static_cast<HWND>(LongToHandle(handle)), this->host.window());
  EXPECT_EQ(this->host.clientSize().cx, 400);
  EXPECT_EQ(this->host.clientSize().cy, 200);
  EXPECT_EQ(long(getProperty(this->host.get(), L"hWnd").value), handle);
}

}  // namespace
}  // namespace zyn::test
