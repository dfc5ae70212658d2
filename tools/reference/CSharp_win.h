#pragma once

#include <map>
#include <string>
#include <vector>

#include "Library_win.h"

namespace zyn::reference {

/// The declarations of each library for C# 7.3 and later, by the name of their file: interfaces,
/// enumerations, classes, and a class for the events of each view.
std::map<std::string, std::string> makeCSharp(const std::vector<Library>& libraries);

}  // namespace zyn::reference
