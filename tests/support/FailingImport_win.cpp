#include "support/FailingImport_win.h"

#include <cstring>
#include <stdexcept>

namespace zyn::test {
namespace {

/// Machine code that counts a call and either goes on to the function or fails. It touches only
/// registers that carry no argument.
#pragma pack(push, 1)
struct Stub {
  std::uint8_t loadCalls[2] = {0x49, 0xBA};  // mov r10, calls
  const void* calls = nullptr;
  std::uint8_t count[11] = {0x41, 0xBB, 1,    0,    0,   0,  // mov r11d, 1
                            0xF0, 0x45, 0x0F, 0xC1, 0x1A};   // lock xadd [r10], r11d
  std::uint8_t compare[10] = {0x45, 0x2B, 0x5A, 4,           // sub r11d, [r10 + 4]
                              0x45, 0x3B, 0x5A, 8,           // cmp r11d, [r10 + 8]
                              0x72, 13};                     // jb to enter
  std::uint8_t loadFunction[2] = {0x49, 0xBA};               // mov r10, function
  const void* function = nullptr;
  std::uint8_t go[3] = {0x41, 0xFF, 0xE2};           // jmp r10
  std::uint8_t enter[4] = {0x48, 0x83, 0xEC, 0x28};  // sub rsp, 40
  std::uint8_t loadError[1] = {0xB9};                // mov ecx, lastError
  DWORD lastError = 0;
  std::uint8_t loadSetter[2] = {0x48, 0xB8};  // mov rax, SetLastError
  const void* setter = nullptr;
  std::uint8_t leave[6] = {0xFF, 0xD0,               // call rax
                           0x48, 0x83, 0xC4, 0x28};  // add rsp, 40
  std::uint8_t loadResult[2] = {0x48, 0xB8};         // mov rax, result
  std::uintptr_t result = 0;
  std::uint8_t end[1] = {0xC3};  // ret
};
#pragma pack(pop)
static_assert(offsetof(FailingCalls, passed) == 4 && offsetof(FailingCalls, failing) == 8);

void* emptyCode() {
  void* const code =
      VirtualAlloc(nullptr, sizeof(Stub), MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
  if (code == nullptr) throw std::runtime_error("VirtualAlloc");
  return code;
}

}  // namespace

FailingImport::FailingImport(HMODULE module, const std::string& function, Failure failure,
                             FailingCalls& calls)
    : calls_(calls),
      code_(emptyCode()),
      patch_(std::make_unique<ImportPatch>(module, function, code_)) {
  Stub stub;
  stub.calls = &calls_;
  stub.function = patch_->original();
  stub.lastError = failure.lastError;
  stub.setter = reinterpret_cast<const void*>(&SetLastError);
  stub.result = failure.result;
  std::memcpy(code_, &stub, sizeof stub);
}

FailingImport::FailingImport(HMODULE module, const std::string& function, Failure failure,
                             std::uint32_t nth, std::uint32_t count)
    : FailingImport(module, function, failure, own_) {
  own_.fail(nth, count);
}

FailingImport::~FailingImport() {
  patch_.reset();
  VirtualFree(code_, 0, MEM_RELEASE);
}

}  // namespace zyn::test
