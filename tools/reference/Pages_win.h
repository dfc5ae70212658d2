#pragma once

#include <map>
#include <string>
#include <vector>

#include "Library_win.h"

namespace zyn::reference {

/// The files of the reference by name. Creates an object of every class.
std::map<std::string, std::string> makePages(const std::vector<Library>& libraries);

}  // namespace zyn::reference
