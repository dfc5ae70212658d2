// Hosts that end with objects of the library alive: no crash, no hang, and the exit code is theirs.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <tuple>

namespace zyn::test {
namespace {

constexpr DWORD kExitCode = 42;
constexpr DWORD kPatience = 60000;  ///< milliseconds; one takes less than one second

struct Case {
  const char* subject;
  const char* way;
};
void PrintTo(const Case& tested, std::ostream* out) { *out << tested.subject << tested.way; }

class ProcessEnd : public testing::TestWithParam<Case> {
 protected:
  /// Runs the host to its end and gives its exit code.
  static DWORD run(const std::string& arguments) {
    std::string command = "ending_host.exe " + arguments;
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &start, &process)) {
      ADD_FAILURE() << "ending_host.exe does not start";
      return 0;
    }
    if (WaitForSingleObject(process.hProcess, kPatience) != WAIT_OBJECT_0) {
      ADD_FAILURE() << "it does not end";
      TerminateProcess(process.hProcess, 1);
      WaitForSingleObject(process.hProcess, kPatience);
    }
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
  }
};

TEST_P(ProcessEnd, IsTheHostsOwn) {
  EXPECT_EQ(run(std::string(GetParam().subject) + ' ' + GetParam().way), kExitCode);
}

const Case kCases[] = {
    {"everything", "return"},
    {"everything", "exit"},
    {"everything", "atexit"},
    {"everything", "static"},
    {"everything", "ExitProcess"},
    {"everything", "uninitialize"},
    {"everything", "uninitializeUnderWindows"},
    {"everything", "unload"},
    {"everything", "detach"},
    {"everything", "unloadUnderWindows"},
    {"everything", "detachFirst"},
    {"everything", "detachAndClose"},
    {"everything", "thread"},
    {"dialog", "exit"},
    {"dialog", "ExitProcess"},
    {"dialog", "detach"},
    {"dialog", "thread"},
    {"paint", "exit"},
    {"paint", "atexit"},
    {"paint", "detachAndClose"},
    {"export", "ExitProcess"},
    {"export", "detach"},
};

INSTANTIATE_TEST_SUITE_P(All, ProcessEnd, testing::ValuesIn(kCases), [](const auto& tested) {
  return std::string(tested.param.subject) + "_" + tested.param.way;
});

}  // namespace
}  // namespace zyn::test
