#pragma once

#include <map>
#include <string>

#include "support/BmpFile.h"
#include "support/ScriptedContainer_win.h"

namespace zyn::test {

inline ComPtr<IStream> streamOf(const Bytes& bytes) {
  ComPtr<IStream> stream;
  require(CreateStreamOnHGlobal(nullptr, TRUE, stream.ReleaseAndGetAddressOf()), "stream");
  require(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), "Write");
  require(stream->Seek({}, STREAM_SEEK_SET, nullptr), "Seek");
  return stream;
}

/// A property bag that keeps what it is given.
class Bag final : public Counted, public IPropertyBag {
 public:
  std::map<std::wstring, _variant_t> values;

  STDMETHODIMP QueryInterface(REFIID, void** out) override {
    *out = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return add(); }
  STDMETHODIMP_(ULONG) Release() override { return drop(); }
  STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
    const auto found = values.find(name);
    if (found == values.end()) return E_INVALIDARG;
    return VariantCopy(value, &found->second);
  }
  STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
    values[name] = *value;
    return S_OK;
  }
};

/// What a control writes into a document's stream.
inline Bytes savedBy(IUnknown* control) {
  const ComPtr<IStream> stream = streamOf({});
  require(queryFor<IPersistStreamInit>(control)->Save(stream.Get(), TRUE), "Save");
  STATSTG status = {};
  require(stream->Stat(&status, STATFLAG_NONAME), "Stat");
  Bytes bytes(status.cbSize.QuadPart);
  require(stream->Seek({}, STREAM_SEEK_SET, nullptr), "Seek");
  require(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), "Read");
  return bytes;
}

inline HRESULT loadInto(IUnknown* control, const Bytes& bytes) {
  return queryFor<IPersistStreamInit>(control)->Load(streamOf(bytes).Get());
}

}  // namespace zyn::test
