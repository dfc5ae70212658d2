#include "com/readyToThrow.h"

#include <cxxabi.h>

#include <cstddef>
#include <cstdlib>

namespace zyn {

namespace {

/// More than the runtime takes.
constexpr std::size_t kRuntimeBytes = 4096;

bool isThereMemory() noexcept {
  void* volatile memory = std::malloc(kRuntimeBytes);  // volatile: not to be optimised away
  std::free(memory);
  return memory != nullptr;
}

}  // namespace

bool readyToThrow() noexcept {
  if (!isThereMemory()) {
    return false;
  }
  // A local static object that is made at run time, and the thread's record of exceptions. What the
  // record counts tells nothing: exceptions that other modules throw through us are not all in it.
  static const bool isFirst = isThereMemory();
  const volatile void* const volatile record = abi::__cxa_get_globals();
  return isFirst && record != nullptr;
}

}  // namespace zyn
