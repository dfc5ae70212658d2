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

std::string methodText(ITypeInfo* type, const FunctionDescription& function) {
  std::vector<std::string> names = namesOf(type, function);
  names.resize(static_cast<std::size_t>(function->cParams) + 1);
  std::string arguments;
  std::string result;
  for (SHORT i = 0; i < function->cParams; ++i) {
    const ELEMDESC& element = function->lprgelemdescParam[i];
    const std::string& name = names[static_cast<std::size_t>(i) + 1];
    const std::string text = typeText(type, element.tdesc);
    if (element.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) {
      result = " -> " + text.substr(0, text.size() - 1) + " " + name;
      continue;
    }
    const bool out = element.paramdesc.wParamFlags & PARAMFLAG_FOUT;
    arguments +=
        (arguments.empty() ? "" : ", ") + std::string(out ? "out " : "") + text + " " + name;
  }
  return names[0] + "(" + arguments + ")" + result;
}

/// A property has one argument: its new value, or the place of its value.
std::string propertyText(ITypeInfo* type, const FunctionDescription& function, bool isGet) {
  const std::string name = nameOf(type, function->memid);
  if (function->cParams != 1) return name + " with other arguments";
  std::string text = typeText(type, function->lprgelemdescParam[0].tdesc);
  if (isGet) text.pop_back();
  return name + ": " + text;
}

std::string memberText(ITypeInfo* type, const FunctionDescription& function) {
  const std::string id = std::to_string(function->memid) + " ";
  switch (function->invkind) {
    case INVOKE_PROPERTYGET:
      return id + "get " + propertyText(type, function, true);
    case INVOKE_PROPERTYPUT:
      return id + "put " + propertyText(type, function, false);
    case INVOKE_PROPERTYPUTREF:
      return id + "putref " + propertyText(type, function, false);
    default:
      return id + "method " + methodText(type, function);
  }
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

std::vector<std::string> memberLines(ITypeInfo* type) {
  const TypeAttributes attributes(type);
  std::vector<std::string> lines;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    lines.push_back(memberText(type, FunctionDescription(type, i)));
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
