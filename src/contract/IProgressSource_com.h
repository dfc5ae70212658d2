#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include "contract/ISceneObject_com.h"
#include "contract/ProgressListener.h"

namespace zyn {

/// Private interface of our objects that have members which take long: who is told how far they
/// are.
struct IProgressSource : public IUnknown {
  virtual ProgressListeners& STDMETHODCALLTYPE progressListeners() noexcept = 0;
};
/// Builds that lay these out in another way do not know each other.
constexpr unsigned short kProgressLayout = layoutOf<ProgressListeners, ProgressListener>();

}  // namespace zyn

__CRT_UUID_DECL(zyn::IProgressSource, 0x8a2c6f04, 0x1d5e ^ zyn::kProgressLayout, 0x4b39, 0xa7, 0x60,
                0x3c, 0x92, 0xe1, 0x58, 0xbf, 0x0e)
