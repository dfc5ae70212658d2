#include "zynshot/ComFailure_com.h"

#include <cstdio>
#include <string>

#include "zynshot/Console_win.h"

namespace zyn::shot {

void check(HRESULT result, const wchar_t* subject, const char* problem) {
  if (SUCCEEDED(result)) {
    return;
  }
  char code[16] = {};
  std::snprintf(code, sizeof code, " (0x%08lX)", static_cast<unsigned long>(result));
  throw ComFailure(toUtf8(subject) + ' ' + problem + code);
}

}  // namespace zyn::shot
