#pragma once

#include "com/control/Facet_com.h"

#include <objidl.h>

namespace zyn {

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

}  // namespace zyn
