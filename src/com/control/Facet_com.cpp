#include "com/control/Facet_com.h"

#include "com/control/Control_com.h"

namespace zyn {

IUnknown* identityOf(Control& control) noexcept { return control.identity().controllingUnknown(); }

void checkThreadOf(Control& control) noexcept {
  checkThread(control.identity(), control.description().progId);
}

}  // namespace zyn
