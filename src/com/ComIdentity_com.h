#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include <atomic>

namespace zyn {

/// IUnknown under other names, in the same places of the virtual table: an object that can be part
/// of an aggregate has two of them, and the names of one are taken by its interfaces.
struct InnerUnknown {
  virtual HRESULT STDMETHODCALLTYPE innerQueryInterface(REFIID iid, void** out) noexcept = 0;
  virtual ULONG STDMETHODCALLTYPE innerAddRef() noexcept = 0;
  virtual ULONG STDMETHODCALLTYPE innerRelease() noexcept = 0;

 protected:
  ~InnerUnknown() = default;
};

/// Identity and lifetime of one COM object: its reference count, its own unknown, and the unknown
/// that controls it, which is the outer object's when it is aggregated. Holds a module lock.
class ComIdentity : private InnerUnknown {
 public:
  ComIdentity(const ComIdentity&) = delete;
  ComIdentity& operator=(const ComIdentity&) = delete;

  /// The unknown whose count keeps the object alive; not counted here.
  IUnknown* controllingUnknown() const noexcept { return outer_; }

  bool isAggregated() noexcept { return outer_ != innerUnknown(); }

  /// The unknown that does not delegate: what an outer object keeps of this one.
  IUnknown* innerUnknown() noexcept;

  /// The thread that made the object, on which alone it may be called.
  DWORD thread() const noexcept { return thread_; }

  /// Makes the object part of `outer`. For a new object that nobody has seen yet.
  void aggregateInto(IUnknown* outer) noexcept { outer_ = outer; }

 protected:
  ComIdentity() noexcept;
  ~ComIdentity();

 private:
  STDMETHODIMP innerQueryInterface(REFIID iid, void** out) noexcept final;
  STDMETHODIMP_(ULONG) innerAddRef() noexcept final;
  STDMETHODIMP_(ULONG) innerRelease() noexcept final;

  /// Gives the interface with a reference counted on it; `*out` is null when called.
  virtual HRESULT findInterface(REFIID iid, void** out) noexcept = 0;
  virtual void destroy() noexcept = 0;

  IUnknown* outer_;
  std::atomic<ULONG> references_ = 1;
  DWORD thread_ = GetCurrentThreadId();
};

}  // namespace zyn
