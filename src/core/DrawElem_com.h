#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <cstdint>

namespace zyn {

/// One element of a draw list: an added scene object and how its view draws it.
struct DrawElem {
  Microsoft::WRL::ComPtr<IDispatch> object;  ///< the one reference that the list holds
  std::uint32_t drawingMode = 0;             ///< as given to Add, handed to the object at each draw
  std::int32_t pickName = -1;  ///< number under which the object answers in picking; -1: none
};

}  // namespace zyn
