#pragma once

#include <map>
#include <string>
#include <vector>

#include "IdlHelp.h"
#include "support/TypeReader_win.h"

namespace zyn::reference {

/// One member of an interface: a method, or a property with its gets and puts.
struct MemberEntry {
  long id = 0;            ///< DISPID, or the place in the vtable of an interface without them
  std::string signature;  ///< "Add(IDispatch* newTrace, long drawing_mode)", "PickSize: double"
  std::vector<std::string> kinds;  ///< "get", "put", "putref", or "method"
  std::vector<std::string> help;   ///< one for each kind
};

/// One function of an interface.
struct FunctionEntry {
  test::MemberDescription member;
  std::string help;
};

struct InterfaceEntry {
  std::string name;
  std::string base;
  GUID id;
  std::string help;
  bool hasDispids = true;
  std::vector<FunctionEntry> functions;  ///< in the order of the library
  std::vector<MemberEntry> members;
};

struct ClassEntry {
  std::string name;
  GUID id;
  std::string help;
  std::string progId;           ///< the version-independent one
  std::string versionedProgId;  ///< of this version
  std::string stem;             ///< the name in the ProgID
  std::string defaultInterface;
  std::string events;  ///< empty for none
};

struct EnumerationEntry {
  std::string name;
  std::string help;
  std::vector<std::pair<std::string, long>> values;
};

/// What a registered type library says, in the order of its source.
struct Library {
  std::string name;
  std::string help;
  GUID id;
  std::vector<InterfaceEntry> interfaces;
  std::vector<ClassEntry> classes;
  std::vector<EnumerationEntry> enumerations;
};

/// Throws std::runtime_error when the library is not registered or a help string is missing.
Library readLibrary(REFGUID id, const IdlHelp& help);

}  // namespace zyn::reference
