#include "Library_win.h"

#include <algorithm>

#include "support/RegisteredClasses_win.h"

namespace zyn::reference {
namespace {

using test::ComPtr;
using test::narrow;
using test::require;
using test::TypeAttributes;

std::string nameOf(ITypeInfo* type, MEMBERID member = MEMBERID_NIL) {
  _bstr_t name;
  require(type->GetDocumentation(member, name.GetAddress(), nullptr, nullptr, nullptr),
          "GetDocumentation");
  return narrow(name);
}

void addMember(InterfaceEntry& entry, const FunctionEntry& function) {
  const long id = entry.hasDispids ? function.member.id : function.member.slot;
  const auto known =
      std::find_if(entry.members.begin(), entry.members.end(),
                   [&](const MemberEntry& member) { return entry.hasDispids && member.id == id; });
  MemberEntry& member = known == entry.members.end() ? entry.members.emplace_back() : *known;
  member.id = id;
  if (member.signature.empty()) member.signature = function.member.signature();
  member.kinds.push_back(function.member.kind);
  member.help.push_back(function.help);
}

std::string baseOf(ITypeInfo* type) {
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> base;
  require(type->GetRefTypeOfImplType(0, &reference), "GetRefTypeOfImplType");
  require(type->GetRefTypeInfo(reference, &base), "GetRefTypeInfo");
  return nameOf(base.Get());
}

InterfaceEntry readInterface(ITypeInfo* type, const IdlHelp& help) {
  const TypeAttributes attributes(type);
  InterfaceEntry entry;
  entry.name = nameOf(type);
  entry.id = attributes->guid;
  entry.help = test::helpOf(type, MEMBERID_NIL);
  entry.hasDispids = attributes->typekind == TKIND_DISPATCH;
  const ComPtr<ITypeInfo> form = test::vtableForm(type);
  entry.base = baseOf(form.Get());
  for (const test::MemberDescription& member : test::membersOf(form.Get())) {
    entry.functions.push_back({member, help.of(entry.name, member.kind, member.name)});
    addMember(entry, entry.functions.back());
  }
  return entry;
}

std::string registeredText(REFCLSID id, const wchar_t* key) {
  return narrow(test::classesText(test::classKey(id) + L"\\" + key).c_str());
}

ClassEntry readClass(ITypeInfo* type) {
  ClassEntry entry;
  entry.name = nameOf(type);
  entry.id = TypeAttributes(type)->guid;
  entry.help = test::helpOf(type, MEMBERID_NIL);
  entry.progId = registeredText(entry.id, L"VersionIndependentProgID");
  entry.versionedProgId = registeredText(entry.id, L"ProgID");
  entry.stem = entry.progId.substr(entry.progId.find('.') + 1);
  for (const std::string& line : test::interfaceLines(type)) {
    const std::string name = line.substr(line.rfind(' ') + 1);
    if (line.starts_with("default source ")) {
      entry.events = name;
    } else if (line.starts_with("default ")) {
      entry.defaultInterface = name;
    }
  }
  return entry;
}

EnumerationEntry readEnumeration(ITypeInfo* type) {
  const TypeAttributes attributes(type);
  EnumerationEntry entry;
  entry.name = nameOf(type);
  entry.help = test::helpOf(type, MEMBERID_NIL);
  for (UINT i = 0; i < attributes->cVars; ++i) {
    VARDESC* value = nullptr;
    require(type->GetVarDesc(i, &value), "GetVarDesc");
    entry.values.emplace_back(nameOf(type, value->memid), V_I4(value->lpvarValue));
    type->ReleaseVarDesc(value);
  }
  return entry;
}

}  // namespace

Library readLibrary(REFGUID id, const IdlHelp& help) {
  ComPtr<ITypeLib> types;
  require(LoadRegTypeLib(id, 1, 0, 0, &types), "LoadRegTypeLib");
  Library library;
  library.id = id;
  _bstr_t name;
  _bstr_t text;
  require(types->GetDocumentation(-1, name.GetAddress(), text.GetAddress(), nullptr, nullptr),
          "GetDocumentation");
  library.name = narrow(name);
  library.help = narrow(text);
  for (UINT i = 0; i < types->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> type;
    require(types->GetTypeInfo(i, &type), "GetTypeInfo");
    switch (TypeAttributes(type.Get())->typekind) {
      case TKIND_COCLASS:
        library.classes.push_back(readClass(type.Get()));
        break;
      case TKIND_ENUM:
        library.enumerations.push_back(readEnumeration(type.Get()));
        break;
      case TKIND_DISPATCH:
      case TKIND_INTERFACE:
        if (help.declares(nameOf(type.Get()))) {
          library.interfaces.push_back(readInterface(type.Get(), help));
        }
        break;
      default:
        break;
    }
  }
  return library;
}

}  // namespace zyn::reference
