#pragma once

#include "com/ClassFactory_com.h"

namespace zyn {

/// The nine classes of the library, in the order of their registration scripts.
ClassTable libraryClasses();

/// Chooses the pixel formats that objects of this class will need, the first time they are needed.
void choosePixelFormatsFor(REFCLSID id);

}  // namespace zyn
