#include "com/readyToThrow.h"

#include <cstddef>
#include <cstdlib>
#include <exception>

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
  // A local static object that is made at run time, and the thread's record of exceptions.
  static const int before = std::uncaught_exceptions();
  return before + std::uncaught_exceptions() >= 0;
}

}  // namespace zyn
