// A stand-in for opengl32.dll: it passes every call on to the system's own, counts it and, on
// demand, notes the sequence of calls or makes a function fail. Tests use it through
// support/GlCalls_win.h.
//
// An entry point is a jump with its index to one common piece of code, which keeps the arguments in
// their registers: no signature needs to be known. Functions that wglGetProcAddress answers get
// such entry points too, from a reserve. For one thread at a time.

#include <windows.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// What the system's library exports.
constexpr std::string_view kExports[] = {
#define ZYN_GL(index, name) #name,
#include "opengl32_names.inc"
#undef ZYN_GL
};

/// Entry points for what wglGetProcAddress answers: as many as the .rept below makes.
constexpr std::size_t kReserve = 256;
constexpr std::size_t kReserveStep = 16;  ///< bytes

struct Function {
  std::string name;
  FARPROC target = nullptr;
  std::uint64_t calls = 0;
  std::uint64_t untilFailure = 0;  ///< calls that go through before the first that fails
  std::uint64_t failures = 0;      ///< calls that fail then
};

std::intptr_t fail() {
  SetLastError(ERROR_NOT_SUPPORTED);
  return 0;
}

template <class Result, class... Arguments>
FARPROC address(Result (*function)(Arguments...)) {
  return std::bit_cast<FARPROC>(function);
}

HMODULE systemOpenGl() {
  static const HMODULE module = [] {
    std::array<wchar_t, MAX_PATH> folder{};
    GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return LoadLibraryW((std::wstring(folder.data()) + L"\\opengl32.dll").c_str());
  }();
  return module;
}

class Recorder {
 public:
  static Recorder& only() {
    static Recorder recorder;
    return recorder;
  }

  /// Counts a call of the function and tells where it goes.
  FARPROC called(std::size_t index) {
    Function& function = functions_[index];
    ++function.calls;
    ++calls_;
    if (isRecording_) record_.push_back(index);
    if (function.untilFailure > 0) {
      --function.untilFailure;
    } else if (function.failures > 0) {
      --function.failures;
      return address(fail);
    }
    return function.target;
  }

  /// The reserve's entry point for a function of that name, one for each address it has been given.
  PROC entryPoint(const char* name, PROC target);

  void forget() {
    for (Function& function : functions_) function.calls = 0;
    calls_ = 0;
    record_.clear();
  }
  std::uint64_t calls(const char* name) const {
    if (!name) return calls_;
    std::uint64_t sum = 0;
    for (const Function& function : functions_) {
      if (function.name == name) sum += function.calls;
    }
    return sum;
  }
  void record(bool isRecording) { isRecording_ = isRecording; }
  const char* recorded(std::size_t call) const {
    return call < record_.size() ? functions_[record_[call]].name.c_str() : nullptr;
  }
  void failCalls(const char* name, std::uint64_t untilFailure, std::uint64_t failures) {
    for (Function& function : functions_) {
      if (function.name != name) continue;
      function.untilFailure = untilFailure;
      function.failures = failures;
    }
  }
  void hide(const char* name) { hidden_.insert(name); }
  bool isHidden(const char* name) const { return hidden_.contains(name); }
  void heal() {
    for (Function& function : functions_) function.untilFailure = function.failures = 0;
    hidden_.clear();
  }

 private:
  Recorder();

  std::vector<Function> functions_;
  std::vector<std::size_t> record_;
  std::set<std::string> hidden_;
  std::uint64_t calls_ = 0;
  bool isRecording_ = false;
};

PROC WINAPI findExtension(LPCSTR name) {
  if (Recorder::only().isHidden(name)) return std::bit_cast<PROC>(fail());
  using Find = PROC(WINAPI*)(LPCSTR);
  static const auto find = std::bit_cast<Find>(GetProcAddress(systemOpenGl(), "wglGetProcAddress"));
  const PROC found = find(name);
  return found ? Recorder::only().entryPoint(name, found) : nullptr;
}

Recorder::Recorder() {
  functions_.reserve(std::size(kExports) + kReserve);
  for (const std::string_view name : kExports) {
    const FARPROC target = name == "wglGetProcAddress"
                               ? address(findExtension)
                               : GetProcAddress(systemOpenGl(), name.data());
    functions_.push_back({std::string(name), target ? target : address(fail)});
  }
}

}  // namespace

extern "C" {

extern const char zynGlReserve[];

PROC zynGlReserveEntry(std::size_t number) {
  return std::bit_cast<PROC>(zynGlReserve + number * kReserveStep);
}

/// Called by every entry point.
FARPROC zynGlCalled(std::size_t index) { return Recorder::only().called(index); }

__declspec(dllexport) void zynGlForget() { Recorder::only().forget(); }
__declspec(dllexport) std::uint64_t zynGlCalls(const char* name) {
  return Recorder::only().calls(name);
}
__declspec(dllexport) void zynGlRecord(int isRecording) {
  Recorder::only().record(isRecording != 0);
}
__declspec(dllexport) const char* zynGlRecorded(std::size_t call) {
  return Recorder::only().recorded(call);
}
__declspec(dllexport) void zynGlFail(const char* name, std::uint64_t untilFailure,
                                     std::uint64_t failures) {
  Recorder::only().failCalls(name, untilFailure, failures);
}
__declspec(dllexport) void zynGlHide(const char* name) { Recorder::only().hide(name); }
__declspec(dllexport) void zynGlHeal() { Recorder::only().heal(); }

}  // extern "C"

namespace {

PROC Recorder::entryPoint(const char* name, PROC target) {
  for (std::size_t i = std::size(kExports); i < functions_.size(); ++i) {
    if (functions_[i].name == name && functions_[i].target == target) {
      return zynGlReserveEntry(i - std::size(kExports));
    }
  }
  const std::size_t used = functions_.size() - std::size(kExports);
  if (used == kReserve) return target;  // works, uncounted
  functions_.push_back({name, target});
  return zynGlReserveEntry(used);
}

}  // namespace

// The common piece: the index in eax, everything else as the caller left it.
asm(R"(
  .text
zynGlEnter:
  pushq %rcx
  pushq %rdx
  pushq %r8
  pushq %r9
  subq $104, %rsp
  movups %xmm0, 32(%rsp)
  movups %xmm1, 48(%rsp)
  movups %xmm2, 64(%rsp)
  movups %xmm3, 80(%rsp)
  movl %eax, %ecx
  call zynGlCalled
  movups 32(%rsp), %xmm0
  movups 48(%rsp), %xmm1
  movups 64(%rsp), %xmm2
  movups 80(%rsp), %xmm3
  addq $104, %rsp
  popq %r9
  popq %r8
  popq %rdx
  popq %rcx
  jmp *%rax
)");

#define ZYN_GL(index, name) \
  asm(".globl " #name "\n" #name ":\n  movl $" #index ", %eax\n  jmp zynGlEnter\n");
#include "opengl32_names.inc"
#undef ZYN_GL

asm(R"(
  .globl zynGlReserve
  .balign 16
zynGlReserve:
  .set zynGlIndex, )" ZYN_GL_COUNT R"(
  .rept 256
  .balign 16
  movl $zynGlIndex, %eax
  jmp zynGlEnter
  .set zynGlIndex, zynGlIndex + 1
  .endr
)");
