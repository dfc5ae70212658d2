#pragma once

#include <vector>

#include "com/RegistrationScript.h"
#include "com/RegistryKey_com.h"

namespace zyn {

/// Writes to the registry what a registration script asks for. Throws the failure of the call that
/// stopped it; what was written before stays.
void applyScript(const std::vector<ScriptKey>& script, RegistrationScope scope);

/// Removes what `applyScript` has written: values, keys that are empty then, and the keys that are
/// the script's own with all they hold. What others have added to the other keys stays, and so does
/// the name of a class that stands for another class by now. Nothing to remove is no failure.
void undoScript(const std::vector<ScriptKey>& script, RegistrationScope scope);

}  // namespace zyn
