#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include "contract/ISceneObject_com.h"
#include "objects/path/ToolShape.h"

namespace zyn {

/// Private interface of our tools: a path that has one holds the object, asks it for its shape at
/// each draw, and hears of its changes.
struct IToolObject : public IUnknown {
  virtual const ToolShape& STDMETHODCALLTYPE toolShape() noexcept = 0;
  virtual SceneWatch& STDMETHODCALLTYPE toolWatch() noexcept = 0;
};
/// Builds that lay these out in another way do not know each other's tools.
constexpr unsigned short kToolLayout = layoutOf<ToolShape, SceneWatch>();

}  // namespace zyn

__CRT_UUID_DECL(zyn::IToolObject, 0x1e7d40b3, 0x59c2 ^ zyn::kToolLayout, 0x4f8a, 0x8d, 0x05, 0x6b,
                0x21, 0xfa, 0x9c, 0x33, 0xe8)
