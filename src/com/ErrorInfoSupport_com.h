#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>
#include <wrl/client.h>

#include <atomic>

namespace zyn {

/// ISupportErrorInfo of an object that does not carry it: there are very many objects, and they are
/// seldom asked for it. Keeps the object alive.
class ErrorInfoSupport final : public ISupportErrorInfo {
 public:
  using Answers = bool (*)(REFIID) noexcept;

  /// A new one. `answers`: whether an interface of the object sets error information.
  static HRESULT give(IUnknown& object, Answers answers, void** out) noexcept;

  STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() noexcept override;

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID iid) noexcept override {
    return answers_(iid) ? S_OK : S_FALSE;
  }

 private:
  ErrorInfoSupport(IUnknown& object, Answers answers) noexcept
      : object_(&object), answers_(answers) {}
  ~ErrorInfoSupport() = default;

  Microsoft::WRL::ComPtr<IUnknown> object_;
  Answers answers_;
  std::atomic<ULONG> references_ = 1;
};

}  // namespace zyn
