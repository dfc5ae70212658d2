#include "support/Program_win.h"

#include <windows.h>

#include <stdexcept>

#include "support/TempFolder_win.h"

namespace zyn::test {

namespace {

/// A file that a child process can write to.
class Stream {
 public:
  explicit Stream(const std::filesystem::path& path) : path_(path) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    handle_ = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                          &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  ~Stream() { CloseHandle(handle_); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  HANDLE handle() const { return handle_; }
  std::string content() const {
    std::ifstream in(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }

 private:
  std::filesystem::path path_;
  HANDLE handle_;
};

}  // namespace

ProgramResult runProgram(const std::wstring& commandLine) {
  const TempFolder folder;
  const Stream output(folder.file(L"output"));
  const Stream error(folder.file(L"error"));
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.handle();
  startup.hStdError = error.handle();
  PROCESS_INFORMATION process = {};
  std::wstring writable = commandLine;
  if (!CreateProcessW(nullptr, writable.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &startup, &process)) {
    throw std::runtime_error("the program does not start");
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  ProgramResult result;
  GetExitCodeProcess(process.hProcess, &result.exitCode);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  result.output = output.content();
  result.error = error.content();
  return result;
}

}  // namespace zyn::test
