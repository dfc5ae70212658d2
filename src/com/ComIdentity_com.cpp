#include "com/ComIdentity_com.h"

#include "com/ModuleState_com.h"

namespace zyn {

ComIdentity::ComIdentity(IUnknown* own) noexcept : controlling_(own) {
  ModuleState::instance().lock();
}

ComIdentity::~ComIdentity() { ModuleState::instance().unlock(); }

}  // namespace zyn
