#include "com/RegistrationScript.h"

#include <cstdlib>

namespace {

/// Whether a key could make the registrar touch another place than the one it stands in.
bool isSafe(const zyn::ScriptKey& key) {
  if (key.name.empty() || key.name.find_first_of(std::wstring(L"\\\0", 2)) != std::wstring::npos) {
    return false;
  }
  for (const zyn::ScriptKey& below : key.keys) {
    if (!isSafe(below)) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  const std::wstring text(data, data + size);
  try {
    const auto keys =
        zyn::parseRegistrationScript(text, {{L"MODULE", L"C:\\x.dll"}, {L"CLSID", L"{0}"}});
    for (const zyn::ScriptKey& key : keys) {
      if (!isSafe(key)) {
        std::abort();
      }
    }
  } catch (const zyn::RegistrationScriptError& error) {
    if (error.line() == 0 || error.column() == 0) {
      std::abort();
    }
  }
  return 0;
}
