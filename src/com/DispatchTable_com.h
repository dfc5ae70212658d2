#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>
#include <wrl/client.h>

#include <vector>

#include "com/Member_com.h"

namespace zyn {

/// The members of one dual interface, inherited ones too, as its type library describes them.
/// ITypeInfo::Invoke could call them too, but refuses the out arguments of scripts and does not
/// count arguments.
class DispatchTable {
 public:
  /// `info` describes the interface.
  explicit DispatchTable(Microsoft::WRL::ComPtr<ITypeInfo> info);

  const Microsoft::WRL::ComPtr<ITypeInfo>& typeInfo() const { return info_; }

  /// Does what IDispatch::Invoke does, to the interface that `object` points to.
  HRESULT invoke(void* object, const LateCall& call) const;

 private:
  const Member* find(DISPID id, INVOKEKIND kind) const;
  const Member* choose(const LateCall& call) const;

  Microsoft::WRL::ComPtr<ITypeInfo> info_;
  std::vector<Member> members_;
};

}  // namespace zyn
