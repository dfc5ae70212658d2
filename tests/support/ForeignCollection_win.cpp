#include "support/ForeignCollection_win.h"

#include <algorithm>
#include <atomic>

namespace zyn::test {
namespace {

/// Walks a ForeignCollection and keeps it alive meanwhile.
class Enumerator final : public IEnumVARIANT {
 public:
  explicit Enumerator(ForeignCollection* collection) : collection_(collection) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    *out = nullptr;
    const bool walks = iid == IID_IEnumVARIANT && collection_->enumeratorCanEnumerate;
    if (iid != IID_IUnknown && !walks) return E_NOINTERFACE;
    *out = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP Next(ULONG wanted, VARIANT* items, ULONG* fetched) override {
    collection_->largestRequest = std::max(collection_->largestRequest, wanted);
    ULONG given = 0;
    for (; given < wanted && position_ < collection_->items.size(); ++given, ++position_) {
      if (FAILED(collection_->nextResult) && position_ >= collection_->failAt) {
        return collection_->nextResult;
      }
      VariantInit(&items[given]);
      VariantCopy(&items[given], &collection_->items[position_]);
      ++collection_->handedOut;
    }
    if (fetched) *fetched = given;
    return given == wanted ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    position_ += count;
    return position_ <= collection_->items.size() ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    position_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumVARIANT** clone) override {
    *clone = nullptr;
    return E_OUTOFMEMORY;
  }

 private:
  virtual ~Enumerator() = default;
  std::atomic<ULONG> references_ = 1;
  ComPtr<ForeignCollection> collection_;
  size_t position_ = 0;
};

}  // namespace

STDMETHODIMP ForeignCollection::Count(long* count) {
  *count = static_cast<long>(items.size());
  return S_OK;
}

STDMETHODIMP ForeignCollection::_NewEnum(IUnknown** enumerator) {
  ++basicEnumerations;
  *enumerator = SUCCEEDED(enumeratorResult) ? new Enumerator(this) : nullptr;
  return enumeratorResult;
}

STDMETHODIMP ForeignCollection::GetEnumerator(IEnumVARIANT** enumerator) {
  ++netEnumerations;
  *enumerator = SUCCEEDED(enumeratorResult) ? new Enumerator(this) : nullptr;
  return enumeratorResult;
}

STDMETHODIMP ForeignCollection::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                       EXCEPINFO*, UINT*) {
  if (id != DISPID_NEWENUM || !result) return DISP_E_MEMBERNOTFOUND;
  VariantInit(result);
  result->vt = VT_UNKNOWN;
  return _NewEnum(&result->punkVal);
}

}  // namespace zyn::test
