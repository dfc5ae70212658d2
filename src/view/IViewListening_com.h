#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>

#include "contract/ISceneObject_com.h"
#include "view/ViewListener.h"

namespace zyn {

/// Private interface of our views: where to listen to them.
struct IViewListening : public IUnknown {
  virtual ViewListeners& STDMETHODCALLTYPE viewListeners() noexcept = 0;
};
/// Builds that lay these out in another way do not know each other.
constexpr unsigned short kListeningLayout = layoutOf<ViewListeners, ViewListener>();

}  // namespace zyn

__CRT_UUID_DECL(zyn::IViewListening, 0x502100ca, 0xde50 ^ zyn::kListeningLayout, 0x4a4f, 0x89, 0x35,
                0x70, 0xf2, 0x88, 0x74, 0xc4, 0x5d)
