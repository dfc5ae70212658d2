#pragma once

#include <windows.h>

#include <optional>

#include "core/Box3.h"
#include "objects/GeometryEpoch.h"

namespace zyn {

/// Private interface of our own scene objects, in both modules: their bounds as a value, without a
/// box object for each question. Once it has been asked, an object counts its changes in the
/// GeometryEpoch of its module.
struct IModelBounds : public IUnknown {
  /// None while the object is empty.
  virtual std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept = 0;

  /// The count of the object's module, which is there as long as the object.
  virtual const GeometryEpoch::Count& STDMETHODCALLTYPE geometryEpoch() noexcept {
    return GeometryEpoch::count();
  }
};

}  // namespace zyn

__CRT_UUID_DECL(zyn::IModelBounds, 0x5d0c2f8b, 0x91e7, 0x4a36, 0x8c, 0x1d, 0x62, 0xf4, 0x0b, 0x97,
                0xe3, 0x5a)
