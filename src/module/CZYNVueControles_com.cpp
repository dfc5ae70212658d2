#include "module/CZYNVueControles_com.h"

namespace zyn {

CZYNVueControles& CZYNVueControles::instance() {
  static CZYNVueControles registry;
  return registry;
}

}  // namespace zyn
