#include "com/DispatchTable_com.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "com/DispatchCall_com.h"
#include "com/errors_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// The interface as it lies in memory, behind the description that scripts see of a dual one.
ComPtr<ITypeInfo> vtableInfo(ITypeInfo& info) {
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> interfaceInfo;
  throwIfFailed(info.GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
  throwIfFailed(info.GetRefTypeInfo(reference, &interfaceInfo));
  return interfaceInfo;
}

struct Extent {
  IID iid;
  UINT functions;
};

Extent extentOf(ITypeInfo& info) {
  TYPEATTR* attributes = nullptr;
  throwIfFailed(info.GetTypeAttr(&attributes));
  const Extent extent{attributes->guid, attributes->cFuncs};
  info.ReleaseTypeAttr(attributes);
  return extent;
}

ComPtr<ITypeInfo> baseOf(ITypeInfo& info) {
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> base;
  throwIfFailed(info.GetRefTypeOfImplType(0, &reference));
  throwIfFailed(info.GetRefTypeInfo(reference, &base));
  return base;
}

/// Of an interface as it lies in memory and of those that it derives from, short of IDispatch.
std::vector<Member> membersOf(ComPtr<ITypeInfo> info) {
  std::vector<Member> members;
  for (Extent extent = extentOf(*info.Get()); extent.iid != IID_IDispatch;
       extent = extentOf(*info.Get())) {
    for (UINT i = 0; i < extent.functions; ++i) {
      members.push_back(readMember(*info.Get(), i));
    }
    info = baseOf(*info.Get());
  }
  return members;
}

using MemberKey = std::pair<DISPID, INVOKEKIND>;

MemberKey keyOf(const Member& member) { return {member.id, member.kind}; }

/// Whether the value of a property put is an object, which a property may take by reference.
bool putsObject(const DISPPARAMS* arguments) {
  if (!arguments || arguments->cArgs == 0 || !arguments->rgvarg) {
    return false;
  }
  const VARTYPE type = V_VT(&arguments->rgvarg[0]);
  return type == VT_DISPATCH || type == VT_UNKNOWN;
}

}  // namespace

DispatchTable::DispatchTable(ComPtr<ITypeInfo> info)
    : info_(std::move(info)), members_(membersOf(vtableInfo(*info_.Get()))) {
  std::sort(members_.begin(), members_.end(),
            [](const Member& a, const Member& b) { return keyOf(a) < keyOf(b); });
}

const Member* DispatchTable::find(DISPID id, INVOKEKIND kind) const {
  const MemberKey key(id, kind);
  const auto at = std::lower_bound(
      members_.begin(), members_.end(), key,
      [](const Member& member, const MemberKey& sought) { return keyOf(member) < sought; });
  return at != members_.end() && keyOf(*at) == key ? &*at : nullptr;
}

/// Scripts that cannot tell ask for a method or a property get at once, and for either kind of put.
const Member* DispatchTable::choose(const LateCall& call) const {
  INVOKEKIND order[] = {INVOKE_FUNC, INVOKE_PROPERTYGET, INVOKE_PROPERTYPUT, INVOKE_PROPERTYPUTREF};
  if (putsObject(call.arguments)) {
    std::swap(order[2], order[3]);
  }
  // JScript calls what enumerates a collection, be it a property.
  const WORD flags =
      call.member == DISPID_NEWENUM ? WORD{DISPATCH_METHOD | DISPATCH_PROPERTYGET} : call.flags;
  for (const INVOKEKIND kind : order) {
    const Member* const member = (flags & kind) != 0 ? find(call.member, kind) : nullptr;
    if (member) {
      return member;
    }
  }
  return nullptr;
}

HRESULT DispatchTable::invoke(void* object, const LateCall& call) const {
  const Member* const member = choose(call);
  if (!member) {
    return DISP_E_MEMBERNOTFOUND;
  }
  DispatchCall run(*member, call);
  return run.execute(object);
}

}  // namespace zyn
