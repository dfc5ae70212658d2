#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <cstdint>

#include "contract/ISceneObject_com.h"
#include "core/ZYNList.h"
#include "platform/ObjectPool_win.h"

namespace zyn {

/// One element of a draw list: an added scene object and how its view draws it. Watches the object
/// if it is ours, for the ElementGroup that it is in.
struct DrawElem final : WatchLink, ZYNLink<DrawElem>, Pooled<DrawElem> {
  Microsoft::WRL::ComPtr<IDispatch> object;  ///< the one reference that the list holds
  ISceneObject* own = nullptr;               ///< the object, where it is one of ours
  std::uint32_t drawingMode = 0;             ///< as given to Add, handed to the object at each draw
  std::int32_t pickName = -1;  ///< number under which the object answers in picking; -1: none

  DrawElem() = default;
  DrawElem(const DrawElem&) = delete;
  DrawElem& operator=(const DrawElem&) = delete;

  /// Its place in the list.
  ZYNLink<DrawElem>& node() { return *this; }
  const ZYNLink<DrawElem>& node() const { return *this; }

  /// Whether drawing the object may take fonts.
  bool mayDrawText() const { return !own || own->takesFonts(); }
};

}  // namespace zyn
