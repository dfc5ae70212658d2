#pragma once

#include "ZYNVUE.h"
#include "com/ComClass_com.h"

namespace zyn {

/// A child of a 2D view: carries no behaviour, and is there to be aggregated by hosts that give it
/// one.
class CZYNVue2DChild final : public ComClass<CZYNVue2DChild, Dual<IZYNVue2DChild>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNVue2DChild";
};

}  // namespace zyn
