#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <vector>

#include "com/ArgumentSlot_com.h"
#include "com/LateCall_com.h"
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
  std::vector<UINT> given_;  ///< for each parameter, which of the caller's arguments
  std::vector<ArgumentSlot> slots_;
};

}  // namespace zyn
