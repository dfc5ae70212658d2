#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

#include "com/ArgumentSlot_com.h"
#include "com/Member_com.h"

namespace zyn {

/// One late call of one member, from the caller's arguments to the results it gets back.
class DispatchCall {
 public:
  DispatchCall(const Member& member, const LateCall& call);

  HRESULT execute(void* object);

 private:
  HRESULT checkArguments() const;
  HRESULT placeArguments();
  HRESULT placeNamed(UINT index);
  HRESULT takeArguments();
  HRESULT callMember(void* object);
  HRESULT raise(HRESULT failure) const;
  HRESULT giveBack();
  HRESULT blame(UINT index, HRESULT failure) const;

  const Member& member_;
  const LateCall& call_;
  std::array<std::byte, 2048>
      memory_;  ///< enough for most calls; the heap would cost more than they do
  std::pmr::monotonic_buffer_resource arena_{memory_.data(), memory_.size()};
  std::pmr::vector<UINT> given_;  ///< for each parameter, which of the caller's arguments
  std::pmr::vector<ArgumentSlot> slots_;
  VARIANTARG leftOut_{};  ///< stands for an optional argument that is not given
};

}  // namespace zyn
