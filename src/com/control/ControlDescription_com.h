#pragma once

#include <windows.h>
// After windows.h:
#include <oleidl.h>

#include "com/control/Extent.h"

namespace zyn {

/// What is fixed for a class of controls. The references are to constants of the module.
struct ControlDescription {
  const CLSID& id;
  const IID& events;  ///< the default outgoing dispinterface
  const wchar_t* progId;
  Extent initialExtent;
};

/// The status that the controls are registered with: recompose on resize, cannot be linked from
/// inside, inside-out, active when visible, wants its site first.
inline constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                     OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                     OLEMISC_SETCLIENTSITEFIRST;
static_assert(kMiscStatus == 131473);

}  // namespace zyn
