// surrogate: a picture made by another process, the system's host of DLLs.
//
//   surrogate PICTURE.png
//
// The class must name an application, and that one a surrogate. Below HKEY_CLASSES_ROOT, the key
//   CLSID\{ECBC4052-3F62-4603-988F-604EDFC548DE}
// has the value AppID, {6A9E2C53-4D0B-4E2B-9D5C-7C1B1F6A2E11}, and the key
//   AppID\{6A9E2C53-4D0B-4E2B-9D5C-7C1B1F6A2E11}
// an empty value DllSurrogate.
//
// Scene objects draw with the OpenGL context of their own process: those of a picture must be in
// the same surrogate as its context.

#include <windows.h>
// After windows.h:
#include <comutil.h>
#include <wrl/client.h>

#include <cstdio>
#include <exception>
#include <filesystem>

#include "ZYNVUE.h"
#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"

namespace zyn::sample {
namespace {

using host::check;
using Microsoft::WRL::ComPtr;

/// Tells what comes next, at once: a process that does not answer stops us there.
void step(const char* words) {
  std::puts(words);
  std::fflush(stdout);
}

void draw(const std::filesystem::path& file) {
  step("asking the surrogate for a context");
  ComPtr<IZYN3DGLBitmapContext> context;
  check(CoCreateInstance(CLSID_ZYN3dGLBitmapContext, nullptr, CLSCTX_LOCAL_SERVER,
                         IID_PPV_ARGS(&context)),
        L"the context");
  step("drawing");
  const double blue[] = {0.2, 0.35, 0.6};
  check(context->put_BackColor(host::numberArray(blue)), L"BackColor");
  check(context->put_GradientBackground(VARIANT_TRUE), L"GradientBackground");
  check(context->setGradientColor(0.9F, 0.95F, 1), L"setGradientColor");
  LONG always1 = 0;
  check(context->CreateContext(640, 480, &always1), L"CreateContext");
  std::filesystem::remove(file);
  check(context->CreatePNG(nullptr, _bstr_t(file.c_str())), L"CreatePNG");
  if (!std::filesystem::exists(file)) {
    throw host::ComFailure("the picture could not be written");
  }
  step("letting go of the context");
}

}  // namespace
}  // namespace zyn::sample

int wmain(int count, wchar_t** words) {
  if (count != 2) {
    std::fputs("usage: surrogate PICTURE.png\n", stderr);
    return 2;
  }
  int result = 0;
  try {
    zyn::host::check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), L"CoInitializeEx");
    zyn::sample::draw(std::filesystem::absolute(words[1]));
    std::printf("the library is %s this process\n",
                GetModuleHandleW(L"ZYNVue.dll") == nullptr ? "not in" : "in");
    CoUninitialize();
    std::puts("done");
  } catch (const std::exception& error) {
    std::fprintf(stderr, "surrogate: %s\n", error.what());
    result = 1;
  }
  return result;
}
