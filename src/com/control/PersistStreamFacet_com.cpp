#include "com/control/PersistStreamFacet_com.h"

#include "com/control/Control_com.h"

namespace zyn {

STDMETHODIMP PersistStreamFacet::GetClassID(CLSID* id) noexcept {
  if (!id) {
    return E_POINTER;
  }
  *id = control().description().id;
  return S_OK;
}

STDMETHODIMP PersistStreamFacet::IsDirty() noexcept {
  return control().state().isDirty() ? S_OK : S_FALSE;
}

STDMETHODIMP PersistStreamFacet::Load(IStream* stream) noexcept {
  if (!stream) {
    return E_POINTER;
  }
  return entry([&] { control().state().load(stream); });
}

STDMETHODIMP PersistStreamFacet::Save(IStream* stream, BOOL clearDirty) noexcept {
  if (!stream) {
    return E_POINTER;
  }
  return entry([&] {
    control().state().save(stream);
    if (clearDirty) {
      control().state().setDirty(false);
    }
  });
}

STDMETHODIMP PersistStreamFacet::GetSizeMax(ULARGE_INTEGER* size) noexcept {
  if (!size) {
    return E_POINTER;
  }
  size->QuadPart = 0;
  return entry([&] { size->QuadPart = encodeRecord(control().state().record()).size(); });
}

STDMETHODIMP PersistStreamFacet::InitNew() noexcept {
  return entry([&] { control().state().reset(); });
}

}  // namespace zyn
