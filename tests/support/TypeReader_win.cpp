#include "support/TypeReader_win.h"

#include <algorithm>

namespace zyn::test {
namespace {

std::string nameOf(ITypeInfo* type, MEMBERID member) {
  _bstr_t name;
  require(type->GetDocumentation(member, name.GetAddress(), nullptr, nullptr, nullptr),
          "GetDocumentation");
  return narrow(name);
}

std::string typeText(ITypeInfo* type, const TYPEDESC& description) {
  switch (description.vt) {
    case VT_I2:
      return "short";
    case VT_I4:
      return "long";
    case VT_INT:
      return "int";
    case VT_R4:
      return "float";
    case VT_R8:
      return "double";
    case VT_BOOL:
      return "VARIANT_BOOL";
    case VT_BSTR:
      return "BSTR";
    case VT_VARIANT:
      return "VARIANT";
    case VT_DISPATCH:
      return "IDispatch*";
    case VT_UNKNOWN:
      return "IUnknown*";
    case VT_PTR:
      return typeText(type, *description.lptdesc) + "*";
    case VT_USERDEFINED: {
      ComPtr<ITypeInfo> referred;
      require(type->GetRefTypeInfo(description.hreftype, &referred), "GetRefTypeInfo");
      return nameOf(referred.Get(), MEMBERID_NIL);
    }
    default:
      return "vt" + std::to_string(description.vt);
  }
}

/// The names of a function and of its arguments; those that have none are missing at the end.
std::vector<std::string> namesOf(ITypeInfo* type, const FunctionDescription& function) {
  std::vector<BSTR> names(static_cast<std::size_t>(function->cParams) + 1, nullptr);
  UINT count = 0;
  require(type->GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &count),
          "GetNames");
  std::vector<std::string> texts;
  for (UINT i = 0; i < count; ++i) texts.push_back(narrow(_bstr_t(names[i], false)));
  return texts;
}

const char* kindOf(INVOKEKIND kind) {
  switch (kind) {
    case INVOKE_PROPERTYGET:
      return "get";
    case INVOKE_PROPERTYPUT:
      return "put";
    case INVOKE_PROPERTYPUTREF:
      return "putref";
    default:
      return "method";
  }
}

/// In the type library of an interface what a member gives is its last argument, by reference.
MemberDescription describe(ITypeInfo* type, const FunctionDescription& function) {
  MemberDescription member;
  member.id = function->memid;
  member.slot = function->oVft / static_cast<int>(sizeof(void*));
  member.kind = kindOf(function->invkind);
  std::vector<std::string> names = namesOf(type, function);
  names.resize(static_cast<std::size_t>(function->cParams) + 1);
  member.name = names[0];
  for (SHORT i = 0; i < function->cParams; ++i) {
    const ELEMDESC& element = function->lprgelemdescParam[i];
    const USHORT flags = element.paramdesc.wParamFlags;
    ArgumentDescription argument{
        typeText(type, element.tdesc), names[static_cast<std::size_t>(i) + 1],
        (flags & PARAMFLAG_FOUT) != 0, (flags & PARAMFLAG_FIN) != 0, (flags & PARAMFLAG_FOPT) != 0};
    if (flags & PARAMFLAG_FRETVAL) {
      argument.type.pop_back();
      member.result = argument;
    } else {
      member.arguments.push_back(argument);
    }
  }
  return member;
}

}  // namespace

std::string narrow(const wchar_t* text) {
  const std::wstring wide = text ? text : L"";
  std::string bytes;
  std::transform(wide.begin(), wide.end(), std::back_inserter(bytes),
                 [](wchar_t letter) { return letter < 128 ? static_cast<char>(letter) : '?'; });
  return bytes;
}

TypeAttributes::TypeAttributes(ITypeInfo* type) : type_(type) {
  require(type->GetTypeAttr(&attributes_), "GetTypeAttr");
}

FunctionDescription::FunctionDescription(ITypeInfo* type, UINT index) : type_(type) {
  require(type->GetFuncDesc(index, &description_), "GetFuncDesc");
}

std::map<std::string, ComPtr<ITypeInfo>> typesOf(ITypeLib* library) {
  std::map<std::string, ComPtr<ITypeInfo>> types;
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> type;
    require(library->GetTypeInfo(i, &type), "GetTypeInfo");
    types[nameOf(type.Get(), MEMBERID_NIL)] = type;
  }
  return types;
}

ComPtr<ITypeInfo> vtableForm(ITypeInfo* type) {
  const TypeAttributes attributes(type);
  if (!(attributes->wTypeFlags & TYPEFLAG_FDUAL)) return type;
  HREFTYPE reference = 0;
  require(type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), "GetRefTypeOfImplType");
  ComPtr<ITypeInfo> form;
  require(type->GetRefTypeInfo(reference, &form), "GetRefTypeInfo");
  return form;
}

std::string MemberDescription::valueType() const {
  if (isMethod()) return {};
  if (kind == "get") return result ? result->type : "";
  return arguments.empty() ? "" : arguments.back().type;
}

std::vector<ArgumentDescription> MemberDescription::plainArguments() const {
  std::vector<ArgumentDescription> plain = arguments;
  if (kind.starts_with("put") && !plain.empty()) plain.pop_back();
  return plain;
}

std::string MemberDescription::signature() const {
  std::string text;
  for (const ArgumentDescription& argument : plainArguments()) {
    text += (text.empty() ? "" : ", ") + std::string(argument.isOptional ? "optional " : "") +
            (argument.isOut ? argument.isIn ? "inout " : "out " : "") + argument.type + " " +
            argument.name;
  }
  if (!isMethod()) return name + (text.empty() ? "" : "(" + text + ")") + ": " + valueType();
  return name + "(" + text + ")" + (result ? " -> " + result->type + " " + result->name : "");
}

std::vector<MemberDescription> membersOf(ITypeInfo* type) {
  const TypeAttributes attributes(type);
  std::vector<MemberDescription> members;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    members.push_back(describe(type, FunctionDescription(type, i)));
  }
  return members;
}

std::vector<std::string> memberLines(ITypeInfo* type) {
  std::vector<std::string> lines;
  for (const MemberDescription& member : membersOf(type)) {
    lines.push_back(std::to_string(member.id) + " " + member.kind + " " + member.signature());
  }
  return lines;
}

std::vector<std::string> interfaceLines(ITypeInfo* coclass) {
  const TypeAttributes attributes(coclass);
  std::vector<std::string> lines;
  for (UINT i = 0; i < attributes->cImplTypes; ++i) {
    HREFTYPE reference = 0;
    INT flags = 0;
    ComPtr<ITypeInfo> implemented;
    require(coclass->GetRefTypeOfImplType(i, &reference), "GetRefTypeOfImplType");
    require(coclass->GetRefTypeInfo(reference, &implemented), "GetRefTypeInfo");
    require(coclass->GetImplTypeFlags(i, &flags), "GetImplTypeFlags");
    lines.push_back(std::string(flags & IMPLTYPEFLAG_FDEFAULT ? "default " : "") +
                    (flags & IMPLTYPEFLAG_FSOURCE ? "source " : "") +
                    nameOf(implemented.Get(), MEMBERID_NIL));
  }
  return lines;
}

std::string helpOf(ITypeInfo* type, MEMBERID member) {
  _bstr_t help;
  require(type->GetDocumentation(member, nullptr, help.GetAddress(), nullptr, nullptr),
          "GetDocumentation");
  return narrow(help);
}

}  // namespace zyn::test
