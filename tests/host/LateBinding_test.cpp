// Every form in which scripts and late-bound hosts pass arguments, and how their mistakes are told.
#include <utility>

#include "support/ForeignObject_win.h"
#include "support/LateBinding_win.h"

namespace zyn::test {
namespace {

/// One call of Invoke in full control of what is passed.
struct RawCall {
  WORD flags = DISPATCH_METHOD;
  std::vector<VARIANT> arguments;  ///< last first, named ones before all others
  std::vector<DISPID> names;
  REFIID iid = IID_NULL;

  _variant_t result;
  EXCEPINFO exception = {};
  UINT wrongArgument = 99;

  HRESULT on(IDispatch* object, DISPID id) {
    DISPPARAMS parameters = {arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                             static_cast<UINT>(names.size())};
    return object->Invoke(id, iid, LOCALE_USER_DEFAULT, flags, &parameters, &result, &exception,
                          &wrongArgument);
  }
  HRESULT on(IDispatch* object, const wchar_t* name) { return on(object, dispidOf(object, name)); }
};

VARIANT byReference(VARTYPE type, void* target) {
  VARIANT value;
  VariantInit(&value);
  value.vt = static_cast<VARTYPE>(VT_BYREF | type);
  value.byref = target;
  return value;
}

VARIANT of(VARTYPE type, LONGLONG bits = 0) {
  VARIANT value;
  VariantInit(&value);
  value.vt = type;
  value.llVal = bits;
  return value;
}

VARIANT number(double value) {
  VARIANT made = of(VT_R8);
  made.dblVal = value;
  return made;
}

VARIANT integer(long value) { return of(VT_I4, value); }
VARIANT object(IDispatch* value) {
  VARIANT made = of(VT_DISPATCH);
  made.pdispVal = value;
  return made;
}
VARIANT omitted() { return of(VT_ERROR, DISP_E_PARAMNOTFOUND); }

/// An object whose value is itself.
class SelfValued final : public ForeignBase<SelfValued, IDispatch> {
 public:
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    *result = object(this);
    AddRef();
    return S_OK;
  }

 private:
  ~SelfValued() override = default;
  friend ForeignBase;
};

/// An object with a value.
class Valued final : public ForeignBase<Valued, IDispatch> {
 public:
  explicit Valued(const _variant_t& value) : value_(value) {}
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    return id == DISPID_VALUE ? VariantCopy(result, &value_) : DISP_E_MEMBERNOTFOUND;
  }

 private:
  ~Valued() override = default;
  friend ForeignBase;
  _variant_t value_;
};

class LateBindingTest : public HostTest {
 protected:
  LateBindingTest() { triangle_->setPoint(1, 1.5, -2.5, 40000.25); }

  /// getPoint(1, x, y, Z) with one form for all three outs.
  HRESULT getPoint(VARIANT x, VARIANT y, VARIANT z) {
    call_.arguments = {z, y, x, integer(1)};
    return call_.on(triangle_.Get(), L"getPoint");
  }

  /// Priority put with this value; what it is then.
  HRESULT putPriority(VARIANT value) {
    RawCall put;
    put.flags = DISPATCH_PROPERTYPUT;
    put.arguments = {value};
    put.names = {DISPID_PROPERTYPUT};
    const HRESULT answer = put.on(triangle_.Get(), L"Priority");
    call_.wrongArgument = put.wrongArgument;
    return answer;
  }
  long priority() {
    long value = 0;
    triangle_->get_Priority(&value);
    return value;
  }

  ComPtr<IZYNGLTriangle> triangle_ = createObject<IZYNGLTriangle>(kTriangleProgId);
  ComPtr<IZYN3DGLBitmapContext> context_ = createObject<IZYN3DGLBitmapContext>(kContextProgId);
  RawCall call_;
};

// Out arguments.

TEST_F(LateBindingTest, OutsGoToVariablesOfTheSameType) {
  double x = 0;
  double y = 0;
  double z = 0;
  ASSERT_EQ(getPoint(byReference(VT_R8, &x), byReference(VT_R8, &y), byReference(VT_R8, &z)), S_OK);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, -2.5);
  EXPECT_EQ(z, 40000.25);
}

TEST_F(LateBindingTest, OutsGoToVariants) {
  _variant_t x;
  _variant_t y(L"freed on the way");
  _variant_t z(triangle_.Get());
  const ULONG references = referencesOf(triangle_.Get());
  ASSERT_EQ(getPoint(byReference(VT_VARIANT, &x), byReference(VT_VARIANT, &y),
                     byReference(VT_VARIANT, &z)),
            S_OK);
  EXPECT_EQ(x, _variant_t(1.5));
  EXPECT_EQ(y, _variant_t(-2.5));
  EXPECT_EQ(z, _variant_t(40000.25));
  EXPECT_EQ(referencesOf(triangle_.Get()), references - 1);
}

TEST_F(LateBindingTest, OutsGoThroughVariantsThatReferToVariables) {
  double x = 0;
  VARIANT variable = byReference(VT_R8, &x);
  float y = 0;
  VARIANT other = byReference(VT_R4, &y);
  _variant_t z;
  ASSERT_EQ(getPoint(byReference(VT_VARIANT, &variable), byReference(VT_VARIANT, &other),
                     byReference(VT_VARIANT, &z)),
            S_OK);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, -2.5F);
}

TEST_F(LateBindingTest, OutsAreConvertedToTheVariablesType) {
  float x = 0;
  short y = 0;
  BSTR z = SysAllocString(L"freed on the way");
  ASSERT_EQ(getPoint(byReference(VT_R4, &x), byReference(VT_I2, &y), byReference(VT_BSTR, &z)),
            S_OK);
  EXPECT_EQ(x, 1.5F);
  EXPECT_EQ(y, -2);
  EXPECT_STREQ(z, _bstr_t(_variant_t(40000.25)));
  SysFreeString(z);
  long x4 = 0;
  LONGLONG y8 = 0;
  VARIANT_BOOL zFlag = VARIANT_FALSE;
  ASSERT_EQ(
      getPoint(byReference(VT_I4, &x4), byReference(VT_I8, &y8), byReference(VT_BOOL, &zFlag)),
      S_OK);
  EXPECT_EQ(x4, 2);
  EXPECT_EQ(y8, -2);
  EXPECT_EQ(zFlag, VARIANT_TRUE);
}

TEST_F(LateBindingTest, OutsThatDoNotFitAreToldWithTheirArgument) {
  double x = 0;
  double y = 0;
  short z = 7;
  EXPECT_EQ(getPoint(byReference(VT_R8, &x), byReference(VT_R8, &y), byReference(VT_I2, &z)),
            DISP_E_OVERFLOW);
  EXPECT_EQ(call_.wrongArgument, 0u);
  EXPECT_EQ(z, 7);
}

TEST_F(LateBindingTest, OutsPassedByValueAreDropped) {
  EXPECT_EQ(getPoint(number(0), integer(3), of(VT_EMPTY)), S_OK);
}

TEST_F(LateBindingTest, NullReferencesAreRefused) {
  double x = 0;
  double y = 0;
  for (const VARTYPE type : {VT_R8, VT_VARIANT, VT_I4, VT_BSTR}) {
    call_.wrongArgument = 99;
    EXPECT_EQ(getPoint(byReference(VT_R8, &x), byReference(VT_R8, &y), byReference(type, nullptr)),
              DISP_E_TYPEMISMATCH)
        << type;
    EXPECT_EQ(call_.wrongArgument, 0u);
  }
  VARIANT inner = byReference(VT_I4, nullptr);
  EXPECT_EQ(putPriority(byReference(VT_I4, nullptr)), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(putPriority(byReference(VT_VARIANT, nullptr)), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(putPriority(byReference(VT_VARIANT, &inner)), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(putPriority(byReference(VT_DISPATCH, nullptr)), DISP_E_TYPEMISMATCH);
}

TEST_F(LateBindingTest, VariablesThatCannotBeWrittenAreRefused) {
  double x = 0;
  DECIMAL decimal = {};
  VARIANT loop;
  loop = byReference(VT_VARIANT, &loop);
  EXPECT_EQ(
      getPoint(byReference(VT_R8, &x), byReference(VT_R8, &x), byReference(VT_DECIMAL, &decimal)),
      DISP_E_TYPEMISMATCH);
  EXPECT_EQ(getPoint(byReference(VT_R8, &x), byReference(VT_R8, &x), loop), DISP_E_TYPEMISMATCH);
}

TEST_F(LateBindingTest, OutsStayWhenTheMemberFails) {
  double x = 1;
  double y = 2;
  _variant_t z(L"kept");
  call_.arguments = {byReference(VT_VARIANT, &z), byReference(VT_R8, &y), byReference(VT_R8, &x),
                     integer(3)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"getPoint"), DISP_E_EXCEPTION);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(z, _variant_t(L"kept"));
}

TEST_F(LateBindingTest, AResultMayBeUnwanted) {
  DISPPARAMS none = {};
  const DISPID id = dispidOf(context_.Get(), L"AmbientLightProperty");
  EXPECT_EQ(
      context_->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr),
      S_OK);
}

// In arguments.

TEST_F(LateBindingTest, InsAreConverted) {
  VARIANT text = of(VT_BSTR);
  _bstr_t six(L"6");
  text.bstrVal = six.GetBSTR();
  long variable = 8;
  _variant_t variant(9.4);
  VARIANT variantInVariant = byReference(VT_VARIANT, &variant);
  const std::pair<VARIANT, long> cases[] = {
      {integer(2), 2},
      {number(3.5), 4},
      {of(VT_I2, 5), 5},
      {text, 6},
      {of(VT_UI1, 7), 7},
      {byReference(VT_I4, &variable), 8},
      {byReference(VT_VARIANT, &variant), 9},
      {byReference(VT_VARIANT, &variantInVariant), 9},
  };
  for (const auto& [value, expected] : cases) {
    EXPECT_EQ(putPriority(value), S_OK) << value.vt;
    EXPECT_EQ(priority(), expected) << value.vt;
  }
}

TEST_F(LateBindingTest, InsOfTheWrongTypeAreToldWithTheirArgument) {
  VARIANT text = of(VT_BSTR);
  _bstr_t word(L"six");
  text.bstrVal = word.GetBSTR();
  const std::pair<VARIANT, HRESULT> cases[] = {
      {text, DISP_E_TYPEMISMATCH},
      {of(VT_NULL), DISP_E_TYPEMISMATCH},
      {object(triangle_.Get()), DISP_E_TYPEMISMATCH},
      {number(1e12), DISP_E_OVERFLOW},
      {omitted(), DISP_E_PARAMNOTOPTIONAL},
  };
  triangle_->put_Priority(3);
  for (const auto& [value, expected] : cases) {
    call_.wrongArgument = 99;
    EXPECT_EQ(putPriority(value), expected) << value.vt;
    EXPECT_EQ(call_.wrongArgument, 0u) << value.vt;
    EXPECT_EQ(priority(), 3);
  }
}

TEST_F(LateBindingTest, ObjectsCountAsTheirValues) {
  const auto five = makeForeign<Valued>(5L);
  const auto likeFive = makeForeign<Valued>(_variant_t(five->dispatch()));
  IDispatch* dispatch = likeFive->dispatch();
  for (const VARIANT& value : {object(five->dispatch()), object(likeFive->dispatch()),
                               byReference(VT_DISPATCH, &dispatch)}) {
    triangle_->put_Priority(3);
    EXPECT_EQ(putPriority(value), S_OK);
    EXPECT_EQ(priority(), 5);
  }
}

TEST_F(LateBindingTest, AnObjectThatStandsForItselfForEverIsRefused) {
  EXPECT_EQ(putPriority(object(makeForeign<SelfValued>()->dispatch())), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(call_.wrongArgument, 0u);
}

TEST_F(LateBindingTest, EmptyCountsAsZero) {
  call_.arguments = {of(VT_EMPTY), of(VT_EMPTY), of(VT_EMPTY), of(VT_EMPTY)};
  triangle_->setPoint(0, 1, 1, 1);
  ASSERT_EQ(call_.on(triangle_.Get(), L"setPoint"), S_OK);
  double x = 1;
  double y = 1;
  double z = 1;
  triangle_->getPoint(0, &x, &y, &z);
  EXPECT_EQ(x, 0);
}

TEST_F(LateBindingTest, SingleFloatsAreTakenFromDoubles) {
  call_.arguments = {number(0.25), number(0.5), number(1)};
  EXPECT_EQ(call_.on(context_.Get(), L"setGradientColor"), S_OK);
  call_.arguments = {number(0.25), number(1e300), number(1)};
  EXPECT_EQ(call_.on(context_.Get(), L"setGradientColor"), DISP_E_OVERFLOW);
  EXPECT_EQ(call_.wrongArgument, 1u);
}

TEST_F(LateBindingTest, FlagsAreTakenFromNumbers) {
  EXPECT_EQ(putProperty(context_.Get(), L"LineAntialiasing", 5L).invoked, S_OK);
  EXPECT_EQ(getProperty(context_.Get(), L"LineAntialiasing").value, _variant_t(true));
}

TEST_F(LateBindingTest, ObjectsAreTakenInEveryForm) {
  IDispatch* dispatch = triangle_.Get();
  IUnknown* unknown = queryFor<IUnknown>(dispatch).Get();
  IDispatch* none = nullptr;
  VARIANT byUnknown = of(VT_UNKNOWN);
  byUnknown.punkVal = unknown;
  _variant_t variant(dispatch);
  const ULONG references = referencesOf(dispatch);
  for (const VARIANT& value : {object(dispatch), byUnknown, byReference(VT_DISPATCH, &dispatch),
                               byReference(VT_UNKNOWN, &unknown), byReference(VT_VARIANT, &variant),
                               object(nullptr), byReference(VT_DISPATCH, &none), of(VT_NULL)}) {
    call_.arguments = {integer(0), value};
    EXPECT_EQ(call_.on(context_.Get(), L"Add"), S_OK) << value.vt;
  }
  EXPECT_EQ(referencesOf(dispatch), references + 5) << "five of them were objects";
  context_->RemoveAll();
  EXPECT_EQ(referencesOf(dispatch), references);
}

TEST_F(LateBindingTest, WhatIsNoObjectIsRefused) {
  for (const VARIANT& value : {of(VT_EMPTY), integer(0), of(VT_I8, 1)}) {
    call_.arguments = {integer(0), value};
    EXPECT_EQ(call_.on(context_.Get(), L"Add"), DISP_E_TYPEMISMATCH) << value.vt;
    EXPECT_EQ(call_.wrongArgument, 1u);
  }
}

TEST_F(LateBindingTest, ArraysPassThroughVariants) {
  SAFEARRAY* numbers = SafeArrayCreateVector(VT_VARIANT, 0, 5);
  for (LONG i = 0; i < 5; ++i) {
    _variant_t element(0.125 * i);
    SafeArrayPutElement(numbers, &i, &element);
  }
  // As VBScript passes Array(...) that lies in a variable.
  VARIANT variable = byReference(VT_ARRAY | VT_VARIANT, &numbers);
  RawCall put;
  put.flags = DISPATCH_PROPERTYPUT;
  put.arguments = {byReference(VT_VARIANT, &variable)};
  put.names = {DISPID_PROPERTYPUT};
  EXPECT_EQ(put.on(context_.Get(), L"AmbientLightProperty"), S_OK);
  SafeArrayDestroy(numbers);
  const CallResult got = getProperty(context_.Get(), L"AmbientLightProperty");
  ASSERT_EQ(got.value.vt, VT_ARRAY | VT_R8);
  double last = 0;
  LONG at = 4;
  SafeArrayGetElement(got.value.parray, &at, &last);
  EXPECT_EQ(last, 0.5);
}

// Counts and names.

TEST_F(LateBindingTest, ArgumentsAreCounted) {
  call_.arguments = {number(1), number(1), integer(0)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_BADPARAMCOUNT);
  call_.arguments = {number(1), number(1), number(1), number(1), integer(0)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_BADPARAMCOUNT);
  call_.arguments.clear();
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBindingTest, AnExtraArgumentOfAPropertyGetIsRefused) {
  call_.flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  call_.arguments = {integer(0)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"Priority"), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(call_.on(context_.Get(), L"GetPictureDisp"), DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBindingTest, ArgumentsMayBeNamed) {
  std::wstring spelled[] = {L"setPoint", L"z", L"INDEX"};
  LPOLESTR names[] = {spelled[0].data(), spelled[1].data(), spelled[2].data()};
  DISPID ids[3] = {};
  ASSERT_EQ(triangle_->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  call_.names = {ids[1]};
  call_.arguments = {number(33), number(22), number(11), integer(2)};
  ASSERT_EQ(call_.on(triangle_.Get(), ids[0]), S_OK);
  double x = 0;
  double y = 0;
  double z = 0;
  triangle_->getPoint(2, &x, &y, &z);
  EXPECT_EQ(x, 11);
  EXPECT_EQ(y, 22);
  EXPECT_EQ(z, 33);

  call_.names = {2, ids[1], ids[2], 1};
  call_.arguments = {number(5), number(6), integer(2), number(4)};
  ASSERT_EQ(call_.on(triangle_.Get(), ids[0]), S_OK);
  triangle_->getPoint(2, &x, &y, &z);
  EXPECT_EQ(x, 4);
  EXPECT_EQ(y, 5);
  EXPECT_EQ(z, 6);
}

TEST_F(LateBindingTest, AnArgumentGivenTwiceIsTold) {
  call_.names = {0};
  call_.arguments = {integer(1), number(22), number(11), integer(2)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(call_.wrongArgument, 0u);
}

TEST_F(LateBindingTest, NamesThatAreNoParametersAreTold) {
  for (const DISPID name : {4L, -1L, -3L, 1000000L}) {
    call_.names = {name};
    call_.arguments = {number(3), number(2), number(1), integer(0)};
    EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_PARAMNOTFOUND) << name;
    EXPECT_EQ(call_.wrongArgument, 0u);
  }
  call_.names = {0, 0, 0, 0, 0};
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_BADPARAMCOUNT);
}

TEST_F(LateBindingTest, ThePutValueMustBeNamedSo) {
  call_.flags = DISPATCH_PROPERTYPUT;
  call_.arguments = {integer(3)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"Priority"), DISP_E_PARAMNOTFOUND);
  call_.names = {0};
  EXPECT_EQ(call_.on(triangle_.Get(), L"Priority"), DISP_E_PARAMNOTFOUND);
}

// Kinds of call.

TEST_F(LateBindingTest, CombinedFlagsFindTheMember) {
  call_.flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  EXPECT_EQ(call_.on(triangle_.Get(), L"Priority"), S_OK);
  EXPECT_EQ(call_.result, _variant_t(1L));
  call_.arguments = {number(3), number(2), number(1), integer(0)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), S_OK);
  RawCall put;
  put.flags = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
  put.arguments = {integer(6)};
  put.names = {DISPID_PROPERTYPUT};
  EXPECT_EQ(put.on(triangle_.Get(), L"Priority"), S_OK);
  EXPECT_EQ(priority(), 6);
}

TEST_F(LateBindingTest, OtherKindsAreNotFound) {
  call_.flags = DISPATCH_METHOD;
  EXPECT_EQ(call_.on(triangle_.Get(), L"Priority"), DISP_E_MEMBERNOTFOUND);
  call_.flags = DISPATCH_PROPERTYPUTREF;
  EXPECT_EQ(call_.on(triangle_.Get(), L"Priority"), DISP_E_MEMBERNOTFOUND);
  call_.flags = DISPATCH_PROPERTYGET;
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(call_.on(triangle_.Get(), 4711), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(call_.on(triangle_.Get(), DISPID_UNKNOWN), DISP_E_MEMBERNOTFOUND);
  call_.flags = 0;
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_MEMBERNOTFOUND);
}

TEST_F(LateBindingTest, ReservedAndMissingParametersAreChecked) {
  DISPPARAMS none = {};
  const DISPID id = dispidOf(triangle_.Get(), L"Priority");
  EXPECT_EQ(triangle_->Invoke(id, IID_IUnknown, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr,
                              nullptr),
            DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(
      triangle_->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr, nullptr),
      E_INVALIDARG);
  none.cArgs = 1;
  EXPECT_EQ(
      triangle_->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, nullptr, nullptr, nullptr),
      E_INVALIDARG);
}

// Failures of members.

TEST_F(LateBindingTest, FailuresOfMembersAreExceptions) {
  call_.arguments = {number(3), number(2), number(1), integer(3)};
  EXPECT_EQ(call_.on(triangle_.Get(), L"setPoint"), DISP_E_EXCEPTION);
  EXPECT_EQ(call_.exception.scode, E_FAIL);
  EXPECT_EQ(call_.exception.wCode, 0);
  const _bstr_t source(call_.exception.bstrSource, false);
  const _bstr_t description(call_.exception.bstrDescription, false);
  EXPECT_STREQ(source, L"ZYNVue.ZYNGLTriangle");
  EXPECT_GT(description.length(), 0u);
  DISPPARAMS parameters = {call_.arguments.data(), nullptr, 4, 0};
  EXPECT_EQ(triangle_->Invoke(dispidOf(triangle_.Get(), L"setPoint"), IID_NULL, 0, DISPATCH_METHOD,
                              &parameters, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
}

TEST_F(LateBindingTest, FailuresOfVtableCallsLeaveErrorInformation) {
  SetErrorInfo(0, nullptr);
  EXPECT_EQ(triangle_->setPoint(3, 0, 0, 0), E_FAIL);
  ComPtr<IErrorInfo> info;
  ASSERT_EQ(GetErrorInfo(0, &info), S_OK);
  BSTR text = nullptr;
  info->GetSource(&text);
  const _bstr_t source(text, false);
  EXPECT_STREQ(source, L"ZYNVue.ZYNGLTriangle");
  GUID iid = {};
  info->GetGUID(&iid);
  EXPECT_EQ(iid, __uuidof(IZYNGLTriangle));
}

TEST_F(LateBindingTest, ErrorInformationOfOthersIsTakenOnlyFromThoseWhoOfferIt) {
  const auto object = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  const auto fail = [](IDispatch**) {
    ComPtr<ICreateErrorInfo> writer;
    ComPtr<IErrorInfo> info;
    CreateErrorInfo(&writer);
    writer.As(&info);
    SetErrorInfo(0, info.Get());
    return E_ACCESSDENIED;
  };
  object->onAttribut = fail;
  const CallResult call =
      callMethod(context_.Get(), L"Add",
                 {static_cast<IDispatch*>(queryFor<IZYNObjet>(object.Get()).Get()), 0L});
  EXPECT_EQ(call.scode, E_ACCESSDENIED);
  EXPECT_EQ(call.source, L"ZYNVue.ZYN3dGLBitmapContext");
}

// Type information.

TEST_F(LateBindingTest, GivesItsTypeInformation) {
  UINT count = 0;
  EXPECT_EQ(triangle_->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(triangle_->GetTypeInfoCount(nullptr), E_POINTER);
  ComPtr<ITypeInfo> info;
  ASSERT_EQ(triangle_->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, __uuidof(IZYNGLTriangle));
  info->ReleaseTypeAttr(attributes);
  EXPECT_EQ(triangle_->GetTypeInfo(1, LOCALE_USER_DEFAULT, &info), DISP_E_BADINDEX);
  EXPECT_FALSE(info);
  EXPECT_EQ(triangle_->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
}

TEST_F(LateBindingTest, NamesAreFoundInAnyCase) {
  EXPECT_EQ(dispidOf(triangle_.Get(), L"SETPOINT"), dispidOf(triangle_.Get(), L"setPoint"));
  EXPECT_EQ(dispidOf(triangle_.Get(), L"setPoints"), DISPID_UNKNOWN);
  std::wstring name = L"setPoint";
  LPOLESTR names[] = {name.data()};
  DISPID id = 0;
  EXPECT_EQ(triangle_->GetIDsOfNames(IID_IUnknown, names, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(triangle_->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id), E_INVALIDARG);
}

TEST_F(LateBindingTest, AnInterfaceWithoutMembersHasNone) {
  const auto child = createObject<IDispatch>(L"ZYNVue.ZYNVue2DChild");
  EXPECT_EQ(call_.on(child.Get(), 1), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(dispidOf(child.Get(), L"Add"), DISPID_UNKNOWN);
}

}  // namespace
}  // namespace zyn::test
