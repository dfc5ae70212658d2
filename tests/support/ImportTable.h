#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace zyn::test {

/// What is to be made of an imported function in tests of failing calls.
struct ImportRule {
  /// Whether calls are made to fail, with this result and last error; otherwise `reason` tells why
  /// a failure does not matter, or where else it is tested.
  bool fails = false;
  std::uintptr_t result = 0;
  std::uint32_t lastError = 0;
  std::string reason;
};

/// The rules of the functions that our modules import, by name. OpenGL's own are not among them.
const std::map<std::string, ImportRule>& importRules();

}  // namespace zyn::test
