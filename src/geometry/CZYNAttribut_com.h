#pragma once

#include "ZYNMODELEGEOM.h"
#include "com/ComClass_com.h"
#include "com/properties_com.h"

namespace zyn {

/// The attribute of a geometry object: the number by which it answers in picking, -1 for none. Made
/// by its object only.
class CZYNAttribut final : public ComClass<CZYNAttribut, Dual<IZYNAttribut>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Attribut";

  STDMETHODIMP get_Numero(LONG* pVal) noexcept override {
    return automation(*this, [&] { return give(pVal, number_); });
  }
  STDMETHODIMP put_Numero(LONG newVal) noexcept override {
    return automation(*this, [&] { number_ = newVal; });
  }

  LONG number() const { return number_; }

 private:
  LONG number_ = -1;
};

}  // namespace zyn
