#include "offscreen/Collection_com.h"

#include <wrl/client.h>

#include "com/OwnedVariant_com.h"
#include "com/askFor_com.h"
#include "com/errors_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// What a late-bound call tells of its failure; frees its texts when it goes out of scope.
class OwnedExceptionInfo {
 public:
  OwnedExceptionInfo() = default;
  OwnedExceptionInfo(const OwnedExceptionInfo&) = delete;
  OwnedExceptionInfo& operator=(const OwnedExceptionInfo&) = delete;
  ~OwnedExceptionInfo() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* get() { return &info_; }

  /// The callee's own failure behind `answer`, which only says DISP_E_EXCEPTION for all of them.
  HRESULT resolve(HRESULT answer) {
    if (answer != DISP_E_EXCEPTION) {
      return answer;
    }
    if (info_.pfnDeferredFillIn) {
      info_.pfnDeferredFillIn(&info_);
    }
    return FAILED(info_.scode) ? info_.scode : answer;
  }

 private:
  EXCEPINFO info_ = {};
};

/// A published interface of collections, and the place of its enumerator method among all its
/// methods.
struct CollectionKind {
  IID iid;
  unsigned methodSlot;
};

// The collection class of classic Visual Basic: Item, Add, Count, Remove, _NewEnum after those of
// IDispatch.
constexpr CollectionKind kCollection = {
    {0xa4c46780, 0x499f, 0x101b, {0xbb, 0x78, 0x00, 0xaa, 0x00, 0x38, 0x3c, 0xbb}}, 11};
// System.Collections.IEnumerable as .NET exposes it to COM: GetEnumerator after those of IDispatch.
constexpr CollectionKind kEnumerable = {
    {0x496b0abe, 0xcdee, 0x11d3, {0x88, 0xe8, 0x00, 0x90, 0x27, 0x54, 0xc4, 0x3a}}, 7};

/// The object that the collection gives as its enumerator, asked for by its number first: classes
/// that implement the numbered call only and classes that implement the method table only both
/// exist.
HRESULT newEnumerator(IDispatch* collection, unsigned methodSlot, ComPtr<IUnknown>& enumerator) {
  OwnedVariant result;
  OwnedExceptionInfo failure;
  DISPPARAMS none = {};
  const HRESULT answer = collection->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT,
                                            DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none,
                                            result.get(), failure.get(), nullptr);
  if (answer == E_NOTIMPL || answer == DISP_E_MEMBERNOTFOUND) {
    using Method = HRESULT(STDMETHODCALLTYPE*)(IDispatch*, IUnknown**);
    const Method* methods = *reinterpret_cast<Method* const*>(collection);
    return methods[methodSlot](collection, &enumerator);
  }
  enumerator = result.object();
  return failure.resolve(answer);
}

ComPtr<IEnumVARIANT> enumeratorOf(IDispatch* collection, const CollectionKind& kind) {
  ComPtr<IUnknown> object;
  throwIfFailed(newEnumerator(collection, kind.methodSlot, object), collection, kind.iid);
  ComPtr<IEnumVARIANT> enumerator;
  if (object) {
    throwIfFailed(object.As(&enumerator), object.Get(), IID_IEnumVARIANT);
  }
  return enumerator;
}

ComPtr<IEnumVARIANT> enumeratorOf(IDispatch* object) {
  for (const CollectionKind& kind : {kCollection, kEnumerable}) {
    if (const ComPtr<IDispatch> collection = queryOptional<IDispatch>(object, kind.iid)) {
      return enumeratorOf(collection.Get(), kind);
    }
  }
  return nullptr;
}

}  // namespace

void forEachItem(IDispatch* collection, const std::function<void(IDispatch*)>& visit) {
  const ComPtr<IEnumVARIANT> enumerator = enumeratorOf(collection);
  if (!enumerator) {
    return;
  }
  for (;;) {
    OwnedVariant item;
    ULONG fetched = 0;
    const HRESULT answer = enumerator->Next(1, item.get(), &fetched);
    throwIfFailed(answer, enumerator.Get(), IID_IEnumVARIANT);
    if (answer != S_OK || fetched == 0) {
      return;
    }
    ComPtr<IDispatch> object;
    if (const ComPtr<IUnknown> unknown = item.object(); unknown && SUCCEEDED(unknown.As(&object))) {
      visit(object.Get());
    }
  }
}

}  // namespace zyn
