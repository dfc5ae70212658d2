#include "soak/arguments/PublishedCalls_win.h"

#include <algorithm>

namespace zyn::test {
namespace {

bool isAboutSizes(const PublishedMember& member) {
  return member.name.starts_with("CreateContext");
}

/// Some calls make sense, so that the objects get somewhere; in some a single argument does not.
void setMood(Arguments& arguments, Random& random, const PublishedMember& member) {
  if (isAboutSizes(member)) arguments.leaveOutLargeSizes();
  constexpr int kOddOnes[] = {0, 0, 2, 4, 10};
  arguments.setOddOnes(random.pick(kOddOnes));
}

void keepObject(const VARIANT& value, Objects& objects) {
  if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) objects.keep(value.punkVal);
}

/// One late-bound call in the making.
class LateCall {
 public:
  LateCall(const PublishedMember& member, Random& random, Objects& objects,
           const std::wstring& folder)
      : member_(member), random_(random), objects_(objects), arguments_(random, objects, folder) {
    setMood(arguments_, random, member);
  }

  void run(IDispatch* object) {
    prepare();
    if (random_.oneIn(6)) spoil();
    VARIANT result;
    VariantInit(&result);
    EXCEPINFO exception = {};
    UINT wrongArgument = 0;
    const HRESULT called = object->Invoke(
        id_, iid_, LOCALE_USER_DEFAULT, kind_, given_, wantsResult_ ? &result : nullptr,
        wantsException_ ? &exception : nullptr, random_.oneIn(8) ? nullptr : &wrongArgument);
    if (SUCCEEDED(called)) keepObject(result, objects_);
    VariantClear(&result);
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) {
      SysFreeString(text);
    }
  }

 private:
  void prepare() {
    for (std::size_t i = 0; i < member_.argumentCount(); ++i) {
      values_.push_back(arguments_.fitting(member_.parameters[i], member_.parameterNames.size() > i
                                                                      ? member_.parameterNames[i]
                                                                      : std::string()));
    }
    std::reverse(values_.begin(), values_.end());
    if (member_.isPut()) names_.push_back(DISPID_PROPERTYPUT);
    refer();
  }

  void refer() {
    parameters_ = {values_.data(), names_.data(), static_cast<UINT>(values_.size()),
                   static_cast<UINT>(names_.size())};
  }

  /// Makes the call one that must be refused, or at least survived.
  void spoil() {
    switch (random_.below(9)) {
      case 0:
        for (VARIANT& value : values_) value = arguments_.anything();
        break;
      case 1:
        values_.resize(static_cast<std::size_t>(random_.below(20)));
        for (VARIANT& value : values_) value = arguments_.anything();
        refer();
        break;
      case 2:
        for (int i = random_.below(4); i > 0; --i) {
          names_.push_back(random_.oneIn(2) ? random_.below(4) : arguments_.integer());
        }
        refer();
        break;
      case 3:
        kind_ = static_cast<WORD>(random_.next());
        break;
      case 4:
        id_ = arguments_.integer();
        break;
      case 5:
        given_ = nullptr;
        break;
      case 6:
        if (random_.oneIn(2)) parameters_.rgvarg = nullptr;
        if (random_.oneIn(2)) parameters_.rgdispidNamedArgs = nullptr;
        break;
      case 7:
        if (!values_.empty()) random_.pick(values_) = arguments_.anything();
        break;
      default:
        iid_ = IID_IDispatch;
    }
    wantsResult_ = !random_.oneIn(4);
    wantsException_ = !random_.oneIn(4);
  }

  const PublishedMember& member_;
  Random& random_;
  Objects& objects_;
  Arguments arguments_;
  std::vector<VARIANT> values_;
  std::vector<DISPID> names_;
  DISPPARAMS parameters_ = {};
  DISPPARAMS* given_ = &parameters_;
  DISPID id_ = member_.id;
  IID iid_ = IID_NULL;
  WORD kind_ = static_cast<WORD>(member_.kind);
  bool wantsResult_ = true;
  bool wantsException_ = true;
};

/// What DispCallFunc takes for a value in a register or on the stack.
VARTYPE passedAs(const ParameterType& parameter) {
  return parameter.byReference ? static_cast<VARTYPE>(VT_I8) : parameter.type;
}

}  // namespace

void callLate(const PublishedMember& member, Random& random, Objects& objects,
              const std::wstring& folder) {
  const auto object = objects.answering(member.iid);
  if (!object) return;
  LateCall(member, random, objects, folder).run(static_cast<IDispatch*>(object.Get()));
}

void callEarly(const PublishedMember& member, Random& random, Objects& objects,
               const std::wstring& folder) {
  const auto object = objects.answering(member.iid);
  if (!object) return;
  Arguments arguments(random, objects, folder);
  setMood(arguments, random, member);
  std::vector<VARIANT> values;
  std::vector<VARTYPE> types;
  for (std::size_t i = 0; i < member.parameters.size(); ++i) {
    const std::string name = i < member.parameterNames.size() ? member.parameterNames[i] : "";
    values.push_back(arguments.exact(member.parameters[i], name));
    types.push_back(passedAs(member.parameters[i]));
  }
  std::vector<VARIANTARG*> pointers;
  for (VARIANT& value : values) pointers.push_back(&value);
  VARIANT answer;
  VariantInit(&answer);
  const HRESULT called =
      DispCallFunc(object.Get(), member.vtableOffset, CC_STDCALL, VT_ERROR,
                   static_cast<UINT>(values.size()), types.data(), pointers.data(), &answer);
  if (FAILED(called) || FAILED(answer.scode)) return;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (member.parameters[i].isOutput && member.parameters[i].type == VT_DISPATCH &&
        values[i].byref) {
      objects.keep(*static_cast<IUnknown**>(values[i].byref));
    }
  }
}

}  // namespace zyn::test
