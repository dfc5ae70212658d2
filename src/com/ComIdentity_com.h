#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include <atomic>

namespace zyn {

/// Identity and lifetime of one COM object: its reference count, its own unknown, and the unknown
/// that controls it, which is the outer object's when it is aggregated. Holds a module lock.
class ComIdentity {
 public:
  ComIdentity(const ComIdentity&) = delete;
  ComIdentity& operator=(const ComIdentity&) = delete;

  /// The unknown whose count keeps the object alive; not counted here.
  IUnknown* controllingUnknown() const noexcept { return outer_; }

  bool isAggregated() const noexcept { return outer_ != &inner_; }

  /// The unknown that does not delegate: what an outer object keeps of this one.
  IUnknown* innerUnknown() noexcept { return &inner_; }

  /// Makes the object part of `outer`. For a new object that nobody has seen yet.
  void aggregateInto(IUnknown* outer) noexcept { outer_ = outer; }

 protected:
  ComIdentity() noexcept;
  ~ComIdentity();

 private:
  class Inner final : public IUnknown {
   public:
    explicit Inner(ComIdentity& object) : object_(object) {}
    STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override;
    STDMETHODIMP_(ULONG) AddRef() noexcept override;
    STDMETHODIMP_(ULONG) Release() noexcept override;

   private:
    ComIdentity& object_;
  };

  /// Gives the interface with a reference counted on it; `*out` is null when called.
  virtual HRESULT findInterface(REFIID iid, void** out) noexcept = 0;
  virtual void destroy() noexcept = 0;

  Inner inner_{*this};
  IUnknown* outer_ = &inner_;
  std::atomic<ULONG> references_ = 1;
};

}  // namespace zyn
