#pragma once

#include <windows.h>

#include "core/Box3.h"

namespace zyn {

/// Private interface of our own scene objects: their bounds as a value, without a box object for
/// each question. Once it has been asked, an object counts its changes in the GeometryEpoch.
struct IModelBounds : public IUnknown {
  virtual Box3 STDMETHODCALLTYPE modelBounds() noexcept = 0;
};

}  // namespace zyn

__CRT_UUID_DECL(zyn::IModelBounds, 0x6f1c7c52, 0x8f0e, 0x4f0b, 0x9d, 0x54, 0x3a, 0x1f, 0x6f, 0x1b,
                0x2a, 0x10)
