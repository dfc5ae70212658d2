#include "soak/arguments/Members_win.h"

#include "support/TypeReader_win.h"

namespace zyn::test {
namespace {

ComPtr<ITypeInfo> referenced(ITypeInfo* type, HREFTYPE reference) {
  ComPtr<ITypeInfo> found;
  require(type->GetRefTypeInfo(reference, &found), "GetRefTypeInfo");
  return found;
}

/// `levels`: how many pointers lead to the type.
void readType(ITypeInfo* type, const TYPEDESC& description, int levels, ParameterType& parameter) {
  if (description.vt == VT_PTR) {
    return readType(type, *description.lptdesc, levels + 1, parameter);
  }
  parameter.type = description.vt;
  parameter.iid = description.vt == VT_DISPATCH ? IID_IDispatch : IID_IUnknown;
  parameter.byReference = levels > 0;
  if (description.vt != VT_USERDEFINED) return;
  const auto user = referenced(type, description.hreftype);
  const TypeAttributes attributes(user.Get());
  if (attributes->typekind == TKIND_ENUM) {
    parameter.type = VT_I4;
  } else if (attributes->typekind == TKIND_ALIAS) {
    readType(user.Get(), attributes->tdescAlias, levels, parameter);
  } else {
    parameter.type = VT_DISPATCH;
    parameter.iid = attributes->guid;
    parameter.byReference = levels > 1;
  }
}

ParameterType readParameter(ITypeInfo* type, const ELEMDESC& element) {
  ParameterType parameter;
  readType(type, element.tdesc, 0, parameter);
  const USHORT flags = element.paramdesc.wParamFlags;
  parameter.isOutput = (flags & PARAMFLAG_FOUT) != 0;
  parameter.isResult = (flags & PARAMFLAG_FRETVAL) != 0;
  return parameter;
}

std::vector<std::string> namesOf(ITypeInfo* type, const FUNCDESC& function) {
  std::vector<BSTR> texts(static_cast<std::size_t>(function.cParams) + 1);
  UINT count = 0;
  require(type->GetNames(function.memid, texts.data(), static_cast<UINT>(texts.size()), &count),
          "GetNames");
  std::vector<std::string> names;
  for (BSTR text : texts) {
    names.push_back(narrow(text));
    SysFreeString(text);
  }
  return names;
}

void readInterface(ITypeInfo* type, const std::string& name, std::vector<PublishedMember>& all) {
  const auto form = vtableForm(type);
  const TypeAttributes own(type);
  const TypeAttributes attributes(form.Get());
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    const FunctionDescription function(form.Get(), i);
    PublishedMember member;
    member.interfaceName = name;
    member.parameterNames = namesOf(form.Get(), *function.operator->());
    member.name = member.parameterNames.front();
    member.parameterNames.erase(member.parameterNames.begin());
    member.iid = attributes->guid;
    member.isDual = (own->wTypeFlags & TYPEFLAG_FDUAL) != 0;
    member.id = function->memid;
    member.kind = function->invkind;
    member.vtableOffset = static_cast<ULONG_PTR>(function->oVft);
    for (SHORT p = 0; p < function->cParams; ++p) {
      member.parameters.push_back(readParameter(form.Get(), function->lprgelemdescParam[p]));
    }
    all.push_back(std::move(member));
  }
}

bool isEventInterface(const std::string& name) { return name.starts_with('_'); }

}  // namespace

Published readPublished(const std::vector<std::wstring>& dlls) {
  Published found;
  for (const std::wstring& dll : dlls) {
    ComPtr<ITypeLib> library;
    require(LoadTypeLibEx(dll.c_str(), REGKIND_NONE, &library), "LoadTypeLibEx");
    for (const auto& [name, type] : typesOf(library.Get())) {
      const TypeAttributes attributes(type.Get());
      if (attributes->typekind == TKIND_COCLASS) {
        found.classes.push_back({name, attributes->guid});
      } else if (attributes->typekind == TKIND_INTERFACE ||
                 (attributes->typekind == TKIND_DISPATCH && !isEventInterface(name))) {
        readInterface(type.Get(), name, found.members);
      }
    }
  }
  return found;
}

}  // namespace zyn::test
