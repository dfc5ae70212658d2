#include "support/Watchdog_win.h"

#include <csignal>
#include <cstdio>
#include <cstring>

#include "support/ProcessUsage_win.h"

namespace zyn::test {
namespace {

constexpr int kFailed = 3;
constexpr DWORD kPauseMs = 50;

const Watchdog* current = nullptr;

/// "ZYNVue.dll+1234": what addr2line and nm understand.
std::string placeOf(const void* address) {
  HMODULE module = nullptr;
  char path[MAX_PATH] = {};
  if (!GetModuleHandleExA(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          static_cast<const char*>(address), &module)) {
    return "?";
  }
  GetModuleFileNameA(module, path, MAX_PATH);
  const char* const name = std::strrchr(path, '\\');
  char text[MAX_PATH + 32];
  std::snprintf(text, sizeof text, "%s+0x%llx", name ? name + 1 : path,
                static_cast<unsigned long long>(static_cast<const char*>(address) -
                                                reinterpret_cast<const char*>(module)));
  return text;
}

/// The calls that lead to where a thread is.
std::string stackOf(CONTEXT context) {
  std::string text;
  for (int depth = 0; depth < 24 && context.Rip != 0; ++depth) {
    text += "\n    " + placeOf(reinterpret_cast<const void*>(context.Rip));
    DWORD64 base = 0;
    PRUNTIME_FUNCTION const function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
    if (!function) break;
    void* data = nullptr;
    DWORD64 frame = 0;
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &data, &frame,
                     nullptr);
  }
  return text;
}

LONG WINAPI reportCrash(EXCEPTION_POINTERS* exception) {
  char code[32];
  std::snprintf(code, sizeof code, "exception 0x%08lx", exception->ExceptionRecord->ExceptionCode);
  current->fail(code + stackOf(*exception->ContextRecord));
}

void reportAbort(int) {
  CONTEXT context = {};
  RtlCaptureContext(&context);
  current->fail("abort" + stackOf(context));
}

/// Processor time that a thread has used, in milliseconds.
std::uint64_t usedBy(HANDLE thread) {
  FILETIME born;
  FILETIME ended;
  FILETIME kernel;
  FILETIME user;
  if (!GetThreadTimes(thread, &born, &ended, &kernel, &user)) return 0;
  const auto ticks = [](const FILETIME& time) {
    return (std::uint64_t{time.dwHighDateTime} << 32U) | time.dwLowDateTime;
  };
  return (ticks(kernel) + ticks(user)) / 10000;
}

}  // namespace

Watchdog::Watchdog(double longestSeconds, double mostMegabytes)
    : longestSeconds_(longestSeconds), mostMegabytes_(mostMegabytes) {
  current = this;
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &watched_, 0, FALSE,
                  DUPLICATE_SAME_ACCESS);
  SetUnhandledExceptionFilter(reportCrash);
  std::signal(SIGABRT, reportAbort);
  thread_ = std::thread([this] { watch(); });
}

Watchdog::~Watchdog() {
  done_ = true;
  thread_.join();
  CloseHandle(watched_);
  SetUnhandledExceptionFilter(nullptr);
  std::signal(SIGABRT, SIG_DFL);
  current = nullptr;
}

void Watchdog::enter(const char* name) {
  names_[++calls_ % names_.size()] = name;
  since_ = GetTickCount64();
}

std::string Watchdog::lastNames() const {
  std::string text;
  for (std::uint64_t i = 0; i < names_.size(); ++i) {
    const char* const name = names_[(calls_ - i) % names_.size()];
    if (name) text += (i == 0 ? "" : ", after ") + std::string(name);
  }
  return text;
}

void Watchdog::fail(const std::string& what) const {
  std::printf("FAILED: call %llu, %s: %s\n  %s\n", static_cast<unsigned long long>(calls_.load()),
              lastNames().c_str(), what.c_str(), context_.c_str());
  std::fflush(stdout);
  TerminateProcess(GetCurrentProcess(), kFailed);
  std::_Exit(kFailed);
}

/// A machine that is busy with other things makes calls slow too: what counts is the time that the
/// thread itself has used, or a wait of many times that long.
void Watchdog::watch() {
  constexpr double kPatience = 12;
  std::uint64_t call = 0;
  std::uint64_t usedBefore = 0;
  while (!done_) {
    Sleep(kPauseMs);
    const std::uint64_t since = since_;
    if (calls_ != call || since == 0) {
      call = calls_;
      usedBefore = usedBy(watched_);
    }
    const double waited = static_cast<double>(GetTickCount64() - since) / 1000;
    const double used = static_cast<double>(usedBy(watched_) - usedBefore) / 1000;
    const bool hangs =
        since != 0 && (used > longestSeconds_ || waited > kPatience * longestSeconds_);
    const double megabytes = currentCommitMb();
    if (!hangs && megabytes < mostMegabytes_) continue;
    CONTEXT context = {};
    context.ContextFlags = CONTEXT_FULL;
    SuspendThread(watched_);
    GetThreadContext(watched_, &context);
    fail((hangs ? "hangs" : "takes " + std::to_string(megabytes) + " MB") + stackOf(context));
  }
}

}  // namespace zyn::test
