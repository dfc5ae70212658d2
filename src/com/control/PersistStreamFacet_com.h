#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

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

}  // namespace zyn
