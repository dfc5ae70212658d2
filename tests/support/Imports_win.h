#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace zyn::test {

/// One function that a module imports.
struct Import {
  std::string library;  ///< in small letters, "gdi32.dll"
  std::string function;
  void** slot;  ///< where the module reads the function's address
};

/// All imports of a loaded module.
std::vector<Import> importsOf(HMODULE module);

/// Has a module call another function in place of an imported one, for a scope.
class ImportPatch {
 public:
  /// Throws if the module does not import the function.
  ImportPatch(HMODULE module, const std::string& function, const void* replacement);
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

  const void* original() const { return original_; }

 private:
  void** slot_;
  void* original_;
};

}  // namespace zyn::test
