#pragma once

#include <objidl.h>
#include <ocidl.h>

#include "com/control/Facet_com.h"

namespace zyn {

/// IPersistStreamInit: the control's record in a stream.
class PersistStreamFacet final : public Facet<IPersistStreamInit> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetClassID(CLSID* id) noexcept override;
  STDMETHODIMP IsDirty() noexcept override;
  STDMETHODIMP Load(IStream* stream) noexcept override;
  STDMETHODIMP Save(IStream* stream, BOOL clearDirty) noexcept override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) noexcept override;
  STDMETHODIMP InitNew() noexcept override;
};

/// IPersistStorage: the control's record in the stream "Contents" of a storage, which is not held
/// between the calls.
class PersistStorageFacet final : public Facet<IPersistStorage> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetClassID(CLSID* id) noexcept override;
  STDMETHODIMP IsDirty() noexcept override;
  STDMETHODIMP InitNew(IStorage* storage) noexcept override;
  STDMETHODIMP Load(IStorage* storage) noexcept override;
  STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoaded) noexcept override;
  STDMETHODIMP SaveCompleted(IStorage* storage) noexcept override;
  STDMETHODIMP HandsOffStorage() noexcept override;

 private:
  bool saving_ = false;  ///< between Save and SaveCompleted
};

/// IPersistPropertyBag: the control's record as named values. A value that the bag lacks keeps the
/// default of a new control.
class PersistPropertyBagFacet final : public Facet<IPersistPropertyBag> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetClassID(CLSID* id) noexcept override;
  STDMETHODIMP InitNew() noexcept override;
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) noexcept override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL allProperties) noexcept override;
};

}  // namespace zyn
