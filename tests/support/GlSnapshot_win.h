#pragma once

#include <map>
#include <string>
#include <vector>

namespace zyn::test {

/// The fixed-function state that drawing an object could disturb, of the context that is current:
/// every value by name, so that a difference prints readably.
using GlSnapshot = std::map<std::string, std::vector<double>>;
GlSnapshot takeGlSnapshot();

/// What differs, one value a line; empty when nothing does.
std::string differences(const GlSnapshot& before, const GlSnapshot& after);

}  // namespace zyn::test
