#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::test {

std::string narrow(const wchar_t* text);

/// The attributes of a type, given back with it.
class TypeAttributes {
 public:
  explicit TypeAttributes(ITypeInfo* type);
  ~TypeAttributes() { type_->ReleaseTypeAttr(attributes_); }
  TypeAttributes(const TypeAttributes&) = delete;
  TypeAttributes& operator=(const TypeAttributes&) = delete;
  const TYPEATTR* operator->() const { return attributes_; }

 private:
  ComPtr<ITypeInfo> type_;
  TYPEATTR* attributes_ = nullptr;
};

/// One function of a type, given back with it.
class FunctionDescription {
 public:
  FunctionDescription(ITypeInfo* type, UINT index);
  ~FunctionDescription() { type_->ReleaseFuncDesc(description_); }
  FunctionDescription(const FunctionDescription&) = delete;
  FunctionDescription& operator=(const FunctionDescription&) = delete;
  const FUNCDESC* operator->() const { return description_; }

 private:
  ComPtr<ITypeInfo> type_;
  FUNCDESC* description_ = nullptr;
};

/// Every type of a library by its name.
std::map<std::string, ComPtr<ITypeInfo>> typesOf(ITypeLib* library);

/// The vtable form of a dual interface; any other type as it is.
ComPtr<ITypeInfo> vtableForm(ITypeInfo* type);

/// An argument of a member, or what it gives. Types that Automation does not know appear as "vt"
/// and their number.
struct ArgumentDescription {
  std::string type;
  std::string name;
  bool isOut = false;
  bool isIn = false;
  bool isOptional = false;
};

/// A function of a type.
struct MemberDescription {
  long id = 0;
  int slot = 0;      ///< of the vtable
  std::string kind;  ///< "get", "put", "putref" or "method"
  std::string name;
  std::vector<ArgumentDescription> arguments;
  std::optional<ArgumentDescription> result;

  bool isMethod() const { return kind == "method"; }
  /// The type of a property's value; empty for a method.
  std::string valueType() const;
  /// Of a method; of a property what it takes besides its value.
  std::vector<ArgumentDescription> plainArguments() const;
  /// "Add(IDispatch* newTrace, long drawing_mode)", "PickSize: double",
  /// "Position(long Numero): double".
  std::string signature() const;
};

/// The members that the type itself declares.
std::vector<MemberDescription> membersOf(ITypeInfo* type);

/// The same, a line each, in the manner of PublishedMembers.
std::vector<std::string> memberLines(ITypeInfo* type);

/// The interfaces of a coclass with their role: "default IZYNVue3D", "default source
/// _IZYNVue3DEvents".
std::vector<std::string> interfaceLines(ITypeInfo* coclass);

/// The help string of a member, or of the type itself for MEMBERID_NIL.
std::string helpOf(ITypeInfo* type, MEMBERID member);

}  // namespace zyn::test
