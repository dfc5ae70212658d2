#pragma once

#include "com/ClassesRoot_com.h"

namespace zyn {

/// Registers the module's type library, and with it the marshalling of its interfaces. Throws the
/// failure of the call that stopped it.
void registerTypeLibrary(RegistrationScope scope);

/// Takes the registration away where it names our own file; none to take away is no failure.
void unregisterTypeLibrary(RegistrationScope scope);

}  // namespace zyn
