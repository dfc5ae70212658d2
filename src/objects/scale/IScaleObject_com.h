#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include <string>

#include "contract/ISceneObject_com.h"
#include "objects/scale/SharedScale.h"

namespace zyn {

/// Private interface of our colour scales: what is coloured by one holds the object, asks it for
/// the scale at each draw, and joins it to be told of changes and to count for an automatic range.
/// A graph that shows it lays its bar out.
struct IScaleObject : public IUnknown {
  virtual SharedScale& STDMETHODCALLTYPE sharedScale() noexcept = 0;

  /// What a graph is to write beside the bar; null where the host has given the bar a place or a
  /// size, by which it draws itself.
  virtual const std::wstring* STDMETHODCALLTYPE titleInGraph() noexcept = 0;
};
/// Builds that lay these out in another way do not know each other's scales.
constexpr unsigned short kScaleLayout =
    layoutOf<ColourScale, SharedScale, ScaleUser, std::wstring>();

}  // namespace zyn

__CRT_UUID_DECL(zyn::IScaleObject, 0x5d0b9c1e, 0x7a4f ^ zyn::kScaleLayout, 0x4c86, 0x9b, 0x12, 0xe3,
                0x5a, 0x77, 0x10, 0xc4, 0x2e)
