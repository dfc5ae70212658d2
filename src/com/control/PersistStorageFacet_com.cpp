#include "com/control/PersistStorageFacet_com.h"

#include <ole2.h>

#include <utility>

#include "com/control/Control_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr const wchar_t* kStreamName = L"Contents";

}  // namespace

STDMETHODIMP PersistStorageFacet::GetClassID(CLSID* id) noexcept {
  if (!id) {
    return E_POINTER;
  }
  *id = control().description().id;
  return S_OK;
}

STDMETHODIMP PersistStorageFacet::IsDirty() noexcept {
  return control().state().isDirty() ? S_OK : S_FALSE;
}

STDMETHODIMP PersistStorageFacet::InitNew(IStorage* storage) noexcept {
  if (!storage) {
    return E_POINTER;
  }
  return entry([&] { control().state().reset(); });
}

STDMETHODIMP PersistStorageFacet::Load(IStorage* storage) noexcept {
  if (!storage) {
    return E_POINTER;
  }
  return entry([&] {
    ComPtr<IStream> stream;
    throwIfFailed(
        storage->OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream));
    throwIfFailed(stream ? S_OK : E_UNEXPECTED);
    control().state().load(stream.Get());
  });
}

STDMETHODIMP PersistStorageFacet::Save(IStorage* storage, BOOL) noexcept {
  if (!storage) {
    return E_POINTER;
  }
  return entry([&] {
    throwIfFailed(WriteClassStg(storage, control().description().id));
    ComPtr<IStream> stream;
    throwIfFailed(storage->CreateStream(
        kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, &stream));
    throwIfFailed(stream ? S_OK : E_UNEXPECTED);
    control().state().save(stream.Get());
    saving_ = true;
  });
}

STDMETHODIMP PersistStorageFacet::SaveCompleted(IStorage*) noexcept {
  return entry([&] {
    if (std::exchange(saving_, false)) {
      control().state().setDirty(false);
      control().oleObject().saved();
    }
  });
}

STDMETHODIMP PersistStorageFacet::HandsOffStorage() noexcept { return S_OK; }

}  // namespace zyn
