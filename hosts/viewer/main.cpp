// viewer: models and tool paths in the 3D view of ZYNVue and tables in its graphs, controls in a
// window of their own.

#include <windows.h>
// After windows.h:
#include <ole2.h>
#include <shellapi.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "common/ComFailure_com.h"
#include "common/Utf8_win.h"
#include "viewer/CommandLine.h"
#include "viewer/Message_win.h"
#include "viewer/Viewer_com.h"

namespace zyn::viewer {
namespace {

constexpr int kFailed = 1;

/// OLE for the calling thread.
class OleApartment {
 public:
  OleApartment() { host::check(OleInitialize(nullptr), L"OleInitialize"); }
  ~OleApartment() { OleUninitialize(); }
  OleApartment(const OleApartment&) = delete;
  OleApartment& operator=(const OleApartment&) = delete;
};

struct LocalFreer {
  void operator()(wchar_t** memory) const { LocalFree(memory); }
};

std::vector<std::string> programArguments() {
  int count = 0;
  const std::unique_ptr<wchar_t*, LocalFreer> words(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) {
    arguments.push_back(host::toUtf8(words.get()[i]));
  }
  return arguments;
}

int run(const std::vector<std::string>& arguments) {
  try {
    Request request = parseCommandLine(arguments);
    if (request.help) {
      tellUsage(usageText(), request.batch);
      return 0;
    }
    SetProcessDPIAware();  // where the manifest is not beside the program
    const OleApartment apartment;
    return Viewer(std::move(request)).run();
  } catch (const std::exception& error) {
    const bool batch = std::ranges::find(arguments, "--batch") != arguments.end();
    tellProblem(nullptr, error.what(), batch);
    return kFailed;
  }
}

}  // namespace
}  // namespace zyn::viewer

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  return zyn::viewer::run(zyn::viewer::programArguments());
}
