#include "module/CZYNVueControles_com.h"

#include "com/ModuleStatic.h"

namespace zyn {

CZYNVueControles& CZYNVueControles::instance() {
  static const ModuleStatic<CZYNVueControles> registry;
  return *registry;
}

}  // namespace zyn
