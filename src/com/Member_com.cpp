#include "com/Member_com.h"

#include "com/errors_com.h"

namespace zyn {

namespace {

/// The description of a function; its memory belongs to the type information.
class FunctionDescription {
 public:
  FunctionDescription(ITypeInfo& info, UINT function) : info_(info) {
    throwIfFailed(info.GetFuncDesc(function, &value_));
  }
  FunctionDescription(const FunctionDescription&) = delete;
  FunctionDescription& operator=(const FunctionDescription&) = delete;
  ~FunctionDescription() { info_.ReleaseFuncDesc(value_); }

  const FUNCDESC* operator->() const { return value_; }

 private:
  ITypeInfo& info_;
  FUNCDESC* value_ = nullptr;
};

}  // namespace

Member readMember(ITypeInfo& info, UINT function) {
  const FunctionDescription described(info, function);
  Member member{
      described->memid, described->invkind, static_cast<ULONG_PTR>(described->oVft), {}, false};
  for (SHORT i = 0; i < described->cParams; ++i) {
    const ELEMDESC& element = described->lprgelemdescParam[i];
    const USHORT flags = element.paramdesc.wParamFlags;
    const bool isOutput = (flags & PARAMFLAG_FOUT) != 0;
    const bool isInput = (flags & PARAMFLAG_FIN) != 0;
    member.parameters.push_back({parameterType(info, element.tdesc), isInput, isOutput});
    member.hasResult = (flags & PARAMFLAG_FRETVAL) != 0;
  }
  return member;
}

}  // namespace zyn
