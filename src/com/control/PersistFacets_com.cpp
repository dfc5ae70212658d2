#include "com/control/PersistFacets_com.h"

#include <ole2.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "com/changeType_com.h"
#include "com/control/Control_com.h"
#include "com/control/StockPointer_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

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

namespace {

constexpr const wchar_t* kVersionName = L"_Version";
constexpr const wchar_t* kWidthName = L"_cx";
constexpr const wchar_t* kHeightName = L"_cy";
constexpr const wchar_t* kPointerName = L"MousePointer";
constexpr const wchar_t* kIconName = L"MouseIcon";

/// The named value as `type`; no value when the bag lacks it. Throws for any other failure.
std::optional<_variant_t> read(IPropertyBag* bag, IErrorLog* log, const wchar_t* name,
                               VARTYPE type) {
  _variant_t value;
  V_VT(&value) = type;
  const HRESULT answer = bag->Read(name, &value, log);
  if (answer == E_INVALIDARG || V_VT(&value) == VT_EMPTY) {
    return std::nullopt;
  }
  throwIfFailed(answer);
  throwIfFailed(changeType(value, value, type, LOCALE_USER_DEFAULT));
  return value;
}

long readNumber(IPropertyBag* bag, IErrorLog* log, const wchar_t* name, long otherwise) {
  const auto value = read(bag, log, name, VT_I4);
  return value ? V_I4(&*value) : otherwise;
}

void write(IPropertyBag* bag, const wchar_t* name, long number) {
  _variant_t value(number);
  throwIfFailed(bag->Write(name, &value));
}

}  // namespace

STDMETHODIMP PersistPropertyBagFacet::GetClassID(CLSID* id) noexcept {
  if (!id) {
    return E_POINTER;
  }
  *id = control().description().id;
  return S_OK;
}

STDMETHODIMP PersistPropertyBagFacet::InitNew() noexcept {
  return entry([&] { control().state().reset(); });
}

STDMETHODIMP PersistPropertyBagFacet::Load(IPropertyBag* bag, IErrorLog* log) noexcept {
  if (!bag) {
    return E_POINTER;
  }
  return entry([&] {
    if (readNumber(bag, log, kVersionName, kRecordVersion) > long{kRecordVersion}) {
      throw _com_error(STG_E_OLDDLL);
    }
    const Extent initial = control().description().initialExtent;
    ControlRecord record;
    record.extent = {std::max(0L, readNumber(bag, log, kWidthName, initial.width)),
                     std::max(0L, readNumber(bag, log, kHeightName, initial.height))};
    if (control().stockPointer()) {
      record.mousePointer = readNumber(bag, log, kPointerName, 0);
      if (const auto icon = read(bag, log, kIconName, VT_UNKNOWN); icon && V_UNKNOWN(&*icon)) {
        StockPointer copy;
        ComPtr<IPictureDisp> picture;
        throwIfFailed(V_UNKNOWN(&*icon)->QueryInterface(IID_PPV_ARGS(&picture)));
        copy.setIcon(picture);
        record.mouseIcon = copy.savedIcon();
      }
    }
    control().state().adopt(record);
  });
}

STDMETHODIMP PersistPropertyBagFacet::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) noexcept {
  if (!bag) {
    return E_POINTER;
  }
  return entry([&] {
    const Extent extent = control().state().extent();
    write(bag, kVersionName, kRecordVersion);
    write(bag, kWidthName, extent.width);
    write(bag, kHeightName, extent.height);
    if (const StockPointer* const pointer = control().stockPointer()) {
      write(bag, kPointerName, pointer->shape());
      if (const auto icon = pointer->icon()) {
        _variant_t value(static_cast<IUnknown*>(icon.Get()));
        throwIfFailed(bag->Write(kIconName, &value));
      }
    }
    if (clearDirty) {
      control().state().setDirty(false);
    }
  });
}

}  // namespace zyn
