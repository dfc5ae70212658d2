#include "view/CZYNVueControles_com.h"

#include "platform/ModuleStatic.h"

namespace zyn {

CZYNVueControles& CZYNVueControles::instance() {
  static const ModuleStatic<CZYNVueControles> registry;
  return *registry;
}

}  // namespace zyn
