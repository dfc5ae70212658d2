#pragma once

#include <exception>
#include <functional>

#include "ZYNVUE.h"
#include "common/ClassObject_com.h"
#include "common/EventSink_com.h"

namespace zyn::host {

/// Told how far the loading is, 0 to 1. What it throws ends the loading.
using LoadProgress = std::function<void(double part)>;

/// Passes on what an object tells of its long work, and stops it when `progress` throws.
class ProgressListener final : private EventListener {
 public:
  ProgressListener(IDispatch* object, const LoadProgress& progress);

  /// Throws what `progress` has thrown.
  void rethrow() const;

 private:
  void event(DISPID event, const EventArguments& arguments) override;
  void failed(const std::string&) noexcept override { thrown_ = std::current_exception(); }

  const LoadProgress& progress_;
  std::exception_ptr thrown_;
  Microsoft::WRL::ComPtr<IZYNEvenements> events_ =
      ClassObject(L"ZYNVue.ZYNEvenements").create<IZYNEvenements>();
  EventConnection connection_{events_.Get(), DIID__IZYNEvenements, *this};
};

}  // namespace zyn::host
