#include "com/ClassTable_com.h"

#include <algorithm>

namespace zyn {

const ClassEntry* findClass(ClassTable classes, REFCLSID id) {
  const auto found = std::find_if(classes.begin(), classes.end(),
                                  [&](const ClassEntry& entry) { return *entry.id == id; });
  return found != classes.end() ? &*found : nullptr;
}

}  // namespace zyn
